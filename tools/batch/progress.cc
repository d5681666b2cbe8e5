// A line of progress that a timer asks for.
#include "batch/progress.h"

#include <sys/time.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <utility>

#include "foundation/shell.h"
#include "kernel/run_end.h"
#include "kernel/say.h"

namespace {

using steady = std::chrono::steady_clock;

bool is_shown = false;
steady::time_point last_time = steady::now();
std::int64_t last_events = 0;

double share_of_run() {
    const double whole = double{1} * kol_ext.end_time - kol_ext.start_time;
    return whole > 0 ? (double{1} * kol_ext.cur_time - kol_ext.start_time) / whole : 1;
}

double events_per_second() {
    const auto now = steady::now();
    const std::chrono::duration<double> past = now - std::exchange(last_time, now);
    const std::int64_t events = kol_events_executed - std::exchange(last_events, kol_events_executed);
    return past.count() > 0 ? static_cast<double>(events) / past.count() : 0;
}

void show() {
    std::fprintf(stderr, "\rtime %s : %.1f %% of the run, %.2f million events a second\x1b[K",
                 kol_time_text(kol_ext.cur_time).c_str(), 100 * share_of_run(), events_per_second() / 1e6);
    is_shown = true;
}

}  // namespace

void bt_watch_progress() {
    if (::isatty(STDERR_FILENO) != 1) return;
    tm_shell.show_progress = show;
    struct sigaction action {};
    action.sa_handler = [](int) { kol_progress_is_due = 1; };
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGALRM, &action, nullptr);
    const itimerval every_second = {{1, 0}, {1, 0}};
    ::setitimer(ITIMER_REAL, &every_second, nullptr);
}

void bt_clear_progress() {
    if (std::exchange(is_shown, false)) std::fputs("\r\x1b[K", stderr);
}

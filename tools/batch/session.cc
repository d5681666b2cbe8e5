// What kolv-batch does its own way: lines on standard output, the user's keys, the verdict at every end.
#include "batch/session.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include "batch/difference.h"
#include "batch/interrupt.h"
#include "batch/page.h"
#include "batch/progress.h"
#include "batch/prompt.h"
#include "batch/report.h"
#include "batch/verdict.h"
#include "foundation/files.h"
#include "foundation/shell.h"
#include "kernel/run_end.h"
#include "session/shutdown.h"
#include "session/startup.h"

namespace {

struct session_t {
    bt_options_t options;
    bt_lines_t expected;
    bt_verdict_t verdict;
    volatile std::sig_atomic_t status_of_stop = bt_unusable;  // of an end that nobody has planned
    bool is_closed = false, is_over = false;
};
session_t session;

// ---- lines

void complain(const std::string& text) {
    bt_clear_progress();
    std::fprintf(stderr, "kolv-batch: %s\n", text.c_str());
}

void show(std::string_view line) {
    if (session.options.quiet) return;
    bt_clear_progress();
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
}

void show_session_line(std::string_view line) {
    const bt_kind kind = bt_kind_of(line);
    bt_note(kind, session.verdict);
    show(line);
    if (session.options.quiet && bt_fails(kind, session.options.warnings_are_errors))
        complain(std::string(line));
}

void show_command_entry(std::string_view text) {
    show(text);
    bt_prefill_prompt(text);
}

void note_failed_program(int status) {
    bt_note(bt_kind::child, session.verdict);
    complain("a program ended with status " +
             std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status)));
}

// ---- ends

void report(int status) {
    if (session.options.report.empty()) return;
    if (bt_write_report(session.options.report, status, session.verdict)) return;
    bt_note(bt_kind::error, session.verdict);
    complain("the report cannot be written : " + session.options.report);
}

void compare() {
    if (session.options.expected.empty()) return;
    const std::optional<bt_lines_t> seen = bt_read_lines(std::string(tm_view(tm_vext.cursessname)));
    const std::string differences = bt_differences(session.expected, seen.value_or(bt_lines_t{}));
    if (differences.empty()) return;
    bt_note(bt_kind::difference, session.verdict);
    std::fputs(differences.c_str(), stderr);
}

std::int64_t failures() { return bt_failures(session.verdict, session.options.warnings_are_errors); }

void end_with_verdict() {
    compare();
    report(failures() > 0 ? bt_failed : bt_good);
    const std::int64_t count = failures();
    if (count > 0) complain(std::to_string(count) + (count == 1 ? " failure" : " failures"));
    session.is_over = true;
    std::exit(count > 0 ? bt_failed : bt_good);
}

void close_session() {
    session.is_closed = true;
    kol_close_session(0);
}

// Rooms below end the program where they cannot go on, with a status of their own.
void judge_exit(int /*status*/, void* /*unused*/) {
    if (std::exchange(session.is_over, true)) return;
    bt_note(bt_kind::fatal, session.verdict);
    report(session.status_of_stop);
    std::fflush(nullptr);
    _exit(session.status_of_stop);
}

void judge_abort(int /*signal*/) { _exit(session.status_of_stop); }

// The last that a fatal end does before it aborts; also done behind an orderly one.
void abandon_pages() {
    if (!session.is_closed) std::exit(session.status_of_stop);
}

void run_commands() {
    session.status_of_stop = bt_failed;
    if (tm_view(kol_init_do_file) == "-" && bt_is_at_terminal()) return bt_serve_prompt();
    kol_run_command_file();
}

void install_shell() {
    tm_shell.append_session = show_session_line;
    tm_shell.set_command_entry = show_command_entry;
    tm_shell.program_failed = note_failed_program;
    tm_shell.abandon_display = abandon_pages;
    tm_shell.finalize = close_session;
    tm_shell.end_process = end_with_verdict;
    bt_watch_interrupts();
    bt_watch_progress();
}

void prepare() {
    ::on_exit(judge_exit, nullptr);
    std::signal(SIGABRT, judge_abort);
    tm_shell_commands_allowed = !session.options.no_shell;
    tm_streams_are_read = true;
    kol_run_limit = session.options.limit;
    install_shell();
}

// A report of an earlier session must not pass for one of this.
void remove_old_report() {
    std::error_code error;
    if (std::filesystem::is_regular_file(session.options.report, error))
        std::filesystem::remove(session.options.report, error);
}

void take_options(const bt_options_t& options) {
    session.options = options;
    remove_old_report();
    if (options.expected.empty()) return;
    std::optional<bt_lines_t> lines = bt_read_lines(options.expected);
    if (!lines) {
        complain("cannot be read : " + options.expected);
        std::exit(bt_unusable);
    }
    session.expected = std::move(*lines);
}

}  // namespace

void bt_run_session(const bt_options_t& options) {
    take_options(options);
    prepare();
    static char program_name[] = "kolv-batch";
    std::vector<char*> words = {program_name};
    for (std::string& argument : session.options.arguments) words.push_back(argument.data());
    const kol_program_t program = {bt_open_pages, run_commands, nullptr, false, options.transcript};
    if (!kol_run_session(static_cast<std::int32_t>(words.size()), words.data(), program)) {
        bt_note(bt_kind::error, session.verdict);
        complain("the design has errors: no command was run");
    }
    motif_main_quit();
    std::abort();
}

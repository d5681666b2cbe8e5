// What kolv-batch does its own way: lines on standard output, Control-C, the verdict at every end.
#include "batch/session.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "batch/page.h"
#include "batch/verdict.h"
#include "foundation/files.h"
#include "foundation/shell.h"
#include "session/shutdown.h"
#include "session/startup.h"

namespace {

struct session_t {
    bt_options_t options;
    bt_verdict_t verdict;
    volatile std::sig_atomic_t status_of_stop = bt_unusable;  // of an end that nobody has planned
    volatile std::sig_atomic_t is_interrupted = 0;
    bool is_over = false;  // the end that follows is planned
};
session_t session;

// ---- lines

void show(std::string_view line) {
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
}

void complain(const std::string& text) { std::fprintf(stderr, "kolv-batch: %s\n", text.c_str()); }

void show_session_line(std::string_view line) {
    const bt_kind kind = bt_kind_of(line);
    bt_note(kind, session.verdict);
    if (!session.options.quiet) return show(line);
    if (bt_fails(kind, session.options.warnings_are_errors)) complain(std::string(line));
}

void show_command_entry(std::string_view text) {
    if (!session.options.quiet) show(text);
}

void note_failed_program(int status) {
    bt_note(bt_kind::child, session.verdict);
    complain("a program ended with status " +
             std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status)));
}

// ---- keys

// Stops a run; when that has not been seen yet, it ends the program as usual.
void interrupt(int signal) {
    if (session.is_interrupted != 0) {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
    session.is_interrupted = 1;
}

bool take_control_key(char letter) {
    if (letter != 's' || session.is_interrupted == 0) return false;
    session.is_interrupted = 0;
    return true;
}

// ---- ends

[[noreturn]] void end_with(int status) {
    session.is_over = true;
    std::exit(status);
}

void end_with_verdict() {
    const std::int64_t failures = bt_failures(session.verdict, session.options.warnings_are_errors);
    if (failures > 0) complain(std::to_string(failures) + (failures == 1 ? " failure" : " failures"));
    end_with(failures > 0 ? bt_failed : bt_good);
}

void close_session() { kol_close_session(0); }

// Rooms below end the program where they cannot go on, with a status of their own.
void judge_exit(int /*status*/, void* /*unused*/) {
    if (session.is_over) return;
    std::fflush(nullptr);
    _exit(session.status_of_stop);
}

void judge_abort(int /*signal*/) { _exit(session.status_of_stop); }

void run_commands() {
    session.status_of_stop = bt_failed;
    kol_run_command_file();
}

void prepare() {
    ::on_exit(judge_exit, nullptr);
    std::signal(SIGABRT, judge_abort);
    std::signal(SIGINT, interrupt);
    tm_shell_commands_allowed = !session.options.no_shell;
    tm_shell.append_session = show_session_line;
    tm_shell.set_command_entry = show_command_entry;
    tm_shell.take_control_key = take_control_key;
    tm_shell.program_failed = note_failed_program;
    tm_shell.finalize = close_session;
    tm_shell.end_process = end_with_verdict;
}

}  // namespace

void bt_run_session(const bt_options_t& options) {
    session.options = options;
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
    end_with(bt_failed);
}

// The fatal ends of the program, and the trace lines that lead to them.
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include "foundation/ends.h"

#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/growing_file.h"
#include "foundation/shell.h"
#include "foundation/status.h"

namespace {

constexpr const char* save_script = "/users/quillarn/bin/save_context";
constexpr std::int32_t save_directory_max = 163;
constexpr std::int32_t directory_position = 2;

void print_error(std::int32_t code) {
    const bool known = code >= 0 && static_cast<std::size_t>(code) < tm_error_count;
    std::printf(" ?? error in tm_package  code : %d\n", code);
    std::printf(" ?? error  : %30s\n", known ? tm_error_array[static_cast<std::size_t>(code)].data() : "");
    std::fflush(stdout);
}

// Each step of the end clears its own condition first, so that a fault inside it cannot come back to it.
void hand_over_to_save_script() {
    if (!std::exchange(tm_vext.all_init_done, false)) return;
    tm_string_record_t directory;
    STATUS_T status;
    tm_get_arg(directory_position, directory, status);
    if (status.all != all_is_ok || directory.len < 1 || directory.len > save_directory_max) return;
    tm_trace(" !! cmd_system : \"%s %.*s\"\n", save_script, directory.len, directory.char_);
    tm_run_program(save_script, std::string(tm_view(directory)));
}

std::vector<std::FILE* const*> traces;

void close_trace_file() {
    std::FILE* const file = std::exchange(tm_vext.debugfile, nullptr);
    if (file == nullptr) return;
    std::fflush(file);
    std::fclose(file);
}

void close_open_files() {
    if (tm_vext.num_file_open < 1 || tm_vext.num_file_open > 31) return;
    for (tm_file_io_rec_t& file : tm_vext.filear) {
        std::FILE* const stream = std::exchange(file.file_io_id, nullptr);
        if (std::exchange(file.already_open_ok, false) && stream != nullptr) std::fclose(stream);
    }
}

}  // namespace

void tm_set_status(std::int32_t error_code, STATUS_T& status) {
    status.all = tm_status_base + error_code;
    print_error(error_code);
    hand_over_to_save_script();
    tm_repeat_traces();
    close_trace_file();
    close_open_files();
    if (std::exchange(tm_vext.init_done, false)) tm_shell.abandon_display();
    std::fflush(stdout);
    std::abort();
}

void tm_fatal(std::int32_t error_code) {
    STATUS_T status;
    tm_set_status(error_code, status);
}

void _OutMem() {
    std::fputs(" \n!!  Error: _OutMem(tm_mod0) : Malloc Out of memory .\n", stderr);
    std::exit(1);
}

namespace {

// Before the objects of other files, which may want memory.
struct out_of_memory_t {
    out_of_memory_t() { std::set_new_handler(_OutMem); }
};
[[gnu::init_priority(101)]] const out_of_memory_t out_of_memory;

}  // namespace

void tm_begin_process() {
    // A handler, unlike SIG_IGN, is not handed on to the programs that this one runs.
    struct sigaction action {};
    action.sa_handler = [](int) {};
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGXFSZ, SIGPIPE}) ::sigaction(signal, &action, nullptr);
}

void tm_trace(const char* format, ...) {
    if (tm_vext.debugfile == nullptr) return;
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(tm_vext.debugfile, format, arguments);
    va_end(arguments);
    const std::size_t len = std::strlen(format);
    if (len == 0 || format[len - 1] != '\n') std::fputc('\n', tm_vext.debugfile);
}

void tm_repeat_trace_at_end(std::FILE* const* stream) { traces.push_back(stream); }

void tm_repeat_traces() {
    for (std::FILE* const* const stream : traces)
        if (const std::string line = tm_last_line(*stream); !line.empty())
            std::fprintf(stderr, "# last trace line : %s\n", line.c_str());
}

void tm_run_program(const char* program, std::string argument) {
    if (!tm_shell_commands_allowed) return;
    std::fflush(stdout);
    std::string name(program);
    char* const arguments[] = {name.data(), argument.data(), nullptr};
    pid_t child = 0;
    if (::posix_spawn(&child, program, nullptr, nullptr, arguments, environ) == 0)
        ::waitpid(child, nullptr, 0);
}

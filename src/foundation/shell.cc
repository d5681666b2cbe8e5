// The shell interface of a program without a window, and the lines shown through it.
#include "foundation/shell.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>

#include "foundation/context.h"
#include "foundation/printable.h"

namespace {

constexpr std::size_t session_line_max = 98;
constexpr std::size_t command_entry_max = 100;
constexpr const char* transcript_is_cut =
    "# !! Error : the transcript cannot be written : lines are missing there ";

void no_action() {}

[[noreturn]] void kill_own_group() {
    kill(0, SIGKILL);
    std::exit(0);
}

constexpr tm_shell_t windowless = {
    .append_session = [](std::string_view) {},
    .set_command_entry = [](std::string_view) {},
    .redraw_results = no_action,
    .redraw_context = no_action,
    .redraw_states = no_action,
    .show_other_page = no_action,
    .copy_to_window = no_action,
    .busy = [](bool) {},
    .move_pointer = [](std::int32_t, std::int32_t) {},
    .take_control_key = [](char) { return false; },
    .program_failed = [](int) {},
    .show_progress = no_action,
    .flush = no_action,
    .abandon_display = no_action,
    .finalize = no_action,
    .end_process = kill_own_group,
};

bool transcript_failed = false;  // a line of it could not be written, which was said

void write_transcript(std::string_view line) {
    std::FILE* const file = tm_vext.cursessfile;
    if (file == nullptr) return;
    std::fwrite(line.data(), 1, line.size(), file);
    std::fputc('\n', file);
    const bool is_written = std::fflush(file) == 0 && std::ferror(file) == 0;
    std::clearerr(file);
    if (is_written || std::exchange(transcript_failed, true)) return;
    tm_count_error();
    tm_shell.append_session(transcript_is_cut);
    std::fprintf(stderr, "%s\n", transcript_is_cut);
}

void show_line(std::string_view line) {
    tm_shell.append_session(line);
    write_transcript(line);
}

std::int64_t counted = 0;

void count_one(std::int16_t& counter) {
    ++counted;
    if (counter < std::numeric_limits<std::int16_t>::max()) ++counter;
}

}  // namespace

const tm_shell_t tm_default_shell = windowless;
tm_shell_t tm_shell = windowless;

void tm_display_list(const tm_string_record_t& text) {
    tm_check_string(text);
    show_line(tm_view(text).substr(0, session_line_max));
}

void tm_display(std::string_view text) {
    std::string line(text.substr(0, session_line_max));
    for (char& c : line)
        if (!tm_is_printable(c)) c = ' ';
    show_line(line);
}

void tm_display_cmd(const tm_string_record_t& text) {
    tm_check_string(text);
    if (text.len == 0) return;
    const std::string_view shown = tm_view(text).substr(0, command_entry_max);
    tm_shell.set_command_entry(shown);
    write_transcript(shown);
}

void tm_count_error() { count_one(tm_vext.num_errors); }
void tm_count_warning() { count_one(tm_vext.num_warnings); }
std::int64_t tm_counted() { return counted; }

void motif_main_quit() {
    tm_shell.finalize();
    if (std::exchange(tm_vext.init_done, false)) tm_shell.abandon_display();
    std::fflush(nullptr);  // the killed process cannot flush its streams any more
    tm_shell.end_process();
}

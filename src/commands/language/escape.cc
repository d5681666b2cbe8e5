// The '!' escape and SYSTEM: programs outside.
#include <sys/wait.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "commands/language/handlers.h"
#include "commands/language/interpreter.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/platform.h"
#include "foundation/shell.h"

namespace {

constexpr std::size_t text_max = 508, showable_max = 197, command_max = 504, echo_max = 192;
constexpr int line_max = 198;
constexpr std::int16_t level_max = 10;  // a program whose output runs it again ends here
constexpr std::int32_t delay_before_start = 100, delay_after_start = 150, delay_at_end = 50;  // milliseconds
constexpr std::string_view root_variable = "$QUILLARN";

constexpr kol_rejection_t no_shell{
    "# !! Error : programs are not started here ( --no-shell or KOLV_NO_SHELL ) "};

constexpr int cannot_be_executed = 126, not_found = 127;  // what a shell ends with

struct process_closer {
    void operator()(std::FILE* f) const { pclose(f); }
};
using process = std::unique_ptr<std::FILE, process_closer>;

// Waits for what the program prints first; one that ended without a word has a status.  False: the shell says
// that there is none.
bool is_started(process& program, int& status) {
    const int first = std::getc(program.get());
    if (first != EOF) return std::ungetc(first, program.get()) != EOF;
    status = pclose(program.release());
    return !WIFEXITED(status) ||
           (WEXITSTATUS(status) != cannot_be_executed && WEXITSTATUS(status) != not_found);
}

void show_invalid(std::string_view text) {
    tm_display("!! Warning : Invalid command to exec ....");
    tm_display(text);
}

void refuse_length(const char* text, std::size_t length) {
    if (length < showable_max) return show_invalid(text);
    std::printf("# !!! Error :  Invalid Command ??  len:%d '%s'\n", static_cast<int>(length), text);
    std::fflush(stdout);
}

void report_not_started(const std::string& text) {
    tm_count_error();
    tm_display("# !!! Error :  Command not found or not executable ?? ");
    kol_show({"# !!!  \"", text, "\" "});
    show_invalid(text);
}

void refuse_program() {
    tm_count_error();
    tm_display(no_shell.error);
}

// How it ended does not show in the lines.
void report_end(int status) {
    if (status != 0) tm_shell.program_failed(status);
}

std::string program_text(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    std::string program(text);
    if (text.starts_with(root_variable)) program.replace(0, root_variable.size(), tm_installation_root());
    return program.substr(0, command_max);
}

// False: the line does not end within its limit, so nothing behind it is read.
bool skip_line(std::FILE* output, bool& cut) {
    for (std::int64_t skipped = 0; skipped < tm_line_limit; ++skipped) {
        const int c = std::getc(output);
        if (c == '\n' || c == EOF) return true;
        cut = true;
    }
    tm_count_error();
    tm_display(kol_line_has_no_end);
    return false;
}

// One line of output, what is beyond its first 198 characters skipped; false at the end.
bool read_line(std::FILE* output, tm_string_record_t& line, bool& cut) {
    line.len = 0;
    int c = 0;
    while (line.len < line_max && c != '\n' && (c = std::getc(output)) != EOF)
        line.char_[line.len++] = c == '\0' ? ' ' : static_cast<char>(c);
    if (line.len == 0) return false;
    line.char_[line.len] = '\0';
    cut = false;
    if (line.len == line_max && c != '\n' && !skip_line(output, cut)) return false;
    tm_rest_string(line);
    return true;
}

tm_string_record_t without_outer_blanks(const tm_string_record_t& line) {
    std::string_view text = tm_view(line);
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return tm_string(text.substr(0, text.find_last_not_of(' ') + 1));
}

void interpret_line(const tm_string_record_t& line, kol_array_param_t& arg, kol_array_param_t& var) {
    if (tm_const_iden_string("PAUSE", line)) return tm_shell.flush();
    if (tm_const_equal_string("CONTIN", line)) return;
    tm_vext.obj_pos = tm_vext.base_point;
    kol_process_command(line, arg, var);
}

void interpret_output(std::FILE* output) {
    kol_array_param_t arg, var;
    tm_string_record_t line;
    bool cut = false;
    while (!tm_vext.end_flag && read_line(output, line, cut)) {
        line = without_outer_blanks(line);
        if (line.len == 0 || tm_shell.take_control_key('a')) continue;
        if (cut) tm_display(kol_line_is_cut);
        interpret_line(line, arg, var);
    }
}

void run_program(const std::string& text) {
    if (!tm_shell_commands_allowed) return refuse_program();
    xdelayms(delay_before_start);
    tm_shell.flush();
    process program(popen(text.c_str(), "r"));
    if (!program) return report_not_started(text);
    xdelayms(delay_after_start);
    tm_shell.flush();
    int status = 0;
    if (!is_started(program, status)) return report_not_started(text);
    kol_show({"# ", std::string_view(text).substr(0, echo_max), " "});
    if (program) {
        interpret_output(program.get());
        status = pclose(program.release());
    }
    report_end(status);
    tm_display("# End of Exec ");
    xdelayms(delay_at_end);
}

}  // namespace

void kol_exec_cmd(const char* text) {
    static std::int16_t level = 0;
    const std::size_t length = std::strlen(text);
    if (length < 1 || length > text_max) return refuse_length(text, length);
    if (level >= level_max) {
        tm_count_error();
        kol_show({"# !!! Error : too many level of EXEC : \"", text, "\" "});
        return;
    }
    ++level;
    run_program(program_text(text));
    --level;
}

kol_result_t kol_system_cmd(const kol_line_t& line) {
    if (!tm_shell_commands_allowed) return no_shell;
    kol_echo(line);
    tm_shell.flush();  // the user sees what led to the program while it runs
    report_end(tm_system(line[2]));
    return kol_shown();
}

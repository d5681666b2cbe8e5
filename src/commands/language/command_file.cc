// DO: command files, nested up to 10 levels.
#include <cerrno>
#include <cstring>

#include "commands/language/handlers.h"
#include "commands/language/interpreter.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/shell.h"

namespace {

constexpr std::int16_t first_parameter = 3;  // keyword that becomes $ARG1

kol_result_t refused(std::string_view reason, const kol_line_t& line) {
    tm_count_error();
    return kol_rejected({reason, tm_view(line[2]), "\" "});
}

// A line that cannot be read is no end of the file.
void report_read_error(const tm_string_record_t& name, std::int64_t number, int reason) {
    tm_count_error();
    kol_show({"# !!! Error : file can not be read : \"", tm_view(name), "\" "});
    kol_show({"# !!! line ", std::to_string(number), " : ", std::strerror(reason), " "});
}

void report_endless_line() {
    tm_count_error();
    tm_display(kol_line_has_no_end);
}

void interpret_file(std::FILE* file, const tm_string_record_t& name, kol_array_param_t& arg) {
    kol_array_param_t var;
    tm_string_record_t line;
    std::int32_t pos = 1;
    bool cut = false;
    std::int64_t lines = 0;
    while (!tm_vext.end_flag && !tm_no_more_lines(file) && !tm_shell.take_control_key('a')) {
        if (!tm_read_one_line(file, line, pos, cut)) return report_endless_line();
        if (std::ferror(file) != 0) break;
        ++lines;
        if (cut) tm_display(kol_line_is_cut);
        kol_process_command(line, arg, var);
    }
    if (std::ferror(file) != 0) report_read_error(name, lines + 1, errno);
}

// The level and its slot of commandfile for as long as the file runs.
struct do_level {
    do_level() {
        if (tm_vext.do_ind < 0) tm_vext.do_ind = 0;
        ++tm_vext.do_ind;
    }
    ~do_level() { --tm_vext.do_ind; }
    do_level(const do_level&) = delete;
    do_level& operator=(const do_level&) = delete;
    bool too_deep() const { return static_cast<std::size_t>(tm_vext.do_ind) > tm_do_levels; }
    std::FILE*& stream() const { return tm_vext.commandfile[static_cast<std::size_t>(tm_vext.do_ind - 1)]; }
};

kol_result_t run_file(const kol_line_t& line) {
    const do_level level;
    if (level.too_deep()) return refused("# !!! Error : too many level of DO FILE : \"", line);
    bool open_ok = false;
    tm_popen_file(line[2], 'R', true, level.stream(), open_ok);
    if (!open_ok) return refused("# !!! Error : file not found : \"", line);
    kol_echo(line);
    kol_array_param_t arg;
    for (std::int16_t k = first_parameter; k <= line.nkeyword; ++k)
        arg[static_cast<std::size_t>(k - first_parameter)] = line[k];
    interpret_file(level.stream(), line[2], arg);
    std::fclose(level.stream());
    level.stream() = nullptr;
    return kol_shown().then({"# End of", line.words()});
}

}  // namespace

kol_result_t kol_do_cmd(const kol_line_t& line) { return run_file(line); }

// DO: command files, nested up to 10 levels.
#include "commands/handlers.h"
#include "commands/interpreter.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/shell.h"

namespace {

constexpr std::int16_t first_parameter = 3;  // keyword that becomes $ARG1

void refuse(std::string_view reason, std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    tm_count_error();
    kol_echo("# DO ", 2, nkeyword, keyword);
    kol_show({reason, tm_view(keyword[1]), "\" "});
}

void interpret_file(std::FILE* file, kol_array_param_t& arg) {
    kol_array_param_t var;
    tm_string_record_t line;
    std::int32_t pos = 1;
    bool cut = false;
    while (!tm_vext.end_flag && !tm_no_more_lines(file) && !tm_shell.take_control_key('a')) {
        tm_read_one_line(file, line, pos, cut);
        if (cut) tm_display(kol_line_is_cut);
        kol_process_command(line, arg, var);
    }
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

bool run_file(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const do_level level;
    if (level.too_deep()) {
        refuse("# !!! Error : too many level of DO FILE : \"", nkeyword, keyword);
        return false;
    }
    bool open_ok = false;
    tm_popen_file(keyword[1], 'R', true, level.stream(), open_ok);
    if (!open_ok) {
        refuse("# !!! Error : file not found : \"", nkeyword, keyword);
        return false;
    }
    kol_echo("# DO ", 2, nkeyword, keyword);
    kol_array_param_t arg;
    for (std::int16_t k = first_parameter; k <= nkeyword; ++k)
        arg[static_cast<std::size_t>(k - first_parameter)] = kol_kw(keyword, k);
    interpret_file(level.stream(), arg);
    std::fclose(level.stream());
    level.stream() = nullptr;
    return true;
}

}  // namespace

void kol_do_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (run_file(nkeyword, keyword)) tm_display("# End of DO ");
}

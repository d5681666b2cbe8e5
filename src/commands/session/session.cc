// The commands of the session itself: COMMAND, DISPLAY, TRANSCRIPT, HELP, BYE, QUIT.
#include <string>

#include "commands/language/command_line.h"
#include "commands/session/handlers.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/shell.h"

namespace {

struct switch_command {
    std::string_view on, off;  // behind the command word
    bool tm_defref_var_rec_t::*state;
};
constexpr switch_command display_switch = {"ON ", "OFF ", &tm_defref_var_rec_t::display_on};
constexpr switch_command transcript_switch = {" ON ", " OFF ", &tm_defref_var_rec_t::transcript_state};

constexpr kol_rejection_t no_list{"# !! Error :  List of commands for Help not found ? "};
constexpr kol_rejection_t no_help{"# !! Error :  Help on this command not found ? "};

kol_result_t turn(const switch_command& which, const kol_line_t& line) {
    const bool on = tm_const_equal_string("ON", line[2]);
    if (!on && !tm_const_equal_string("OF", line[2])) return kol_second_invalid;
    tm_vext.*which.state = on;
    if (on) {
        tm_shell.redraw_results();
        tm_shell.redraw_context();
    }
    return kol_accepted(on ? which.on : which.off);
}

bool show_file(const tm_string_record_t& path) {
    std::FILE* file = nullptr;
    bool open_ok = false;
    tm_popen_file(path, 'R', true, file, open_ok);
    if (!open_ok) return false;
    const tm_stream owner(file);
    tm_string_record_t line;
    std::int32_t pos = 1;
    bool cut = false;
    while (!tm_no_more_lines(file) && tm_read_one_line(file, line, pos, cut))
        kol_show({"# \"", tm_view(line), "\" "});
    return true;
}

// Help is named by command words in capitals.
tm_string_record_t in_capitals(tm_string_record_t path, std::int32_t length) {
    for (std::int32_t i = path.len - length; i < path.len; ++i) path.char_[i] = tm_upper_case(path.char_[i]);
    return path;
}

}  // namespace

kol_result_t kol_command_cmd(const kol_line_t& line) {
    kol_echo(line);
    tm_vext.str_cmd = kol_unquoted(line[2]);
    tm_display_cmd(tm_vext.str_cmd);
    return kol_shown();
}

kol_result_t kol_display_cmd(const kol_line_t& line) { return turn(display_switch, line); }

kol_result_t kol_transcript_cmd(const kol_line_t& line) { return turn(transcript_switch, line); }

kol_result_t kol_help_cmd(const kol_line_t& line) {
    const bool list = line.nkeyword == 1;
    tm_string_record_t path = tm_string(tm_installation_root());
    tm_append(list ? "/kolv/help/list_commands" : "/kolv/help/kol_1_", path);
    if (!list) tm_append(tm_view(line[2]), path);
    if (show_file(path) || (!list && show_file(in_capitals(path, line[2].len)))) return {};
    return kol_result_t(list ? no_list : no_help).then({"# !! : \"", tm_view(path)});
}

kol_result_t kol_bye_cmd(const kol_line_t& line) {
    tm_vext.end_flag = true;
    kol_ext.save_to_do = true;
    kol_echo(line);
    tm_shell.flush();
    motif_main_quit();
    return kol_shown();
}

kol_result_t kol_quit_cmd(const kol_line_t& /*line*/) {
    tm_vext.end_flag = true;
    kol_ext.save_to_do = false;
    motif_main_quit();
    return {};
}

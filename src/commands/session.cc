// The commands of the session itself: COMMAND, DISPLAY, TRANSCRIPT, HELP, BYE, QUIT.
#include <string>

#include "commands/command_line.h"
#include "commands/handlers.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/shell.h"

namespace {

struct switch_command {
    std::string_view rejection, on, off;  // echoes
    bool tm_defref_var_rec_t::*state;
};
constexpr switch_command display_switch = {"# DISplay ", " DISplay ON ", " DISplay OFF ",
                                           &tm_defref_var_rec_t::display_on};
constexpr switch_command transcript_switch = {"# TRANScript ", " TRANScript  ON ", " TRANScript  OFF ",
                                              &tm_defref_var_rec_t::transcript_state};

void turn(const switch_command& which, std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const bool on = tm_const_equal_string("ON", keyword[1]);
    if (!on && !tm_const_equal_string("OF", keyword[1])) {
        kol_echo(which.rejection, 2, nkeyword, keyword);
        tm_display(second_par_incorrect);
        return;
    }
    tm_vext.*which.state = on;
    if (on) {
        tm_shell.redraw_results();
        tm_shell.redraw_context();
    }
    tm_display(on ? which.on : which.off);
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
    while (!tm_no_more_lines(file)) {
        tm_read_one_line(file, line, pos, cut);
        kol_show({"# \"", tm_view(line), "\" "});
    }
    return true;
}

}  // namespace

void kol_command_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    kol_echo("# COMmand ", 2, nkeyword, keyword);
    tm_vext.str_cmd = kol_unquoted(keyword[1]);
    tm_display_cmd(tm_vext.str_cmd);
}

void kol_display_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    turn(display_switch, nkeyword, keyword);
}

void kol_transcript_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    turn(transcript_switch, nkeyword, keyword);
}

void kol_help_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const bool list = nkeyword == 1;
    tm_string_record_t path = tm_string(tm_installation_root());
    tm_append(list ? "/kolv/help/list_commands" : "/kolv/help/kol_1_", path);
    if (!list) tm_append(tm_view(keyword[1]), path);
    if (show_file(path)) return kol_echo(" HELp ", 2, nkeyword, keyword);
    kol_echo("# HELp ", 2, nkeyword, keyword);
    tm_display(list ? "# !! Error :  List of commands for Help not found ? "
                    : "# !! Error :  Help on this command not found ? ");
    kol_show({"# !! : \"", tm_view(path)});
}

void kol_bye_cmd(std::int16_t /*nkeyword*/, kol_array_keyword_t& /*keyword*/) {
    tm_vext.end_flag = true;
    kol_ext.save_to_do = true;
    tm_display(" BYE ");
    tm_shell.flush();
    motif_main_quit();
}

void kol_quit_cmd(std::int16_t /*nkeyword*/, kol_array_keyword_t& /*keyword*/) {
    tm_vext.end_flag = true;
    kol_ext.save_to_do = false;
    motif_main_quit();
}

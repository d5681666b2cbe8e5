#include "commands/command_table.h"

#include <algorithm>

#include "commands/handlers.h"

namespace {

using enum kol_when;

bool readln(std::int16_t nkeyword, kol_array_keyword_t& keyword, kol_array_param_t& var_father) {
    kol_readln_cmd(nkeyword, keyword, var_father);
    return true;
}

// VIEW DOWN and VIEW UP count their keywords themselves: their rejection echoes are of another form.
// clang-format off
constexpr kol_command_row_t command_table[] = {
    // group, prefixes, when, canonical words, keywords, handler
    {"A", {"ASSI"}, any, "ASSIgn", 2, 3, nullptr, kol_assign_cmd},
    {"BD", {"BASE"}, any, "BASEpoint", 1, 4, kol_base_point_cmd},
    {"BD", {"BYE"}, whole, "BYE", 1, 1, kol_bye_cmd},
    {"BD", {"BREAK"}, whole, "BREAK", 3, 3, kol_break_cmd},
    {"BD", {"DEF", "BUS"}, any, "DEFine BUS", 5, 30, kol_define_bus_cmd},
    {"BD", {"DEF", "KEY"}, any, "DEFine KEY", 4, 4, kol_define_key_cmd},
    {"BD", {"DO"}, whole, "DO", 2, 30, kol_do_cmd},
    {"BD", {"DOB"}, any, "DOBin", 2, 30, kol_dobin_cmd},
    {"BD", {"DODIR"}, any, "DODIRectbin", 2, 30, kol_dodirbin_cmd},
    {"BD", {"DISP"}, any, "DISplay", 2, 2, kol_display_cmd},
    {"C", {"COM"}, any, "COMmand", 2, 2, kol_command_cmd},
    {"C", {"CHA", "PRO", "SWI"}, any, "CHAnge PROperty SWItches", 4, 4, kol_change_prop_switches_cmd},
    {"C", {"CHE", "SHE"}, any, "CHEck SHEet", 2, 2, kol_check_sheet_cmd},
    {"C", {"CLO", "PER"}, any, "CLOck PERiod", 3, 3, kol_clock_period_cmd},
    {"EFGH", {"GRID"}, second_is_o, "GRId", 2, 2, kol_grid_state_cmd},
    {"EFGH", {"GRID", "ST"}, any, "GRId STep", 3, 3, kol_grid_step_cmd},
    {"EFGH", {"HAR"}, any, "HARdcopy", 1, 2, kol_hardcopy_cmd},
    {"EFGH", {"HEL"}, any, "HELp", 1, 2, kol_help_cmd},
    {"EFGH", {"FORC"}, any, "FORCE", 5, 7, kol_force_cmd},
    {"EFGH", {"FORG"}, any, "FORGet", 2, 30, kol_forget_cmd},
    {"EFGH", {"HIST"}, any, "HISTory", 2, 3, kol_history_cmd},
    {"IKL", {"LIST", "OBJ"}, two_keywords, "LIST OBJects", 2, 2, tm_object_list},
    {"IKL", {"LIS"}, any, "LIST", 2, 30, kol_list_cmd},
    {"MNOP", {"MARK", "RECT"}, whole, "MARK RECTangle", 2, 6, kol_mark_rectangle_cmd},
    {"MNOP", {"MARK"}, whole, "MARK", 1, 3, kol_mark_cmd},
    {"MNOP", {"MOV", "SIG"}, any, "MOVe SIGnal", 3, 5, kol_move_signal_cmd},
    {"MNOP", {"POP"}, any, "POP", 1, 1, kol_pop_cmd},
    {"MNOP", {"PER", "LIS"}, any, "PERiod LISt", 3, 4, kol_period_list_cmd},
    {"MNOP", {"PER", "TRA"}, any, "PERiod TRAce", 3, 3, kol_period_trace_cmd},
    {"MNOP", {"PROB"}, any, "PROBe", 2, 4, kol_probe_cmd},
    {"MNOP", {"PLO", "SHE"}, any, "PLOt SHEet", 2, 3, kol_plot_sheet_cmd},
    {"MNOP", {"PLO", "TRA"}, any, "PLOt TRAce", 2, 3, kol_plot_trace_cmd},
    {"QR", {"REGEN"}, any, "REGENerate", 1, 2, kol_regenerate_cmd},
    {"QR", {"READ"}, any, "READln", 3, 4, nullptr, readln},
    {"QR", {"RES", "SIM", "TIM"}, any, "RESet SIM TIMe", 3, 3, kol_reset_sim_time_cmd},
    {"QR", {"RES", "STA"}, any, "RESTore STAte", 3, 3, kol_restore_state_cmd},
    {"QR", {"RUN"}, any, "RUN", 1, 3, kol_run_cmd},
    {"QR", {"QUIT"}, whole, "QUIT", 1, 1, kol_quit_cmd},
    {"S", {"SAV", "STA"}, any, "SAVe STAte", 3, 3, kol_save_state_cmd},
    {"S", {"SCA", "TRA", "TIM"}, any, "SCAle TRAce TIMe", 4, 4, kol_scale_trace_time_cmd},
    {"S", {"SCA", "USE", "UNI"}, any, "SCAle USEr UNIt", 4, 4, kol_scale_user_unit_cmd},
    {"S", {"SEA"}, any, "SEArch", 1, 2, kol_search_cmd},
    {"S", {"SEL", "ARE"}, any, "SELect AREa", 2, 3, kol_select_area_cmd},
    {"S", {"SEL", "OBJ"}, any, "SELect OBJect", 2, 30, kol_select_object_cmd},
    {"S", {"SEL", "PIN"}, any, "SELect PIN", 2, 3, kol_select_pin_cmd},
    {"S", {"SEL", "PRO"}, any, "SELect PROperty", 3, 4, kol_select_prop_cmd},
    {"S", {"SHO", "FIL"}, any, "SHOw FILe", 2, 2, kol_showfile_cmd},
    {"S", {"SHO", "LIN"}, any, "SHOw LINk", 2, 2, kol_show_link_cmd},
    {"S", {"SMA"}, second_is_o, "SMAsh", 2, 2, kol_smash_cmd},
    {"S", {"SNA"}, second_is_o, "SNAp", 2, 2, kol_snap_cmd},
    {"S", {"SPI", "CHE"}, any, "SPIke CHEck", 3, 3, kol_spike_check_cmd},
    {"S", {"SPI", "MIN"}, any, "SPIke MIN", 3, 3, kol_spike_min_cmd},
    {"S", {"SPI", "MOD"}, any, "SPIke MODel", 3, 3, kol_spike_model_cmd},
    {"S", {"STA", "BRE"}, any, "STAtus BREak", 2, 3, kol_status_break_cmd},
    {"S", {"STA", "BUS"}, any, "STAtus BUS", 2, 3, kol_status_bus_cmd},
    {"S", {"STA", "KEY"}, any, "STAtus KEY", 2, 3, kol_status_key_cmd},
    {"S", {"STA", "NET"}, any, "STAtus NET", 2, 2, kol_status_net_cmd},
    {"S", {"STA", "OBJ"}, any, "STAtus OBJect", 2, 3, kol_status_object_cmd},
    {"S", {"STA", "PROP"}, any, "STAtus PROPerty", 2, 3, kol_status_prop_cmd},
    {"S", {"STA", "PROB"}, any, "STAtus PROBe", 2, 3, kol_status_probe_cmd},
    {"S", {"SWI", "LIS"}, any, "SWItche LISt", 3, 3, kol_switche_list_cmd},
    {"S", {"SYST"}, any, "SYSTem", 2, 2, kol_system_cmd},
    {"TU", {"TIM", "COE"}, any, "TIMing COEFicient", 4, 4, kol_timing_coeficient_cmd},
    {"TU", {"TIM", "IND"}, any, "TIMing INDex", 4, 30, kol_timing_index_cmd},
    {"TU", {"TRAC"}, any, "TRACe", 1, 30, kol_trace_cmd},
    {"TU", {"TRANS"}, second_is_o, "TRANScript", 2, 2, kol_transcript_cmd},
    {"TU", {"UPD"}, any, "UPDAte", 2, 2, kol_update_cmd},
    {"TU", {"UNS", "AL"}, any, "UNSelect ALl", 2, 2, kol_unselect_all_cmd},
    {"TU", {"UNS", "AR"}, any, "UNSelect ARea", 2, 3, kol_unselect_area_cmd},
    {"VWXYZ", {"VIE", "AL"}, any, "VIEw ALl", 2, 2, kol_view_all_cmd},
    {"VWXYZ", {"VIE", "AR"}, any, "VIEw ARea", 2, 2, kol_view_area_cmd},
    {"VWXYZ", {"VIE", "DOW"}, any, "VIEw DOWn", 2, 30, kol_view_down_cmd},
    {"VWXYZ", {"VIE", "SHE"}, any, "VIEw SHEet", 2, 4, kol_view_sheet_cmd},
    {"VWXYZ", {"VIE", "UP"}, any, "VIEw UP", 2, 30, kol_view_up_cmd},
    {"VWXYZ", {"VIE", "INS"}, any, "VIEw INStance", 3, 3, kol_view_instance_cmd},
    {"VWXYZ", {"VIE", "PIN"}, any, "VIEw PIN", 3, 3, kol_view_pin_cmd},
    {"VWXYZ", {"VIE", "NET"}, any, "VIEw NET", 3, 3, kol_view_net_cmd},
    {"VWXYZ", {"VIE", "TIM"}, any, "VIEw TIMe", 4, 4, kol_view_time_cmd},
    {"VWXYZ", {"VIE", "WIN"}, any, "VIEw WINdow", 3, 3, kol_view_window_cmd},
    {"VWXYZ", {"WRI", "LIS"}, any, "WRIte LISt", 2, 5, kol_write_list_cmd},
    {"$", {"$C"}, cursor_step, "$C", 1, 30, kol_cursor_step_cmd},
    {"$", {"$VPT"}, viewport_step, "$VPT", 1, 30, kol_viewport_step_cmd},
};
// clang-format on

// No prefix takes any word.
constexpr bool begins_with(std::string_view word, const char* prefix) {
    if (prefix == nullptr) return true;
    for (std::size_t i = 0; prefix[i] != '\0'; ++i)
        if (i >= word.size() || tm_upper_case(word[i]) != prefix[i]) return false;
    return true;
}

constexpr std::string_view view(const char* prefix) {
    return prefix != nullptr ? std::string_view(prefix) : std::string_view();
}

// Every prefix begins its canonical word, the first letter belongs to the group, and one handler serves it.
constexpr bool rows_are_sound() {
    for (const kol_command_row_t& row : command_table) {
        std::string_view words = row.canonical;
        for (const char* const prefix : row.prefix) {
            if (!begins_with(words, prefix)) return false;
            words.remove_prefix(std::min(words.find(' '), words.size() - 1) + 1);
        }
        if (row.group.find(row.prefix[0][0]) == std::string_view::npos) return false;
#ifndef __SANITIZE_ADDRESS__  // under which the address of a function is no constant
        if ((row.handler == nullptr) == (row.variable_handler == nullptr)) return false;
#endif
    }
    return true;
}
static_assert(rows_are_sound());

constexpr bool takes_all_of(const kol_command_row_t& row, const kol_command_row_t& later) {
    if (row.when != any) return false;
    for (std::size_t k = 0; k < row.prefix.size(); ++k)
        if (!begins_with(view(later.prefix[k]), row.prefix[k])) return false;
    return true;
}

// No row stands behind one that takes everything it could take.
constexpr bool rows_are_reachable() {
    for (const kol_command_row_t& later : command_table)
        for (const kol_command_row_t* row = command_table; row != &later; ++row)
            if (takes_all_of(*row, later)) return false;
    return true;
}
static_assert(rows_are_reachable());

constexpr bool is_direction(char c) {
    return std::string_view("ULDR").find(tm_upper_case(c)) != std::string_view::npos;
}

constexpr bool is_cursor_step(std::string_view word) {
    return word.size() == 4 && is_direction(word[2]) && (word[3] == '1' || word[3] == '4');
}

constexpr bool is_viewport_step(std::string_view word) {
    if (word.size() == 6) return is_direction(word[4]) && word[5] == '5';
    return word.size() == 7 && is_direction(word[4]) && (word[5] == '2' || word[5] == '8');
}

bool condition_holds(const kol_command_row_t& row, std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const std::string_view word = tm_view(keyword[0]);
    switch (row.when) {
        case any:
            return true;
        case whole:
            return word.size() == view(row.prefix[0]).size();
        case second_is_o:
            return nkeyword > 1 && tm_upper_case(keyword[1].char_[0]) == 'O';
        case two_keywords:
            return nkeyword == 2;
        case cursor_step:
            return is_cursor_step(word);
        case viewport_step:
            return is_viewport_step(word);
    }
    return false;
}

bool fits(const kol_command_row_t& row, std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const std::int16_t words = kol_command_words(row);
    if (nkeyword < words) return false;
    for (std::int16_t k = 1; k <= words; ++k)
        if (!begins_with(tm_view(kol_kw(keyword, k)), row.prefix[static_cast<std::size_t>(k - 1)]))
            return false;
    return condition_holds(row, nkeyword, keyword);
}

}  // namespace

std::span<const kol_command_row_t> kol_command_table() { return command_table; }

const kol_command_row_t* kol_find_command(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const char first = tm_upper_case(keyword[0].char_[0]);
    for (const kol_command_row_t& row : command_table)
        if (row.group.find(first) != std::string_view::npos && fits(row, nkeyword, keyword)) return &row;
    return nullptr;
}

std::int16_t kol_command_words(const kol_command_row_t& row) {
    std::int16_t words = 0;
    for (const char* const prefix : row.prefix)
        if (prefix != nullptr) ++words;
    return words;
}

std::string kol_help_topic(const kol_command_row_t& row) {
    std::string topic(row.canonical.substr(0, row.canonical.find(' ')));
    std::transform(topic.begin(), topic.end(), topic.begin(), tm_upper_case);
    return topic;
}

void kol_rejection_echo(const kol_command_row_t& row, std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    tm_string_record_t command = tm_string("# ");
    tm_append(row.canonical, command);
    tm_append(" ", command);
    kol_echo(tm_view(command), static_cast<std::int16_t>(kol_command_words(row) + 1), nkeyword, keyword);
}

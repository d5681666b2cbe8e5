// Every command of the program, one row each.
#include "commands/all_commands.h"

#include "commands/files/handlers.h"
#include "commands/language/handlers.h"
#include "commands/observation/handlers.h"
#include "commands/session/handlers.h"
#include "commands/sheets/handlers.h"
#include "commands/stimulus/handlers.h"
#include "commands/values/handlers.h"

namespace {

using enum kol_when;
using enum kol_manner;

// clang-format off
constexpr kol_command_row_t rows[] = {
    // group, prefixes, when, canonical words, keywords, handler, manner, expansion
    {"A", {"ASSI"}, any, "ASSIgn", 2, 3, kol_assign_cmd, keeps_variables},
    {"A", {"APP", "TAB"}, any, "APPly TABle", 3, 6, kol_apply_table_cmd},
    {"A", {"APP", "VCD"}, any, "APPly VCD", 3, 4, kol_apply_vcd_cmd},
    {"BD", {"BASE"}, any, "BASEpoint", 1, 4, kol_base_point_cmd, usual, {kol_add_base_point, " BASEpoint Edit "}},
    {"BD", {"BYE"}, whole, "BYE", 1, 1, kol_bye_cmd},
    {"BD", {"BREAK", "BUS"}, four_keywords, "BREAK BUS", 4, 4, kol_break_bus_cmd},
    {"BD", {"BREAK"}, whole, "BREAK", 3, 3, kol_break_cmd},
    {"BD", {"DEF", "BUS"}, any, "DEFine BUS", 5, 30, kol_define_bus_cmd},
    {"BD", {"DEF", "KEY"}, any, "DEFine KEY", 4, 4, kol_define_key_cmd},
    {"BD", {"DO"}, whole, "DO", 2, 30, kol_do_cmd, marked},
    {"BD", {"DOB"}, any, "DOBin", 2, 30, kol_dobin_cmd, marked},
    {"BD", {"DODIR"}, any, "DODIRectbin", 2, 30, kol_dodirbin_cmd, marked},
    {"BD", {"DISP"}, any, "DISplay", 2, 2, kol_display_cmd},
    {"BD", {"DUM"}, any, "DUMp", 2, 5, kol_dump_cmd},
    {"C", {"COM"}, any, "COMmand", 2, 2, kol_command_cmd, marked},
    {"C", {"CHA", "PRO", "SWI"}, any, "CHAnge PROperty SWItches", 4, 4, kol_change_prop_switches_cmd},
    {"C", {"CHE", "SHE"}, any, "CHEck SHEet", 2, 2, kol_check_sheet_cmd},
    {"C", {"CHE", "TAB"}, any, "CHEck TABle", 2, 6, kol_check_table_cmd},
    {"C", {"CLO", "PER"}, any, "CLOck PERiod", 3, 3, kol_clock_period_cmd, usual, {kol_add_clock_period}},
    {"C", {"CUR"}, any, "CURsor", 1, 3, kol_cursor_cmd},
    {"EFGH", {"GRID"}, second_is_o, "GRId", 2, 2, kol_grid_state_cmd, usual, {kol_add_grid_state, {}, "GRI"}},
    {"EFGH", {"GRID", "ST"}, any, "GRId STep", 3, 3, kol_grid_step_cmd, usual, {kol_add_grid_step, {}, "GRI"}},
    {"EFGH", {"HAR"}, any, "HARdcopy", 1, 2, kol_hardcopy_cmd},
    {"EFGH", {"HEL"}, any, "HELp", 1, 2, kol_help_cmd},
    {"EFGH", {"FORC", "BUS"}, second_is_whole, "FORCE BUS", 6, 8, kol_force_bus_cmd},
    {"EFGH", {"FORC"}, any, "FORCE", 5, 7, kol_force_cmd},
    {"EFGH", {"FORG"}, any, "FORGet", 2, 30, kol_forget_cmd},
    {"EFGH", {"HIST"}, any, "HISTory", 2, 3, kol_history_cmd},
    {"IKL", {"LIST", "OBJ"}, two_keywords, "LIST OBJects", 2, 2, tm_object_list},
    {"IKL", {"LIS"}, any, "LIST", 2, 30, kol_list_cmd},
    {"IKL", {"LOA", "MEM"}, any, "LOAd MEMory", 4, 4, kol_load_memory_cmd},
    {"MNOP", {"MARK", "RECT"}, whole, "MARK RECTangle", 2, 6, kol_mark_rectangle_cmd},
    {"MNOP", {"MARK"}, whole, "MARK", 1, 3, kol_mark_cmd},
    {"MNOP", {"MOV", "SIG"}, any, "MOVe SIGnal", 3, 5, kol_move_signal_cmd, marked},
    {"MNOP", {"POP"}, any, "POP", 1, 1, kol_pop_cmd},
    {"MNOP", {"PER", "LIS"}, any, "PERiod LISt", 3, 4, kol_period_list_cmd, usual, {kol_add_list_period}},
    {"MNOP", {"PER", "TRA"}, any, "PERiod TRAce", 3, 3, kol_period_trace_cmd, usual, {kol_add_trace_period}},
    {"MNOP", {"PROB"}, any, "PROBe", 2, 4, kol_probe_cmd},
    {"MNOP", {"PLO", "SHE"}, any, "PLOt SHEet", 2, 3, kol_plot_sheet_cmd},
    {"MNOP", {"PLO", "TRA"}, any, "PLOt TRAce", 2, 3, kol_plot_trace_cmd},
    {"QR", {"REGEN"}, any, "REGENerate", 1, 2, kol_regenerate_cmd},
    {"QR", {"READ"}, any, "READln", 3, 4, kol_readln_cmd, keeps_variables},
    {"QR", {"RES", "SIM", "TIM"}, any, "RESet SIM TIMe", 3, 3, kol_reset_sim_time_cmd},
    {"QR", {"RES", "SES"}, any, "RESTore SESsion", 3, 3, kol_restore_session_cmd},
    {"QR", {"RES", "STA"}, any, "RESTore STAte", 3, 3, kol_restore_state_cmd},
    {"QR", {"RUN"}, any, "RUN", 1, 3, kol_run_cmd},
    {"QR", {"QUIT"}, whole, "QUIT", 1, 1, kol_quit_cmd, silent},
    {"S", {"SAV", "SES"}, any, "SAVe SESsion", 3, 3, kol_save_session_cmd},
    {"S", {"SAV", "STA"}, any, "SAVe STAte", 3, 3, kol_save_state_cmd},
    {"S", {"SCA", "TRA", "TIM"}, any, "SCAle TRAce TIMe", 4, 4, kol_scale_trace_time_cmd, usual, {kol_add_trace_scale}},
    {"S", {"SCA", "USE", "UNI"}, any, "SCAle USEr UNIt", 4, 4, kol_scale_user_unit_cmd, usual, {kol_add_user_unit}},
    {"S", {"SEA"}, any, "SEArch", 1, 2, kol_search_cmd},
    {"S", {"SEL", "ARE"}, any, "SELect AREa", 2, 3, kol_select_area_cmd},
    {"S", {"SEL", "OBJ"}, any, "SELect OBJect", 2, 30, kol_select_object_cmd},
    {"S", {"SEL", "PIN"}, any, "SELect PIN", 2, 3, kol_select_pin_cmd},
    {"S", {"SEL", "PRO"}, any, "SELect PROperty", 3, 4, kol_select_prop_cmd},
    {"S", {"SHO", "FIL"}, any, "SHOw FILe", 2, 2, kol_showfile_cmd},
    {"S", {"SHO", "LIN"}, any, "SHOw LINk", 2, 2, kol_show_link_cmd},
    {"S", {"SMA"}, second_is_o, "SMAsh", 2, 2, kol_smash_cmd},
    {"S", {"SNA"}, second_is_o, "SNAp", 2, 2, kol_snap_cmd},
    {"S", {"SPI", "CHE"}, any, "SPIke CHEck", 3, 3, kol_spike_check_cmd, usual, {kol_add_spike_check}},
    {"S", {"SPI", "MIN"}, any, "SPIke MIN", 3, 3, kol_spike_min_cmd, usual, {kol_add_spike_min}},
    {"S", {"SPI", "MOD"}, any, "SPIke MODel", 3, 3, kol_spike_model_cmd, usual, {kol_add_spike_model}},
    {"S", {"STA", "BRE"}, any, "STAtus BREak", 2, 3, kol_status_break_cmd},
    {"S", {"STA", "BUS"}, any, "STAtus BUS", 2, 4, kol_status_bus_cmd},
    {"S", {"STA", "KEY"}, any, "STAtus KEY", 2, 3, kol_status_key_cmd},
    {"S", {"STA", "MEM"}, any, "STAtus MEMory", 3, 5, kol_status_memory_cmd},
    {"S", {"STA", "NET"}, any, "STAtus NET", 2, 2, kol_status_net_cmd},
    {"S", {"STA", "OBJ"}, any, "STAtus OBJect", 2, 3, kol_status_object_cmd},
    {"S", {"STA", "PROP"}, any, "STAtus PROPerty", 2, 3, kol_status_prop_cmd},
    {"S", {"STA", "PROB"}, any, "STAtus PROBe", 2, 3, kol_status_probe_cmd},
    {"S", {"SWI", "LIS"}, any, "SWItche LISt", 3, 3, kol_switche_list_cmd},
    {"S", {"SYST"}, any, "SYSTem", 2, 2, kol_system_cmd},
    {"TU", {"TIM", "COE"}, any, "TIMing COEFicient", 4, 4, kol_timing_coeficient_cmd, usual, {kol_add_coefficients, " TIMing COEfficient "}},
    {"TU", {"TIM", "IND"}, any, "TIMing INDex", 4, 30, kol_timing_index_cmd},
    {"TU", {"TRAC"}, any, "TRACe", 1, 30, kol_trace_cmd},
    {"TU", {"TRANS"}, second_is_o, "TRANScript", 2, 2, kol_transcript_cmd},
    {"TU", {"UPD"}, any, "UPDAte", 2, 2, kol_update_cmd},
    {"TU", {"UNS", "AL"}, any, "UNSelect ALl", 2, 2, kol_unselect_all_cmd},
    {"TU", {"UNS", "AR"}, any, "UNSelect ARea", 2, 3, kol_unselect_area_cmd},
    {"VWXYZ", {"VIE", "AL"}, any, "VIEw ALl", 2, 2, kol_view_all_cmd},
    {"VWXYZ", {"VIE", "AR"}, any, "VIEw ARea", 2, 2, kol_view_area_cmd},
    {"VWXYZ", {"VIE", "DOW"}, any, "VIEw DOWn", 2, 3, kol_view_down_cmd, quoted},
    {"VWXYZ", {"VIE", "SHE"}, any, "VIEw SHEet", 2, 4, kol_view_sheet_cmd},
    {"VWXYZ", {"VIE", "UP"}, any, "VIEw UP", 2, 2, kol_view_up_cmd, quoted},
    {"VWXYZ", {"VIE", "INS"}, any, "VIEw INStance", 3, 3, kol_view_instance_cmd},
    {"VWXYZ", {"VIE", "PIN"}, any, "VIEw PIN", 3, 3, kol_view_pin_cmd},
    {"VWXYZ", {"VIE", "NET"}, any, "VIEw NET", 2, 3, kol_view_net_cmd},
    {"VWXYZ", {"VIE", "TIM"}, any, "VIEw TIMe", 4, 4, kol_view_time_cmd},
    {"VWXYZ", {"VIE", "WIN"}, any, "VIEw WINdow", 3, 3, kol_view_window_cmd},
    {"VWXYZ", {"WRI", "LIS"}, any, "WRIte LISt", 2, 5, kol_write_list_cmd},
    {"VWXYZ", {"WRI", "VCD"}, any, "WRIte VCD", 2, 6, kol_write_vcd_cmd},
    {"VWXYZ", {"WRI", "CSV"}, any, "WRIte CSV", 2, 5, kol_write_csv_cmd},
    {"VWXYZ", {"ZOO"}, any, "ZOOm", 2, 3, kol_zoom_cmd},
    {"$", {"$C"}, cursor_step, "$C", 1, 30, kol_cursor_step_cmd, silent},
    {"$", {"$VPT"}, viewport_step, "$VPT", 1, 30, kol_viewport_step_cmd, silent},
};
// clang-format on

static_assert(kol_rows_are_sound(rows));
static_assert(kol_rows_are_reachable(rows));

}  // namespace

kol_command_rows_t kol_all_commands() { return rows; }

// kol: the command handlers, grouped by the file that defines them.  Each gets the number of keywords and the
// keyword array; it checks, acts and echoes as command.h says.
#pragma once

#include "commands/command.h"

// Interpreter level.
void kol_bye_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_quit_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_do_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_dobin_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_dodirbin_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_command_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_display_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_transcript_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_help_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_define_key_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_system_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_readln_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword, kol_array_param_t& var_father);
// False: the rest of the line is given up.
bool kol_assign_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword, kol_array_param_t& var_father);
void kol_status_key_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
// The built-in steps that the arrow keys are bound to.
void kol_cursor_step_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_viewport_step_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// stimulus: what drives the circuit and advances its time.
void kol_force_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_clock_period_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_run_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// restart: simulation from time 0 again.
void kol_reset_sim_time_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_history_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_regenerate_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_update_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// breaks: states that stop a run.
void kol_break_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_status_break_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// forget: whatever the user named.
void kol_forget_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// observation and move_signal: signals on the views.
void kol_list_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_trace_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_move_signal_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// view_settings: how the views show them.
void kol_period_list_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_period_trace_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_scale_trace_time_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_scale_user_unit_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_switche_list_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// view_results: which page is shown, which view on the Results page, and from which time.
void kol_pop_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_view_all_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_view_time_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_view_window_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_view_area_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// marks: areas of a page.
void kol_mark_rectangle_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// plot: pictures in files and on paper.
void kol_hardcopy_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_plot_trace_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// hierarchy, view_sheet and view_context: which sheet the Context page shows, and which part of it.
void kol_view_down_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_view_up_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_view_sheet_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_view_instance_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_view_net_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_view_pin_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// sheet_settings: points, grid and switches.
void kol_mark_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_base_point_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_grid_state_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_grid_step_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_snap_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_smash_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// selection, search and property_switches.
void kol_select_area_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_select_object_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_select_pin_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_select_prop_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_unselect_all_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_unselect_area_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_search_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_change_prop_switches_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// sheet_status, check_sheet and plot_sheet: what there is on a sheet.
void kol_status_object_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_status_prop_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void tm_object_list(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_showfile_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_show_link_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_check_sheet_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_plot_sheet_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// user_bus and bus_status: buses of the user.
void kol_define_bus_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_status_bus_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// probes and status_net: nets of the sheets.
void kol_probe_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_status_probe_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_status_net_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// settings and timing: spikes, delays and limits.
void kol_spike_check_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_spike_min_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_spike_model_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_timing_coeficient_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_timing_index_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// files and state_file: the list file, the states of the whole design.
void kol_write_list_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_save_state_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);
void kol_restore_state_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword);

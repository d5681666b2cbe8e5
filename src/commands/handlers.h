// kol: the command handlers, grouped by the file that defines them.  Each checks and acts as
// command.h says.  kol_add_... put a command's current values behind its words in the command entry.
#pragma once

#include "commands/command.h"

// Interpreter level.
kol_result_t kol_bye_cmd(const kol_line_t& line);
kol_result_t kol_quit_cmd(const kol_line_t& line);
kol_result_t kol_do_cmd(const kol_line_t& line);
kol_result_t kol_dobin_cmd(const kol_line_t& line);
kol_result_t kol_dodirbin_cmd(const kol_line_t& line);
kol_result_t kol_command_cmd(const kol_line_t& line);
kol_result_t kol_display_cmd(const kol_line_t& line);
kol_result_t kol_transcript_cmd(const kol_line_t& line);
kol_result_t kol_help_cmd(const kol_line_t& line);
kol_result_t kol_define_key_cmd(const kol_line_t& line);
kol_result_t kol_system_cmd(const kol_line_t& line);
kol_result_t kol_readln_cmd(const kol_line_t& line);
kol_result_t kol_assign_cmd(const kol_line_t& line);
kol_result_t kol_status_key_cmd(const kol_line_t& line);
// The built-in steps that the arrow keys are bound to.
kol_result_t kol_cursor_step_cmd(const kol_line_t& line);
kol_result_t kol_viewport_step_cmd(const kol_line_t& line);

// stimulus: what drives the circuit and advances its time.
kol_result_t kol_force_cmd(const kol_line_t& line);
kol_result_t kol_clock_period_cmd(const kol_line_t& line);
kol_result_t kol_run_cmd(const kol_line_t& line);
void kol_add_clock_period(tm_string_record_t& entry);

// restart: simulation from time 0 again.
kol_result_t kol_reset_sim_time_cmd(const kol_line_t& line);
kol_result_t kol_history_cmd(const kol_line_t& line);
kol_result_t kol_regenerate_cmd(const kol_line_t& line);
kol_result_t kol_update_cmd(const kol_line_t& line);

// breaks: states that stop a run.
kol_result_t kol_break_cmd(const kol_line_t& line);
kol_result_t kol_status_break_cmd(const kol_line_t& line);

// forget: whatever the user named.
kol_result_t kol_forget_cmd(const kol_line_t& line);

// observation and move_signal: signals on the views.
kol_result_t kol_list_cmd(const kol_line_t& line);
kol_result_t kol_trace_cmd(const kol_line_t& line);
kol_result_t kol_move_signal_cmd(const kol_line_t& line);

// view_settings: how the views show them.
kol_result_t kol_period_list_cmd(const kol_line_t& line);
kol_result_t kol_period_trace_cmd(const kol_line_t& line);
kol_result_t kol_scale_trace_time_cmd(const kol_line_t& line);
kol_result_t kol_scale_user_unit_cmd(const kol_line_t& line);
kol_result_t kol_switche_list_cmd(const kol_line_t& line);
void kol_add_list_period(tm_string_record_t& entry);
void kol_add_trace_period(tm_string_record_t& entry);
void kol_add_trace_scale(tm_string_record_t& entry);
void kol_add_user_unit(tm_string_record_t& entry);

// view_results: which page is shown, which view on the Results page, and from which time.
kol_result_t kol_pop_cmd(const kol_line_t& line);
kol_result_t kol_view_all_cmd(const kol_line_t& line);
kol_result_t kol_view_time_cmd(const kol_line_t& line);
kol_result_t kol_view_window_cmd(const kol_line_t& line);
kol_result_t kol_view_area_cmd(const kol_line_t& line);

// marks: areas of a page.
kol_result_t kol_mark_rectangle_cmd(const kol_line_t& line);

// plot: pictures in files and on paper.
kol_result_t kol_hardcopy_cmd(const kol_line_t& line);
kol_result_t kol_plot_trace_cmd(const kol_line_t& line);

// hierarchy, view_sheet and view_context: which sheet the Context page shows, and which part of it.
kol_result_t kol_view_down_cmd(const kol_line_t& line);
kol_result_t kol_view_up_cmd(const kol_line_t& line);
kol_result_t kol_view_sheet_cmd(const kol_line_t& line);
kol_result_t kol_view_instance_cmd(const kol_line_t& line);
kol_result_t kol_view_net_cmd(const kol_line_t& line);
kol_result_t kol_view_pin_cmd(const kol_line_t& line);

// sheet_settings: points, grid and switches.
kol_result_t kol_mark_cmd(const kol_line_t& line);
kol_result_t kol_base_point_cmd(const kol_line_t& line);
kol_result_t kol_grid_state_cmd(const kol_line_t& line);
kol_result_t kol_grid_step_cmd(const kol_line_t& line);
kol_result_t kol_snap_cmd(const kol_line_t& line);
kol_result_t kol_smash_cmd(const kol_line_t& line);
void kol_add_base_point(tm_string_record_t& entry);
void kol_add_grid_state(tm_string_record_t& entry);
void kol_add_grid_step(tm_string_record_t& entry);

// selection, search and property_switches.
kol_result_t kol_select_area_cmd(const kol_line_t& line);
kol_result_t kol_select_object_cmd(const kol_line_t& line);
kol_result_t kol_select_pin_cmd(const kol_line_t& line);
kol_result_t kol_select_prop_cmd(const kol_line_t& line);
kol_result_t kol_unselect_all_cmd(const kol_line_t& line);
kol_result_t kol_unselect_area_cmd(const kol_line_t& line);
kol_result_t kol_search_cmd(const kol_line_t& line);
kol_result_t kol_change_prop_switches_cmd(const kol_line_t& line);

// sheet_status, check_sheet and plot_sheet: what there is on a sheet.
kol_result_t kol_status_object_cmd(const kol_line_t& line);
kol_result_t kol_status_prop_cmd(const kol_line_t& line);
kol_result_t tm_object_list(const kol_line_t& line);
kol_result_t kol_showfile_cmd(const kol_line_t& line);
kol_result_t kol_show_link_cmd(const kol_line_t& line);
kol_result_t kol_check_sheet_cmd(const kol_line_t& line);
kol_result_t kol_plot_sheet_cmd(const kol_line_t& line);

// user_bus and bus_status: buses of the user.
kol_result_t kol_define_bus_cmd(const kol_line_t& line);
kol_result_t kol_status_bus_cmd(const kol_line_t& line);

// probes and status_net: nets of the sheets.
kol_result_t kol_probe_cmd(const kol_line_t& line);
kol_result_t kol_status_probe_cmd(const kol_line_t& line);
kol_result_t kol_status_net_cmd(const kol_line_t& line);

// settings and timing: spikes, delays and limits.
kol_result_t kol_spike_check_cmd(const kol_line_t& line);
kol_result_t kol_spike_min_cmd(const kol_line_t& line);
kol_result_t kol_spike_model_cmd(const kol_line_t& line);
kol_result_t kol_timing_coeficient_cmd(const kol_line_t& line);
kol_result_t kol_timing_index_cmd(const kol_line_t& line);
void kol_add_spike_check(tm_string_record_t& entry);
void kol_add_spike_min(tm_string_record_t& entry);
void kol_add_spike_model(tm_string_record_t& entry);
void kol_add_coefficients(tm_string_record_t& entry);

// files and state_file: the list file, the states of the whole design.
kol_result_t kol_write_list_cmd(const kol_line_t& line);
kol_result_t kol_save_state_cmd(const kol_line_t& line);
kol_result_t kol_restore_state_cmd(const kol_line_t& line);

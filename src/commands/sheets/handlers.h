// kol: the handlers of the sheets, file by file; each checks and acts as command.h says.  kol_add_...
// puts the current values of a command behind its words in the command entry.
#pragma once

#include "commands/language/command.h"

// check_sheet.cc
kol_result_t kol_check_sheet_cmd(const kol_line_t& line);

// hierarchy.cc
kol_result_t kol_view_down_cmd(const kol_line_t& line);
kol_result_t kol_view_up_cmd(const kol_line_t& line);

// property_switches.cc
kol_result_t kol_change_prop_switches_cmd(const kol_line_t& line);

// search.cc
kol_result_t kol_search_cmd(const kol_line_t& line);

// selection.cc
kol_result_t kol_select_area_cmd(const kol_line_t& line);
kol_result_t kol_unselect_area_cmd(const kol_line_t& line);
kol_result_t kol_select_object_cmd(const kol_line_t& line);
kol_result_t kol_select_pin_cmd(const kol_line_t& line);
kol_result_t kol_select_prop_cmd(const kol_line_t& line);
kol_result_t kol_unselect_all_cmd(const kol_line_t& line);

// sheet_settings.cc
kol_result_t kol_base_point_cmd(const kol_line_t& line);
kol_result_t kol_grid_state_cmd(const kol_line_t& line);
kol_result_t kol_grid_step_cmd(const kol_line_t& line);
kol_result_t kol_snap_cmd(const kol_line_t& line);
kol_result_t kol_smash_cmd(const kol_line_t& line);
void kol_add_base_point(tm_string_record_t& entry);
void kol_add_grid_step(tm_string_record_t& entry);
void kol_add_grid_state(tm_string_record_t& entry);

// sheet_status.cc
kol_result_t kol_status_object_cmd(const kol_line_t& line);
kol_result_t kol_status_prop_cmd(const kol_line_t& line);
kol_result_t tm_object_list(const kol_line_t& line);
kol_result_t kol_showfile_cmd(const kol_line_t& line);
kol_result_t kol_show_link_cmd(const kol_line_t& line);

// status_net.cc
kol_result_t kol_status_net_cmd(const kol_line_t& line);

// view_found.cc
kol_result_t kol_view_instance_cmd(const kol_line_t& line);
kol_result_t kol_view_net_cmd(const kol_line_t& line);
kol_result_t kol_view_pin_cmd(const kol_line_t& line);

// view_sheet.cc
kol_result_t kol_view_sheet_cmd(const kol_line_t& line);

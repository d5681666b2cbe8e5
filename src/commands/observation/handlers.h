// kol: the handlers of observation, file by file; each checks and acts as command.h says.  kol_add_...
// puts the current values of a command behind its words in the command entry.
#pragma once

#include "commands/language/command.h"

// breaks.cc
kol_result_t kol_break_cmd(const kol_line_t& line);
kol_result_t kol_status_break_cmd(const kol_line_t& line);

// bus_breaks.cc
kol_result_t kol_break_bus_cmd(const kol_line_t& line);

// define_bus.cc
kol_result_t kol_define_bus_cmd(const kol_line_t& line);

// forget.cc
kol_result_t kol_forget_cmd(const kol_line_t& line);

// list_and_trace.cc
kol_result_t kol_list_cmd(const kol_line_t& line);
kol_result_t kol_trace_cmd(const kol_line_t& line);

// move_signal.cc
kol_result_t kol_move_signal_cmd(const kol_line_t& line);

// probes.cc
kol_result_t kol_probe_cmd(const kol_line_t& line);
kol_result_t kol_status_probe_cmd(const kol_line_t& line);

// status_bus.cc
kol_result_t kol_status_bus_cmd(const kol_line_t& line);

// view_settings.cc
kol_result_t kol_period_list_cmd(const kol_line_t& line);
kol_result_t kol_period_trace_cmd(const kol_line_t& line);
kol_result_t kol_scale_trace_time_cmd(const kol_line_t& line);
kol_result_t kol_scale_user_unit_cmd(const kol_line_t& line);
kol_result_t kol_switche_list_cmd(const kol_line_t& line);
void kol_add_list_period(tm_string_record_t& entry);
void kol_add_trace_period(tm_string_record_t& entry);
void kol_add_trace_scale(tm_string_record_t& entry);
void kol_add_user_unit(tm_string_record_t& entry);

// kol: the handlers of stimulus and run control, file by file; each checks and acts as command.h says.
// kol_add_... puts the current values of a command behind its words in the command entry.
#pragma once

#include "commands/language/command.h"

// force.cc
kol_result_t kol_force_cmd(const kol_line_t& line);
kol_result_t kol_clock_period_cmd(const kol_line_t& line);
void kol_add_clock_period(tm_string_record_t& entry);

// force_bus.cc
kol_result_t kol_force_bus_cmd(const kol_line_t& line);

// memory.cc
kol_result_t kol_status_memory_cmd(const kol_line_t& line);
kol_result_t kol_load_memory_cmd(const kol_line_t& line);

// restart.cc
kol_result_t kol_reset_sim_time_cmd(const kol_line_t& line);
kol_result_t kol_history_cmd(const kol_line_t& line);
kol_result_t kol_regenerate_cmd(const kol_line_t& line);
kol_result_t kol_update_cmd(const kol_line_t& line);

// run.cc
kol_result_t kol_run_cmd(const kol_line_t& line);

// spike.cc
kol_result_t kol_spike_check_cmd(const kol_line_t& line);
kol_result_t kol_spike_min_cmd(const kol_line_t& line);
kol_result_t kol_spike_model_cmd(const kol_line_t& line);
void kol_add_spike_check(tm_string_record_t& entry);
void kol_add_spike_min(tm_string_record_t& entry);
void kol_add_spike_model(tm_string_record_t& entry);

// timing.cc
kol_result_t kol_timing_coeficient_cmd(const kol_line_t& line);
kol_result_t kol_timing_index_cmd(const kol_line_t& line);
void kol_add_coefficients(tm_string_record_t& entry);

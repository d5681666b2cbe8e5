// kol: the handlers of files, file by file; each checks and acts as command.h says.
#pragma once

#include "commands/language/command.h"

inline constexpr kol_rejection_t kol_cannot_open{" !! impossible to open : ", kol_form::wide};

// dump.cc
kol_result_t kol_dump_cmd(const kol_line_t& line);

// plot.cc
kol_result_t kol_plot_trace_cmd(const kol_line_t& line);
kol_result_t kol_hardcopy_cmd(const kol_line_t& line);
kol_result_t kol_plot_sheet_cmd(const kol_line_t& line);

// state_file.cc
kol_result_t kol_save_state_cmd(const kol_line_t& line);
kol_result_t kol_restore_state_cmd(const kol_line_t& line);

// write_values.cc
kol_result_t kol_write_list_cmd(const kol_line_t& line);
kol_result_t kol_write_vcd_cmd(const kol_line_t& line);
kol_result_t kol_write_csv_cmd(const kol_line_t& line);

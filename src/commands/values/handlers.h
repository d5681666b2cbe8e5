// kol: the handlers of values from files, file by file; each checks and acts as command.h says.
#pragma once

#include "commands/language/command.h"

inline constexpr std::size_t kol_value_file_max = std::size_t{1} << 32;  // bytes

// apply.cc
kol_result_t kol_apply_table_cmd(const kol_line_t& line);
kol_result_t kol_apply_vcd_cmd(const kol_line_t& line);

// check_table.cc
kol_result_t kol_check_table_cmd(const kol_line_t& line);

// session_file.cc
kol_result_t kol_save_session_cmd(const kol_line_t& line);
kol_result_t kol_restore_session_cmd(const kol_line_t& line);

// kol: the handlers of the language itself, file by file; each checks and acts as command.h says.
#pragma once

#include "commands/language/command.h"

// bindings.cc
kol_result_t kol_define_key_cmd(const kol_line_t& line);
kol_result_t kol_status_key_cmd(const kol_line_t& line);

// command_file.cc
kol_result_t kol_do_cmd(const kol_line_t& line);

// escape.cc
kol_result_t kol_system_cmd(const kol_line_t& line);

// procedures.cc
kol_result_t kol_dobin_cmd(const kol_line_t& line);
kol_result_t kol_dodirbin_cmd(const kol_line_t& line);

// variables.cc
kol_result_t kol_assign_cmd(const kol_line_t& line);
kol_result_t kol_readln_cmd(const kol_line_t& line);

// x: procedures by name.  Owns the registry of procedures that DOBIN and DODIRECTBIN call with a count of
// arguments and 30 texts; a name registered again has the later procedure.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "foundation/strings.h"

using x_arg_array = std::array<tm_string_record_t, 30>;
using x_arg_procedure = void (*)(std::int16_t* count, x_arg_array& args);
using x_procedure = void (*)();
void x_register_procedure(std::string_view name, x_arg_procedure proc);
// The procedure of that exact name, null when there is none.  The file is the program's own path.
x_arg_procedure xm_get_extid_offset(const char* file, const char* name);
void xprocexe(x_procedure proc);
void xprocargexe(x_arg_procedure proc, std::int16_t count, x_arg_array& args);

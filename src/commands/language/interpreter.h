// kol: the command interpreter.  Every line of input ends in kol_process_command: it cleans the line, splits
// it into at most 30 commands, substitutes parameters and variables, splits each command into keywords and
// dispatches it over the command table.  Errors are shown; nothing is returned.
#pragma once

#include "commands/language/command.h"

// arg_father and var_father are the values of $ARG1..$ARG30 and $VAR1..$VAR30 in the line; ASSIGN and READLN
// change var_father.  Behind BYE and QUIT nothing of the line is executed.
void kol_process_command(const tm_string_record_t& line, kol_array_param_t& arg_father,
                         kol_array_param_t& var_father);
// The initial command file, as a line "DO name parameter ..." runs it; but the name is opened as it is,
// whatever characters it has.
void kol_process_command_file(const tm_string_record_t& name, std::int16_t parameters,
                              kol_array_param_t& arg_father, kol_array_param_t& var_father);
// The '!' escape: runs a program and interprets what it prints, with parameters and variables of its own.
void kol_exec_cmd(const char* text);

// Shown when a line that is read as a command has no end, or is longer than a command line can be.
inline constexpr std::string_view kol_line_has_no_end = "# !!! Error : line without end ";
inline constexpr std::string_view kol_line_is_cut = "# !! Warning : line longer than 198 characters is cut ";

// kol: the command interpreter.  Every line of input ends in kol_process_command: it cleans and splits the
// line, substitutes parameters and variables, splits commands into keywords and dispatches them over the
// command table. Errors are shown and counted; nothing is returned.
#pragma once

#include "commands/command.h"

void kol_process_command(const tm_string_record_t& line, kol_array_param_t& arg_father,
                         kol_array_param_t& var_father);
// The '!' escape: runs a program and interprets what it prints.
void kol_exec_cmd(const char* text);
// Command expansion of the command entry ("?").
void kol_expand_cmd(const tm_string_record_t& text);
// The start values of all simulation parameters.
void kol_initparam_before();

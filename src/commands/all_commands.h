// kol: every command of the program, in the order in which rows are tried.
#pragma once

#include "commands/language/command_table.h"

kol_command_rows_t kol_all_commands();

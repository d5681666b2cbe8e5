// kol: the file of a table, as two commands name it: file [Period time [first_time]] from keyword 3 on.
#pragma once

#include "commands/language/command.h"
#include "commands/values/value_table.h"

kol_result_t kol_read_table_file(const kol_line_t& line, kol_table_t& table);

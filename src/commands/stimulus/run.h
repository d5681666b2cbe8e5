// kol: the line that says which times are simulated.
#pragma once

#include <string>

#include "commands/language/command.h"

// "#  RUN -> time_start: 0.0 ->time_end: 10.000", with the words of the command.
std::string kol_window_text(const kol_line_t& line, std::int32_t start_time);

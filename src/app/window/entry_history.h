// tm: the history of the command entry.  Owns the lines that were sent from the entry, the newest
// entry_kept_lines of them; Up and Down in the entry go through them.  A line that is being typed is kept
// below the newest.
#pragma once

#include <cstddef>
#include <string>

inline constexpr std::size_t entry_kept_lines = 500;

void history_add(const std::string& line);
// One line back (-1) or forth (+1) from the text that stands in the entry; false at either end.
bool history_step(int way, const std::string& now, std::string& line);

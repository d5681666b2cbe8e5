// kol: completion of what is being typed.  The last word of a line is completed to what all its choices have
// in common: command words from the command table, behind them the names of the design, of user buses and of
// probes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

inline constexpr std::size_t kol_most_choices = 200;

struct kol_completion_t {
    std::string text;                  // the line with its last word completed
    std::vector<std::string> choices;  // what the word may become
};
kol_completion_t kol_complete(std::string_view line);

// kol: the command table.  One row per command: where it is tried, what selects it, how it is spelled, how
// many keywords it takes, who serves it.  Dispatch, rejection echoes, keyword counts and the help topics come
// from it.  Rows are tried in order within the group of keyword 1's first letter; the first that fits wins.
#pragma once

#include <span>
#include <string>

#include "commands/command.h"

enum class kol_when : std::uint8_t {
    any,            // the prefixes alone select the row
    whole,          // keyword 1 is the first prefix, complete and no longer
    second_is_o,    // keyword 2 begins with 'o': ON or OFF follow in the handler
    two_keywords,   // exactly 2 keywords
    cursor_step,    // "$C", a direction, 1 or 4
    viewport_step,  // "$VPT", a direction, 5, 20 or 80
};

// A handler that reads or sets the variables of its caller; false gives up the rest of the line.
using kol_variable_handler_t = bool (*)(std::int16_t nkeyword, kol_array_keyword_t& keyword,
                                        kol_array_param_t& var_father);

struct kol_command_row_t {
    std::string_view group;             // first letters of keyword 1
    std::array<const char*, 3> prefix;  // of keywords 1..3, in capitals; null: none
    kol_when when;
    std::string_view canonical;                       // the command words, capitals for the shortest form
    std::int16_t least = 1, most = kol_max_keywords;  // keywords, the command words included
    kol_handler_t handler = nullptr;
    kol_variable_handler_t variable_handler = nullptr;  // one of the two
};

std::span<const kol_command_row_t> kol_command_table();

// The row that the keywords select; null: an unknown command.
const kol_command_row_t* kol_find_command(std::int16_t nkeyword, kol_array_keyword_t& keyword);
// The number of command words in front of a row's parameters.
std::int16_t kol_command_words(const kol_command_row_t& row);
// The name of the row's help text: the first command word in capitals.
std::string kol_help_topic(const kol_command_row_t& row);
// "# ", the canonical words, then the keywords behind them.
void kol_rejection_echo(const kol_command_row_t& row, std::int16_t nkeyword, kol_array_keyword_t& keyword);

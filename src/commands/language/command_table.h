// kol: the command table.  One row per command; dispatch, echoes, keyword counts, expansion and the help
// topics come from it.  Rows are tried in order within the group of keyword 1's first letter; the first that
// fits wins.  The rows are announced from above, once, before the first command.
#pragma once

#include <algorithm>
#include <span>

#include "commands/language/command.h"

using kol_command_rows_t = std::span<const kol_command_row_t>;

void kol_use_commands(kol_command_rows_t rows);
kol_command_rows_t kol_command_table();

// The row that the keywords select; null: an unknown command.
const kol_command_row_t* kol_find_command(const kol_keywords_t& keywords);
// Whether the command that begins with this word takes the names of variables.
bool kol_keeps_variables(const tm_string_record_t& word);

// Whether the word begins with the prefix; no prefix takes any word.
constexpr bool kol_begins_with(std::string_view word, const char* prefix) {
    if (prefix == nullptr) return true;
    for (std::size_t i = 0; prefix[i] != '\0'; ++i)
        if (i >= word.size() || tm_upper_case(word[i]) != prefix[i]) return false;
    return true;
}

// Every prefix begins its canonical word, the first letter belongs to the group, and a handler serves the
// row.
constexpr bool kol_rows_are_sound(kol_command_rows_t rows) {
    for (const kol_command_row_t& row : rows) {
        std::string_view words = row.canonical;
        for (const char* const prefix : row.prefix) {
            if (!kol_begins_with(words, prefix)) return false;
            words.remove_prefix(std::min(words.find(' '), words.size() - 1) + 1);
        }
        if (row.group.find(row.prefix[0][0]) == std::string_view::npos) return false;
#ifndef __SANITIZE_ADDRESS__  // under which the address of a function is no constant
        if (row.handler == nullptr) return false;
#endif
    }
    return true;
}

constexpr bool kol_takes_all_of(const kol_command_row_t& row, const kol_command_row_t& later) {
    if (row.when != kol_when::any) return false;
    for (std::size_t k = 0; k < row.prefix.size(); ++k) {
        const char* const word = later.prefix[k];
        if (!kol_begins_with(word != nullptr ? std::string_view(word) : "", row.prefix[k])) return false;
    }
    return true;
}

// No row stands behind one that takes everything it could take.
constexpr bool kol_rows_are_reachable(kol_command_rows_t rows) {
    for (std::size_t later = 0; later < rows.size(); ++later)
        for (std::size_t row = 0; row < later; ++row)
            if (kol_takes_all_of(rows[row], rows[later])) return false;
    return true;
}

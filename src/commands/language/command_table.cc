// The rows in use, and which of them a command selects.
#include "commands/language/command_table.h"

namespace {

kol_command_rows_t rows_in_use;

constexpr bool is_direction(char c) {
    return std::string_view("ULDR").find(tm_upper_case(c)) != std::string_view::npos;
}

constexpr bool is_cursor_step(std::string_view word) {
    return word.size() == 4 && is_direction(word[2]) && (word[3] == '1' || word[3] == '4');
}

constexpr bool is_viewport_step(std::string_view word) {
    if (word.size() == 6) return is_direction(word[4]) && word[5] == '5';
    return word.size() == 7 && is_direction(word[4]) && (word[5] == '2' || word[5] == '8');
}

bool condition_holds(const kol_command_row_t& row, const kol_keywords_t& keywords) {
    const std::string_view word = tm_view(keywords[1]);
    const auto is_whole = [](const tm_string_record_t& keyword, std::string_view prefix) {
        return tm_view(keyword).size() == prefix.size();
    };
    switch (row.when) {
        case kol_when::any:
            return true;
        case kol_when::whole:
            return is_whole(keywords[1], row.prefix[0]);
        case kol_when::second_is_o:
            return keywords.nkeyword > 1 && tm_upper_case(keywords[2].char_[0]) == 'O';
        case kol_when::two_keywords:
            return keywords.nkeyword == 2;
        case kol_when::four_keywords:
            return keywords.nkeyword == 4 && is_whole(keywords[1], row.prefix[0]);
        case kol_when::second_is_whole:
            return is_whole(keywords[2], row.prefix[1]);
        case kol_when::cursor_step:
            return is_cursor_step(word);
        case kol_when::viewport_step:
            return is_viewport_step(word);
    }
    return false;
}

bool fits(const kol_command_row_t& row, const kol_keywords_t& keywords) {
    const std::int16_t words = kol_command_words(row);
    if (keywords.nkeyword < words) return false;
    for (std::int16_t k = 1; k <= words; ++k)
        if (!kol_begins_with(tm_view(keywords[k]), row.prefix[static_cast<std::size_t>(k - 1)])) return false;
    return condition_holds(row, keywords);
}

}  // namespace

void kol_use_commands(kol_command_rows_t rows) { rows_in_use = rows; }

kol_command_rows_t kol_command_table() { return rows_in_use; }

const kol_command_row_t* kol_find_command(const kol_keywords_t& keywords) {
    const char first = tm_upper_case(keywords[1].char_[0]);
    for (const kol_command_row_t& row : rows_in_use)
        if (row.group.find(first) != std::string_view::npos && fits(row, keywords)) return &row;
    return nullptr;
}

bool kol_keeps_variables(const tm_string_record_t& word) {
    return std::ranges::any_of(rows_in_use, [&](const kol_command_row_t& row) {
        return row.manner == kol_manner::keeps_variables && kol_begins_with(tm_view(word), row.prefix[0]);
    });
}

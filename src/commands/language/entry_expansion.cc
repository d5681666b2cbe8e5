// Command expansion: the entry becomes the command with its current values, ready to be edited.
#include "commands/language/entry_expansion.h"

#include "commands/language/command_line.h"
#include "commands/language/command_table.h"
#include "foundation/numbers.h"
#include "foundation/shell.h"
#include "kernel/time.h"

namespace {

constexpr std::string_view not_set = "*** ";

// Where ON or OFF follow, nothing may stand behind the words.
bool fits(const kol_command_row_t& row, const kol_keywords_t& keywords) {
    const std::int16_t words = kol_command_words(row);
    if (row.expansion.add_values == nullptr || keywords.nkeyword < words) return false;
    if (row.when == kol_when::second_is_o && keywords.nkeyword != words) return false;
    for (std::int16_t k = 1; k <= words; ++k) {
        const char* prefix = row.prefix[static_cast<std::size_t>(k - 1)];
        if (k == 1 && row.expansion.first_word != nullptr) prefix = row.expansion.first_word;
        if (!kol_begins_with(tm_view(keywords[k]), prefix)) return false;
    }
    return true;
}

// The keywords of the entry before a comment; the '?' that asks for the expansion is none of them.
kol_keywords_t entry_keywords(const tm_string_record_t& text) {
    std::string_view asked = tm_view(text);
    if (asked.ends_with('?')) asked.remove_suffix(1);
    kol_keywords_t keywords = kol_split_keywords(tm_string(asked));
    std::int16_t before = 0;
    while (before < keywords.nkeyword && keywords[static_cast<std::int16_t>(before + 1)].char_[0] != '#')
        ++before;
    keywords.nkeyword = before;
    return keywords;
}

}  // namespace

void kol_add_text(std::string_view value, tm_string_record_t& entry) {
    tm_append(value, entry);
    tm_append(" ", entry);
}

void kol_add_real(std::int32_t value, tm_string_record_t& entry) {
    tm_string_record_t text;
    tm_real_to_string(value, text);
    kol_add_text(tm_view(text), entry);
}

void kol_add_time(std::int32_t time, tm_string_record_t& entry) {
    if (time < 0) return tm_append(not_set, entry);
    tm_string_record_t text;
    kol_time_to_string(time, text);
    kol_add_text(tm_view(text), entry);
}

void kol_add_factor(float factor, tm_string_record_t& entry) {
    if (factor < 0) return tm_append(not_set, entry);
    tm_string_record_t text;
    tm_shortreal_to_string(factor, text);
    kol_add_text(tm_view(text), entry);
}

void kol_expand_cmd(const tm_string_record_t& text) {
    const kol_keywords_t keywords = entry_keywords(text);
    for (const kol_command_row_t& row : kol_command_table()) {
        if (!fits(row, keywords)) continue;
        const std::string canonical = " " + std::string(row.canonical) + " ";
        tm_string_record_t entry = tm_string(row.expansion.words.empty() ? canonical : row.expansion.words);
        row.expansion.add_values(entry);
        return tm_display_cmd(entry);
    }
    tm_display("#  !! Unknown Command or not implemented for expand  ?? ");
    kol_show({"# cmd :  \"", tm_view(text)});
}

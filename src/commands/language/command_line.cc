// Lines into commands, commands into keywords.
#include "commands/language/command_line.h"

namespace {

constexpr std::string_view separators = " ,";

constexpr bool is_separator(char c) { return separators.find(c) != std::string_view::npos; }

// 0-based, from and result; the text's length when nothing ends the command.
std::size_t end_of_command(std::string_view line, std::size_t from) {
    bool keyword_begins = true;
    for (std::size_t i = from; i < line.size(); ++i) {
        const char c = line[i];
        if (c == ';') return i;
        if (keyword_begins && kol_is_quote(c)) {
            i = line.find(c, i + 1);
            if (i == std::string_view::npos) return line.size();
        } else {
            keyword_begins = is_separator(c);
        }
    }
    return line.size();
}

bool next_keyword(const tm_string_record_t& command, std::int32_t& pos, tm_string_record_t& keyword) {
    static const tm_char_set_t terminators = tm_char_set(separators);
    while (pos <= command.len && is_separator(command.char_[pos - 1])) ++pos;
    if (pos > command.len) return false;
    tm_rd_string_t(command, terminators, keyword, pos);
    return keyword.len > 0;
}

}  // namespace

bool kol_next_command(const tm_string_record_t& line, std::int32_t& pos, tm_string_record_t& command) {
    const std::string_view text = tm_view(line);
    std::size_t begin = static_cast<std::size_t>(pos - 1);
    if (begin < text.size() && text[begin] == ';') ++begin;
    while (begin < text.size() && text[begin] == ' ') ++begin;
    const std::size_t end = end_of_command(text, begin);
    pos = static_cast<std::int32_t>(end) + 1;
    if (end == begin) return false;
    command = tm_string(text.substr(begin, end - begin));
    return true;
}

void kol_first_word(const tm_string_record_t& command, tm_string_record_t& word) {
    std::int32_t pos = 1;
    if (!next_keyword(command, pos, word)) word = {};
}

kol_keywords_t kol_split_keywords(const tm_string_record_t& command) {
    kol_keywords_t split;
    std::int32_t pos = 1;
    while (split.nkeyword < kol_max_keywords &&
           next_keyword(command, pos, split.keyword[static_cast<std::size_t>(split.nkeyword)]))
        ++split.nkeyword;
    return split;
}

tm_string_record_t kol_unquoted(const tm_string_record_t& keyword) {
    const std::string_view text = tm_view(keyword);
    const std::size_t first = text.find_first_of("'\"");
    if (first == std::string_view::npos) return keyword;
    const std::size_t last = text.rfind(text[first]);
    const std::size_t length = last > first ? last - first - 1 : std::string_view::npos;
    tm_string_record_t inner = tm_string(text.substr(first + 1, length));
    tm_concat_sp(inner);
    return inner;
}

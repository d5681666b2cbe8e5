// The user's texts as command lines.
#include "app/window/command_line.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <vector>

#include "app/window/leaving.h"
#include "app/window/session_text.h"
#include "app/window/status_line.h"
#include "commands/language/command_table.h"
#include "commands/language/entry_expansion.h"
#include "commands/language/interpreter.h"

namespace {

constexpr std::size_t longest_echo = 96;  // the transcript cuts lines, and a cut one cannot be run again

struct named_command {
    const char* prefix;
    std::size_t words;  // in front of the names
};
constexpr named_command of_many_names[] = {{"TRAC", 1}, {"LIS", 2}};

std::vector<std::string> words_of(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

// How many words stand in front of the names of a single command that takes many; 0 for any other.
std::size_t words_before_names(const std::string& text, const std::vector<std::string>& words) {
    if (words.empty() || text.find_first_of(";$'\",") != std::string::npos) return 0;
    for (const named_command& row : of_many_names)
        if (kol_begins_with(words[0], row.prefix)) return row.words;
    return 0;
}

// A command of many names as several of a length that the transcript keeps.
std::vector<std::string> lines_of(const std::string& text) {
    const std::vector<std::string> words = words_of(text);
    const std::size_t before = words_before_names(text, words);
    if (text.size() < longest_echo || before == 0 || words.size() <= before) return {text};
    std::string head;
    for (std::size_t i = 0; i < before; ++i) head += words[i] + " ";
    std::vector<std::string> lines{head};
    for (std::size_t i = before; i < words.size(); ++i) {
        if (lines.back().size() + words[i].size() > longest_echo && lines.back() != head)
            lines.push_back(head);
        lines.back() += words[i] + " ";
    }
    return lines;
}

}  // namespace

std::string printable_text(std::string_view text) {
    std::string clean(text);
    std::replace_if(
        clean.begin(), clean.end(), [](char c) { return c < 32 || c > 126; }, ' ');
    return clean;
}

void kol_send_command(std::string_view text) {
    for (const std::string& line : lines_of(printable_text(text)))
        kol_process_command(tm_string(line), kol_ext.ext_arg, kol_ext.top_var);
    leaving_watch_saves();
    session_show_end();
    status_soon();
}

void kol_send_question(std::string_view text) { kol_expand_cmd(tm_string(printable_text(text))); }

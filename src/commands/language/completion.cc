// Choices for the word that is being typed.
#include "commands/language/completion.h"

#include <algorithm>

#include "commands/language/command_line.h"
#include "commands/language/command_table.h"
#include "kernel/name_index.h"

namespace {

bool begins_with(std::string_view word, std::string_view beginning) {
    return word.size() >= beginning.size() &&
           std::ranges::equal(word.substr(0, beginning.size()), beginning, {}, tm_upper_case, tm_upper_case);
}

// The k-th of the canonical words of a row, from 0; empty behind the last.
std::string_view canonical_word(const kol_command_row_t& row, std::int16_t k) {
    if (k >= kol_command_words(row)) return {};
    std::string_view words = row.canonical;
    for (; k > 0; --k) words.remove_prefix(std::min(words.find(' ') + 1, words.size()));
    return words.substr(0, words.find(' '));
}

bool fits(const kol_command_row_t& row, const kol_keywords_t& words, std::int16_t count) {
    const std::int16_t own = std::min(count, kol_command_words(row));
    for (std::int16_t k = 1; k <= own; ++k)
        if (!kol_begins_with(tm_view(words[k]), row.prefix[static_cast<std::size_t>(k - 1)])) return false;
    return true;
}

void add(std::string_view choice, std::vector<std::string>& choices) {
    if (std::ranges::find(choices, choice) == choices.end()) choices.emplace_back(choice);
}

// In capitals, or in small letters when the user types those.
std::string command_word(std::string_view canonical, std::string_view typed) {
    std::string word(canonical);
    const bool is_small = !typed.empty() && typed[0] != tm_upper_case(typed[0]);
    for (char& c : word) {
        c = tm_upper_case(c);
        if (is_small && c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return word;
}

void add_names(std::string_view word, std::vector<std::string>& choices) {
    const std::string_view path = tm_view(kol_ext.cur_sim_path);
    const bool is_absolute = word.starts_with('/');
    const std::string wanted = is_absolute ? std::string(word) : std::string(path) + std::string(word);
    for (const std::string& name : kol_names_beginning(wanted, kol_most_choices))
        add(is_absolute ? std::string_view(name) : std::string_view(name).substr(path.size()), choices);
    for (const auto* bus = kol_ext.start_sim_bus; bus != nullptr; bus = bus->next)
        if (begins_with(tm_view(bus->name), word)) add(tm_view(bus->name), choices);
    for (const auto* probe = kol_ext.start_probe_signal; probe != nullptr; probe = probe->next)
        if (begins_with(tm_view(probe->probe_name), word)) add(tm_view(probe->probe_name), choices);
}

std::vector<std::string> choices_of(const kol_keywords_t& words, std::int16_t before, std::string_view word) {
    std::vector<std::string> choices;
    bool takes_names = false;
    for (const kol_command_row_t& row : kol_command_table()) {
        if (row.canonical.starts_with('$') || !fits(row, words, before)) continue;
        const std::string_view own = canonical_word(row, before);
        takes_names = takes_names || own.empty();
        if (!own.empty() && begins_with(own, word)) add(command_word(own, word), choices);
    }
    if (takes_names) add_names(word, choices);
    std::ranges::sort(choices);
    return choices;
}

std::string common_beginning(const std::vector<std::string>& choices) {
    std::string_view common = choices.front();
    for (const std::string& choice : choices)
        while (!begins_with(choice, common)) common.remove_suffix(1);
    return std::string(common);
}

}  // namespace

kol_completion_t kol_complete(std::string_view line) {
    const std::size_t begin = line.find_last_of(" ,;") + 1;  // of the word; 0 when it is the first
    const std::size_t command = line.rfind(';') + 1;
    const std::string_view word = line.substr(begin);
    const kol_keywords_t words = kol_split_keywords(tm_string(line.substr(command, begin - command)));
    kol_completion_t result{std::string(line), choices_of(words, words.nkeyword, word)};
    if (result.choices.empty()) return result;
    const std::string completed = common_beginning(result.choices);
    result.text = std::string(line.substr(0, begin)) + completed;
    if (result.choices.size() == 1 && !completed.ends_with('/')) result.text += ' ';
    return result;
}

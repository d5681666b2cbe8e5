// Words that were added take no meaning from older ones: every abbreviation of a stated form of a command
// selects the row that it selects without the additions.
#include <algorithm>

#include "command_session.h"
#include "commands/language/command_line.h"
#include "commands/language/command_table.h"

namespace {

constexpr std::string_view additions[] = {
    "APPly TABle", "APPly VCD", "BREAK BUS",       "CHEck TABle",  "CURsor",    "ZOOm",
    "DUMp",        "FORCE BUS", "RESTore SESsion", "SAVe SESsion", "WRIte VCD", "WRIte CSV",
};

using words_t = std::vector<std::string>;

words_t words_of(std::string_view text) {
    words_t words;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t blank = std::min(text.find(' ', at), text.size());
        if (blank > at) words.emplace_back(text.substr(at, blank - at));
        at = blank + 1;
    }
    return words;
}

bool is_addition(const kol_command_row_t& row) {
    return std::ranges::find(additions, row.canonical) != std::end(additions);
}

// Every shortened form of a row's command words, and those with letters behind them.
words_t forms_of(const kol_command_row_t& row) {
    words_t forms = {""};
    std::size_t k = 0;
    for (const std::string& word : words_of(row.canonical)) {
        const char* const prefix = k < row.prefix.size() ? row.prefix[k++] : nullptr;
        const std::size_t shortest = prefix == nullptr ? word.size() : std::string_view(prefix).size();
        words_t longer;
        for (const std::string& form : forms)
            for (std::size_t length = std::min(shortest, word.size()); length <= word.size() + 1; ++length)
                longer.push_back(form + " " + (word + "Z").substr(0, length));
        forms = std::move(longer);
    }
    return forms;
}

// Parameters that a stated form may have: names, numbers, and the words of the additions among them.
words_t parameter_lists(const kol_command_row_t& row) {
    words_t lists = {"", " O", " a", " a b", " a 1 2", " A a 1 0", " A a 1 0 R", " A a 1 0 R 9"};
    for (const std::string_view added : additions)
        for (const std::string& word : words_of(added))
            for (const char* const rest : {"", " 1", " 1 0"}) lists.push_back(" " + word + rest);
    std::erase_if(lists, [&row](const std::string& list) {
        const auto keywords =
            static_cast<std::int16_t>(words_of(list).size() + words_of(row.canonical).size());
        return keywords < row.least || keywords > row.most;
    });
    return lists;
}

using abbreviations = command_session;

TEST_F(abbreviations, mean_what_they_meant_before_words_were_added) {
    const kol_command_rows_t all = kol_command_table();
    std::vector<kol_command_row_t> stated(all.begin(), all.end());
    std::erase_if(stated, is_addition);
    ASSERT_EQ(stated.size() + std::size(additions), all.size());
    for (const kol_command_row_t& row : stated)
        for (const std::string& form : forms_of(row))
            for (const std::string& list : parameter_lists(row)) {
                const kol_keywords_t keywords = kol_split_keywords(tm_string(form + list));
                kol_use_commands(stated);
                const kol_command_row_t* const before = kol_find_command(keywords);
                kol_use_commands(all);
                const kol_command_row_t* const now = kol_find_command(keywords);
                if (before == nullptr) continue;
                ASSERT_NE(now, nullptr) << form << list;
                EXPECT_EQ(now->canonical, before->canonical) << form << list;
            }
}

}  // namespace

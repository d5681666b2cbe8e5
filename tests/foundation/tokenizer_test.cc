#include "foundation/strings.h"
#include "records.h"

namespace {

// The next token and the position behind it.
std::pair<std::string, int> next(const tm_string_record_t& buf, const char* terminators, std::int32_t pos) {
    tm_string_record_t token = tm_string("left over");
    tm_rd_string_t(buf, tm_char_set(terminators), token, pos);
    return {text_of(token), pos};
}

TEST(Tokenizer, splits_step_by_step) {
    // clang-format off
    const std::tuple<const char*, const char*, std::vector<std::pair<std::string, int>>> rows[] = {
        {"run 100", " ,", {{"run", 4}, {"100", 8}, {"", 8}}}, {"", " ", {{"", 1}}}, {"   ", ";", {{"", 4}}},
        {"a,,b", " ,", {{"a", 2}, {"", 3}, {"b", 5}}},        {"a , b", " ,", {{"a", 2}, {"", 3}, {"b", 6}}},
        {"a,  b", " ,", {{"a", 2}, {"b", 6}}},                {"a,", ",", {{"a", 2}, {"", 2}, {"", 2}}},
        {"a b;c", ";", {{"a b", 4}, {"c", 6}}},               {"a  ", " ", {{"a", 2}, {"", 4}}},
        {"'ab cd' ef", " ", {{"'ab cd'", 8}, {"ef", 11}}},    {"\"a'b\",x", ",", {{"\"a'b\"", 6}, {"x", 8}}},
        {"''cd", " ", {{"''", 3}, {"cd", 5}}},                {"x'a b'", " ", {{"x'a", 4}, {"b'", 7}}},
        {"'open end  ", " ", {{"'open end", 12}, {"", 12}}},  {"a '", " ", {{"a", 2}, {"'", 4}}}};
    // clang-format on
    for (const auto& [text, terminators, tokens] : rows)
        for (std::int32_t pos = 1; const auto& expected : tokens) {
            EXPECT_EQ(next(tm_string(text), terminators, pos), expected) << text;
            pos = expected.second;
        }
}

TEST(Tokenizer, position_outside_the_text_gives_nothing) {
    const tm_string_record_t full = tm_string(many('y', 199));
    for (std::int32_t pos : {-5, 0, 200, 1000}) {
        EXPECT_EQ(next(full, " ", pos), std::pair(std::string(), pos));
        char ch = 'c';
        const std::int32_t before = pos;
        tm_findchar(full, tm_char_set("y"), ch, pos);
        EXPECT_EQ(std::pair(ch, pos), std::pair('\0', before));
    }
    EXPECT_EQ(next(full, " ", 1), std::pair(many('y', 199), 200));
    EXPECT_FATAL(next(raw("a\tb"), " ", 1), "code : 69");
}

TEST(Tokenizer, rest_string_makes_any_text_sound) {
    const std::pair<tm_string_record_t, std::string> rows[] = {
        {raw("A\nB\n"), "A;B"},    {raw("A\n\nB"), "A;;B"},
        {raw("\n"), ""},           {raw({"a\0b", 3}), "a"},
        {raw("a\tb\x7f"), "a b "}, {raw("caf\xc3\xa9!"), "caf  !"},
        {raw("abc", -7), ""},      {raw(many('z', 204)), many('z', 198)}};
    for (auto [s, after] : rows) {
        tm_rest_string(s);
        EXPECT_EQ(text_of(s), after);
    }
}

}  // namespace

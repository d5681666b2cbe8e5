#include "foundation/strings.h"

#include "records.h"

namespace {

tm_string_record_t s;
tm_name_record_t n;
tm_value_record_t v;

tm_name_record_t name(std::string_view text) { return tm_copy_name(tm_string(text), n), n; }
tm_value_record_t value(std::string_view text) { return tm_copy_value(tm_string(text), v), v; }

TEST(Strings, unsound_records_and_lengths_are_fatal) {
    // clang-format off
    void (*const faults[])() = {
        [] { tm_check_string(raw("ab\ncd")); },  [] { tm_concat_line(tm_string("a"), s = raw("\n")); },
        [] { tm_check_string(raw("", -1)); },    [] { tm_check_string(raw(many('x', 200))); },
        [] { tm_copy_line(raw("a\x7f"), s); },   [] { tm_copy_string("caf\xe9", 4, s); },
        [] { tm_copy_string("a", -1, s); },      [] { tm_copy_string(many('x', 200).c_str(), 200, s); },
        [] { tm_length(many('x', 201).c_str()); }, [] { tm_copy_const(many('x', 200).c_str(), s); },
        [] { tm_copy_name(tm_string(many('x', 64)), n); }, [] { tm_concat_const(many('x', 200).c_str(), s); },
        [] { std::memset(v.char_, 'v', 96), v.len = 96, tm_check_value(v), tm_value_string(v, s); }};
    // clang-format on
    for (const auto fault : faults) EXPECT_FATAL(fault(), "code : 69\n.* invalid_string\n");
}

TEST(Strings, copies_and_concatenations_at_their_limits) {
    tm_name_string(name(many('n', 63)), s);
    EXPECT_EQ(text_of(s), many('n', 63));
    tm_value_string(value(many('v', 95)), s);
    EXPECT_EQ(text_of(s), many('v', 95));
    tm_copy_const(many('c', 150).c_str(), s);
    EXPECT_EQ(text_of(s), many('c', 99)) << "constants are counted up to 99 characters";
    for (const std::size_t length : {0, 196, 197, 198, 199}) {
        tm_string_record_t by[6];
        for (tm_string_record_t& dst : by) dst = tm_string(many('x', length));
        tm_concat_const("abc", by[0]);
        tm_concat_line(tm_string("abc"), by[1]);
        tm_concat_astr("abcd", 3, by[2]);
        tm_concat_name(name("abc"), by[3]);
        tm_concat_value(value("abc"), by[4]);
        for (int i = 0; i < 5; ++i) EXPECT_EQ(text_of(by[i]), (many('x', length) + "abc").substr(0, 199));
        tm_concat_sp(by[5]);
        EXPECT_EQ(text_of(by[5]), many('x', length) + (length <= 197 ? " " : ""));
    }
    tm_concat_line(s = tm_string("ab"), s);
    EXPECT_EQ(text_of(s), "abab");
}

TEST(Strings, comparisons_ignore_case) {
    constexpr bool no = false, yes = true;
    const std::tuple<const char*, const char*, bool, bool, bool> rows[] = {
        {"RUN", "run", yes, yes, no}, {"RUN", "RUNX", no, yes, yes}, {"Run", "RUN 100", no, yes, yes},
        {"RUNX", "RUN", no, no, no},  {"", "a", no, yes, yes},       {"a", "", no, no, no},
        {"", "", yes, yes, no},       {"ab", "aC", no, no, yes},     {"B", "a", no, no, no},
        {"a[", "aZ", no, no, no},     {"{", "[", no, no, no}};
    for (const auto& [x, y, identical, prefix, less] : rows) {
        SCOPED_TRACE(std::string(x) + " | " + y);
        const tm_string_record_t a = tm_string(x), b = tm_string(y);
        EXPECT_EQ(
            std::vector<bool>(9, identical),
            (std::vector{tm_string_iden_string(a, b), tm_iden_string(x, a.len, b), tm_const_iden_string(x, b),
                         tm_const_iden_name(x, name(y)), tm_const_iden_value(x, value(y)),
                         tm_name_iden_string(name(x), b), tm_name_iden_name(name(x), name(y)),
                         tm_value_iden_value(value(x), value(y)), tm_value_iden_string(value(x), b)}));
        EXPECT_EQ(std::vector<bool>(6, prefix),
                  (std::vector{tm_const_equal_string(x, b), tm_equal_string(x, a.len, b),
                               tm_name_equal_string(name(x), b), tm_string_equal_name(a, name(y)),
                               tm_value_equal_string(value(x), b), tm_string_equal_value(a, value(y))}));
        EXPECT_EQ(tm_is_less_than(a, b), less);
    }
    EXPECT_FALSE(tm_const_iden_string(many('x', 201).c_str(), s = tm_string(many('x', 99))));
    EXPECT_FALSE(tm_equal_string("x", -1, s));
}

}  // namespace

#include "foundation/numbers.h"

#include <climits>

#include "records.h"

namespace {

template <typename Number>
std::pair<Number, bool> read(void (*convert)(const tm_string_record_t&, Number&, bool&), const char* text) {
    Number n = 99;
    bool error = std::string(text).size() % 2 != 0;
    convert(tm_string(text), n, error);
    return {n, error};
}

template <typename Number>
std::string written(void (*convert)(Number, tm_string_record_t&), Number n) {
    tm_string_record_t s = tm_string("left over");
    convert(n, s);
    return text_of(s);
}

TEST(Numbers, integers_are_read_up_to_the_fault) {
    using result = std::pair<std::int32_t, bool>;
    // clang-format off
    const std::tuple<const char*, result, result> rows[] = {  // decimal, hexadecimal
        {"", {0, false}, {0, false}}, {"1 2", {12, false}, {18, false}},  {"12a", {12, true}, {298, false}},
        {"-5", {0, true}, {0, true}}, {" 7fFg", {7, true}, {2047, true}}, {"  ", {0, false}, {0, false}},
        {"2147483648", {INT_MIN, false}, {0x47483648, false}}};
    // clang-format on
    for (const auto& [text, decimal, hex] : rows) {
        EXPECT_EQ(read(tm_string_to_int32, text), decimal) << text;
        EXPECT_EQ(read(tm_stringh_to_int32, text), hex) << text;
    }
    EXPECT_EQ(read(tm_string_to_int16, "65537"), std::pair(std::int16_t{1}, false));
    EXPECT_EQ(read(tm_string_to_int16, "7x"), std::pair(std::int16_t{7}, true));
}

TEST(Numbers, reals_are_read) {
    // clang-format off
    const std::tuple<const char*, std::int32_t, float, bool> rows[] = {
        {"", 0, 0.0F, false},          {" - ", 0, 0.0F, false},         {"  - 1.5", -150000, -1.5F, false},
        {"0.000004", 0, 4e-6F, false}, {"0.000006", 1, 6e-6F, false},   {"-0.000006", -1, -6e-6F, false},
        {".5 ns", 50000, 0.5F, false}, {"1.2.5", 125000, 1.25F, false}, {"3.5ns", 0, 0.0F, true},
        {"+1", 0, 0.0F, true},         {"99999999999999999999", 0, 0.0F, true},
        {"0.30000000000000000000", 30000, 0.3F, false},
        {"21474", 2147399936, 21474.0F, false}};  // the single-precision number next to it
    // clang-format on
    for (const auto& [text, real, short_real, error] : rows) {
        EXPECT_EQ(read(tm_string_to_real, text), std::pair(real, error)) << text;
        EXPECT_EQ(read(tm_string_to_shortreal, text), std::pair(short_real, error)) << text;
    }
    EXPECT_EQ(read(tm_string_to_real, "21475"), std::pair(0, true)) << "beyond the fixed-point range";
}

TEST(Numbers, integers_and_reals_are_written) {
    EXPECT_EQ(written(tm_int32_to_string, 0), "0");
    EXPECT_EQ(written(tm_int32_to_string, INT_MIN), "-2147483648");
    EXPECT_EQ(written<std::int16_t>(tm_int16_to_string, -70), "-70");
    const std::pair<std::int32_t, const char*> rows[] = {
        {0, "0.0"},  {500, "0.01"},    {499, "0.00"},    {150000, "1.50"},      {-50000, "-0.50"},
        {5, "0.00"}, {199850, "2.00"}, {199449, "1.99"}, {INT_MIN, "-21474.84"}};
    for (const auto& [real, text] : rows) EXPECT_EQ(written(tm_real_to_string, real), text) << real;
    EXPECT_EQ(written(tm_shortreal_to_string, -2.5F), "-2.50");
    EXPECT_EQ(written(tm_shortreal_to_string, 0.996F), "1.00");
    EXPECT_EQ(written(tm_shortreal_to_string, 1e20F), "100000002004087734272.00");
}

TEST(Numbers, bytes_and_hexadecimal_texts) {
    char hi[2], lo[2];
    tm_conver_int16(-16 * 256 + 0xA9, hi, lo);
    EXPECT_EQ(std::string(hi, 2) + std::string(lo, 2), "F0A9");
    EXPECT_EQ(tm_conver_hex(16), '?');
    EXPECT_EQ(xtoi("1aF xyz"), 0x1af);
    EXPECT_EQ(xtoi(nullptr), 0);
}

}  // namespace

// The signal state algebra and the texts of times.
#include "kernel/state.h"
#include "kernel/clear.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>

#include "kernel/time.h"
#include "support/rows.h"
#include "support/stimuli.h"

namespace {

constexpr std::string_view values = "i0x1", drives = "UZRWS";

// Two drivers by their texts: the stronger one, or the value on which both agree.
std::string resolved(const std::string& a, const std::string& b) {
    const std::size_t drive_a = drives.find(a[1]), drive_b = drives.find(b[1]);
    if (drive_a != drive_b) return drive_a > drive_b ? a : b;
    return a == b && (a[0] == '0' || a[0] == '1') ? a : std::string("i") + a[1];
}

std::string text_of(std::int8_t state) { return tst_state_text(state); }

TEST(states, are_value_and_drive) {
    for (std::int8_t state = 0; state < kol_state_count; ++state) {
        std::int16_t value = -1, drive = -1;
        std::int8_t again = -1;
        kol_state_to_valdrive(state, value, drive);
        EXPECT_EQ(text_of(state), std::string({values.at(state % 4), drives.at(state / 4)}));
        EXPECT_EQ(value + 4 * drive, state);
        kol_valdrive_to_state(value, drive, again);
        EXPECT_EQ(again, state);
    }
    for (const int state : {-1, 20, 127, -128}) {
        std::int16_t value = 7, drive = 7;
        kol_state_to_valdrive(static_cast<std::int8_t>(state), value, drive);
        EXPECT_EQ(std::to_string(value + drive) + text_of(static_cast<std::int8_t>(state)), "0iu");
    }
    for (const auto& [value, drive] : {std::pair{-1, 2}, {4, 2}, {3, -1}, {3, 5}}) {
        std::int8_t state = 9;
        kol_valdrive_to_state(static_cast<std::int16_t>(value), static_cast<std::int16_t>(drive), state);
        EXPECT_EQ(state, 0) << value << ' ' << drive;
    }
}

TEST(states, of_two_drivers_resolve_to_the_stronger_or_the_agreed_one) {
    for (std::int8_t a = 0; a < kol_state_count; ++a)
        for (std::int8_t b = 0; b < kol_state_count; ++b)
            EXPECT_EQ(text_of(kol_net_state(a, b)), resolved(text_of(a), text_of(b)))
                << text_of(a) << ' ' << text_of(b);
}

// clang-format off
TEST(states, combine_in_the_gates) {
    // First value i 0 x 1; within the text the second, likewise.
    using function = std::int16_t (*)(std::int16_t, std::int16_t);
    for (const auto& [value, expected] : tst_rows<function, std::array<std::string, 4>>{
             {kol_and_value, {"i0ii", "0000", "i0xx", "i0x1"}}, {kol_nand_value, {"i1ii", "1111", "i1xx", "i1x0"}},
             {kol_or_value, {"iii1", "i0x1", "ixx1", "1111"}}, {kol_nor_value, {"iii0", "i1x0", "ixx0", "0000"}},
             {kol_xor_value, {"iiii", "i0x1", "ixxx", "i1x0"}}})
        for (std::int16_t a = -1; a <= 4; ++a)
            for (std::int16_t b = -1; b <= 4; ++b) {
                const bool is_known = a >= 0 && a < 4 && b >= 0 && b < 4;
                EXPECT_EQ(values.at(value(a, b)), is_known ? expected.at(a).at(b) : 'i')
                    << expected[0] << ' ' << a << ' ' << b;
            }
}

TEST(states, are_read_from_one_or_two_characters) {
    for (const auto& [keyword, text] : tst_rows<tst_cstr, tst_cstr>{
             {"0", "0S"}, {"1", "1S"}, {"i", "iS"}, {"I", "iS"}, {"X", "xS"}, {"x", "xS"}, {"1u", "1U"}, {"0Z", "0Z"},
             {"xr", "xR"}, {"IW", "iW"}, {"1s", "1S"}, {"", "none"}, {"2", "none"}, {"s", "none"}, {"1q", "none"},
             {"11", "none"}, {"1SS", "none"}, {" 1", "none"}}) {
        std::int8_t state = -1;
        EXPECT_EQ(kol_keyword_to_state(keyword, state) ? text_of(state) : "none", text) << keyword;
    }
}

void set_scale(float step, float unit) {
    kol_context_clear();
    yx_sext.time_step = step;
    kol_ext.scale_user_unit = unit;
}

TEST(times, are_written_in_user_units_with_three_decimals) {
    for (const auto& [step, unit, time, expected] : tst_rows<float, float, std::int32_t, tst_cstr>{
             {0.5F, 1, 25, "12.500"}, {0.5F, 1, -3, "-1.500"}, {0.5F, 1, 1, "0.500"}, {0.5F, 1, 0, "0.0"},
             {0, 1, 7, "0.0"}, {-1, 1, 7, "0.0"}, {1, 0, 7, "0.0"}, {1, 10, 25, "2.500"}, {1, 0.25F, 3, "12.000"},
             {1.9996F, 1, 1, "2.000"},          // the thousandths carry
             {0.99995F, 1, 1, "1.000"},         // the whole part is cut a little above
             {1, 1, 16777217, "16777216.000"},  // single precision
             {1, 1, INT32_MIN, "-2147483648.000"}}) {
        set_scale(step, unit);
        tm_string_record_t text;
        kol_time_to_string(time, text);
        EXPECT_EQ(tm_view(text), expected) << time << " steps of " << step << " in " << unit;
    }
}

TEST(times, are_read_in_user_units_and_rounded_to_steps) {
    for (const auto& [step, unit, text, expected, is_wrong] : tst_rows<float, float, tst_cstr, std::int32_t, bool>{
             {0.5F, 1, "12.5", 25, false}, {0.5F, 1, "1.26", 3, false}, {0.5F, 1, "0.75", 2, false},
             {0, 1, "5", 0, true}, {0.5F, 1, "-0.75", -1, false}, {0.5F, 1, "-0.5", -1, false},
             {0.5F, 1, " -  0.5", -1, false}, {0.5F, 1, "1.2.3", 2, false}, {0.5F, 1, "  7 3ns", 14, false},
             {0.5F, 1, "", 0, false}, {0.5F, 1, "   ", 0, false}, {0.5F, 1, "- ", 0, false},
             {0.5F, 1, "--5", 0, true}, {0.5F, 1, "3ns", 0, true}, {0.5F, 1, "+5", 0, true}, {1, 0, "5", 0, true},
             {1, 10, "2.5", 25, false}, {0, 1, " ", 0, false}, {1, 1, "2147483647", INT32_MAX, false},
             {0.5F, 1, "2147483647", 0, true}, {1, 1, "99999999999", 0, true},
             {1, 1, "1.0000000000000000000001", 1, false}}) {
        set_scale(step, unit);
        std::int32_t time = 77;
        bool is_error = !is_wrong;
        kol_string_to_time(tm_string(text), time, is_error);
        EXPECT_EQ(time, expected) << '"' << text << '"';
        EXPECT_EQ(is_error, is_wrong) << '"' << text << '"';
    }
}
// clang-format on

TEST(timing_range, is_the_global_one_or_the_instances_entry) {
    set_scale(1, 1);
    yx_inst_record_t inst;
    EXPECT_EQ(kol_timind(&inst), 2);
    kol_ext.sim_range_type = 3;
    EXPECT_EQ(kol_timind(&inst), 3);
    kol_ext.timing_ar[119] = 1;
    inst.timing_index = 120;
    EXPECT_EQ(kol_timind(&inst), 1);
    const auto stops = [&](std::int8_t index, std::int16_t range) {
        inst.timing_index = index;
        kol_ext.sim_range_type = kol_ext.timing_ar[0] = range;
        kol_timind(&inst);
    };
    const auto stopped = testing::KilledBySignal(SIGABRT);
    EXPECT_EXIT(kol_timind(nullptr), stopped, "");
    EXPECT_EXIT(stops(121, 2), stopped, "");
    EXPECT_EXIT(stops(0, 4), stopped, "");
    EXPECT_EXIT(stops(1, 0), stopped, "");
}

}  // namespace

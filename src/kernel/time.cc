// Time texts and timing ranges.
#include "kernel/time.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "foundation/status.h"

namespace {

constexpr std::int32_t thousand = 1000;

bool time_scale_is_known() { return yx_sext.time_step > 0 && kol_ext.scale_user_unit > 0; }

// A float as an integer, cut toward zero and held within 64 bits.
std::int64_t truncated(float value) {
    constexpr float limit = 9.2e18F;
    return value < limit ? static_cast<std::int64_t>(value) : static_cast<std::int64_t>(limit);
}

// The digits of a time text as one number and its power of ten.  Decimals beyond what 32 bits hold are
// dropped; an integer part beyond them is an error.
struct digits_t {
    std::int64_t number = 0;
    std::int64_t divisor = 1;
    bool in_decimals = false;
    bool is_full = false;
};

bool take_digit(digits_t& digits, char digit) {
    const std::int64_t longer = digits.number * 10 + (digit - '0');
    digits.is_full = digits.is_full || longer > std::numeric_limits<std::int32_t>::max();
    if (digits.is_full) return digits.in_decimals;
    digits.number = longer;
    if (digits.in_decimals) digits.divisor *= 10;
    return true;
}

bool take_character(digits_t& digits, char c) {
    if (c == '.') {
        digits.in_decimals = true;
        return true;
    }
    return c >= '0' && c <= '9' && take_digit(digits, c);
}

std::string_view without_leading_blanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

}  // namespace

void kol_time_to_string(std::int32_t time, tm_string_record_t& text) {
    if (time == 0 || !time_scale_is_known()) {
        text = tm_string("0.0");
        return;
    }
    const float amount = std::fabs(static_cast<float>(time)) * yx_sext.time_step / kol_ext.scale_user_unit;
    std::int64_t whole = truncated(amount + 0.0001F);
    auto decimals = truncated((amount - static_cast<float>(whole)) * thousand + 0.5F);
    if (decimals >= thousand) {
        ++whole;
        decimals = 0;
    }
    const std::string three = std::to_string(thousand + decimals).substr(1);
    text = tm_string((time < 0 ? "-" : "") + std::to_string(whole) + "." + three);
}

void kol_string_to_time(const tm_string_record_t& text, std::int32_t& result, bool& error_found) {
    result = 0;
    error_found = false;
    std::string_view rest = without_leading_blanks(tm_view(text));
    const bool negative = rest.starts_with('-');
    if (negative) rest = without_leading_blanks(rest.substr(1));
    if (rest.empty()) return;

    digits_t digits;
    for (const char c : rest.substr(0, rest.find(' '))) {
        error_found = !take_character(digits, c);
        if (error_found) return;
    }
    error_found = !time_scale_is_known();
    if (error_found) return;
    const double value =
        static_cast<double>(negative ? -digits.number : digits.number) / static_cast<double>(digits.divisor);
    const double steps = std::floor(
        value * static_cast<double>(kol_ext.scale_user_unit) / static_cast<double>(yx_sext.time_step) + 0.5);
    error_found = std::fabs(steps) > static_cast<double>(std::numeric_limits<std::int32_t>::max());
    if (!error_found) result = static_cast<std::int32_t>(steps);
}

std::int16_t kol_timind(const yx_inst_record_t* inst) {
    if (inst == nullptr || inst->timing_index < 0 || inst->timing_index > yx_timing_indexes) {
        kol_trace(" KOL_TIMIND  : timing index invalid : instance : %d", inst == nullptr ? 0 : inst->self);
        tm_fatal(file_data_invalid);
    }
    const std::int16_t range = inst->timing_index == 0
                                   ? kol_ext.sim_range_type
                                   : kol_ext.timing_ar[static_cast<std::size_t>(inst->timing_index - 1)];
    if (range < 1 || range > 3) {
        kol_trace(" KOL_TIMIND  : sim_range_type : %d : instance : %d", range, inst->self);
        tm_fatal(file_data_invalid);
    }
    return range;
}

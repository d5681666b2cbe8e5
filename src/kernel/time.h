// kol: simulated time.  Converts between counts of time steps and the user's text in user units, and chooses
// the timing range (1 minimum, 2 typical, 3 maximum) of an instance.
#pragma once

#include <algorithm>
#include <cstdint>

#include "kernel/context.h"
#include "kernel/state.h"

void kol_time_to_string(std::int32_t time, tm_string_record_t& text);
void kol_string_to_time(const tm_string_record_t& text, std::int32_t& result, bool& error_found);
std::int16_t kol_timind(const yx_inst_record_t* inst);  // a bad index or range is fatal

// The sum of two delays, held within 32 bits.
constexpr std::int32_t kol_sum_of_delays(std::int32_t a, std::int32_t b) {
    constexpr std::int64_t lowest = INT32_MIN, highest = INT32_MAX;
    return static_cast<std::int32_t>(std::clamp(std::int64_t{a} + b, lowest, highest));
}

// The delay of a change to svalue: rise for "1", fall for "0", their mean rounded toward zero otherwise.
constexpr std::int32_t kol_delay_of(std::int16_t svalue, std::int32_t rise, std::int32_t fall) {
    if (svalue == kol_v1) return rise;
    if (svalue == kol_v0) return fall;
    return static_cast<std::int32_t>((std::int64_t{rise} + fall) / 2);
}

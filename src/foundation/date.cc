// The calendar date in UTC.
#include <sys/time.h>

#include <array>
#include <cstdio>

#include "foundation/files.h"

namespace {

constexpr std::int64_t day_seconds = 86400;
constexpr std::int64_t year_seconds = 365 * day_seconds;
constexpr std::int64_t leap_year_seconds = 366 * day_seconds;
constexpr std::int64_t cycle_seconds = leap_year_seconds + 3 * year_seconds;
constexpr std::int64_t first_cycle = 2 * year_seconds;  // 1972-01-01
static_assert(first_cycle == 63072000 && cycle_seconds == 126230400);

constexpr std::array<std::int64_t, 12> month_days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

void split_day_of_year(std::int64_t day_of_year, bool leap, std::int16_t& day, std::int16_t& month) {
    std::int64_t left = day_of_year;
    std::size_t m = 0;
    for (; m < 11; ++m) {
        const std::int64_t days = month_days[m] + (leap && m == 1 ? 1 : 0);
        if (left < days) break;
        left -= days;
    }
    day = static_cast<std::int16_t>(left + 1);
    month = static_cast<std::int16_t>(m + 1);
}

}  // namespace

void tm_date_of(std::int64_t seconds, std::int16_t& day, std::int16_t& month, std::int16_t& year,
                std::int16_t& hour, std::int16_t& minute) {
    const std::int64_t since = seconds - first_cycle;
    const std::int64_t cycle = since / cycle_seconds - (since % cycle_seconds < 0 ? 1 : 0);
    std::int64_t left = since - cycle * cycle_seconds;
    std::int64_t year_in_cycle = 0;
    // The leap year ends with its last second: the one that follows is already January 1st.
    if (left >= leap_year_seconds) {
        left -= leap_year_seconds;
        year_in_cycle = 1 + left / year_seconds;
        left %= year_seconds;
    }
    year = static_cast<std::int16_t>(1972 + 4 * cycle + year_in_cycle);
    split_day_of_year(left / day_seconds, year_in_cycle == 0, day, month);
    hour = static_cast<std::int16_t>(left % day_seconds / 3600);
    minute = static_cast<std::int16_t>(left % 3600 / 60);
}

void tm_get_date(std::int16_t& day, std::int16_t& month, std::int16_t& year, std::int16_t& hour,
                 std::int16_t& minute) {
    timeval now{};
    const int result = gettimeofday(&now, nullptr);
    if (result == 0) return tm_date_of(now.tv_sec, day, month, year, hour, minute);
    std::printf(" !! error in gettimeofday : res : %2d\n", result);
    day = month = year = hour = minute = 0;
}

// What a keyword says: first letters and times.
#include "commands/keyword.h"

#include <limits>

#include "kernel/time.h"

bool kol_begins_with_one_of(const tm_string_record_t& keyword, std::string_view letters) {
    return keyword.len > 0 && letters.find(tm_upper_case(keyword.char_[0])) != std::string_view::npos;
}

bool kol_begins_with_letter(const tm_string_record_t& keyword) {
    return kol_begins_with_one_of(keyword, "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
}

bool kol_begins_like_signal(const tm_string_record_t& keyword) {
    return kol_begins_with_one_of(keyword, "/") || kol_begins_with_letter(keyword);
}

bool kol_read_time(const tm_string_record_t& keyword, std::int32_t& time) {
    bool error_found = false;
    kol_string_to_time(keyword, time, error_found);
    return !error_found;
}

bool kol_read_positive_time(const tm_string_record_t& keyword, std::int32_t& time) {
    return kol_read_time(keyword, time) && time >= 0;
}

bool kol_count_from_now(std::int32_t& time) {
    const std::int64_t absolute = std::int64_t{kol_ext.cur_time} + time;
    if (absolute > std::numeric_limits<std::int32_t>::max()) return false;
    time = static_cast<std::int32_t>(absolute);
    return true;
}

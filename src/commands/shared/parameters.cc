// What a keyword says: first letters, numbers and times.
#include "commands/shared/parameters.h"

#include <limits>

#include "foundation/numbers.h"
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

tm_string_record_t kol_keyword_text(const tm_string_record_t& keyword) {
    const std::string_view text = tm_view(keyword);
    const bool is_quoted = text.size() > 1 && (text[0] == '"' || text[0] == '\'') && text.back() == text[0];
    return is_quoted ? tm_string(text.substr(1, text.size() - 2)) : keyword;
}

bool kol_read_number(const tm_string_record_t& keyword, std::int32_t highest, std::int16_t& number) {
    std::int32_t read = 0;
    if (!tm_string_to_number(keyword, highest, read)) return false;
    number = static_cast<std::int16_t>(read);
    return true;
}

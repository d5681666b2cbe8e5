// kol: what the parameters of a command say.
#pragma once

#include "commands/language/command.h"

// Whether the keyword begins with one of the capital letters, in either case.
bool kol_begins_with_one_of(const tm_string_record_t& keyword, std::string_view letters);
// Signal names begin with "/" or a letter, names of the user's own with a letter.
bool kol_begins_with_letter(const tm_string_record_t& keyword);
bool kol_begins_like_signal(const tm_string_record_t& keyword);

// The keyword as time steps; false for a bad text.
bool kol_read_time(const tm_string_record_t& keyword, std::int32_t& time);
// The same, a negative time being refused too.
bool kol_read_positive_time(const tm_string_record_t& keyword, std::int32_t& time);
// Turns a time counted from cur_time into an absolute one; false beyond the largest time.
bool kol_count_from_now(std::int32_t& time);

// The keyword without its enclosing quotes.
tm_string_record_t kol_keyword_text(const tm_string_record_t& keyword);
// The keyword as a whole number in 1..highest, at most 30000; false for anything else.
bool kol_read_number(const tm_string_record_t& keyword, std::int32_t highest, std::int16_t& number);

// kol: what the drawn and the written rows of the list share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "kernel/context.h"

inline constexpr std::size_t kol_list_time_width = 12;

// The time in user units, at most its last 12 characters.
std::string kol_list_time_text(std::int32_t time);
// The characters shown of the state under the signal's cursor: value and drive, or the value alone; empty
// without a cursor.
std::string kol_list_value_text(const yx_signal_rec_t& signal);
// At most the first characters of a name that the header has room for.
std::string_view kol_list_name_head(const tm_string_record_t& name);

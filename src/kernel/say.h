// kol: lines for the user.  Puts a line together from texts, times and paths and shows it on the message
// list.
#pragma once

#include <string>

#include "kernel/context.h"

// A store string, empty for index 0.
std::string_view kol_path(std::int32_t string_index);
// The same between double quotes.
std::string kol_quoted(std::string_view text);
inline std::string kol_quoted_path(std::int32_t string_index) { return kol_quoted(kol_path(string_index)); }
// A time in user units.
std::string kol_time_text(std::int32_t time);

void kol_say_line(std::string_view line);

template <typename... Part>
void kol_say(const Part&... parts) {
    std::string line;
    (line.append(parts), ...);
    kol_say_line(line);
}

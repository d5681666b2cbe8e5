// kol: what every command handler shares.  A handler gets the number of keywords and the keyword array,
// keyword 1 being the command word; the dispatcher has compared that number with the limits of the command's
// row.  A handler checks, acts and shows its echo line: the canonical command words, then the keywords as
// typed.  A rejection shows the same line with "# " in front, then a line that begins "# !! Error", and
// leaves the simulation state unchanged; it is not counted.
#pragma once

#include <array>
#include <initializer_list>
#include <string_view>

#include "foundation/strings.h"
#include "kernel/context.h"

inline constexpr std::int16_t kol_max_keywords = 30;
using kol_array_keyword_t = std::array<tm_string_record_t, kol_max_keywords>;
using kol_handler_t = void (*)(std::int16_t nkeyword, kol_array_keyword_t& keyword);

// Keyword k, 1-based.
inline tm_string_record_t& kol_kw(kol_array_keyword_t& keyword, std::int16_t k) {
    return keyword[static_cast<std::size_t>(k - 1)];
}

// Echo lines: command, then keywords first.. each followed by a blank.  quoted puts each between double
// quotes, as the rejection echo of some commands does.
void kol_echo(std::string_view command, std::int16_t first, std::int16_t nkeyword,
              kol_array_keyword_t& keyword);
void kol_echo_quoted(std::string_view command, std::int16_t first, std::int16_t nkeyword,
                     kol_array_keyword_t& keyword);
// The same line as kol_echo shows, cut at 199 characters.
tm_string_record_t kol_echo_line(std::string_view command, std::int16_t first, std::int16_t nkeyword,
                                 kol_array_keyword_t& keyword);
// Shows one line put together from parts.
void kol_show(std::initializer_list<std::string_view> parts);

inline constexpr std::string_view nb_par_invalid = "# !! Error : parameter number invalid ? ";
inline constexpr std::string_view second_par_incorrect = "# !! Error :  2nd parameter incorrect ? ";

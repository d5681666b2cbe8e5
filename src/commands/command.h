// kol: the command table and what every handler shares.  A handler gets the number of keywords and the
// keyword array, keyword 1 being the command word; it echoes, checks, and reports a rejection with a line
// that begins
// "# !! Error", leaving the simulation state unchanged.
#pragma once

#include <array>
#include <span>
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

inline constexpr std::string_view nb_par_invalid = "# !! Error : parameter number invalid ? ";
inline constexpr std::string_view second_par_incorrect = "# !! Error :  2nd parameter incorrect ? ";
inline constexpr std::string_view not_available = "# !! Error : command not available ? ";

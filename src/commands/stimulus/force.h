// kol: what FORCE and FORCE BUS share: the time words of a force, and where it is kept.
#pragma once

#include "commands/language/command.h"

struct kol_force_words_t {
    std::int16_t mode, time;  // keywords; O or R and the stop time stand behind the time
    kol_rejection_t time_invalid, stop_time_invalid, repeat_invalid;
};

// Times are absolute but for a repeated force.
kol_rejection_t kol_read_force_times(const kol_line_t& line, const kol_force_words_t& words,
                                     kol_force_rec_t& force, bool& repeat);
void kol_append_force(const kol_force_rec_t& force, bool repeat);

inline constexpr kol_rejection_t kol_no_clock_period{"# !! Error : No Clock Period already defined ? "};

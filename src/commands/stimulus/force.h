// kol: what FORCE and FORCE BUS share: the time words of a force, and where it is kept.
#pragma once

#include "commands/language/command.h"
#include "netlist/store.h"

struct kol_force_words_t {
    std::int16_t mode, time;  // keywords; O or R and the stop time stand behind the time
    kol_rejection_t time_invalid, stop_time_invalid, repeat_invalid;
};

struct kol_read_force_t {
    yx_net_record_t* net = nullptr;
    std::int8_t state = 0;
    std::int32_t time = 0, stop_time = 0;  // absolute, of a repeated force an offset
    bool repeat = false;
};

kol_rejection_t kol_read_force_times(const kol_line_t& line, const kol_force_words_t& words,
                                     kol_read_force_t& force);
void kol_append_force(const kol_read_force_t& force);

inline constexpr kol_rejection_t kol_no_clock_period{"# !! Error : No Clock Period already defined ? "};

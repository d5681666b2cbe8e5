// kol: stimuli.  Turns the user's forces and clock blocks into FORCE events.
#pragma once

#include <vector>

#include "kernel/context.h"

struct kol_stimulus_t {
    std::int32_t time;
    std::int8_t state;
    yx_net_record_t* net;
};
using kol_stimuli_t = std::vector<kol_stimulus_t>;

// Those of the run window [start_time, end_time), by time, those of one time in their stated order.
kol_stimuli_t kol_stimuli_of_window();
void kol_schedule_stimuli(const kol_stimuli_t& stimuli);

// kol: what enters and leaves the wheel of a run: the queue that earlier runs left, the stimuli, and at its
// end what has not happened yet.
#pragma once

#include "kernel/cells.h"
#include "kernel/stimuli_entry.h"

extern const kol_stimuli_target_t kol_wheel_of_cells;

// The queue into the wheel.
void kol_take_queue();
// The times of the events in the wheel, in order.
std::vector<std::int32_t> kol_times_of_wheel();
void kol_give_queue_back();

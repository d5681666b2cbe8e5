// Forces and clock blocks gathered for one run window, in order of time.
#include "kernel/stimuli.h"

#include <algorithm>

#include "kernel/queue.h"

namespace {

bool is_in_window(std::int64_t time) { return time >= kol_ext.start_time && time < kol_ext.end_time; }

void add_stimulus(const kol_force_rec_t& force, std::int64_t time, kol_stimuli_t& stimuli) {
    if (is_in_window(time)) stimuli.push_back({static_cast<std::int32_t>(time), force.state, force.net});
}

// The beginning of the period in which the run starts.
std::int64_t base_of(const kol_forceblk_rec_t& block) {
    const std::int64_t past = static_cast<std::int64_t>(kol_ext.cur_time) - block.start_time;
    return past <= 0 ? block.start_time : block.start_time + past / block.clock_period * block.clock_period;
}

void expand_clocked(const kol_forceblk_rec_t& block, const kol_force_rec_t& force, kol_stimuli_t& stimuli) {
    if (force.stop_time > 0 && kol_ext.cur_time >= force.stop_time) return;
    for (std::int64_t time = base_of(block) + force.time; time < kol_ext.end_time;
         time += block.clock_period) {
        if (force.stop_time >= 1 && time > force.stop_time) return;
        add_stimulus(force, time, stimuli);
    }
}

}  // namespace

kol_stimuli_t kol_stimuli_of_window() {
    kol_stimuli_t stimuli;
    for (const kol_force_rec_t* force = kol_ext.last_force; force != nullptr; force = force->previous)
        add_stimulus(*force, force->time, stimuli);
    for (const auto* block = kol_ext.start_clock_force_blk; block != nullptr; block = block->next) {
        if (block->start_time >= kol_ext.end_time || block->clock_period < 1) continue;
        for (const kol_force_rec_t* force = block->start_force; force != nullptr; force = force->next)
            expand_clocked(*block, *force, stimuli);
    }
    std::ranges::stable_sort(stimuli, {}, &kol_stimulus_t::time);
    return stimuli;
}

// By time: events of one time keep the order of their stimuli, and each is appended to the queue where it
// would have been inserted.
void kol_schedule_stimuli(const kol_stimuli_t& stimuli) {
    for (const kol_stimulus_t& stimulus : stimuli)
        kol_create_force_event(stimulus.net, stimulus.time, stimulus.state);
}

// kol: stimuli.  Owns the user's forces and clock blocks, and the windows of runs whose stimuli have not all
// entered the queue.  A stimulus enters when its time comes (kernel/stimuli_reader.h), so one that waits
// takes no more room than its force, and a run looks only at what happens in it.  Times are time steps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "netlist/store.h"

struct kol_force_t {
    std::int32_t net = 0;        // index of its record
    std::int32_t time = 0;       // absolute, or the offset within a clock period
    std::int32_t stop_time = 0;  // of a repeated force; 0 or below: none
    std::uint32_t order = 0;     // of entry, among the single forces or those of the block
    std::int8_t state = 0;
};
static_assert(sizeof(kol_force_t) <= 20);

struct kol_clock_t {  // forces repeated with one period
    std::int32_t period = 0, start_time = 0;
    std::deque<kol_force_t> forces;  // in the order of entry
    // Sorted when a run begins: those that stand for every period by offset and order, and the others.
    std::vector<std::uint32_t> regular, others;
};

// The stimuli of a run, [start, end), of which those before `from` have entered the queue.
struct kol_window_t {
    std::int32_t start = 0, end = 0, from = 0;
    std::uint32_t forces = 0, clocks = 0, last_clock_forces = 0;  // how many there were when the run began
};

struct kol_stimuli_t {
    std::deque<kol_force_t> forces;  // in parts, each in order of time, and for one time of entry
    std::vector<std::size_t> parts;  // where each of them begins; forces entered since follow in no order
    std::size_t sorted = 0;          // where those begin
    std::vector<kol_clock_t> clocks;
    std::vector<kol_window_t> windows;  // of runs that ended early, oldest first, and of the present one
};
extern kol_stimuli_t kol_stimuli;

void kol_add_force(const yx_net_record_t& net, std::int8_t state, std::int32_t time, std::int32_t stop_time);
void kol_add_clock(std::int32_t period, std::int32_t start_time);
// Joins the newest clock, of which there has to be one.
void kol_add_repeated_force(const yx_net_record_t& net, std::int8_t state, std::int32_t offset,
                            std::int32_t stop_time);

// Opens the window of a run; whatever has been entered takes its place.
void kol_open_window(std::int32_t start, std::int32_t end);
// What is left is to enter from a time on, never (above 32 bits) when all has entered.
void kol_keep_windows(std::int64_t from);
// Nothing is left to enter, as after the queue has been emptied.
void kol_drop_windows();
void kol_clear_stimuli();

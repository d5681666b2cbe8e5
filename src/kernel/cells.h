// kol: the cells, what an event of a run touches, in flat arrays.  A cell is a net tree with its driver: the
// state of the net, the driver's packed inputs, delays and newest pending event, the pins that the net feeds
// as entries of 4 bytes.  Gates and registers that check nothing work on cells alone; every other instance is
// called through its handlers, and the records of the nets that it touches are kept up at every change.
//
// Between runs the records of the store are the truth.  A run begins with cells that agree with them, built
// or read anew where something else than such a run has changed them, and ends by writing back what it
// changed. cell_records owns that way back and forth, cell_run works on the cells.
#pragma once

#include <array>
#include <unordered_map>
#include <vector>

#include "kernel/context.h"
#include "kernel/network.h"
#include "kernel/wheel.h"

enum kol_cell_flags : std::uint8_t {
    kol_cell_listed = 1,     // to be written back
    kol_cell_forced = 2,     // FORCE events of the net are queued; kept while spikes are looked for
    kol_cell_single = 4,     // one output pin drives the net, and nothing else does
    kol_cell_observed = 8,   // the net has a history
    kol_cell_mirrored = 16,  // the net's record is kept up
    kol_cell_breaks = 32,    // the net has a break
    kol_cell_terminal = 64,  // a fed pin drives, too: the states of the fed pins are kept up
    kol_cell_fixed = 128,    // the net ignores its drivers
};
inline constexpr std::uint8_t kol_cell_special =
    kol_cell_observed | kol_cell_mirrored | kol_cell_breaks | kol_cell_terminal;

struct kol_cell_t {
    std::uint8_t in = 0;     // of a gate: the values of its inputs, two bits each, the first pin's lowest
    std::uint8_t table = 0;  // of a gate or register: output states by `in`
    std::int8_t cur = 0, old = 0;  // of the net
    std::int8_t seen = 0;          // of the single driver
    std::uint8_t flags = 0;
    std::uint16_t delay[3] = {0, 0, 0};  // of a change of the driver to "0", "1", another value
    std::int32_t cur_time = -1, seen_time = -1;
    std::uint32_t newest = 0;       // place of the single driver's newest event in the wheel
    std::int32_t newest_time = -1;  // its time; before the current time: it is executed
    std::uint32_t first_fed = 0;    // place of the first entry for the pins that the net feeds
};
static_assert(sizeof(kol_cell_t) == 32);  // two to a cache line

// A fed pin: kind, whether it is the net's last one, position among the gate's inputs, index of what is fed.
enum class kol_fed_kind : std::uint32_t {
    gate,     // a cell
    timed,    // a gate whose inputs have delays of their own, or long ones
    clock,    // a register
    handler,  // a pin whose handler is called
    none,     // the net feeds nothing that listens
};
struct kol_fed_t {
    std::uint32_t bits = 0;

    kol_fed_kind kind() const { return static_cast<kol_fed_kind>(bits & 7); }
    bool is_last() const { return (bits & 8) != 0; }
    unsigned shift() const { return (bits >> 4 & 3) * 2; }
    std::uint32_t index() const { return bits >> 6; }
};

struct kol_timed_gate_t {
    std::uint32_t cell = 0;
    std::int32_t delay[3] = {0, 0, 0};
};
struct kol_register_t {  // captures at its clock's active changes
    std::uint32_t cell = 0, data = 0;
    std::int32_t setup = 0;
    std::uint16_t active = 0;  // a bit for each pair of values: old value x 4 + new value
    std::uint32_t clock = 0;   // the clock pin's place among the called pins
    void (*note_data_time)(const yx_inst_record_t&, std::int32_t) = nullptr;
};
// A driver of a net that has others, too, or that a fed pin drives.
struct kol_driver_t {
    yx_pin_record_t* pin = nullptr;
    yx_net_record_t* net = nullptr;  // root
    std::uint32_t newest = 0;
    std::int32_t newest_time = -1;
};

// What the cells were built from.
struct kol_cells_made_t {
    bool is_made = false;      // all but the states agree with the records
    bool is_possible = false;  // a run can work on the cells
    bool has_states = false;   // the states do, too
    std::int16_t sim_range_type = 0;
    yx_timing_index_array_t timing_ar{};
};

// What a spike is measured by: the delays of a single driver to "0", "1", another value, and the longest
// delay of a fed pin to any; -1: no pin is fed.
struct kol_spike_delays_t {
    std::int32_t driver[3] = {0, 0, 0};
    std::int32_t fed = -1;
};
// A driver's event among its others, while spikes are looked for; by place in the wheel.
struct kol_pending_t {
    std::uint32_t newer = kol_wheel_t::none, older = kol_wheel_t::none;
    std::int32_t time = 0;
};
// What the fed pins were shown last, where that is not what the net took at a time.
struct kol_shown_t {
    std::int32_t net_time = -1;
    yx_signal_state_rec seen;
};

struct kol_cells_t {
    kol_cells_made_t made;
    std::vector<kol_cell_t> cell;  // by index of the root net; entry 0 is unused
    std::vector<kol_fed_t> fed;
    std::vector<std::int32_t> fed_pin;  // the pin of each entry
    std::vector<kol_spike_delays_t> spike_delays;
    std::vector<kol_timed_gate_t> timed;
    std::vector<kol_register_t> registers;
    std::vector<kol_pin_link_t> called;               // pins whose handlers are called
    std::vector<std::array<std::int8_t, 256>> table;  // output states
    std::vector<kol_driver_t> drivers;
    std::unordered_map<std::uint64_t, std::uint32_t> driver_of;  // by pin and net
    std::vector<std::uint32_t> listed;                           // cells to be written back
    std::vector<std::uint32_t> stale;  // cells whose fed pins are to be written back
    std::vector<bool> is_stale;
    kol_wheel_t wheel;
    std::vector<kol_pending_t> pending;
    std::unordered_map<std::uint32_t, kol_shown_t> shown;
    bool is_running = false;
    bool looks_for_spikes = false;
};
extern kol_cells_t kol_cells;

// The state of a root net, also while a run works on the cells.
inline std::int8_t kol_state_now(const yx_net_record_t& root) {
    return kol_cells.is_running ? kol_cells.cell[static_cast<std::size_t>(root.self)].cur
                                : root.UU.U1.cur_state.state;
}

inline void kol_put_input(kol_fed_t fed, std::int16_t value) {
    const bool is_gate = fed.kind() == kol_fed_kind::gate;
    kol_cell_t& gate = kol_cells.cell[is_gate ? fed.index() : kol_cells.timed[fed.index()].cell];
    gate.in = static_cast<std::uint8_t>((gate.in & ~(3U << fed.shift())) | static_cast<unsigned>(value)
                                                                               << fed.shift());
}

// What happens in an event: a cell's driver, a FORCE of a net or another driver takes a state.
inline constexpr unsigned kol_what_shift = 5;
std::uint32_t kol_first_force();
std::uint32_t kol_first_driver();
constexpr std::uint32_t kol_what(std::uint32_t index, std::int8_t state) {
    return index << kol_what_shift | static_cast<std::uint32_t>(state);
}

// The records have been changed: their states, or also what the cells are built from.
void kol_forget_cell_states();
void kol_forget_cells();
// The net's history has begun or ended.
void kol_watch_cell(const yx_net_record_t& net);
// The place of a driver's entry, made when the pin has none for the net yet.
std::uint32_t kol_driver_of(yx_pin_record_t& pin, yx_net_record_t& root);
// Schedules for an absolute time while a run works on the cells.  False: the time is before the current one.
bool kol_schedule_cell(yx_pin_record_t& pin, yx_net_record_t& root, std::int32_t time, std::int8_t state);
// The fed pins' records are behind; those of a net with a terminal are always kept up.
inline void kol_mark_stale(std::uint32_t at) {
    if ((kol_cells.cell[at].flags & kol_cell_terminal) != 0) return;
    if (!kol_cells.is_stale[at]) kol_cells.stale.push_back(at);
    kol_cells.is_stale[at] = true;
}
// What the pins that the net feeds were shown last.
yx_signal_state_rec kol_shown_to_fed(std::uint32_t at, const kol_cell_t& cell);
// Keeps the new event of a driver in step while spikes are looked for; newest is the driver's one before.
void kol_link_pending(std::uint32_t place, std::int32_t time, std::uint32_t newest, std::int32_t newest_time);
// While a spike is seen, an earlier event that is still to come becomes uncertain.
void kol_react_to_spike(std::uint32_t newest, std::int32_t newest_time, std::int8_t state);
// A net's state, and that of the pins that it feeds, into the records.
void kol_write_net(const kol_cell_t& cell, yx_net_u1_t& net);
void kol_write_fed_pins(const kol_cell_t& cell, const yx_net_record_t& root);

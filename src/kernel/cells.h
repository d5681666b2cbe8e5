// kol: the cells, what an event of a run touches, in flat arrays.  A cell is a net tree with its driver: the
// state of the net, the driver's packed inputs, delays and newest pending event, the pins that the net feeds
// as entries of 4 bytes.  Gates and registers that check nothing work on cells alone; every other instance is
// called through its handlers, and the records of the nets that it touches are kept up at every change.
//
// Between runs the records of the store are the truth.  A run begins with cells that agree with them, built
// or read anew where something else than such a run has changed them, and ends by writing back what it
// changed. cell_records owns that way back and forth, cell_run works on the cells.
#pragma once

#include <algorithm>
#include <array>
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
    bool is_input() const { return kind() == kol_fed_kind::gate || kind() == kol_fed_kind::timed; }
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
// A driver of a net that has others, too, or that a fed pin drives.  In the cell of such a net `newest` is
// the first of its drivers that have scheduled, from 1 on; 0: none has.
struct kol_driver_t {
    yx_pin_record_t* pin = nullptr;
    yx_net_record_t* net = nullptr;  // root
    std::uint32_t newest = 0;
    std::int32_t newest_time = -1;
    std::uint32_t next = 0;  // of the net's, from 1 on
    std::uint8_t rank = 0;
};

// What the cells were built from.
struct kol_cells_made_t {
    bool is_made = false;        // all but the states agree with the records
    bool is_possible = false;    // a run can work on the cells
    bool has_states = false;     // the states do, too
    bool has_registers = false;  // registers go the short way
    bool pins_differ = false;    // the pins of one net may have been shown different states since
    std::int16_t sim_range_type = 0;
    yx_timing_index_array_t timing_ar{};
};

// What a spike is measured by: the delays of a single driver and of the fed pins to "0", "1", another value,
// and the longest one of a fed pin.  Taken from the records when a change is first so near that it counts.
struct kol_spike_delays_t {
    static constexpr std::int32_t not_taken = -2, nothing_fed = -1;
    std::int32_t driver[3] = {0, 0, 0};
    std::int32_t fed[3] = {0, 0, 0};
    std::int32_t longest_fed = not_taken;
    bool are_fed_alike = true;
};
// A driver's event among its others, while spikes are looked for; by place in the wheel.  Written only where
// a driver has several events pending: `newer` and `time` mean something in an event that is not its
// driver's newest or that has an older one, `older` is none in every other.
struct kol_pending_t {
    std::uint32_t newer = kol_wheel_t::none, older = kol_wheel_t::none;
    std::int32_t time = 0;
};
// What the fed pins were shown last, where that is not what the net took at a time.
struct kol_shown_t {
    static constexpr std::int32_t nothing = -2;
    std::int32_t net_time = nothing;
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
    std::vector<std::int16_t> priorities;  // of the drivers, in ascending order: a rank is a place here
    std::vector<std::uint8_t> rank;        // of single drivers, by cell; empty where there is one priority
    std::vector<std::uint32_t> listed;     // cells to be written back
    std::vector<std::uint32_t> stale;      // cells whose fed pins are to be written back
    std::vector<bool> is_stale;
    kol_wheel_t wheel;
    std::vector<kol_pending_t> pending;
    std::vector<kol_shown_t> shown;  // by cell; empty while no net differs
    std::uint32_t head_rank = 0;     // of the event that is executed, where it counts
    bool is_running = false;
    bool looks_for_spikes = false;
    bool holds_pins = false;  // the pins of one net may be shown different states
    bool is_ranked = false;   // priorities differ, or events may be moved
    bool is_plain = true;     // neither that, nor are spikes looked for or was one seen last
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
inline std::uint32_t kol_first_force() { return static_cast<std::uint32_t>(kol_cells.cell.size()); }
inline std::uint32_t kol_first_driver() { return 2 * kol_first_force(); }
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
std::uint8_t kol_rank_of(std::int16_t priority);
inline std::uint8_t kol_rank_of_cell(std::uint32_t at) {
    return kol_cells.rank.empty() ? std::uint8_t{0} : kol_cells.rank[at];
}
// Schedules for an absolute time while a run works on the cells.  False: the time is before the current one.
bool kol_schedule_cell(yx_pin_record_t& pin, yx_net_record_t& root, std::int32_t time, std::int8_t state);
// The fed pins' records are behind; those of a net with a terminal are always kept up.
inline void kol_mark_stale(std::uint32_t at) {
    if ((kol_cells.cell[at].flags & kol_cell_terminal) != 0) return;
    if (!kol_cells.is_stale[at]) kol_cells.stale.push_back(at);
    kol_cells.is_stale[at] = true;
}
inline void kol_forget_shown(std::uint32_t at) {
    if (!kol_cells.shown.empty()) kol_cells.shown[at].net_time = kol_shown_t::nothing;
}
// What the pins that the net feeds were shown last.
yx_signal_state_rec kol_shown_to_fed(std::uint32_t at, const kol_cell_t& cell);
// A driver's event, and what remembers the driver's newest one.
struct kol_newest_t {
    std::uint32_t& place;
    std::int32_t& time;
};
// A driver's new event among its others; the newest one is the one before.
inline void kol_link_pending(std::uint32_t place, std::int32_t time, const kol_newest_t& newest) {
    if (newest.time < kol_ext.cur_time) return;
    std::vector<kol_pending_t>& pending = kol_cells.pending;
    if (const std::size_t last = std::max(place, newest.place); last >= pending.size())
        pending.resize(2 * last + 64);
    pending[newest.place].newer = place;
    pending[newest.place].time = newest.time;
    pending[place].older = newest.place;
    pending[place].time = time;
}
// A new event of a driver where priorities differ or spikes count; the place of the event.
std::uint32_t kol_add_with_care(std::int32_t time, std::uint32_t what, std::uint32_t rank,
                                const kol_newest_t& newest);
// A net's state, and that of the pins that it feeds, into the records.
void kol_write_net(const kol_cell_t& cell, yx_net_u1_t& net);
void kol_write_fed_pins(const kol_cell_t& cell, const yx_net_record_t& root);
// The fed pins' records are up, and are not written again before the net changes.
void kol_hold_fed_pins(std::uint32_t at);

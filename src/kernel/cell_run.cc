// Events of cells, of FORCEs and of other drivers; the way into the wheel and out of it.
#include "kernel/cell_run.h"

#include <algorithm>
#include <limits>

#include "foundation/shell.h"
#include "kernel/cell_build.h"
#include "kernel/cell_queue.h"
#include "kernel/cell_records.h"
#include "kernel/cell_spikes.h"
#include "kernel/execute.h"
#include "kernel/history.h"
#include "kernel/run_end.h"
#include "kernel/run_messages.h"
#include "kernel/spikes.h"
#include "kernel/state.h"
#include "kernel/watchers.h"

namespace {

yx_net_record_t& record_of(std::uint32_t at) { return *yx_ptrto_net_rec(static_cast<std::int32_t>(at)); }

using cell_t = kol_cell_t;

// The run at hand.
struct run_t {
    std::int32_t now = 0;
    bool asks = false;                   // something has happened that may end the run
    std::vector<std::uint32_t> changed;  // cells, while all nets are watched
    std::vector<std::uint8_t> noted;     // 1 for those, by index
};
run_t run;

void list_cell(std::uint32_t at, cell_t& cell) {
    if ((cell.flags & kol_cell_listed) != 0) return;
    cell.flags |= kol_cell_listed;
    kol_cells.listed.push_back(at);
}

// ---- scheduling

constexpr std::uint8_t delay_of_value[] = {2, 0, 2, 1};

void schedule(std::uint32_t at, cell_t& cell, std::int8_t state, std::int32_t delay) {
    constexpr std::int64_t last_time = std::numeric_limits<std::int32_t>::max();
    const auto time = static_cast<std::int32_t>(std::min(std::int64_t{run.now} + delay, last_time));
    const std::uint32_t what = kol_what(at, state);
    if (cell.newest_time >= time) {
        kol_cells.wheel.what(cell.newest) = what;
        return;
    }
    const bool is_plain = kol_cells.is_plain || (!kol_cells.is_ranked && cell.newest_time < run.now);
    cell.newest = is_plain
                      ? kol_cells.wheel.add(time, what)
                      : kol_add_with_care(time, what, kol_rank_of_cell(at), {cell.newest, cell.newest_time});
    cell.newest_time = time;
}

void evaluate_gate(kol_fed_t fed, std::int16_t value) {
    cell_t& gate = kol_cells.cell[fed.index()];
    gate.in = static_cast<std::uint8_t>((gate.in & ~(3U << fed.shift())) | static_cast<unsigned>(value)
                                                                               << fed.shift());
    const std::int8_t state = kol_cells.table[gate.table][gate.in];
    schedule(fed.index(), gate, state, gate.delay[delay_of_value[state & 3]]);
}

void evaluate_timed(kol_fed_t fed, std::int16_t value) {
    const kol_timed_gate_t& timed = kol_cells.timed[fed.index()];
    cell_t& gate = kol_cells.cell[timed.cell];
    kol_put_input(fed, value);
    const std::int8_t state = kol_cells.table[gate.table][gate.in];
    schedule(timed.cell, gate, state, timed.delay[delay_of_value[state & 3]]);
}

void call_handler(const kol_pin_link_t& fed) {
    kol_ext.cur_inst = fed.pin->instance_ptr;
    kol_ext.cur_pin = fed.pin;
    kol_ext.cur_net = fed.net;
    run.asks = true;
    kol_exec_hdler(fed.pin->pin_hdler);
}

// Of a register whose setup time may be violated.
void call_clock(const kol_register_t& clocked) {
    const kol_pin_link_t& clock = kol_cells.called[clocked.clock];
    const auto root = static_cast<std::uint32_t>(kol_root_net(clock.net)->self);
    kol_note_data_time(clocked);
    for (const std::uint32_t at : {clocked.data, root}) kol_write_changed_net(at);
    call_handler(clock);
}

void capture(const kol_register_t& clocked) {
    const cell_t& data = kol_cells.cell[clocked.data];
    if (clocked.setup > run.now - std::max(data.cur_time, 0)) [[unlikely]]
        return call_clock(clocked);
    cell_t& cell = kol_cells.cell[clocked.cell];
    const std::int8_t state = kol_cells.table[cell.table][static_cast<std::size_t>(kol_value_of(data.cur))];
    schedule(clocked.cell, cell, state, cell.delay[delay_of_value[state & 3]]);
}

// ---- changes

unsigned transition_of(const cell_t& cell) {
    return static_cast<unsigned>(kol_value_of(cell.old)) * 4 + static_cast<unsigned>(kol_value_of(cell.cur));
}

[[gnu::always_inline]] inline void feed(kol_fed_t fed, std::int16_t value, unsigned transition) {
    switch (fed.kind()) {
        case kol_fed_kind::gate:
            evaluate_gate(fed, value);
            break;
        case kol_fed_kind::timed:
            evaluate_timed(fed, value);
            break;
        case kol_fed_kind::clock:
            if (const kol_register_t& clocked = kol_cells.registers[fed.index()];
                (clocked.active >> transition & 1) != 0)
                capture(clocked);
            break;
        case kol_fed_kind::handler:
            call_handler(kol_cells.called[fed.index()]);
            break;
        case kol_fed_kind::none:
            break;
    }
}

// The gates take the value in, and nothing is called.
void fan_out_suppressed(const cell_t& cell) {
    for (const kol_fed_t* fed = &kol_cells.fed[cell.first_fed];; ++fed) {
        if (fed->is_input()) kol_put_input(*fed, kol_value_of(cell.cur));
        if (fed->is_last()) return;
    }
}

bool is_suppressed() { return kol_ext.spiked && kol_ext.spike_model == kol_suppress; }

void fan_out(const cell_t& cell) {
    const std::int16_t value = kol_value_of(cell.cur);
    const unsigned transition = transition_of(cell);
    for (const kol_fed_t* fed = &kol_cells.fed[cell.first_fed];; ++fed) {
        feed(*fed, value, transition);
        if (fed->is_last()) return;
    }
}

void take_state(std::uint32_t at, cell_t& cell, std::int8_t state) {
    if (cell.cur_time == run.now) [[unlikely]]
        kol_forget_shown(at);
    cell.old = cell.cur;
    cell.cur = state;
    cell.cur_time = run.now;
    list_cell(at, cell);
}

void keep_records_up(std::uint32_t at, const cell_t& cell) {
    kol_mark_stale(at);
    kol_write_net(cell, record_of(at).UU.U1);
    const bool is_shown = cell.cur != cell.old;
    if (is_shown && (cell.flags & kol_cell_terminal) != 0) kol_write_fed_pins(cell, record_of(at));
    if ((cell.flags & kol_cell_breaks) != 0) run.asks = true;
}

// A second change at one time is merged with the state before the first.
std::int8_t keep_history(std::uint32_t at, const cell_t& cell, std::int8_t state) {
    if ((cell.flags & kol_cell_observed) == 0) return state;
    kol_history_t& history = *record_of(at).UU.U1.history;
    if (history.newest().time != run.now) {
        history.append(run.now, state);
        return state;
    }
    return history.newest().state = kol_net_state(state, cell.old);
}

// What the fed pins are shown when it differs from what the net takes now.
void note_shown(std::uint32_t at, bool differs, const cell_t& cell, const yx_signal_state_rec& shown) {
    if (!differs) return kol_forget_shown(at);
    kol_cells.shown.resize(kol_cells.cell.size());
    kol_cells.shown[at] = {cell.cur_time, shown};
}

// The net takes a state, and no pin that it feeds is shown it.
[[gnu::cold]] void change_unseen(std::uint32_t at, cell_t& cell, std::int8_t state) {
    kol_hold_fed_pins(at);
    take_state(at, cell, state);
    kol_write_net(cell, record_of(at).UU.U1);
    if ((cell.flags & kol_cell_breaks) != 0) run.asks = true;
    if (cell.cur != cell.old) fan_out_suppressed(cell);
}

// The net takes a state that its drivers give it.
void change(std::uint32_t at, cell_t& cell, std::int8_t state) {
    if (is_suppressed()) [[unlikely]]
        return change_unseen(at, cell, keep_history(at, cell, state));
    if ((cell.flags & kol_cell_special) == 0) [[likely]] {
        take_state(at, cell, state);
        fan_out(cell);
        return;
    }
    state = keep_history(at, cell, state);
    if (kol_cells.holds_pins && state == cell.cur) return change_unseen(at, cell, state);
    const yx_signal_state_rec shown = kol_shown_to_fed(at, cell);
    take_state(at, cell, state);
    note_shown(at, cell.cur == cell.old, cell, shown);
    keep_records_up(at, cell);
    if (cell.cur != cell.old) fan_out(cell);
}

// ---- spikes

// The change that an event brings, near the next one of its net.
struct near_change_t {
    std::uint32_t at;
    bool is_of_cell;          // the cell's single driver brings it
    yx_pin_record_t* driver;  // otherwise; none for a FORCE event
    std::int32_t time;        // that the net and the pins that it feeds are given
    std::int8_t state;
    std::int32_t dif;  // to the net's next change
};

const yx_pin_record_t* driver_of(const near_change_t& near) {
    return near.is_of_cell ? kol_drivers_of(record_of(near.at))[0].pin : near.driver;
}

bool is_spike(const near_change_t& near, std::int32_t delay) {
    kol_ext.spiked = near.dif >= 0 && near.dif < delay;
    if (!kol_ext.spiked || near.dif <= kol_ext.spike_min) return false;
    run.asks = true;
    return true;
}

void check_driver(const near_change_t& near, std::int32_t delay) {
    if (is_spike(near, delay))
        kol_say_driver_spike({driver_of(near), &record_of(near.at), nullptr, near.time, near.dif, delay});
}

void check_fed_pin(const near_change_t& near, const yx_pin_record_t& pin) {
    const std::int32_t delay = kol_spike_delay(pin, record_of(near.at), near.state);
    if (is_spike(near, delay))
        kol_say_fan_out_spike({&pin, &record_of(near.at), driver_of(near), near.time, near.dif, delay});
}

// Calls visit(pin, entry) for all pins that the net feeds; entry is none for one that listens to nothing.
template <typename Visit>
void for_each_fed_pin(const near_change_t& near, const cell_t& cell, Visit visit) {
    const kol_fed_t* next = &kol_cells.fed[cell.first_fed];
    const std::int32_t* pin = &kol_cells.fed_pin[cell.first_fed];
    for (const kol_pin_link_t& fed : kol_fan_out_of(record_of(near.at))) {
        const bool listens = *pin == fed.pin->self;
        visit(fed, listens ? next : nullptr);
        if (!listens || next->is_last()) continue;
        ++next;
        ++pin;
    }
}

// Each fed pin is checked before its instance works.
[[gnu::cold]] void fan_out_checked(const near_change_t& near, const cell_t& cell) {
    for_each_fed_pin(near, cell, [&](const kol_pin_link_t& fed, const kol_fed_t* entry) {
        check_fed_pin(near, *fed.pin);
        if (entry != nullptr) feed(*entry, kol_value_of(cell.cur), transition_of(cell));
    });
}

// Where all fed pins have the same delays they see the spike together, or not.
void fan_out_near(const near_change_t& near, const cell_t& cell) {
    const kol_spike_delays_t& delays = kol_spike_delays_of(near.at);
    if (delays.longest_fed == kol_spike_delays_t::nothing_fed) return;
    const bool is_near = near.dif >= 0 && near.dif < delays.longest_fed;
    if (is_near && (!delays.are_fed_alike || near.dif > kol_ext.spike_min))
        return fan_out_checked(near, cell);
    kol_ext.spiked = is_near && near.dif < delays.fed[delay_of_value[near.state & 3]];
    fan_out(cell);
}

// Pins that see a spike are not shown it, and what they feed is not called.
[[gnu::cold]] void fan_out_suppressing(const near_change_t& near, const cell_t& cell) {
    for_each_fed_pin(near, cell, [&](const kol_pin_link_t& fed, const kol_fed_t* entry) {
        check_fed_pin(near, *fed.pin);
        if (kol_ext.spiked) {
            if (entry != nullptr && entry->is_input()) kol_put_input(*entry, kol_value_of(cell.cur));
            return;
        }
        yx_signal_state_rec& seen = kol_pin_state(*fed.pin, *fed.net);
        seen.state = near.state;
        seen.time = near.time;
        if (entry != nullptr) feed(*entry, kol_value_of(cell.cur), transition_of(cell));
    });
}

void change_or_suppress(near_change_t near, cell_t& cell) {
    kol_hold_fed_pins(near.at);
    if (!kol_ext.spiked) {
        near.state = keep_history(near.at, cell, near.state);
        take_state(near.at, cell, near.state);
        kol_write_net(cell, record_of(near.at).UU.U1);
    }
    if ((cell.flags & kol_cell_breaks) != 0) run.asks = true;
    if (cell.cur != cell.old) fan_out_suppressing(near, cell);
}

bool is_indeterminate() {
    return kol_ext.spike_model == kol_indgene || kol_ext.spike_model == kol_pessimistic;
}

// The history of a net that changes in a spike; the state that it takes.
std::int8_t keep_spike(const near_change_t& near, const cell_t& cell) {
    std::int8_t taken = is_indeterminate() ? kol_indeterminate_of(near.state) : near.state;
    if ((cell.flags & kol_cell_observed) == 0) return taken;
    kol_history_t& history = *record_of(near.at).UU.U1.history;
    if (history.newest().time < near.time) {
        history.append(near.time, taken);
        return taken;
    }
    if (!is_indeterminate()) taken = kol_net_state(taken, cell.cur);
    return history.newest().state = taken;
}

void change_near(near_change_t near, cell_t& cell, std::int32_t delay) {
    check_driver(near, delay);
    if (kol_ext.spike_model == kol_suppress) return change_or_suppress(near, cell);
    const bool differs = kol_ext.spiked && is_indeterminate();
    if (kol_ext.spiked && kol_ext.spike_model == kol_pessimistic) near.time = std::max(near.time - delay, 0);
    const std::int8_t taken =
        kol_ext.spiked ? keep_spike(near, cell) : keep_history(near.at, cell, near.state);
    if (!differs) near.state = taken;
    yx_signal_state_rec shown = {near.time, near.state};
    if (taken == cell.cur) shown = kol_shown_to_fed(near.at, cell);
    take_state(near.at, cell, taken);
    cell.cur_time = near.time;
    note_shown(near.at, cell.cur == cell.old || differs, cell, shown);
    if ((cell.flags & kol_cell_special) != 0) keep_records_up(near.at, cell);
    if (cell.cur != cell.old) fan_out_near(near, cell);
}

// Where no change is so near that a pin sees a spike, as mostly.
void change_of_cell(std::uint32_t at, cell_t& cell, std::int8_t state, std::uint32_t executed) {
    kol_ext.spiked = false;
    if (executed == cell.newest && (cell.flags & kol_cell_forced) == 0) return change(at, cell, state);
    const std::int32_t dif = kol_next_change_of_cell(at, cell, executed);
    if (dif < 0) return change(at, cell, state);
    const kol_spike_delays_t& delays = kol_spike_delays_of(at);
    const std::int32_t delay = delays.driver[delay_of_value[state & 3]];
    if (dif >= delays.longest_fed && dif >= delay) return change(at, cell, state);
    change_near({at, true, nullptr, run.now, state, dif}, cell, delay);
}

// ---- the kinds of events

void change_by_driver(std::uint32_t at, cell_t& cell, std::int8_t state, std::uint32_t place) {
    if (kol_cells.looks_for_spikes)
        change_of_cell(at, cell, state, place);
    else
        change(at, cell, state);
}

void exec_cell(std::uint32_t at, std::int8_t state, std::uint32_t place) {
    cell_t& cell = kol_cells.cell[at];
    if (cell.seen_time == run.now && cell.seen != state) [[unlikely]] {
        run.asks = true;
        kol_say_pin_hazard(*kol_drivers_of(record_of(at))[0].pin, record_of(at), run.now);
    } else {
        cell.seen = state;
        cell.seen_time = run.now;
        list_cell(at, cell);
        const std::int8_t resolved = state < 4 ? std::int8_t{0} : state;
        if (cell.cur != resolved) change_by_driver(at, cell, resolved, place);
    }
    if (!kol_cells.is_plain && place != cell.newest) kol_unlink_pending(place);
    if (cell.newest_time == run.now) cell.newest_time = -1;
    if ((cell.flags & kol_cell_breaks) != 0) run.asks = true;
}

std::int8_t resolved_state(const yx_net_record_t& net, std::int8_t state_of_driver) {
    if (net.UU.U1.nb_of_driver == 1) return kol_net_state(0, state_of_driver);
    std::int8_t state = 0;
    for (const kol_pin_link_t& driver : kol_drivers_of(net))
        state = kol_net_state(state, kol_pin_state(*driver.pin, *driver.net).state);
    return state;
}

void exec_seen_driver(const kol_driver_t& driver, std::int8_t state) {
    const auto at = static_cast<std::uint32_t>(driver.net->self);
    cell_t& cell = kol_cells.cell[at];
    yx_signal_state_rec& seen = kol_pin_state(*driver.pin, *driver.net);
    if (seen.time == run.now && seen.state != state)
        return kol_say_pin_hazard(*driver.pin, *driver.net, run.now);
    seen.state = state;
    seen.time = run.now;
    if ((cell.flags & kol_cell_fixed) != 0) return;
    const std::int8_t resolved = resolved_state(*driver.net, state);
    if (cell.cur == resolved) return;
    if (!kol_cells.looks_for_spikes) {
        if ((cell.flags & kol_cell_special) == 0) kol_forget_shown(at);
        return change(at, cell, resolved);
    }
    change_near({at, false, driver.pin, run.now, resolved, kol_next_change_of_net(at, state)}, cell,
                kol_spike_delay(*driver.pin, *driver.net, resolved));
}

void exec_driver(std::uint32_t index, std::int8_t state, std::uint32_t place) {
    run.asks = true;
    exec_seen_driver(kol_driver_t(kol_cells.drivers[index]), state);
    kol_driver_t& driver = kol_cells.drivers[index];
    if (!kol_cells.is_plain && place != driver.newest) kol_unlink_pending(place);
    if (driver.newest_time == run.now) driver.newest_time = -1;
}

void warn_of_force(std::uint32_t at, const cell_t& cell, std::int8_t state) {
    if (run.now == 0) return;
    if ((cell.flags & kol_cell_fixed) != 0)
        kol_say_fixed_net(record_of(at), run.now);
    else if (cell.cur_time == run.now && cell.cur != state)
        kol_say_net_hazard(record_of(at), run.now);
}

// By the model that suppresses.
void show_force_one_by_one(std::uint32_t at, cell_t& cell, bool is_checked) {
    kol_write_net(cell, record_of(at).UU.U1);
    const std::int32_t dif = is_checked ? kol_next_change_of_net(at, cell.cur) : -1;
    if (!is_checked && kol_ext.spiked) return fan_out_suppressed(cell);
    fan_out_suppressing({at, false, nullptr, run.now, cell.cur, dif}, cell);
}

void exec_force(std::uint32_t at, std::int8_t state) {
    cell_t& cell = kol_cells.cell[at];
    run.asks = true;
    warn_of_force(at, cell, state);
    if (cell.cur == state) return;
    const bool is_checked = kol_cells.looks_for_spikes && (cell.flags & kol_cell_fixed) == 0;
    const bool holds = kol_cells.holds_pins;
    if (holds) kol_hold_fed_pins(at);
    take_state(at, cell, state);
    if ((cell.flags & kol_cell_observed) != 0) {
        kol_history_t& history = *record_of(at).UU.U1.history;
        if (history.newest().time == run.now)
            history.newest().state = state;
        else
            history.append(run.now, state);
    }
    if (holds) return show_force_one_by_one(at, cell, is_checked);
    kol_forget_shown(at);
    keep_records_up(at, cell);
    if (is_checked)
        fan_out_near({at, false, nullptr, run.now, state, kol_next_change_of_net(at, state)}, cell);
    else
        fan_out(cell);
}

void exec_and_retire_force(std::uint32_t at, std::int8_t state) {
    exec_force(at, state);
    if (kol_cells.looks_for_spikes) kol_retire_force(at);
}

// ---- the loop

constexpr std::uint32_t never_outranked = ~std::uint32_t{0};

std::uint32_t rank_of(std::uint32_t index) {
    if (index < kol_first_force()) return kol_rank_of_cell(index);
    return index < kol_first_driver() ? never_outranked : kol_cells.drivers[index - kol_first_driver()].rank;
}

void exec(std::uint32_t what, std::uint32_t place) {
    const std::uint32_t index = what >> kol_what_shift;
    if (kol_cells.is_ranked) kol_cells.head_rank = rank_of(index);
    const auto state = static_cast<std::int8_t>(what & 31);
    if (index < kol_first_force())
        exec_cell(index, state, place);
    else if (index < kol_first_driver())
        exec_and_retire_force(index - kol_first_force(), state);
    else
        exec_driver(index - kol_first_driver(), state, place);
}

kol_executed_t executed(std::uint32_t what, bool looks_at_keys) {
    const std::uint32_t index = what >> kol_what_shift;
    if (index >= kol_first_driver())
        return {looks_at_keys, run.now, kol_cells.drivers[index - kol_first_driver()].net};
    const bool is_force = index >= kol_first_force();
    return {is_force || looks_at_keys, run.now, &record_of(is_force ? index - kol_first_force() : index)};
}

// The events of the current time; true ends the run.
bool exec_now(std::int64_t counted_before) {
    kol_wheel_t& wheel = kol_cells.wheel;
    std::int64_t events = 0;
    bool is_ended = false;
    for (std::uint32_t at = wheel.head(); at != kol_wheel_t::none && !is_ended; at = wheel.head()) {
        if (const std::uint32_t next = wheel.next_of(at); next != kol_wheel_t::none)
            __builtin_prefetch(&kol_cells.cell[std::min<std::size_t>(wheel.what(next) >> kol_what_shift,
                                                                     kol_first_force() - 1)]);
        const std::uint32_t what = wheel.what(at);
        const bool is_look_due = kol_is_look_due();
        run.asks = is_look_due;
        exec(what, at);
        wheel.drop_head();
        ++events;
        is_ended = run.asks && kol_is_run_ended(executed(what, is_look_due), counted_before);
    }
    kol_events_executed += events;
    return is_ended;
}

// Who watches all nets is told of those listed at this time; they stay noted for the end of the run.
void note_changes() {
    if (kol_watchers.nets.changed == nullptr) return;
    run.noted.resize(kol_cells.cell.size());
    std::vector<kol_net_change_t>& changes = kol_watchers.changes;
    changes.resize(kol_cells.listed.size());
    std::size_t count = 0;
    for (const std::uint32_t at : kol_cells.listed) {
        cell_t& cell = kol_cells.cell[at];
        cell.flags &= static_cast<std::uint8_t>(~kol_cell_listed);
        changes[count] = {at, cell.cur};
        if (cell.cur_time == run.now) ++count;
        if (run.noted[at] != 0) continue;
        run.changed.push_back(at);
        run.noted[at] = 1;
    }
    changes.resize(count);
    kol_cells.listed.clear();
}

void list_noted_changes() {
    note_changes();
    for (const std::uint32_t at : run.changed) list_cell(at, kol_cells.cell[at]);
}

bool end_time_watched(std::int64_t next_time, std::int64_t counted_before) {
    note_changes();
    return kol_watch_time(next_time, counted_before);
}

bool exec_times(kol_stimuli_entry_t& stimuli) {
    const std::int64_t counted_before = tm_counted();
    kol_ext.spike_min = kol_ext.spike_min_t0;
    for (;;) {
        const std::int64_t next = std::min(kol_cells.wheel.next_time(), stimuli.next_time());
        if (kol_watchers.is_on && next > kol_ext.cur_time && end_time_watched(next, counted_before))
            return true;
        if (next > kol_ext.end_time) return false;
        if (kol_progress_is_due != 0) [[unlikely]]
            kol_show_progress();
        const auto time = static_cast<std::int32_t>(next);
        if (kol_ext.tspike_min > 0 && time >= kol_ext.tspike_min) kol_ext.spike_min = kol_ext.spike_min_t;
        kol_ext.cur_time = run.now = time;
        kol_cells.wheel.turn_to(time);
        stimuli.enter_until(time);
        if (kol_cells.looks_for_spikes) kol_see_forces_until(std::int64_t{time} + kol_max_delay);
        if (exec_now(counted_before)) return true;
    }
}

bool is_possible() {
    return kol_cells_are_used &&
           (kol_ext.cur_event == nullptr || kol_ext.cur_event->time >= kol_ext.cur_time);
}

}  // namespace

bool kol_cells_are_used = true;

bool kol_run_cells() {
    if (!is_possible() || !kol_prepare_cells()) return false;
    kol_stimuli_entry_t stimuli(kol_wheel_of_cells);
    run = {};
    std::vector<std::int32_t> times = kol_times_of_queue();
    if (kol_cells.looks_for_spikes) kol_begin_forces(times);
    kol_take_queue();
    stimuli.begin(std::move(times));
    kol_cells.is_running = true;
    kol_ext.time_breaked = exec_times(stimuli) || kol_ext.time_breaked;
    kol_cells.is_running = false;
    list_noted_changes();
    stimuli.end(kol_times_of_wheel());
    kol_write_back_cells();
    kol_give_queue_back();
    if (kol_cells.looks_for_spikes) kol_end_forces();
    return true;
}

// Events of cells, of FORCEs and of other drivers; the way into the wheel and out of it.
#include "kernel/cell_run.h"

#include <algorithm>
#include <limits>

#include "kernel/cell_records.h"
#include "kernel/execute.h"
#include "kernel/history.h"
#include "kernel/queue.h"
#include "kernel/run_end.h"
#include "kernel/run_messages.h"
#include "kernel/state.h"
#include "kernel/time_index.h"

namespace {

using cell_t = kol_cell_t;

yx_net_record_t& record_of(std::uint32_t at) { return *yx_ptrto_net_rec(static_cast<std::int32_t>(at)); }

// ---- stimuli

// Enters FORCE events when their time has come, in front of the events that this run has scheduled for it.
// But those of a time for which events are left of an earlier run go behind these at once, and those of the
// last time, too, since pins put events in front of the last one of all.
struct stimuli_reader {
    const kol_stimuli_t& stimuli;
    std::size_t next = 0;
    std::vector<std::int32_t> entered{};  // times entered at once, in order

    std::int64_t next_time() const {
        return next == stimuli.size() ? kol_wheel_t::never : std::int64_t{stimuli[next].time};
    }
    static std::uint32_t what(const kol_stimulus_t& stimulus) {
        return kol_what(kol_first_force() + static_cast<std::uint32_t>(kol_root_net(stimulus.net)->self),
                        stimulus.state);
    }
    void enter_at_once(std::int32_t time) {
        const auto of_time = std::ranges::equal_range(stimuli, time, {}, &kol_stimulus_t::time);
        for (const kol_stimulus_t& stimulus : of_time) kol_cells.wheel.append(time, what(stimulus));
        if (!of_time.empty()) entered.push_back(time);
    }
    void enter_behind(const std::vector<std::int32_t>& times_of_queue) {
        for (const std::int32_t time : times_of_queue) enter_at_once(time);
        if (stimuli.empty() || std::ranges::binary_search(entered, stimuli.back().time)) return;
        enter_at_once(stimuli.back().time);
        std::ranges::sort(entered);
    }
    void enter(std::int32_t time) {
        if (next_time() != time) return;
        std::vector<std::uint32_t> whats;
        for (; next_time() == time; ++next) whats.push_back(what(stimuli[next]));
        if (!std::ranges::binary_search(entered, time)) kol_cells.wheel.add_first(time, whats);
    }
    void enter_rest() {
        while (next < stimuli.size()) enter(stimuli[next].time);
    }
};

// ---- into the wheel

void remember_newest(const yx_event_rec_t& event, std::uint32_t place, std::uint32_t index) {
    if (index < kol_first_force()) {
        kol_cells.cell[index].newest = place;
        kol_cells.cell[index].newest_time = event.time;
    } else {
        kol_driver_t& driver = kol_cells.drivers[index - kol_first_driver()];
        driver.newest = place;
        driver.newest_time = event.time;
    }
}

std::uint32_t index_of(const yx_event_rec_t& event) {
    const auto at = static_cast<std::uint32_t>(event.net->self);
    if (event.pin == nullptr) return kol_first_force() + at;
    const bool is_single = (kol_cells.cell[at].flags & kol_cell_single) != 0;
    if (is_single && kol_drivers_of(*event.net)[0].pin == event.pin) return at;
    return kol_first_driver() + kol_driver_of(*event.pin, *event.net);
}

// The times of the queue.
std::vector<std::int32_t> take_queue() {
    std::vector<std::int32_t> times;
    for (const yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next) {
        if (times.empty() || times.back() != event->time) times.push_back(event->time);
        const std::uint32_t index = index_of(*event);
        const std::uint32_t place = kol_cells.wheel.append(event->time, kol_what(index, event->state));
        if (event->pin != nullptr) remember_newest(*event, place, index);
    }
    kol_empty_queue();
    return times;
}

void give_queue_back() {
    kol_advance_index(kol_ext.cur_time);
    kol_cells.wheel.for_each([](std::int32_t time, std::uint32_t what) {
        const std::uint32_t index = what >> kol_what_shift;
        const auto state = static_cast<std::int8_t>(what & 31);
        if (index >= kol_first_driver()) {
            const kol_driver_t& driver = kol_cells.drivers[index - kol_first_driver()];
            kol_append_event(driver.pin, driver.net, time, state);
        } else if (index >= kol_first_force()) {
            kol_append_event(nullptr, &record_of(index - kol_first_force()), time, state);
        } else {
            kol_cells.cell[index].newest_time = -1;
            kol_append_event(kol_drivers_of(record_of(index))[0].pin, &record_of(index), time, state);
        }
    });
}

// The run at hand.
struct run_t {
    std::int32_t now = 0;
    bool asks = false;  // something has happened that may end the run
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
    cell.newest = kol_cells.wheel.add(time, what);
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

// Of a register whose setup time is violated.
void call_clock(const kol_register_t& clocked) {
    const kol_pin_link_t& clock = kol_cells.called[clocked.clock];
    const auto root = static_cast<std::uint32_t>(kol_root_net(clock.net)->self);
    kol_note_data_time(clocked);
    kol_write_net(kol_cells.cell[clocked.data], record_of(clocked.data).UU.U1);
    kol_write_net(kol_cells.cell[root], record_of(root).UU.U1);
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

void fan_out(const cell_t& cell) {
    const std::int16_t value = kol_value_of(cell.cur);
    const unsigned transition =
        static_cast<unsigned>(kol_value_of(cell.old)) * 4 + static_cast<unsigned>(value);
    for (const kol_fed_t* fed = &kol_cells.fed[cell.first_fed];; ++fed) {
        switch (fed->kind()) {
            case kol_fed_kind::gate:
                evaluate_gate(*fed, value);
                break;
            case kol_fed_kind::timed:
                evaluate_timed(*fed, value);
                break;
            case kol_fed_kind::clock:
                if (const kol_register_t& clocked = kol_cells.registers[fed->index()];
                    (clocked.active >> transition & 1) != 0)
                    capture(clocked);
                break;
            case kol_fed_kind::handler:
                call_handler(kol_cells.called[fed->index()]);
                break;
            case kol_fed_kind::none:
                break;
        }
        if (fed->is_last()) return;
    }
}

void take_state(std::uint32_t at, cell_t& cell, std::int8_t state) {
    cell.old = cell.cur;
    cell.cur = state;
    cell.cur_time = run.now;
    cell.flags |= kol_cell_changed;
    list_cell(at, cell);
}

void keep_records_up(std::uint32_t at, const cell_t& cell) {
    if ((cell.flags & (kol_cell_mirrored | kol_cell_breaks)) != 0) kol_write_net(cell, record_of(at).UU.U1);
    if ((cell.flags & kol_cell_terminal) != 0) kol_write_fed_pins(cell, record_of(at));
    if ((cell.flags & kol_cell_breaks) != 0) run.asks = true;
}

// A second change at one time is merged with the state before the first.
std::int8_t keep_history(std::uint32_t at, const cell_t& cell, std::int8_t state) {
    if ((cell.flags & kol_cell_observed) == 0) return state;
    yx_net_record_t& net = record_of(at);
    if (net.UU.U1.list_state->time != run.now) {
        kol_append_history(&net, run.now, state);
        return state;
    }
    return net.UU.U1.list_state->state = kol_net_state(state, cell.old);
}

// The net takes a state that its drivers give it.
void change(std::uint32_t at, cell_t& cell, std::int8_t state) {
    if ((cell.flags & kol_cell_special) == 0) [[likely]] {
        take_state(at, cell, state);
        fan_out(cell);
        return;
    }
    take_state(at, cell, keep_history(at, cell, state));
    keep_records_up(at, cell);
    if (cell.cur != cell.old) fan_out(cell);
}

// ---- the kinds of events

void exec_cell(std::uint32_t at, std::int8_t state) {
    cell_t& cell = kol_cells.cell[at];
    if (cell.seen_time == run.now && cell.seen != state) [[unlikely]] {
        run.asks = true;
        kol_say_pin_hazard(*kol_drivers_of(record_of(at))[0].pin, record_of(at), run.now);
    } else {
        cell.seen = state;
        cell.seen_time = run.now;
        list_cell(at, cell);
        const std::int8_t resolved = state < 4 ? std::int8_t{0} : state;
        if (cell.cur != resolved) change(at, cell, resolved);
    }
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
    if (cell.cur != resolved) change(at, cell, resolved);
}

void exec_driver(std::uint32_t index, std::int8_t state) {
    run.asks = true;
    exec_seen_driver(kol_driver_t(kol_cells.drivers[index]), state);
    kol_driver_t& driver = kol_cells.drivers[index];
    if (driver.newest_time == run.now) driver.newest_time = -1;
}

void warn_of_force(std::uint32_t at, const cell_t& cell, std::int8_t state) {
    if (run.now == 0) return;
    if ((cell.flags & kol_cell_fixed) != 0)
        kol_say_fixed_net(record_of(at), run.now);
    else if (cell.cur_time == run.now && cell.cur != state)
        kol_say_net_hazard(record_of(at), run.now);
}

void exec_force(std::uint32_t at, std::int8_t state) {
    cell_t& cell = kol_cells.cell[at];
    run.asks = true;
    warn_of_force(at, cell, state);
    if (cell.cur == state) return;
    take_state(at, cell, state);
    if ((cell.flags & kol_cell_observed) != 0) {
        yx_net_record_t& net = record_of(at);
        if (net.UU.U1.list_state->time == run.now)
            net.UU.U1.list_state->state = state;
        else
            kol_append_history(&net, run.now, state);
    }
    keep_records_up(at, cell);
    fan_out(cell);
}

// ---- the loop

void exec(std::uint32_t what) {
    const std::uint32_t index = what >> kol_what_shift;
    const auto state = static_cast<std::int8_t>(what & 31);
    if (index < kol_first_force())
        exec_cell(index, state);
    else if (index < kol_first_driver())
        exec_force(index - kol_first_force(), state);
    else
        exec_driver(index - kol_first_driver(), state);
}

kol_executed_t executed(std::uint32_t what) {
    const std::uint32_t index = what >> kol_what_shift;
    if (index >= kol_first_driver())
        return {false, run.now, kol_cells.drivers[index - kol_first_driver()].net};
    const bool is_force = index >= kol_first_force();
    return {is_force, run.now, &record_of(is_force ? index - kol_first_force() : index)};
}

// The events of the current time; true ends the run.
bool exec_now(std::int32_t counted_before) {
    kol_wheel_t& wheel = kol_cells.wheel;
    for (std::uint32_t at = wheel.head(); at != kol_wheel_t::none; at = wheel.head()) {
        if (const std::uint32_t next = wheel.next_of(at); next != kol_wheel_t::none)
            __builtin_prefetch(&kol_cells.cell[std::min<std::size_t>(wheel.what(next) >> kol_what_shift,
                                                                     kol_first_force() - 1)]);
        const std::uint32_t what = wheel.what(at);
        run.asks = false;
        exec(what);
        wheel.drop_head();
        if (run.asks && kol_is_run_ended(executed(what), counted_before)) return true;
    }
    return false;
}

bool exec_times(stimuli_reader& stimuli) {
    const std::int32_t counted_before = kol_counted();
    kol_ext.spike_min = kol_ext.spike_min_t0;
    for (;;) {
        const std::int64_t next = std::min(kol_cells.wheel.next_time(), stimuli.next_time());
        if (next > kol_ext.end_time) return false;
        const auto time = static_cast<std::int32_t>(next);
        if (kol_ext.tspike_min > 0 && time >= kol_ext.tspike_min) kol_ext.spike_min = kol_ext.spike_min_t;
        kol_ext.cur_time = run.now = time;
        kol_cells.wheel.turn_to(time);
        stimuli.enter(time);
        if (exec_now(counted_before)) return true;
    }
}

bool is_possible(const kol_stimuli_t& stimuli) {
    if (!kol_cells_are_used || kol_ext.spike_on || kol_ext.spiked) return false;
    if (kol_ext.cur_event != nullptr && kol_ext.cur_event->time < kol_ext.cur_time) return false;
    return stimuli.empty() || stimuli.front().time >= kol_ext.cur_time;
}

}  // namespace

bool kol_cells_are_used = true;

bool kol_run_cells(const kol_stimuli_t& stimuli) {
    if (!is_possible(stimuli) || !kol_prepare_cells()) return false;
    stimuli_reader reader{stimuli};
    run = {};
    reader.enter_behind(take_queue());
    kol_cells.is_running = true;
    kol_ext.time_breaked = exec_times(reader) || kol_ext.time_breaked;
    kol_cells.is_running = false;
    reader.enter_rest();
    kol_write_back_cells();
    give_queue_back();
    return true;
}

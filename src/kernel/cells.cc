// What others tell the cells, and the events of drivers that have no cell of their own.
#include "kernel/cells.h"

#include <algorithm>

#include "kernel/state.h"

kol_cells_t kol_cells;

void kol_forget_cell_states() {
    kol_cells.made.has_states = false;
    kol_cells.shown.clear();
    for (const std::uint32_t at : kol_cells.stale) kol_cells.is_stale[at] = false;
    kol_cells.stale.clear();
}

void kol_forget_cells() { kol_cells = {}; }

void kol_watch_cell(const yx_net_record_t& net) {
    if (!kol_cells.made.is_made || !kol_cells.made.is_possible) return;
    std::uint8_t& flags = kol_cells.cell[static_cast<std::size_t>(net.self)].flags;
    flags &= static_cast<std::uint8_t>(~kol_cell_observed);
    if (net.UU.U1.history != nullptr) flags |= kol_cell_observed;
}

void kol_write_net(const kol_cell_t& cell, yx_net_u1_t& net) {
    net.cur_state.state = cell.cur;
    net.cur_state.time = cell.cur_time;
    net.old_state.state = cell.old;
}

yx_signal_state_rec kol_shown_to_fed(std::uint32_t at, const kol_cell_t& cell) {
    if (!kol_cells.shown.empty() && kol_cells.shown[at].net_time == cell.cur_time)
        return kol_cells.shown[at].seen;
    yx_signal_state_rec seen;
    seen.state = cell.cur;
    seen.time = cell.cur_time;
    return seen;
}

void kol_write_fed_pins(const kol_cell_t& cell, const yx_net_record_t& root) {
    const yx_signal_state_rec shown = kol_shown_to_fed(static_cast<std::uint32_t>(root.self), cell);
    for (const kol_pin_link_t& fed : kol_fan_out_of(root)) {
        yx_signal_state_rec& seen = kol_pin_state(*fed.pin, *fed.net);
        seen.state = shown.state;
        seen.time = shown.time;
    }
}

void kol_hold_fed_pins(std::uint32_t at) {
    const kol_cell_t& cell = kol_cells.cell[at];
    if ((cell.flags & kol_cell_terminal) != 0) return;  // always up
    yx_net_record_t& root = *yx_ptrto_net_rec(static_cast<std::int32_t>(at));
    const yx_signal_state_rec& written = root.UU.U1.cur_state;
    const bool is_behind = written.time != cell.cur_time || written.state != cell.cur;
    if (is_behind || kol_cells.is_stale[at]) kol_write_fed_pins(cell, root);
    kol_write_net(cell, root.UU.U1);
    kol_cells.is_stale[at] = false;
}

std::uint8_t kol_rank_of(std::int16_t priority) {
    return static_cast<std::uint8_t>(std::ranges::lower_bound(kol_cells.priorities, priority) -
                                     kol_cells.priorities.begin());
}

std::uint32_t kol_driver_of(yx_pin_record_t& pin, yx_net_record_t& root) {
    std::uint32_t& first = kol_cells.cell[static_cast<std::size_t>(root.self)].newest;
    for (std::uint32_t at = first; at != 0; at = kol_cells.drivers[at - 1].next)
        if (kol_cells.drivers[at - 1].pin == &pin) return at - 1;
    kol_cells.drivers.push_back({&pin, &root, 0, -1, first, kol_rank_of(pin.pin_hdl_priority)});
    first = static_cast<std::uint32_t>(kol_cells.drivers.size());
    return first - 1;
}

namespace {

// While a spike is seen, an earlier event of the driver that is still to come becomes uncertain.
void react_to_spike(std::uint32_t what, std::uint32_t rank, const kol_newest_t& earlier) {
    if (earlier.time <= kol_ext.cur_time) return;
    if (kol_ext.spike_model != kol_indgene && kol_ext.spike_model != kol_pessimistic) return;
    const auto state = static_cast<std::int8_t>(what & 31);
    kol_cells.wheel.what(earlier.place) = kol_what(what >> kol_what_shift, kol_indeterminate_of(state));
    if (kol_ext.spike_model != kol_pessimistic) return;
    kol_cells.wheel.move_behind_head(earlier.place, earlier.time, rank);
    kol_cells.pending[earlier.place].time = kol_ext.cur_time;
}

bool schedule(std::uint32_t what, std::uint32_t rank, std::int32_t time, const kol_newest_t& newest) {
    if (newest.time >= time) {
        kol_cells.wheel.what(newest.place) = what;
        return true;
    }
    if (time < kol_ext.cur_time) return false;
    newest.place =
        kol_cells.is_plain ? kol_cells.wheel.add(time, what) : kol_add_with_care(time, what, rank, newest);
    newest.time = time;
    return true;
}

}  // namespace

std::uint32_t kol_add_with_care(std::int32_t time, std::uint32_t what, std::uint32_t rank,
                                const kol_newest_t& newest) {
    const std::uint32_t place = kol_cells.is_ranked
                                    ? kol_cells.wheel.add_ranked(time, what, rank, rank > kol_cells.head_rank)
                                    : kol_cells.wheel.add(time, what);
    kol_link_pending(place, time, newest);
    if (kol_ext.spiked) react_to_spike(what, rank, newest);
    return place;
}

bool kol_schedule_cell(yx_pin_record_t& pin, yx_net_record_t& root, std::int32_t time, std::int8_t state) {
    const auto at = static_cast<std::uint32_t>(root.self);
    kol_cell_t& cell = kol_cells.cell[at];
    if ((cell.flags & kol_cell_single) != 0)
        return schedule(kol_what(at, state), kol_rank_of_cell(at), time, {cell.newest, cell.newest_time});
    const std::uint32_t index = kol_driver_of(pin, root);
    kol_driver_t& driver = kol_cells.drivers[index];
    return schedule(kol_what(kol_first_driver() + index, state), driver.rank, time,
                    {driver.newest, driver.newest_time});
}

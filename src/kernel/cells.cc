// What others tell the cells, and the events of drivers that have no cell of their own.
#include "kernel/cells.h"

#include "kernel/state.h"

kol_cells_t kol_cells;

std::uint32_t kol_first_force() { return static_cast<std::uint32_t>(kol_cells.cell.size()); }
std::uint32_t kol_first_driver() { return 2 * kol_first_force(); }

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
    if (net.UU.U1.list_state != nullptr) flags |= kol_cell_observed;
}

void kol_write_net(const kol_cell_t& cell, yx_net_u1_t& net) {
    net.cur_state.state = cell.cur;
    net.cur_state.time = cell.cur_time;
    net.old_state.state = cell.old;
}

yx_signal_state_rec kol_shown_to_fed(std::uint32_t at, const kol_cell_t& cell) {
    if (!kol_cells.shown.empty())
        if (const auto shown = kol_cells.shown.find(at);
            shown != kol_cells.shown.end() && shown->second.net_time == cell.cur_time)
            return shown->second.seen;
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

std::uint32_t kol_driver_of(yx_pin_record_t& pin, yx_net_record_t& root) {
    const std::uint64_t key =
        static_cast<std::uint64_t>(pin.self) << 32 | static_cast<std::uint32_t>(root.self);
    const auto [at, is_new] =
        kol_cells.driver_of.try_emplace(key, static_cast<std::uint32_t>(kol_cells.drivers.size()));
    if (is_new) kol_cells.drivers.push_back({&pin, &root});
    return at->second;
}

void kol_link_pending(std::uint32_t place, std::int32_t time, std::uint32_t newest,
                      std::int32_t newest_time) {
    std::vector<kol_pending_t>& pending = kol_cells.pending;
    if (place >= pending.size()) pending.resize(2 * std::size_t{place} + 64);
    const bool is_pending = newest_time >= kol_ext.cur_time;
    pending[place] = {kol_wheel_t::none, is_pending ? newest : kol_wheel_t::none, time};
    if (is_pending) pending[newest].newer = place;
}

void kol_react_to_spike(std::uint32_t newest, std::int32_t newest_time, std::int8_t state) {
    if (newest_time <= kol_ext.cur_time || kol_ext.spike_model != kol_indgene) return;
    std::uint32_t& what = kol_cells.wheel.what(newest);
    what = kol_what(what >> kol_what_shift, kol_indeterminate_of(state));
}

namespace {

bool schedule(std::uint32_t index, std::int8_t state, std::int32_t time, std::uint32_t& newest,
              std::int32_t& newest_time) {
    const std::uint32_t what = kol_what(index, state);
    if (newest_time >= time) {
        kol_cells.wheel.what(newest) = what;
        return true;
    }
    if (time < kol_ext.cur_time) return false;
    const std::uint32_t place = kol_cells.wheel.add(time, what);
    if (kol_cells.looks_for_spikes) kol_link_pending(place, time, newest, newest_time);
    if (kol_ext.spiked) kol_react_to_spike(newest, newest_time, state);
    newest = place;
    newest_time = time;
    return true;
}

}  // namespace

bool kol_schedule_cell(yx_pin_record_t& pin, yx_net_record_t& root, std::int32_t time, std::int8_t state) {
    const auto at = static_cast<std::uint32_t>(root.self);
    kol_cell_t& cell = kol_cells.cell[at];
    if ((cell.flags & kol_cell_single) != 0 && kol_drivers_of(root)[0].pin == &pin)
        return schedule(at, state, time, cell.newest, cell.newest_time);
    const std::uint32_t index = kol_driver_of(pin, root);
    kol_driver_t& driver = kol_cells.drivers[index];
    return schedule(kol_first_driver() + index, state, time, driver.newest, driver.newest_time);
}

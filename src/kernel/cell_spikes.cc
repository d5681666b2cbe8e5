// FORCE events by net and time, and the chains of pending events.
#include "kernel/cell_spikes.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t no_force = ~std::uint32_t{0};

struct force_t {
    std::uint32_t at;
    std::int32_t time;
    std::uint32_t next;  // of the net
    std::int8_t state;
};
struct forces_t {
    std::vector<force_t> all;          // by time and place in the queue
    std::vector<std::uint32_t> first;  // of each cell, of those still to come
};
forces_t forces;

constexpr std::int64_t none = INT64_MAX;

std::int8_t state_at(std::uint32_t place) {
    return static_cast<std::int8_t>(kol_cells.wheel.what(place) & 31);
}

std::int64_t first_other_force(std::uint32_t at, std::int8_t state) {
    if ((kol_cells.cell[at].flags & kol_cell_forced) == 0) return none;
    const std::int64_t last = std::int64_t{kol_ext.cur_time} + kol_max_delay;
    for (std::uint32_t k = forces.first[at]; k != no_force && forces.all[k].time <= last;
         k = forces.all[k].next)
        if (forces.all[k].state != state) return forces.all[k].time;
    return none;
}

// From an event of a driver on to its newer ones, whose times grow.
std::int64_t first_other_newer(std::uint32_t place, std::int8_t state) {
    for (; place != kol_wheel_t::none; place = kol_cells.pending[place].newer)
        if (state_at(place) != state) return kol_cells.pending[place].time;
    return none;
}

// Of all, also where events have been moved.
std::int64_t first_other_pending(std::uint32_t newest, std::int32_t newest_time, std::int8_t state) {
    if (newest_time < kol_ext.cur_time) return none;
    std::int64_t time = state_at(newest) != state ? newest_time : none;
    if (newest >= kol_cells.pending.size()) return time;
    for (std::uint32_t place = kol_cells.pending[newest].older; place != kol_wheel_t::none;
         place = kol_cells.pending[place].older)
        if (state_at(place) != state) time = std::min<std::int64_t>(time, kol_cells.pending[place].time);
    return time;
}

std::int32_t distance_to(std::int64_t time) {
    const std::int64_t distance = time - kol_ext.cur_time;
    return time == none || distance > kol_max_delay ? -1 : static_cast<std::int32_t>(distance);
}

void chain_by_net() {
    forces.first.assign(kol_cells.cell.size(), no_force);
    for (std::size_t k = forces.all.size(); k-- > 0;) {
        force_t& force = forces.all[k];
        force.next = std::exchange(forces.first[force.at], static_cast<std::uint32_t>(k));
        kol_cells.cell[force.at].flags |= kol_cell_forced;
    }
}

}  // namespace

void kol_begin_forces(const kol_stimuli_t& stimuli) {
    forces.all.clear();
    const auto add = [](const yx_net_record_t& net, std::int32_t time, std::int8_t state) {
        forces.all.push_back({static_cast<std::uint32_t>(net.self), time, no_force, state});
    };
    for (const yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next)
        if (event->pin == nullptr) add(*event->net, event->time, event->state);
    const auto queued = static_cast<std::ptrdiff_t>(forces.all.size());
    for (const kol_stimulus_t& stimulus : stimuli)
        add(*kol_root_net(stimulus.net), stimulus.time, stimulus.state);
    std::ranges::inplace_merge(forces.all, forces.all.begin() + queued, {}, &force_t::time);
    if (!forces.all.empty()) chain_by_net();
}

void kol_end_forces() {
    for (const force_t& force : forces.all)
        kol_cells.cell[force.at].flags &= static_cast<std::uint8_t>(~kol_cell_forced);
}

void kol_retire_force(std::uint32_t at) { forces.first[at] = forces.all[forces.first[at]].next; }

std::int32_t kol_next_change_of_cell(std::uint32_t at, const kol_cell_t& cell, std::uint32_t executed) {
    const std::int8_t state = state_at(executed);
    std::int64_t time = none;
    if (kol_ext.spike_model == kol_pessimistic)
        time = first_other_pending(cell.newest, cell.newest_time, state);
    else if (executed != cell.newest)
        time = first_other_newer(kol_cells.pending[executed].newer, state);
    return distance_to(std::min(time, first_other_force(at, state)));
}

std::int32_t kol_next_change_of_net(std::uint32_t at, std::int8_t state) {
    const kol_cell_t& cell = kol_cells.cell[at];
    std::int64_t time = first_other_force(at, state);
    if ((cell.flags & kol_cell_single) != 0)
        return distance_to(std::min(time, first_other_pending(cell.newest, cell.newest_time, state)));
    for (std::uint32_t k = cell.newest; k != 0; k = kol_cells.drivers[k - 1].next) {
        const kol_driver_t& driver = kol_cells.drivers[k - 1];
        time = std::min(time, first_other_pending(driver.newest, driver.newest_time, state));
    }
    return distance_to(time);
}

void kol_unlink_pending(std::uint32_t place) {
    const kol_pending_t& executed = kol_cells.pending[place];
    if (executed.newer != kol_wheel_t::none) kol_cells.pending[executed.newer].older = executed.older;
    if (executed.older != kol_wheel_t::none) kol_cells.pending[executed.older].newer = executed.newer;
    kol_cells.pending[place] = {};
}

// FORCE events by net and time, and the chains of pending events.
#include "kernel/cell_spikes.h"

#include <algorithm>

namespace {

struct force_t {
    std::uint32_t at;
    std::int32_t time;
    std::int8_t state;
};
struct range_t {
    std::size_t next, end;  // of those still to come
};
struct forces_t {
    std::vector<force_t> all;  // by net, time and place in the queue
    std::unordered_map<std::uint32_t, range_t> of_net;
};
forces_t forces;

constexpr std::int64_t none = INT64_MAX;

std::int8_t state_at(std::uint32_t place) {
    return static_cast<std::int8_t>(kol_cells.wheel.what(place) & 31);
}

std::int64_t first_other_force(std::uint32_t at, std::int8_t state) {
    const auto found = forces.of_net.find(at);
    if (found == forces.of_net.end()) return none;
    for (std::size_t k = found->second.next; k < found->second.end; ++k)
        if (forces.all[k].state != state) return forces.all[k].time;
    return none;
}

// From an event of a driver on to its newer ones.
std::int64_t first_other_newer(std::uint32_t place, std::int8_t state) {
    for (; place != kol_wheel_t::none; place = kol_cells.pending[place].newer)
        if (state_at(place) != state) return kol_cells.pending[place].time;
    return none;
}

std::int64_t first_other_pending(std::uint32_t newest, std::int32_t newest_time, std::int8_t state) {
    if (newest_time < kol_ext.cur_time) return none;
    std::int64_t time = none;
    for (std::uint32_t place = newest; place != kol_wheel_t::none; place = kol_cells.pending[place].older)
        if (state_at(place) != state) time = kol_cells.pending[place].time;
    return time;
}

std::int32_t distance_to(std::int64_t time) {
    const std::int64_t distance = time - kol_ext.cur_time;
    return time == none || distance > kol_max_delay ? -1 : static_cast<std::int32_t>(distance);
}

}  // namespace

void kol_begin_forces(const kol_stimuli_t& stimuli) {
    forces = {};
    const auto add = [](const yx_net_record_t& net, std::int32_t time, std::int8_t state) {
        forces.all.push_back({static_cast<std::uint32_t>(net.self), time, state});
    };
    for (const yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next)
        if (event->pin == nullptr) add(*event->net, event->time, event->state);
    for (const kol_stimulus_t& stimulus : stimuli)
        add(*kol_root_net(stimulus.net), stimulus.time, stimulus.state);
    std::ranges::stable_sort(forces.all, {}, &force_t::time);
    std::ranges::stable_sort(forces.all, {}, &force_t::at);
    for (std::size_t k = 0; k < forces.all.size(); ++k) {
        const auto [at, is_new] = forces.of_net.try_emplace(forces.all[k].at, range_t{k, k});
        at->second.end = k + 1;
        if (is_new) kol_cells.cell[forces.all[k].at].flags |= kol_cell_forced;
    }
}

void kol_end_forces() {
    for (const auto& [at, range] : forces.of_net)
        kol_cells.cell[at].flags &= static_cast<std::uint8_t>(~kol_cell_forced);
    forces = {};
}

void kol_retire_force(std::uint32_t at) { ++forces.of_net.at(at).next; }

std::int32_t kol_next_change_of_cell(std::uint32_t at, const kol_cell_t& cell, std::uint32_t executed) {
    const std::int8_t state = state_at(executed);
    std::int64_t time = first_other_newer(kol_cells.pending[executed].newer, state);
    if ((cell.flags & kol_cell_forced) != 0) time = std::min(time, first_other_force(at, state));
    return distance_to(time);
}

std::int32_t kol_next_change_of_net(std::uint32_t at, std::int8_t state) {
    const kol_cell_t& cell = kol_cells.cell[at];
    std::int64_t time = first_other_force(at, state);
    if ((cell.flags & kol_cell_single) != 0)
        time = std::min(time, first_other_pending(cell.newest, cell.newest_time, state));
    else
        for (const kol_driver_t& driver : kol_cells.drivers)
            if (driver.net->self == static_cast<std::int32_t>(at))
                time = std::min(time, first_other_pending(driver.newest, driver.newest_time, state));
    return distance_to(time);
}

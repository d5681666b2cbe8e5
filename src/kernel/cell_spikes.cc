// FORCE events by net and time, and the chains of pending events.
#include "kernel/cell_spikes.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr std::uint32_t no_force = ~std::uint32_t{0};

struct force_t {
    std::int32_t time = 0;
    std::uint32_t next = no_force;  // of the net
    std::int8_t state = 0;
};
struct forces_t {
    std::vector<force_t> pool;
    std::uint32_t free = no_force;
    std::vector<std::uint32_t> first;   // of each cell, by time and place in the queue
    std::vector<std::uint32_t> forced;  // cells that have had one
    std::vector<std::int32_t> times;    // of the queue when the run began
    std::optional<kol_stimuli_reader_t> reader;
};
forces_t forces;

constexpr std::int64_t none = INT64_MAX;

std::int8_t state_at(std::uint32_t place) {
    return static_cast<std::int8_t>(kol_cells.wheel.what(place) & 31);
}

std::int64_t first_other_force(std::uint32_t at, std::int8_t state) {
    if ((kol_cells.cell[at].flags & kol_cell_forced) == 0) return none;
    for (std::uint32_t k = forces.first[at]; k != no_force; k = forces.pool[k].next)
        if (forces.pool[k].state != state) return forces.pool[k].time;
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

std::uint32_t take_place() {
    if (forces.free == no_force) {
        forces.pool.emplace_back();
        return static_cast<std::uint32_t>(forces.pool.size() - 1);
    }
    return std::exchange(forces.free, forces.pool[forces.free].next);
}

void add_force(const yx_net_record_t& root, std::int32_t time, std::int8_t state) {
    const auto at = static_cast<std::uint32_t>(root.self);
    std::uint8_t& flags = kol_cells.cell[at].flags;
    if ((flags & kol_cell_forced) == 0) forces.forced.push_back(at);
    flags |= kol_cell_forced;
    const std::uint32_t place = take_place();
    std::uint32_t* link = &forces.first[at];
    while (*link != no_force && forces.pool[*link].time <= time) link = &forces.pool[*link].next;
    forces.pool[place] = {time, *link, state};
    *link = place;
}

}  // namespace

void kol_begin_forces(std::span<const std::int32_t> times) {
    forces.pool.clear();
    forces.free = no_force;
    forces.first.resize(kol_cells.cell.size(), no_force);
    forces.times.assign(times.begin(), times.end());
    for (const yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next)
        if (event->pin == nullptr) add_force(*event->net, event->time, event->state);
    forces.reader.emplace();
}

// What runs that ended early have brought for a time of the queue is queued.
void kol_see_forces_until(std::int64_t time) {
    while (forces.reader->next_time() <= time) {
        const kol_stimulus_t seen = forces.reader->take();
        if (seen.is_of_present || !std::ranges::binary_search(forces.times, seen.time))
            add_force(*kol_root_net(yx_ptrto_net_rec(seen.net)), seen.time, seen.state);
    }
}

void kol_end_forces() {
    for (const std::uint32_t at : forces.forced) {
        kol_cells.cell[at].flags &= static_cast<std::uint8_t>(~kol_cell_forced);
        forces.first[at] = no_force;
    }
    forces.forced.clear();
    forces.reader.reset();
}

void kol_retire_force(std::uint32_t at) {
    const std::uint32_t place = forces.first[at];
    forces.first[at] = std::exchange(forces.pool[place].next, forces.free);
    forces.free = place;
}

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

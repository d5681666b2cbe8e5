// Forces in their places, and the windows of runs.
#include "kernel/stimuli.h"

#include <algorithm>
#include <iterator>

kol_stimuli_t kol_stimuli;

namespace {

constexpr auto by_time = [](const kol_force_t& a, const kol_force_t& b) { return a.time < b.time; };

auto place_of(std::size_t place) { return kol_stimuli.forces.begin() + static_cast<std::ptrdiff_t>(place); }

// Parts that follow each other are merged until each is twice as long as the next.
void merge_parts() {
    std::vector<std::size_t>& parts = kol_stimuli.parts;
    const std::size_t end = kol_stimuli.forces.size();
    while (parts.size() > 1) {
        const std::size_t first = parts[parts.size() - 2], second = parts.back();
        if (second - first >= 2 * (end - second)) return;
        std::inplace_merge(place_of(first), place_of(second), place_of(end), by_time);
        parts.pop_back();
    }
}

// The forces entered since the last run become a part, or go on with the last one.
void sort_new_forces() {
    kol_stimuli_t& s = kol_stimuli;
    if (s.sorted == s.forces.size()) return;
    if (!std::is_sorted(place_of(s.sorted), s.forces.end(), by_time))
        std::stable_sort(place_of(s.sorted), s.forces.end(), by_time);
    if (s.sorted == 0 || by_time(s.forces[s.sorted], s.forces[s.sorted - 1])) s.parts.push_back(s.sorted);
    s.sorted = s.forces.size();
    merge_parts();
}

void sort_clock(kol_clock_t& clock) {
    if (clock.regular.size() + clock.others.size() == clock.forces.size()) return;
    clock.regular.clear();
    clock.others.clear();
    for (const kol_force_t& force : clock.forces) {
        const bool is_regular = force.stop_time < 1 && force.time < clock.period;
        (is_regular ? clock.regular : clock.others).push_back(force.order);
    }
    std::ranges::stable_sort(clock.regular, {}, [&](std::uint32_t k) { return clock.forces[k].time; });
}

kol_force_t force_of(const yx_net_record_t& net, std::int8_t state, std::int32_t time, std::int32_t stop_time,
                     std::size_t order) {
    return {net.self, time, stop_time, static_cast<std::uint32_t>(order), state};
}

}  // namespace

void kol_add_force(const yx_net_record_t& net, std::int8_t state, std::int32_t time, std::int32_t stop_time) {
    kol_stimuli.forces.push_back(force_of(net, state, time, stop_time, kol_stimuli.forces.size()));
}

void kol_add_clock(std::int32_t period, std::int32_t start_time) {
    kol_clock_t& clock = kol_stimuli.clocks.emplace_back();
    clock.period = period;
    clock.start_time = start_time;
}

void kol_add_repeated_force(const yx_net_record_t& net, std::int8_t state, std::int32_t offset,
                            std::int32_t stop_time) {
    std::deque<kol_force_t>& forces = kol_stimuli.clocks.back().forces;
    forces.push_back(force_of(net, state, offset, stop_time, forces.size()));
}

void kol_open_window(std::int32_t start, std::int32_t end) {
    sort_new_forces();
    for (kol_clock_t& clock : kol_stimuli.clocks) sort_clock(clock);
    const std::size_t of_last = kol_stimuli.clocks.empty() ? 0 : kol_stimuli.clocks.back().forces.size();
    kol_stimuli.windows.push_back({start, end, start, static_cast<std::uint32_t>(kol_stimuli.forces.size()),
                                   static_cast<std::uint32_t>(kol_stimuli.clocks.size()),
                                   static_cast<std::uint32_t>(of_last)});
}

void kol_keep_windows(std::int64_t from) {
    std::erase_if(kol_stimuli.windows, [&](const kol_window_t& window) { return window.end <= from; });
    for (kol_window_t& window : kol_stimuli.windows) window.from = static_cast<std::int32_t>(from);
}

void kol_drop_windows() { kol_stimuli.windows.clear(); }

void kol_clear_stimuli() { kol_stimuli = {}; }

// Single forces and clocks, merged by time.
#include "kernel/stimuli_reader.h"

#include <algorithm>
#include <tuple>

namespace {

// The forces of a clock that a window knows.
std::uint32_t limit_of(const kol_window_t& window, std::size_t clock) {
    return clock + 1 == window.clocks ? window.last_clock_forces : UINT32_MAX;
}

bool runs_in(const kol_clock_t& clock, const kol_window_t& window) {
    return clock.start_time < window.end && clock.period > 0;
}

bool has_regular(const kol_clock_t& clock, std::uint32_t limit) {
    if (limit >= clock.forces.size()) return !clock.regular.empty();
    return std::ranges::any_of(clock.regular, [&](std::uint32_t order) { return order < limit; });
}

auto offset_of(const kol_clock_t& clock) {
    return [&clock](std::uint32_t order) { return std::int64_t{clock.forces[order].time}; };
}

std::size_t part_end(std::size_t part) {
    const std::vector<std::size_t>& parts = kol_stimuli.parts;
    return part + 1 < parts.size() ? parts[part + 1] : kol_stimuli.sorted;
}

// In a part, the first force from a time on.
std::size_t force_from(std::size_t part, std::int64_t time) {
    const auto begin = kol_stimuli.forces.begin();
    const auto found =
        std::lower_bound(begin + static_cast<std::ptrdiff_t>(kol_stimuli.parts[part]),
                         begin + static_cast<std::ptrdiff_t>(part_end(part)), time,
                         [](const kol_force_t& force, std::int64_t asked) { return force.time < asked; });
    return static_cast<std::size_t>(found - begin);
}

bool is_stopped(const kol_force_t& force, std::int64_t time) {
    return force.stop_time >= 1 && time > force.stop_time;
}

// Of a force that does not stand for every period: its first time not before another, never when there is
// none.  It begins anew in the period in which the run begins.
std::int64_t first_of_other(const kol_clock_t& clock, const kol_force_t& force, const kol_window_t& window,
                            std::int64_t from) {
    if (force.stop_time > 0 && window.start >= force.stop_time) return kol_stimuli_reader_t::never;
    const std::int64_t past = std::max<std::int64_t>(std::int64_t{window.start} - clock.start_time, 0);
    std::int64_t time = clock.start_time + past / clock.period * clock.period + force.time;
    if (time < from) time += (from - time + clock.period - 1) / clock.period * clock.period;
    return is_stopped(force, time) ? kol_stimuli_reader_t::never : time;
}

// ---- the last times

std::int64_t last_of_part(std::size_t part, const kol_window_t& window) {
    for (std::size_t at = force_from(part, window.end); at > kol_stimuli.parts[part]; --at) {
        const kol_force_t& force = kol_stimuli.forces[at - 1];
        if (force.time < window.from) break;
        if (force.order < window.forces) return force.time;
    }
    return -1;
}

std::int64_t last_of_regular(const kol_clock_t& clock, std::uint32_t limit, const kol_window_t& window) {
    const std::int64_t ahead = std::int64_t{window.end} - 1 - clock.start_time;
    std::int64_t period_begin = clock.start_time + ahead / clock.period * clock.period;
    auto at = std::ranges::upper_bound(clock.regular, window.end - 1 - period_begin, {}, offset_of(clock));
    for (;; at = clock.regular.end(), period_begin -= clock.period) {
        for (; at != clock.regular.begin(); --at) {
            const kol_force_t& force = clock.forces[*(at - 1)];
            const std::int64_t time = period_begin + force.time;
            if (time < std::max(window.from, clock.start_time)) return -1;
            if (force.order < limit) return time;
        }
        if (period_begin < window.from) return -1;
    }
}

std::int64_t last_of_other(const kol_clock_t& clock, const kol_force_t& force, const kol_window_t& window) {
    const std::int64_t first = first_of_other(clock, force, window, window.from);
    std::int64_t last = std::int64_t{window.end} - 1;
    if (force.stop_time >= 1) last = std::min<std::int64_t>(last, force.stop_time);
    return first > last ? -1 : first + (last - first) / clock.period * clock.period;
}

std::int64_t last_of_clock(const kol_clock_t& clock, std::uint32_t limit, const kol_window_t& window) {
    if (!runs_in(clock, window)) return -1;
    std::int64_t last = has_regular(clock, limit) ? last_of_regular(clock, limit, window) : -1;
    for (const std::uint32_t order : clock.others)
        if (order < limit) last = std::max(last, last_of_other(clock, clock.forces[order], window));
    return last;
}

}  // namespace

kol_stimuli_reader_t::kol_stimuli_reader_t(bool only_present, std::int64_t from, std::int64_t end) {
    const auto count = static_cast<std::uint32_t>(kol_stimuli.windows.size());
    for (std::uint32_t k = only_present && count > 0 ? count - 1 : 0; k < count; ++k)
        add_window(k, from, end);
}

void kol_stimuli_reader_t::add_window(std::uint32_t number, std::int64_t from, std::int64_t end) {
    const kol_window_t& window = kol_stimuli.windows[number];
    source_t source;
    source.window = number;
    source.first = std::max<std::int64_t>(from, window.from);
    source.end = std::min<std::int64_t>(end, window.end);
    if (source.first >= source.end) return;
    source.limit = window.forces;
    for (std::size_t part = kol_stimuli.parts.size(); part-- > 0; ++source.group) add_part(source, part);
    for (std::size_t k = 0; k < window.clocks; ++k, ++source.group) {
        source.clock = &kol_stimuli.clocks[k];
        source.limit = limit_of(window, k);
        if (runs_in(*source.clock, window)) add_clock(source, window);
    }
}

void kol_stimuli_reader_t::add_part(source_t source, std::size_t part) {
    source.at = source.begin = source.behind = force_from(part, source.first);
    source.last = part_end(part);
    if (move_on(source)) add(source);
}

void kol_stimuli_reader_t::add_clock(source_t source, const kol_window_t& window) {
    const kol_clock_t& clock = *source.clock;
    for (const std::uint32_t order : clock.others) {
        if (order >= source.limit) break;
        source.kind = kind_t::other;
        source.force = &clock.forces[order];
        source.time = first_of_other(clock, *source.force, window, source.first);
        if (source.time < source.end) add(source);
    }
    if (!has_regular(clock, source.limit)) return;
    source.kind = kind_t::regular;
    const std::int64_t ahead = std::max<std::int64_t>(source.first - clock.start_time, 0);
    source.period_begin = clock.start_time + ahead / clock.period * clock.period;
    const auto at = std::ranges::lower_bound(clock.regular, ahead % clock.period, {}, offset_of(clock));
    source.at = static_cast<std::size_t>(at - clock.regular.begin());
    if (move_on(source)) add(source);
}

void kol_stimuli_reader_t::add(const source_t& source) {
    sources_.push_back(source);
    std::ranges::push_heap(sources_, comes_later);
}

// Repeated forces of one clock follow each other in the order of entry; of a part, only one is in the heap.
bool kol_stimuli_reader_t::comes_later(const source_t& a, const source_t& b) {
    return std::tie(a.time, a.window, a.group, a.force->order) >
           std::tie(b.time, b.window, b.group, b.force->order);
}

// To the next force; false when there is none.
bool kol_stimuli_reader_t::move_on(source_t& s) {
    if (s.kind == kind_t::other) {
        s.time += s.clock->period;
        return s.time < s.end && !is_stopped(*s.force, s.time);
    }
    do {
        if (s.kind == kind_t::regular) {
            if (s.at == s.clock->regular.size()) {
                s.at = 0;
                s.period_begin += s.clock->period;
            }
            s.force = &s.clock->forces[s.clock->regular[s.at++]];
            s.time = s.period_begin + s.force->time;
        } else {
            if (s.at == s.begin) {  // on to the forces of the next time, the newest of which comes first
                if (s.behind == s.last) return false;
                s.begin = s.behind;
                const std::int32_t time = kol_stimuli.forces[s.begin].time;
                while (s.behind < s.last && kol_stimuli.forces[s.behind].time == time) ++s.behind;
                s.at = s.behind;
            }
            s.force = &kol_stimuli.forces[--s.at];
            s.time = s.force->time;
        }
        if (s.time >= s.end) return false;
    } while (s.force->order >= s.limit);
    return true;
}

kol_stimulus_t kol_stimuli_reader_t::take() {
    std::ranges::pop_heap(sources_, comes_later);
    source_t& source = sources_.back();
    const kol_stimulus_t taken{static_cast<std::int32_t>(source.time), source.force->net, source.force->state,
                               source.window + 1 == kol_stimuli.windows.size()};
    if (move_on(source))
        std::ranges::push_heap(sources_, comes_later);
    else
        sources_.pop_back();
    return taken;
}

std::int64_t kol_last_stimulus_time() {
    std::int64_t last = -1;
    for (const kol_window_t& window : kol_stimuli.windows) {
        for (std::size_t part = 0; part < kol_stimuli.parts.size(); ++part)
            last = std::max(last, last_of_part(part, window));
        for (std::size_t k = 0; k < window.clocks; ++k)
            last = std::max(last, last_of_clock(kol_stimuli.clocks[k], limit_of(window, k), window));
    }
    return last;
}

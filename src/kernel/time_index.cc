// The ring of near times, the map of far ones, and the chains of priorities.
#include "kernel/time_index.h"

#include <array>
#include <bit>
#include <iterator>
#include <map>

namespace {

constexpr std::int32_t near_times = 1024;  // a power of two
constexpr std::size_t word_bits = 64;
constexpr std::size_t word_count = near_times / word_bits;

struct time_index_t {
    std::int32_t base = 0;  // no queued event is earlier
    std::array<kol_time_group_t, near_times> ring{};
    std::array<std::uint64_t, word_count> used{};  // a bit for each group of the ring that has events
    std::map<std::int32_t, kol_time_group_t> far;  // times from base + near_times on
};
time_index_t idx;

std::size_t slot_of(std::int32_t time) {
    return static_cast<std::size_t>(static_cast<std::uint32_t>(time) % near_times);
}
bool is_near(std::int32_t time) { return static_cast<std::int64_t>(time) - idx.base < near_times; }

void mark_used(std::size_t slot) { idx.used[slot / word_bits] |= std::uint64_t{1} << slot % word_bits; }
void mark_free(std::size_t slot) { idx.used[slot / word_bits] &= ~(std::uint64_t{1} << slot % word_bits); }

void bring_near() {
    while (!idx.far.empty() && is_near(idx.far.begin()->first)) {
        const std::size_t slot = slot_of(idx.far.begin()->first);
        idx.ring[slot] = idx.far.begin()->second;
        mark_used(slot);
        idx.far.erase(idx.far.begin());
    }
}

// Calls take(group) for every group of the ring that is in use, and empties it.
template <typename Take>
void empty_ring(Take take) {
    for (std::size_t word = 0; word < word_count; ++word)
        for (; idx.used[word] != 0; idx.used[word] &= idx.used[word] - 1) {
            kol_time_group_t& group =
                idx.ring[word * word_bits + static_cast<std::size_t>(std::countr_zero(idx.used[word]))];
            take(group);
            group = {};
        }
}

// Rare: a run begins before the first event that an earlier run left in the queue.
void lower_base(std::int32_t time) {
    empty_ring([](const kol_time_group_t& group) {
        if (group.first != nullptr) idx.far.emplace(group.time, group);
    });
    idx.base = time;
    bring_near();
}

// The last used slot among those of the times base..time, whose slots go round the ring.
kol_time_group_t* last_near_group(std::int32_t time) {
    const std::size_t from = slot_of(time);
    for (std::size_t step = 0; step <= word_count; ++step) {
        const std::size_t word = (from / word_bits + word_count - step) % word_count;
        const std::uint64_t up_to_slot = ~std::uint64_t{0} >> (word_bits - 1 - from % word_bits);
        std::uint64_t bits = idx.used[word];
        if (step == 0) bits &= up_to_slot;
        if (step == word_count) bits &= ~up_to_slot;
        if (bits == 0) continue;
        const std::size_t bit = word_bits - 1 - static_cast<std::size_t>(std::countl_zero(bits));
        kol_time_group_t& group = idx.ring[word * word_bits + bit];
        return group.time <= time ? &group : nullptr;
    }
    return nullptr;
}

void link_ranks(yx_event_rec_t* below, yx_event_rec_t* above) {
    if (below != nullptr) below->higher = above;
    if (above != nullptr) above->lower = below;
}

// The part of the group behind the head that the chain describes begins at `from`, reached from `below`.
struct head_part_t {
    yx_event_rec_t* below = nullptr;
    yx_event_rec_t* from = nullptr;
};

// False where two FORCE events or more follow the head: no insertion looks at the head's part before the
// head has gone.
bool find_head_part(const kol_time_group_t& group, const yx_event_rec_t* head, head_part_t& part) {
    const std::int32_t forces_behind = group.nb_of_force - (kol_is_force(*head) ? 1 : 0);
    if (forces_behind > 1) return false;
    part = {nullptr, group.last};
    if (forces_behind == 0) return true;
    while (!kol_is_force(*part.from)) part.from = part.from->higher;
    part = {part.from, part.from->higher};
    return true;
}

// Takes a pin's event out of the chain; events in front of it that it outranked, or that rank with it, take
// its place.
void leave_chain(yx_event_rec_t* event) {
    yx_event_rec_t* below = event->lower;
    yx_event_rec_t* const above = event->higher;
    for (yx_event_rec_t* at = event->previous; at != above && at != nullptr && at->time == event->time;
         at = at->previous) {
        const bool outranks = below == nullptr || kol_is_force(*below) || at->priority > below->priority;
        if (!outranks) continue;
        link_ranks(below, at);
        below = at;
        if (at->priority == event->priority) break;
    }
    link_ranks(below, above);
}

void drop_group(const kol_time_group_t& group) {
    const std::int32_t time = group.time;
    if (!is_near(time)) {
        idx.far.erase(time);
        return;
    }
    idx.ring[slot_of(time)] = {};
    mark_free(slot_of(time));
}

}  // namespace

kol_time_group_t& kol_group_of(std::int32_t time) {
    if (time < idx.base) lower_base(time);
    kol_time_group_t* group = nullptr;
    if (is_near(time)) {
        group = &idx.ring[slot_of(time)];
        mark_used(slot_of(time));
    } else {
        group = &idx.far[time];
    }
    group->time = time;
    return *group;
}

yx_event_rec_t* kol_last_event_before(std::int32_t time) {
    if (time <= idx.base) return nullptr;
    if (!is_near(time)) {
        const auto later = idx.far.lower_bound(time);
        if (later != idx.far.begin()) return std::prev(later)->second.last;
    }
    const auto last_near = static_cast<std::int64_t>(idx.base) + near_times - 1;
    const kol_time_group_t* group =
        last_near_group(is_near(time) ? time - 1 : static_cast<std::int32_t>(last_near));
    return group == nullptr ? nullptr : group->last;
}

void kol_advance_index(std::int32_t time) {
    if (time == idx.base) return;
    if (time < idx.base) {
        lower_base(time);
        return;
    }
    idx.base = time;
    bring_near();
}

void kol_clear_index() {
    idx.base = 0;
    empty_ring([](const kol_time_group_t&) {});
    idx.far.clear();
}

yx_event_rec_t* kol_find_outranking(yx_event_rec_t* from, std::int16_t priority, yx_event_rec_t*& below) {
    while (from != nullptr && !kol_is_force(*from) && from->priority < priority) {
        below = from;
        from = from->higher;
    }
    return from;
}

void kol_join_ranked(kol_time_group_t& group, yx_event_rec_t* event, yx_event_rec_t* above,
                     yx_event_rec_t* below) {
    if (group.first == nullptr || event->next == group.first) group.first = event;
    if (below == nullptr) group.last = event;
    link_ranks(below, event);
    if (above != nullptr && !kol_is_force(*above) && above->priority == event->priority) {
        yx_event_rec_t* const next_above = above->higher;
        above->higher = above->lower = nullptr;
        above = next_above;
    }
    link_ranks(event, above);
}

void kol_join_last(kol_time_group_t& group, yx_event_rec_t* event) {
    if (group.first == nullptr) group.first = event;
    event->lower = nullptr;
    link_ranks(event, group.last);
    group.last = event;
    if (kol_is_force(*event)) ++group.nb_of_force;
}

void kol_join_first(kol_time_group_t& group, yx_event_rec_t* first, yx_event_rec_t* last) {
    yx_event_rec_t* below = group.last;
    while (below->higher != nullptr) below = below->higher;
    for (yx_event_rec_t* event = last;; event = event->previous) {
        link_ranks(below, event);
        below = event;
        ++group.nb_of_force;
        if (event == first) break;
    }
    first->higher = nullptr;
    group.first = first;
}

void kol_join_behind_head(kol_time_group_t& group, yx_event_rec_t* event, yx_event_rec_t* head) {
    event->higher = event->lower = nullptr;
    head_part_t part;
    const bool is_described = find_head_part(group, head, part);
    if (group.last == head) group.last = event;
    if (!is_described) return;
    while (part.from != nullptr && part.from != head && part.from->priority < event->priority) {
        part.below = part.from;
        part.from = part.from->higher;
    }
    if (part.from != nullptr && part.from != head) return;  // outranked by a later event, or its equal
    link_ranks(part.below, event);
    if (part.from == nullptr) return;
    if (!kol_is_force(*head) && head->priority <= event->priority)
        head->lower = nullptr;
    else
        link_ranks(event, head);
}

void kol_leave_group(yx_event_rec_t* event) {
    kol_time_group_t& group = kol_group_of(event->time);
    if (event->lower != nullptr || event == group.last) leave_chain(event);
    event->higher = event->lower = nullptr;
    if (kol_is_force(*event)) --group.nb_of_force;
    if (group.first == event && group.last == event) {
        drop_group(group);
        return;
    }
    if (group.first == event) group.first = event->next;
    if (group.last == event) group.last = event->previous;
}

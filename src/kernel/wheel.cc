// The bits above the ring, the far times, and the place in front of a FORCE event.
#include "kernel/wheel.h"

#include <algorithm>

namespace {

constexpr std::size_t least_size = 64, most_size = std::size_t{1} << 18;

}  // namespace

void kol_wheel_t::begin(std::int32_t now, std::int32_t longest_delay, std::uint32_t first_force,
                        std::uint32_t end_force, std::uint32_t ranks) {
    const std::size_t wanted = std::bit_ceil(static_cast<std::size_t>(std::max(longest_delay, 0)) + 2);
    const std::size_t size = std::clamp(wanted, least_size, most_size);
    if (size != ring_.size() || ranks != ranks_) resize(size, ranks);
    for (std::size_t slot = next_used(0); slot < ring_.size(); slot = next_used(slot + 1)) {
        ring_[slot] = {};
        std::ranges::fill(above_of(slot), none);
        mark_free(slot);
    }
    before_force_ = {none, 0, std::vector<std::uint32_t>(ranks, none)};
    events_.clear();
    far_.clear();
    free_ = none;
    now_ = now;
    first_force_ = first_force;
    force_count_ = end_force - first_force;
}

void kol_wheel_t::resize(std::size_t size, std::uint32_t ranks) {
    mask_ = static_cast<std::uint32_t>(size - 1);
    ring_.assign(size, {});
    ranks_ = ranks;
    has_ranks_ = ranks > 1;
    above_.assign(size * (ranks - 1), none);
    for (std::vector<std::uint64_t>& level : used_) {
        size = (size + bits - 1) / bits;
        level.assign(size, 0);
    }
}

void kol_wheel_t::add_first(std::int32_t time, std::span<const std::uint32_t> whats) {
    const ranked_list_t in = ranked_list_of(time);
    for (std::size_t k = whats.size(); k-- > 0;) insert(in, none, take(whats[k]), ranks_ - 1);
}

// ---- ranks

namespace {

// An event is now behind `behind`, and with it the last one of its rank where that was not further behind.
void follow(std::uint32_t& last, std::uint32_t behind, std::uint32_t added) {
    if (last == behind || last == kol_wheel_t::none) last = added;
}

}  // namespace

kol_wheel_t::far_list_t& kol_wheel_t::far_list_of(std::int32_t time) {
    far_list_t& far = far_[time];
    far.above.resize(ranks_ - 1, none);
    return far;
}

kol_wheel_t::ranked_list_t kol_wheel_t::ranked_list_of(std::int32_t time) {
    if (!is_near(time)) {
        far_list_t& far = far_list_of(time);
        return {far.list, far.above};
    }
    return {list_of(time), above_of(slot_of(time))};
}

// behind none: in front of all.
void kol_wheel_t::insert(const ranked_list_t& in, std::uint32_t behind, std::uint32_t added,
                         std::uint32_t rank) {
    std::uint32_t& link = behind == none ? in.list.head : events_[behind].next;
    events_[added].next = link;
    link = added;
    follow(in.list.tail, behind, added);
    for (std::uint32_t& last : in.above.first(rank)) follow(last, behind, added);
}

std::uint32_t kol_wheel_t::append(std::int32_t time, std::uint32_t what, std::uint32_t rank) {
    const std::uint32_t added = take(what);
    const ranked_list_t in = ranked_list_of(time);
    const std::uint32_t tail = in.list.tail;
    if (is_force(what) && time >= before_force_.time) {
        before_force_.force = added;
        before_force_.time = time;
        before_force_.last[0] = tail;
        std::ranges::copy(in.above, before_force_.last.begin() + 1);
    }
    insert(in, tail, added, 0);
    std::ranges::fill(in.above.first(is_force(what) ? ranks_ - 1 : rank), added);
    return added;
}

std::uint32_t kol_wheel_t::add_ranked(std::int32_t time, std::uint32_t what, std::uint32_t rank,
                                      bool outranks_head) {
    const std::uint32_t added = take(what);
    if (time == now_ && outranks_head) {
        insert_behind_head(added, rank);
        return added;
    }
    const ranked_list_t in = ranked_list_of(time);
    const std::uint32_t tail = in.list.tail;
    const bool is_executed = time == now_ && head() == tail;
    const bool passes = tail != none && tail == before_force_.force && is_force(events_[tail].what);
    if (!passes || is_executed || !is_last_time(time)) {
        insert(in, rank == 0 ? tail : in.above[rank - 1], added, rank);
        return added;
    }
    std::vector<std::uint32_t>& last = before_force_.last;
    const std::uint32_t behind = last[rank];
    std::uint32_t& link = behind == none ? in.list.head : events_[behind].next;
    events_[added].next = link;
    link = added;
    for (std::uint32_t& of_rank : std::span(last).first(rank + 1)) follow(of_rank, behind, added);
    return added;
}

void kol_wheel_t::insert_behind_head(std::uint32_t added, std::uint32_t rank) {
    const std::uint32_t behind = head();
    insert(ranked_list_of(now_), behind, added, rank);
    if (before_force_.time != now_ || before_force_.force == none || before_force_.force == behind) return;
    for (std::uint32_t& last : std::span(before_force_.last).first(rank + 1)) follow(last, behind, added);
}

// Events of later times are in order, so the one in front has the same rank, or a higher one.
void kol_wheel_t::take_out(std::int32_t time, std::uint32_t place) {
    const ranked_list_t in = ranked_list_of(time);
    std::uint32_t before = none;
    for (std::uint32_t at = in.list.head; at != place; at = events_[at].next) before = at;
    (before == none ? in.list.head : events_[before].next) = events_[place].next;
    std::ranges::replace(in.above, place, before);
    if (before_force_.time == time) std::ranges::replace(before_force_.last, place, before);
    if (in.list.tail == place) in.list.tail = before;
    if (in.list.head != none) return;
    if (is_near(time))
        mark_free(slot_of(time));
    else
        far_.erase(time);
}

void kol_wheel_t::move_behind_head(std::uint32_t place, std::int32_t time, std::uint32_t rank) {
    take_out(time, place);
    insert_behind_head(place, rank);
}

// What is in front of the head counts no more.
void kol_wheel_t::forget_place(std::uint32_t dropped) {
    std::ranges::replace(above_of(slot_of(now_)), dropped, none);
    if (before_force_.time == now_) std::ranges::replace(before_force_.last, dropped, none);
    if (before_force_.force == dropped) before_force_.force = none;
}

// The first list in use from a slot on, the size of the ring when there is none up to its end.
std::size_t kol_wheel_t::next_used(std::size_t from) const {
    std::size_t at = from;
    for (std::size_t level = 0; level < std::size(used_); ++level) {
        if (at / bits >= used_[level].size()) return ring_.size();
        const std::uint64_t word = used_[level][at / bits] >> at % bits;
        if (word != 0) {
            at += static_cast<std::size_t>(std::countr_zero(word));
            while (level-- > 0) at = at * bits + static_cast<std::size_t>(std::countr_zero(used_[level][at]));
            return at;
        }
        at = at / bits + 1;
    }
    return ring_.size();
}

std::int64_t kol_wheel_t::next_time() const {
    const std::size_t from = slot_of(now_);
    std::size_t slot = next_used(from);
    if (slot == ring_.size()) slot = next_used(0);
    if (slot != ring_.size()) return std::int64_t{now_} + ((slot - from) & mask_);
    return far_.empty() ? never : far_.begin()->first;
}

bool kol_wheel_t::is_last_time(std::int32_t time) const {
    if (!far_.empty()) return far_.rbegin()->first == time;
    const std::size_t behind = slot_of(time) + 1;
    const std::size_t from = slot_of(now_);
    std::size_t slot = next_used(behind);
    if (behind > from) {  // the times behind go on at the beginning of the ring
        if (slot != ring_.size()) return false;
        slot = next_used(0);
    }
    return slot >= from;
}

// What happens changes places: nobody else knows the place of a FORCE event.
std::uint32_t kol_wheel_t::pass_force(std::int32_t time, std::uint32_t force, std::uint32_t added) {
    const bool is_executed = time == now_ && head() == force;
    if (is_executed || !is_last_time(time)) return added;
    std::swap(events_[force].what, events_[added].what);
    return force;
}

void kol_wheel_t::bring_near() {
    while (!far_.empty() && is_near(far_.begin()->first)) {
        const std::size_t slot = slot_of(far_.begin()->first);
        ring_[slot] = far_.begin()->second.list;
        std::ranges::copy(far_.begin()->second.above, above_of(slot).begin());
        mark_used(slot);
        far_.erase(far_.begin());
    }
}

// The bits above the ring, the far times, and the place in front of a FORCE event.
#include "kernel/wheel.h"

#include <algorithm>

namespace {

constexpr std::size_t least_size = 64, most_size = std::size_t{1} << 18;

}  // namespace

void kol_wheel_t::begin(std::int32_t now, std::int32_t longest_delay, std::uint32_t first_force,
                        std::uint32_t end_force) {
    const std::size_t wanted = std::bit_ceil(static_cast<std::size_t>(std::max(longest_delay, 0)) + 2);
    const std::size_t size = std::clamp(wanted, least_size, most_size);
    if (size != ring_.size()) resize(size);
    for (std::size_t slot = next_used(0); slot < ring_.size(); slot = next_used(slot + 1)) {
        ring_[slot] = {};
        mark_free(slot);
    }
    events_.clear();
    far_.clear();
    free_ = none;
    now_ = now;
    first_force_ = first_force;
    force_count_ = end_force - first_force;
}

void kol_wheel_t::resize(std::size_t size) {
    mask_ = static_cast<std::uint32_t>(size - 1);
    ring_.assign(size, {});
    for (std::vector<std::uint64_t>& level : used_) {
        size = (size + bits - 1) / bits;
        level.assign(size, 0);
    }
}

void kol_wheel_t::add_first(std::int32_t time, std::span<const std::uint32_t> whats) {
    list_t& list = list_of(time);
    for (std::size_t k = whats.size(); k-- > 0;) {
        const std::uint32_t added = take(whats[k]);
        events_[added].next = list.head;
        if (list.head == none) list.tail = added;
        list.head = added;
    }
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
        ring_[slot] = far_.begin()->second;
        mark_used(slot);
        far_.erase(far_.begin());
    }
}

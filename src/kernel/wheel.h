// kol: the wheel of small events.  Owns the events of a run that goes the short way: what happens, 32 bits
// whose meaning its user knows, in one list a time, in the stated order of equal priorities: behind every
// event of the time; but in front of a FORCE event that is the last of all queued ones.  Times less than
// `size` steps ahead lie in a ring of lists with three levels of bits above it, later ones in an ordered map;
// they move into the ring, whole times at once, as the wheel turns.  Nothing here fails.
#pragma once

#include <bit>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

class kol_wheel_t {
public:
    static constexpr std::uint32_t none = ~std::uint32_t{0};
    static constexpr std::int64_t never = INT64_MAX;

    struct event_t {
        std::uint32_t what, next;
    };
    struct list_t {
        std::uint32_t head = none, tail = none;
    };

    // Empties the wheel and lets it begin at a time.  FORCE events are those whose `what` lies in
    // [first_force, end_force).
    void begin(std::int32_t now, std::int32_t longest_delay, std::uint32_t first_force,
               std::uint32_t end_force);

    // Behind the events of its time; the result is the event's place.  The time is not before now.
    std::uint32_t append(std::int32_t time, std::uint32_t what) {
        const std::uint32_t added = take(what);
        list_t& list = list_of(time);
        (list.head == none ? list.head : events_[list.tail].next) = added;
        list.tail = added;
        return added;
    }
    // The same for a pin's event, which goes in front of a FORCE event that is the last of all queued ones.
    std::uint32_t add(std::int32_t time, std::uint32_t what) {
        const std::uint32_t added = take(what);
        list_t& list = list_of(time);
        if (list.head == none) {
            list.head = list.tail = added;
            return added;
        }
        const std::uint32_t last = list.tail;
        events_[last].next = list.tail = added;
        return is_force(events_[last].what) ? pass_force(time, last, added) : added;
    }
    // In front of the events of a time.
    void add_first(std::int32_t time, std::span<const std::uint32_t> whats);

    std::uint32_t& what(std::uint32_t place) { return events_[place].what; }
    bool is_force(std::uint32_t what) const { return what - first_force_ < force_count_; }

    // The earliest time with events, never when there is none.
    std::int64_t next_time() const;
    // Turns the wheel to a time before which there are no events.
    void turn_to(std::int32_t time) {
        now_ = time;
        if (!far_.empty()) bring_near();
    }
    // The events of now: the first one, being executed, stays in its place until it is dropped.
    std::uint32_t head() const { return ring_[slot_of(now_)].head; }
    std::uint32_t next_of(std::uint32_t place) const { return events_[place].next; }
    void drop_head() {
        list_t& list = ring_[slot_of(now_)];
        const std::uint32_t dropped = list.head;
        list.head = events_[dropped].next;
        events_[dropped].next = free_;
        free_ = dropped;
        if (list.head == none) mark_free(slot_of(now_));
    }
    // Calls visit(time, what) for every event in order.
    template <typename Visit>
    void for_each(Visit visit);

private:
    static constexpr std::size_t bits = 64;

    std::size_t slot_of(std::int32_t time) const { return static_cast<std::uint32_t>(time) & mask_; }
    bool is_near(std::int64_t time) const { return time - now_ <= static_cast<std::int64_t>(mask_); }
    list_t& list_of(std::int32_t time) {
        if (!is_near(time)) [[unlikely]]
            return far_[time];
        const std::size_t slot = slot_of(time);
        if (ring_[slot].head == none) mark_used(slot);
        return ring_[slot];
    }
    std::uint32_t take(std::uint32_t what) {
        if (free_ == none) {
            events_.push_back({what, none});
            return static_cast<std::uint32_t>(events_.size() - 1);
        }
        const std::uint32_t place = free_;
        free_ = events_[place].next;
        events_[place] = {what, none};
        return place;
    }
    void resize(std::size_t size);
    void mark_used(std::size_t slot);
    void mark_free(std::size_t slot);
    std::size_t next_used(std::size_t from) const;
    std::uint32_t pass_force(std::int32_t time, std::uint32_t force, std::uint32_t added);
    bool is_last_time(std::int32_t time) const;
    void bring_near();

    std::vector<event_t> events_;
    std::uint32_t free_ = none;
    std::uint32_t first_force_ = 0, force_count_ = 0;
    std::int32_t now_ = 0;
    std::uint32_t mask_ = 0;
    std::vector<list_t> ring_;
    std::vector<std::uint64_t>
        used_[3];  // a bit for each list in use, for each word of them, for each of those
    std::map<std::int32_t, list_t> far_;
};

inline void kol_wheel_t::mark_used(std::size_t slot) {
    for (std::vector<std::uint64_t>& level : used_) {
        level[slot / bits] |= std::uint64_t{1} << slot % bits;
        slot /= bits;
    }
}

inline void kol_wheel_t::mark_free(std::size_t slot) {
    for (std::vector<std::uint64_t>& level : used_) {
        level[slot / bits] &= ~(std::uint64_t{1} << slot % bits);
        if (level[slot / bits] != 0) return;
        slot /= bits;
    }
}

template <typename Visit>
void kol_wheel_t::for_each(Visit visit) {
    const auto visit_list = [&](std::int32_t time, const list_t& list) {
        for (std::uint32_t at = list.head; at != none; at = events_[at].next) visit(time, events_[at].what);
    };
    const std::size_t from = slot_of(now_);
    const auto visit_slot = [&](std::size_t slot) {
        visit_list(static_cast<std::int32_t>(std::int64_t{now_} + ((slot - from) & mask_)), ring_[slot]);
    };
    for (std::size_t slot = next_used(from); slot < ring_.size(); slot = next_used(slot + 1))
        visit_slot(slot);
    for (std::size_t slot = next_used(0); slot < from; slot = next_used(slot + 1)) visit_slot(slot);
    for (const auto& [time, list] : far_) visit_list(time, list);
}

// kol: the wheel of small events.  Owns the events of a run that goes the short way: what happens, 32 bits
// whose meaning its user knows, in one list a time.  Times less than `size` steps ahead lie in a ring of
// lists with three levels of bits above it, later ones in an ordered map; they move into the ring, whole
// times at once, as the wheel turns.  Nothing here fails.
//
// A pin's event goes behind every event of its time that it does not outrank, FORCE events being outranked by
// none; but in front of a FORCE event that is the last of all queued ones, and directly behind the event that
// is executed where it outranks that.  Ranks count from 0.  A list knows, for each rank, the last of its
// events with that rank or a higher one, which is the place behind which such an event goes; of rank 0 that
// is its tail.
#pragma once

#include <bit>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

// NOLINTNEXTLINE(bugprone-reserved-identifier): in the copy that the compiler makes of the ring
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
               std::uint32_t end_force, std::uint32_t ranks);

    // Behind all events of its time, as a queue that was ordered before is taken over; the result is the
    // event's place.  The time is not before now.
    std::uint32_t append(std::int32_t time, std::uint32_t what, std::uint32_t rank);
    // A pin's event, where the head is executed.
    std::uint32_t add_ranked(std::int32_t time, std::uint32_t what, std::uint32_t rank, bool outranks_head);
    // An event of a later time becomes one of now, directly behind the head.
    void move_behind_head(std::uint32_t place, std::int32_t time, std::uint32_t rank);
    // A pin's event where all have one rank and none is ever moved.
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
        if (list.head == none) {
            list.tail = none;
            mark_free(slot_of(now_));
        }
        if (has_ranks_) forget_place(dropped);
    }
    // Calls visit(time, what) for every event in order.
    template <typename Visit>
    void for_each(Visit visit);

private:
    static constexpr std::size_t bits = 64;

    struct far_list_t {
        list_t list;
        std::vector<std::uint32_t> above;
    };
    // A list with its last events of the ranks from 1 on.
    struct ranked_list_t {
        list_t& list;
        std::span<std::uint32_t> above;
    };
    // The part of a list in front of the last FORCE event of all: its last events by rank.
    struct before_force_t {
        std::uint32_t force = none;
        std::int32_t time = 0;
        std::vector<std::uint32_t> last;
    };

    std::size_t slot_of(std::int32_t time) const { return static_cast<std::uint32_t>(time) & mask_; }
    bool is_near(std::int64_t time) const { return time - now_ <= static_cast<std::int64_t>(mask_); }
    list_t& list_of(std::int32_t time) {
        if (!is_near(time)) [[unlikely]]
            return far_list_of(time).list;
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
    ranked_list_t ranked_list_of(std::int32_t time);
    far_list_t& far_list_of(std::int32_t time);
    std::span<std::uint32_t> above_of(std::size_t slot) {
        return std::span(above_).subspan(slot * (ranks_ - 1), ranks_ - 1);
    }
    void insert(const ranked_list_t& in, std::uint32_t behind, std::uint32_t added, std::uint32_t rank);
    void insert_behind_head(std::uint32_t added, std::uint32_t rank);
    void take_out(std::int32_t time, std::uint32_t place);
    void forget_place(std::uint32_t dropped);
    void resize(std::size_t size, std::uint32_t ranks);
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
    std::uint32_t ranks_ = 1;
    bool has_ranks_ = false;
    std::vector<list_t> ring_;
    std::vector<std::uint32_t> above_;  // of each list of the ring, by rank from 1 on
    std::vector<std::uint64_t>
        used_[3];  // a bit for each list in use, for each word of them, for each of those
    std::map<std::int32_t, far_list_t> far_;
    before_force_t before_force_;
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
    for (const auto& [time, far] : far_) visit_list(time, far.list);
}

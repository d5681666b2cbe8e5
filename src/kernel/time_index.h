// kol: the index of the event queue.  Owns, for every time at which events are queued, the group of those
// events: its first and last event and how many FORCE events it holds.  Times within near_times of the base
// lie in a ring with a bit for each time in use, so that the group before a time is found in a few steps;
// later times lie in an ordered map and move into the ring as the base follows the head of the queue.
//
// Within a group the events' own links `higher` and `lower` form the chain of priorities: from the group's
// last event, each link leads back to the nearest event that outranks it.  A FORCE event outranks every pin;
// its own link leads to the event directly before it, where the chain of the part in front of it begins.  So
// the place behind the last event that is not outranked is found in as many steps as there are different
// priorities.  The index never touches the queue's own links.
#pragma once

#include "kernel/context.h"

struct kol_time_group_t {
    yx_event_rec_t* first = nullptr;  // null: no events at this time
    yx_event_rec_t* last = nullptr;
    std::int32_t time = 0;
    std::int32_t nb_of_force = 0;
};

// The group of a time, made empty when there is none; the base is lowered to the time when it is above it.
kol_time_group_t& kol_group_of(std::int32_t time);
// The last queued event before a time that has no events; none when all are later.
yx_event_rec_t* kol_last_event_before(std::int32_t time);
// No event is earlier than the time from here on.
void kol_advance_index(std::int32_t time);
void kol_clear_index();

inline bool kol_is_force(const yx_event_rec_t& event) { return event.pin == nullptr; }
// The event in the chain from `from` on behind which a pin event of that priority belongs, none when it goes
// in front of the group; below is the last event passed, none when there is none.
yx_event_rec_t* kol_find_outranking(yx_event_rec_t* from, std::int16_t priority, yx_event_rec_t*& below);

// Keep group and chain in step with the queue; the event is already linked, or still linked, in the queue.
// above and below as kol_find_outranking found them.
void kol_join_ranked(kol_time_group_t& group, yx_event_rec_t* event, yx_event_rec_t* above,
                     yx_event_rec_t* below);
void kol_join_last(kol_time_group_t& group, yx_event_rec_t* event);
// FORCE events, linked by next up to the last one, have been put in front of a group that has events.
void kol_join_first(kol_time_group_t& group, yx_event_rec_t* first, yx_event_rec_t* last);
// The event follows the head of the queue, whose group it joins.
void kol_join_behind_head(kol_time_group_t& group, yx_event_rec_t* event, yx_event_rec_t* head);
// The event leaves the queue: it is the head, or a pin's event somewhere behind it.
void kol_leave_group(yx_event_rec_t* event);

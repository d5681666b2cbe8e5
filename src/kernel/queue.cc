// Records of events, their places in the queue, and the reaction to spikes.
#include "kernel/queue.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

#include "foundation/status.h"
#include "kernel/cells.h"
#include "kernel/net_events.h"
#include "kernel/network.h"
#include "kernel/queue_check.h"
#include "kernel/state.h"
#include "kernel/time_index.h"

namespace {

constexpr std::size_t events_per_block = 1024;
constexpr std::int32_t last_time = std::numeric_limits<std::int32_t>::max();
constexpr std::int16_t force_priority = std::numeric_limits<std::int16_t>::max();

std::vector<std::unique_ptr<yx_event_rec_t[]>> blocks;
std::size_t used_of_last_block = events_per_block;

[[noreturn]] void stop(const char* what) {
    kol_trace("%s", what);
    tm_fatal(file_data_invalid);
}

// ---- event records

yx_event_rec_t* new_record() {
    if (used_of_last_block == events_per_block) {
        blocks.push_back(std::make_unique<yx_event_rec_t[]>(events_per_block));
        used_of_last_block = 0;
    }
    return &blocks.back()[used_of_last_block++];
}

yx_event_rec_t* take_record() {
    yx_event_rec_t* record = kol_ext.last_old_event;
    if (record == nullptr) return new_record();
    kol_ext.last_old_event = record->previous;
    if (record->previous == nullptr)
        kol_ext.start_old_event = nullptr;
    else
        record->previous->next = nullptr;
    *record = {};
    return record;
}

void recycle(yx_event_rec_t* record) {
    record->previous = kol_ext.last_old_event;
    record->next = nullptr;
    if (record->previous == nullptr)
        kol_ext.start_old_event = record;
    else
        record->previous->next = record;
    kol_ext.last_old_event = record;
}

// ---- links of the queue

// behind null: in front of the head.
void link_behind(yx_event_rec_t* behind, yx_event_rec_t* event) {
    event->previous = behind;
    event->next = behind == nullptr ? kol_ext.cur_event : behind->next;
    (event->previous == nullptr ? kol_ext.cur_event : event->previous->next) = event;
    (event->next == nullptr ? kol_ext.last_event : event->next->previous) = event;
}

void unlink(yx_event_rec_t* event) {
    (event->previous == nullptr ? kol_ext.cur_event : event->previous->next) = event->next;
    (event->next == nullptr ? kol_ext.last_event : event->next->previous) = event->previous;
}

// ---- the place of a pin's event

void place_behind_head(yx_event_rec_t* event, kol_time_group_t& group) {
    event->unordered = true;
    link_behind(kol_ext.cur_event, event);
    kol_join_behind_head(group, event, kol_ext.cur_event);
}

void place_last(yx_event_rec_t* event, kol_time_group_t& group) {
    link_behind(group.last != nullptr ? group.last : kol_last_event_before(event->time), event);
    kol_join_last(group, event);
}

// Among queued events of its time: behind the last one that it does not outrank.  A FORCE event that is the
// last of the whole queue is passed in any case.
void place_ranked(yx_event_rec_t* event, kol_time_group_t& group) {
    const bool passes_last = group.last == kol_ext.last_event && kol_is_force(*group.last);
    yx_event_rec_t* below = passes_last ? group.last : nullptr;
    yx_event_rec_t* const from = passes_last ? group.last->higher : group.last;
    yx_event_rec_t* const above = kol_find_outranking(from, event->priority, below);
    yx_event_rec_t* const behind = above != nullptr ? above : group.first->previous;
    if (behind == nullptr) {
        if (kol_ext.cur_event != kol_ext.last_event) stop(" KOL_OUTPUT_STATE : no place in queue ");
        place_last(event, group);
        return;
    }
    link_behind(behind, event);
    kol_join_ranked(group, event, above, below);
}

// Behind events that it may outrank, which stand where no rule of priorities has put them then.
void place_behind_lower(yx_event_rec_t* event, kol_time_group_t& group) {
    yx_event_rec_t* at = group.last;
    for (; at != group.first->previous && !kol_is_force(*at); at = at->previous) {
        if (at->unordered) continue;
        if (at->priority >= event->priority) break;
        at->unordered = true;
        at->higher = at->lower = nullptr;
    }
    const bool is_first = at == group.first->previous;
    link_behind(group.last, event);
    kol_join_ranked(group, event, is_first ? nullptr : at, nullptr);
}

void place(yx_event_rec_t* event) {
    const yx_event_rec_t* head = kol_ext.cur_event;
    if (head != nullptr) kol_advance_index(head->time);
    kol_time_group_t& group = kol_group_of(event->time);
    if (group.first == nullptr)
        place_last(event, group);
    else if (head->time == event->time && !kol_is_force(*head) && event->priority > head->priority)
        place_behind_head(event, group);
    else
        place_ranked(event, group);
}

// ---- spikes

void move_behind_head(yx_event_rec_t* event) {
    yx_event_rec_t* const head = kol_ext.cur_event;
    kol_leave_group(event);
    event->time = head->time;
    if (event->previous == head) {
        event->unordered = true;
        kol_join_behind_head(kol_group_of(event->time), event, head);
        return;
    }
    unlink(event);
    place_behind_head(event, kol_group_of(event->time));
}

// The pin's handler was called for a spike: its earlier pending change becomes uncertain.
void react_to_spike(yx_event_rec_t* earlier, std::int8_t state) {
    if (earlier->time <= kol_ext.cur_event->time) return;
    if (kol_ext.spike_model != kol_indgene && kol_ext.spike_model != kol_pessimistic) return;
    earlier->state = kol_indeterminate_of(state);
    if (kol_ext.spike_model == kol_pessimistic) move_behind_head(earlier);
}

void check_after_insertion([[maybe_unused]] const yx_event_rec_t& event) {
#ifdef KOLV_CHECK_QUEUE
    kol_list_all_event();
#else
    kol_check_neighbours(event);
#endif
}

yx_event_rec_t* make_event(yx_pin_record_t* pin, yx_net_record_t* net, std::int16_t priority,
                           std::int32_t time, std::int8_t state) {
    yx_event_rec_t* event = take_record();
    event->time = time;
    event->state = state;
    event->pin = pin;
    event->net = net;
    event->priority = priority;
    return event;
}

}  // namespace

void kol_output_state(yx_pin_record_t* pin, yx_net_record_t* net, std::int32_t delay, std::int8_t state) {
    kol_schedule(pin, kol_root_net(net), pin->pin_hdl_priority, delay, state);
}

void kol_schedule(yx_pin_record_t* pin, yx_net_record_t* root, std::int16_t priority, std::int32_t delay,
                  std::int8_t state) {
    const auto new_time = static_cast<std::int32_t>(
        std::min<std::int64_t>(static_cast<std::int64_t>(kol_ext.cur_time) + delay, last_time));
    if (kol_cells.is_running) {
        if (kol_schedule_cell(*pin, *root, new_time, state)) return;
        stop(" KOL_OUTPUT_STATE : new_time < cur_ev.time ");
    }
    yx_event_rec_t* const earlier = kol_newest_event(*pin, *root);
    if (earlier != nullptr && earlier->time >= new_time) {
        earlier->state = state;
        return;
    }
    if (kol_ext.cur_event != nullptr && new_time < kol_ext.cur_event->time)
        stop(" KOL_OUTPUT_STATE : new_time < cur_ev.time ");
    yx_event_rec_t* const event = make_event(pin, root, priority, new_time, state);
    place(event);
    kol_add_net_event(event);
    if (kol_ext.spiked && earlier != nullptr) react_to_spike(earlier, state);
    check_after_insertion(*event);
}

void kol_create_force_event(yx_net_record_t* net, std::int32_t abs_time, std::int8_t state) {
    if (abs_time < kol_ext.cur_time) stop(" KOL_CREATE_FORCE_EVENT :er_8_01:  force_time < cur_time ");
    yx_event_rec_t* const event = make_event(nullptr, kol_root_net(net), force_priority, abs_time, state);
    place_last(event, kol_group_of(abs_time));
    kol_add_net_event(event);
}

void kol_put_forces_first(std::int32_t time, std::span<const kol_stimulus_t> stimuli) {
    kol_time_group_t& group = kol_group_of(time);
    const bool has_events = group.first != nullptr;
    yx_event_rec_t* const before = has_events ? group.first->previous : nullptr;
    yx_event_rec_t *first = nullptr, *last = before;
    for (const kol_stimulus_t& stimulus : stimuli) {
        yx_net_record_t* const root = kol_root_net(yx_ptrto_net_rec(stimulus.net));
        yx_event_rec_t* const event = make_event(nullptr, root, force_priority, time, stimulus.state);
        if (has_events)
            link_behind(last, event);
        else
            place_last(event, group);
        if (first == nullptr) first = event;
        last = event;
        kol_add_net_event(event);
    }
    if (has_events && first != nullptr) kol_join_first(group, first, last);
}

void kol_append_event(yx_pin_record_t* pin, yx_net_record_t* root, std::int32_t time, std::int8_t state) {
    const std::int16_t priority = pin == nullptr ? force_priority : pin->pin_hdl_priority;
    yx_event_rec_t* const event = make_event(pin, root, priority, time, state);
    kol_time_group_t& group = kol_group_of(time);
    if (group.last == nullptr || pin == nullptr)
        place_last(event, group);
    else
        place_behind_lower(event, group);
    kol_add_net_event(event);
}

void kol_retire_cur_event() {
    yx_event_rec_t* const event = kol_ext.cur_event;
    if (event == nullptr) stop(" KOL_RETIRE_CUR_EVENT : queue empty ");
    kol_leave_group(event);
    kol_remove_net_event(event);
    unlink(event);
    *event = {};
    recycle(event);
}

void kol_empty_queue() {
    while (kol_ext.last_event != nullptr) {
        yx_event_rec_t* const event = kol_ext.last_event;
        unlink(event);
        kol_forget_net_events(*event->net);
        event->time = -1;
        event->state = 0;
        recycle(event);
    }
    kol_clear_index();
}

void kol_clear_queue() {
    kol_ext.cur_event = kol_ext.last_event = nullptr;
    kol_ext.start_old_event = kol_ext.last_old_event = nullptr;
    blocks.clear();
    used_of_last_block = events_per_block;
    kol_clear_index();
}

// The order of times and priorities, and the counts of both directions.
#include "kernel/queue_check.h"

#include "foundation/status.h"
#include "kernel/time_index.h"

namespace {

[[noreturn]] void stop(const char* what) {
    if (yx_debugfile != nullptr) std::fprintf(yx_debugfile, "%s\n", what);
    tm_fatal(file_data_invalid);
}

void check_times(const yx_event_rec_t& event, const yx_event_rec_t& next) {
    if (event.time > next.time) stop(" !!!! ERROR  in time ");
}

void check_priorities(std::int16_t before, std::int16_t behind) {
    if (before < behind) stop(" !!!! ERROR  in pin_hlder_priority ");
}

// Of the events that the rule of priorities placed: the head is being executed, and the others were put
// directly behind it whatever their priority.
bool is_ranked(const yx_event_rec_t& event) { return &event != kol_ext.cur_event && !event.unordered; }

// Times never decrease; within one time the priorities never increase, a FORCE event beginning afresh.
void check_order() {
    const yx_event_rec_t* ranked = nullptr;
    for (const yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next) {
        if (event->next != nullptr) check_times(*event, *event->next);
        if (!is_ranked(*event) && !kol_is_force(*event)) continue;
        const bool follows = ranked != nullptr && ranked->time == event->time && !kol_is_force(*event);
        if (follows) check_priorities(ranked->priority, event->priority);
        ranked = event;
    }
}

void check_counts(const yx_event_rec_t* first, const yx_event_rec_t* last) {
    std::int64_t balance = 0;
    for (const yx_event_rec_t* event = first; event != nullptr; event = event->next) ++balance;
    for (const yx_event_rec_t* event = last; event != nullptr; event = event->previous) --balance;
    if (balance != 0) stop(" !!! ERROR KOL_LIST_ALL_EVENT  : n0_ev list ");
}

}  // namespace

void kol_list_all_event() {
    check_order();
    check_counts(kol_ext.cur_event, kol_ext.last_event);
    check_counts(kol_ext.start_old_event, kol_ext.last_old_event);
}

void kol_check_neighbours(const yx_event_rec_t& event) {
    const yx_event_rec_t* const before = event.previous;
    const yx_event_rec_t* const behind = event.next;
    if (before != nullptr) check_times(*before, event);
    if (behind != nullptr) check_times(event, *behind);
    if (!is_ranked(event)) return;
    if (before != nullptr && before->time == event.time && is_ranked(*before))
        check_priorities(before->priority, event.priority);
    if (behind != nullptr && behind->time == event.time && is_ranked(*behind) && !kol_is_force(*behind))
        check_priorities(event.priority, behind->priority);
}

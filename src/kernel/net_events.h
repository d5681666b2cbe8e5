// kol: the queued events of one net.  Keeps, hanging off the root net, the events that will still change it,
// so that a pin's newest pending event and the net's next change are found without reading the queue.  The
// few events from pins stand in the order of scheduling, the newest first; the FORCE events, of which a long
// run can hold very many, are sorted by time when first asked for, and then stay so.
#pragma once

#include "kernel/context.h"

void kol_add_net_event(yx_event_rec_t* event);
void kol_remove_net_event(yx_event_rec_t* event);
void kol_forget_net_events(yx_net_record_t& net);
// The newest event that the pin has scheduled for the net, none once it is executed.
inline yx_event_rec_t* kol_newest_event(const yx_pin_record_t& pin, const yx_net_record_t& root) {
    yx_event_rec_t* event = root.UU.U1.first_pending;
    while (event != nullptr && event->pin != &pin) event = event->net_next;
    return event;
}
// The time from this event to the first queued event of its net that carries another state than this one,
// -1 when there is none within kol_max_delay.
std::int32_t kol_next_change(const yx_event_rec_t& event);

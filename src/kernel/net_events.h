// kol: the queued events of one net.  Keeps, hanging off the root net, the events that will still change it,
// so that the spike check finds a net's next change without reading the queue.  The few events from pins
// stand in no order; the FORCE events, of which a long run can hold very many, are sorted by time when first
// asked for, and then stay so.
#pragma once

#include "kernel/context.h"

void kol_add_net_event(yx_event_rec_t* event);
void kol_remove_net_event(yx_event_rec_t* event);
void kol_forget_net_events(yx_net_record_t& net);
// The time from this event to the first queued event of its net that carries another state than this one,
// -1 when there is none within kol_max_delay.
std::int32_t kol_next_change(const yx_event_rec_t& event);

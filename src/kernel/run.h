// kol: the run loop.  Executes the events of the queue in order from cur_time up to end_time: resolves nets,
// keeps histories, detects hazards, spikes and breaks, calls the handlers of the pins that a net feeds.
// Hazards and spikes are counted warnings; inconsistent data is fatal (file_data_invalid).
#pragma once

#include "kernel/context.h"

void kol_exec_all_event(bool& no_event_found);
// Executes the head of the queue, which stays there.
void kol_exec_cur_event();
// The next net of the net tree in pre-order, none at its end.
yx_net_record_t* kol_find_next_childnet(yx_net_record_t* net);
void kol_exec_hdler(yx_procedure_t handler);
// True when a pin on the net's chain touches this net: always, unless the pin stands on the net's bus and its
// range leaves the net out.
bool kol_pin_belongs_to_net(const yx_pin_record_t* pin, const yx_net_record_t* net);

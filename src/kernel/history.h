// kol: the state histories of observed nets.  A history begins with a record (0, iU) when the net gets its
// first observer (a list or trace signal, a member of a user bus) and goes on until the last one leaves; it
// is in order of time, the net's list_state being the newest record and its first_state the oldest.  A net
// that has changed before it is observed gets a record of its last change too, one whose state was restored a
// record of that.  Records are recycled.
#pragma once

#include "kernel/context.h"

// Begins or joins the net's history; the result is its first record.
yx_list_state_rec_t* kol_observe_net(yx_net_record_t* net);
// Takes one observer away; the last one ends the history.
void kol_forget_net(yx_net_record_t* net);
// The time from which the net's history is known: 0, or that of its last change when it was first observed
// later.
std::int32_t kol_recorded_from(const yx_net_record_t& net);
// Appends a change.
void kol_append_history(yx_net_record_t* net, std::int32_t time, std::int8_t state);
// Returns every history to its single record (0, iU) and every list and trace signal and user bus member to
// it.
void kol_init_list_state();
void kol_init_bus_list_state(yx_bus_rec_t* bus);
// Frees every history record.
void kol_clear_history();

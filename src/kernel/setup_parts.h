// kol: the steps of the set-up, in the order in which they run.
#pragma once

#include "kernel/model.h"

// References of every net, its children, its pin chains; then of every instance and its pins.
void kol_link_nets();
void kol_link_instances();
// Every net to its initial state, those that have one scheduled to take it at time 0.
void kol_init_states_of_nets();
// Binds the instances to models and pins to handlers; false at the first instance without a model property.
bool kol_set_up_instances();
// The model of an instance; null when its MODEL property names none.
const kol_model_t* kol_model_of(const yx_inst_record_t& inst);
// The largest net-plus-pin delay of the network into kol_max_delay.
void kol_compute_max_delay();

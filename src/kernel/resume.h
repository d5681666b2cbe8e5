// kol: going on from states that this session has not run up to.  The states of nets and pins come from
// elsewhere; this room makes what stands beside them fit: no event of an earlier run is left, no net or pin
// has changed yet, the models know which set, reset and enable inputs are active, the histories begin anew.
#pragma once

#include "kernel/context.h"

// The bits of a pin that spans bits take the states of the nets that they touch.
void kol_take_states_of_bits(yx_pin_record_t& pin);
// Resumes at a time, in time steps: start_time, cur_time and end_time become it.  Every history becomes (0,
// iU) and the net's state at that time.  Forces and clock blocks stay.
void kol_resume_at(std::int32_t time);

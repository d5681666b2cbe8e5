// kol: what spikes are measured by.  A change of a net is a spike for a pin that drives it or is fed by it
// when the net's next change follows sooner than the delay of net and pin together.
#pragma once

#include "kernel/context.h"

// The delay of the pin and the root net together for a change to a state.
std::int32_t kol_spike_delay(const yx_pin_record_t& pin, const yx_net_record_t& root, std::int8_t state);

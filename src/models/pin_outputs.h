// kol: outputs and delays of the timed models.  Schedules a value on an output pin after its output delay
// (the net's delay plus the pin's, by value and timing range of the current instance) and an input delay,
// with the drive that the pin has for the value, on every net that the pin reaches.
#pragma once

#include "kernel/context.h"

// The pin's own delay of a change to the value.
std::int32_t kol_input_delay(const yx_pin_record_t* pin, std::int16_t value);
// The delay of the pin towards the net; a bus has no delays of its own.
std::int32_t kol_output_delay(const yx_pin_record_t* pin, const yx_net_record_t* net, std::int16_t value);
void kol_schedule_output(yx_pin_record_t* pin, std::int16_t value, std::int32_t input_delay);
// The same with a state, whatever the pin's drives.
void kol_schedule_state(yx_pin_record_t* pin, std::int8_t state, std::int32_t input_delay);

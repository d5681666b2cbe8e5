// kol: what a run tells the user.  Shows the lines of hazards, spikes, breaks, the user's requests and the
// limit of errors and warnings; counts the warnings among them.  Times are time steps.
#pragma once

#include "kernel/context.h"

void kol_say_pin_hazard(const yx_pin_record_t& pin, const yx_net_record_t& net, std::int32_t time);
void kol_say_net_hazard(const yx_net_record_t& net, std::int32_t time);
void kol_say_fixed_net(const yx_net_record_t& net, std::int32_t time);

struct kol_spike_t {
    const yx_pin_record_t* pin = nullptr;     // the driving pin, or the fed one
    const yx_net_record_t* net = nullptr;     // the net that changes
    const yx_pin_record_t* driver = nullptr;  // of a fed pin: the pin that drives it, none after a FORCE
    std::int32_t time = 0, dif = 0, delay = 0;
};
void kol_say_driver_spike(const kol_spike_t& spike);
void kol_say_fan_out_spike(const kol_spike_t& spike);

void kol_say_break(const yx_net_record_t& net, std::int32_t time);
void kol_say_bus_break(const tm_string_record_t& name, std::string_view value, std::int32_t time);
void kol_say_break_request(std::int32_t time);
void kol_say_status(std::int32_t time);
void kol_say_limit(std::int32_t time, std::int64_t limit);

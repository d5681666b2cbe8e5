// kol: observed signals.  Finds what a name of LIST, TRACE or DEFINE BUS stands for, makes the records of
// entries and bus members, which observe their nets from then on, and keeps user buses within what the views
// can show.
#pragma once

#include <memory>

#include "kernel/bus_bits.h"
#include "kernel/context.h"

struct kol_found_signal_t {
    tm_string_record_t name;         // as typed; "_0" behind it for a bus of the design
    yx_bus_rec_t* bus = nullptr;     // a user bus
    yx_net_record_t* net = nullptr;  // otherwise; the first member for a bus of the design
};

// Looks for a user bus, a probe, an absolute path, a net index and a relative name, in this order.
bool kol_find_signal(const tm_string_record_t& name, kol_found_signal_t& found);
// A new record of what was found, at the current simulation path.
std::unique_ptr<yx_signal_rec_t> kol_make_signal(const kol_found_signal_t& found, std::int16_t base_number);
// Gives up a record that no list holds, and its observation of the net or its hold on the bus.
void kol_drop_signal(std::unique_ptr<yx_signal_rec_t> signal);
// Takes a user bus off its list; it lives on, without a name, while a view or another bus shows it.
void kol_forget_bus(yx_bus_rec_t* bus);

// Whether the rows of the trace stay below 1024, which drawing requires.
bool kol_trace_fits();

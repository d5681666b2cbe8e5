// kol: name lookup.  Turns a user's name (absolute "/...", "NI_n", "N_n", a probe's name, or relative to the
// current simulation path) into the root net of a net tree, and finds records of the signal lists by name.
// Result 0: not found; nothing is printed.  Inconsistent bus data is fatal.
#pragma once

#include "kernel/context.h"

std::int16_t kol_find_net(const tm_string_record_t& name, yx_net_record_t*& net);                   // 0..5
std::int16_t kol_find_net_abs(const tm_string_record_t& name, yx_net_record_t*& net);               // 1
std::int16_t kol_find_net_rel(const tm_string_record_t& name, yx_net_record_t*& net);               // 2
std::int16_t kol_find_net_path(const tm_string_record_t& name, yx_net_record_t*& net);              // 3
std::int16_t kol_find_net_rid(const tm_string_record_t& name, yx_net_record_t*& net);               // 4
std::int16_t kol_find_net_probe(const tm_string_record_t& name, kol_probe_signal_rec_t*& probe);    // 5
std::int16_t kol_find_sim_bus(const tm_string_record_t& name, yx_bus_rec_t*& bus);                  // 7
std::int16_t kol_find_break_inrec(const tm_string_record_t& name, yx_break_signal_rec_t*& record);  // 1, 2
std::int16_t kol_find_listsig_inrec(const tm_string_record_t& name, yx_signal_rec_t*& record);      // 1, 2
std::int16_t kol_find_tracesig_inrec(const tm_string_record_t& name, yx_signal_rec_t*& record);     // 1, 2
// The path of the net that a path or a relative name finds, where nets whose names differ in case alone fit
// as well; else empty.
std::string_view kol_chosen_among_cases(const tm_string_record_t& name);
bool kol_find_pin_rel(const tm_string_record_t& instance, const tm_string_record_t& pin_name,
                      yx_pin_record_t*& pin);

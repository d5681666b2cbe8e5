// kol: the rows of the trace entries.  A bus has one set of members however often it is traced, so whoever
// visits a bus entry calls kol_trace_place_members before looking at a member's row.
#pragma once

#include "results/entries/entry.h"

inline constexpr std::int16_t kol_trace_max_row = 1023;

// The row of every entry; with a bus, stops after that bus.
void kol_update_row_trace(yx_bus_rec_t* bus);
void kol_update_row_trace_bus(yx_bus_rec_t* bus);
// Gives the members of a bus entry, or of a bus inside a bus, the rows that belong to this entry.
void kol_trace_place_members(const yx_signal_rec_t& entry);
// Whether the entry's row is among those that a page of that height shows.
bool kol_trace_row_shown(const yx_signal_rec_t& entry, std::int32_t page_height);
// The middle line of a row.
std::int32_t kol_trace_row_y(std::int16_t row);

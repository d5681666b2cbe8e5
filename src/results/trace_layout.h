// kol: the rows of the trace entries.  A bus has one set of members however often it is traced, so whoever
// visits a bus entry calls kol_trace_place_members before looking at a member's row.
#pragma once

#include "kernel/context.h"

inline constexpr std::int16_t kol_trace_max_row = 1023;

// The first entry of the trace; none when nothing is traced.
yx_signal_rec_t* kol_trace_first_entry();
// Gives the members of a bus entry, or of a bus inside a bus, the rows that belong to this entry.
void kol_trace_place_members(const yx_signal_rec_t& entry);
// Whether the entry's row is among those that the page shows.
bool kol_trace_row_shown(const yx_signal_rec_t& entry);
// The middle line of a row.
std::int32_t kol_trace_row_y(std::int16_t row);
// How many rows, and dots of the grid below each other, the page has room for: 2..49.
std::int32_t kol_trace_rows_shown();

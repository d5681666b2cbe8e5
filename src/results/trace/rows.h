// rs: the rows of the trace as they stand on a page: which entry a row shows, and what is written into a row
// beside its waveform.
#pragma once

#include <functional>

#include "canvas/canvas.h"
#include "results/entries/time_cursor.h"

// Every row on a page of that height: the entry, its name, and the row.
using rs_on_row_t = std::function<void(const rs_entry_t& entry, std::string_view name, std::int16_t row)>;
void rs_for_trace_rows(std::int32_t page_height, const rs_on_row_t& on_row);
// How many rows there are, on the page or not.
std::int32_t rs_trace_row_count();

// Where no history was kept a grey ground, below everything else.
void rs_draw_unrecorded(tm_canvas& canvas);
// The values of combined buses in their waveforms, each where it fits; one that is cut ends in "+".
void rs_draw_bus_values(tm_canvas& canvas);
// Lines at the times of the cursors, and what each row shows at the first beside its name.
void rs_draw_trace_cursors(tm_canvas& canvas);

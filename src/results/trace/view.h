// kol: the trace view.  Draws the traced signals as waveforms over kol_trace_divisions of trace_scale time
// steps from trace_cur_time: one row per signal, the signals of a combined bus on one row, names at the
// right, time labels below, a dotted grid.  Coordinates are pixels, rows are 1..kol_trace_max_row; a row
// outside is fatal (file_data_invalid).  A page too low for one row is drawn as if it held one.
#pragma once

#include "canvas/canvas.h"
#include "kernel/context.h"

// Cursors: on the value at a time.
void kol_trace_get_sigresult(yx_signal_rec_t* signal, std::int32_t cur_time);
void kol_trace_get_busresult(yx_bus_rec_t* bus, std::int32_t cur_time);

// Drawing; the entries, and the members of a bus given, have their rows already.
void kol_trace_write_signame(tm_canvas& canvas);
void kol_trace_bus_write_signame(tm_canvas& canvas, yx_bus_rec_t* bus);
void kol_trace_plot_sigresult(tm_canvas& canvas);
void kol_trace_plotbusresult(tm_canvas& canvas, yx_bus_rec_t* bus);
// The time under a place of a page of that width, held within the window.
std::int32_t kol_trace_time_at(std::int32_t x, std::int32_t page_width);
// The place of a time on a page of that width, and where waveforms end: at the window's end or the present.
std::int32_t kol_trace_x_of(std::int32_t time, std::int32_t page_width);
std::int32_t kol_trace_plot_end();
// From the height of the drawing bitmap at start-up.
void kol_set_trace_geometry(std::int32_t bitmap_height);

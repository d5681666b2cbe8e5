// kol: the trace view.  Draws the traced signals as waveforms over twenty divisions of trace_scale time steps
// from trace_cur_time: one row per signal, the signals of a combined bus on one row, names at the right, time
// labels below, a dotted grid.  Coordinates are pixels, rows are 1..1023; a row outside is fatal
// (file_data_invalid).  The page is drawn as if it were between 294 and 2309 pixels high.
#pragma once

#include "kernel/context.h"

// Layout: the row of every entry; with a bus, stops after that bus.
void kol_update_row_trace(yx_bus_rec_t* bus);
void kol_update_row_trace_bus(yx_bus_rec_t* bus);

// Cursors: on the value at a time.
void kol_trace_get_sigresult(yx_signal_rec_t* signal, std::int32_t cur_time);
void kol_trace_get_busresult(yx_bus_rec_t* bus, std::int32_t cur_time);

// Drawing on rs_results_canvas.  The members of the bus have their rows already.
void kol_trace_write_signame();
void kol_trace_bus_write_signame(yx_bus_rec_t* bus);
void kol_trace_plot_sigresult();
void kol_trace_plotbusresult(yx_bus_rec_t* bus);
// The time under a place of a page of that width, held within the window.
std::int32_t kol_trace_time_at(std::int32_t x, std::int32_t page_width);
// From the height of the drawing bitmap at start-up.
void kol_set_trace_geometry(std::int32_t bitmap_height);

// Scrolling by one time step, the step of the list view, while the Results page shows the trace.
void kol_cursor_left_1st();
void kol_cursor_right_1st();

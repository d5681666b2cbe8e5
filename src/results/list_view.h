// kol: the list view.  Shows the values of the listed signals over time: one column per signal, buses spread
// into their members, one row per time, names at the foot in four staggered lines; writes the same table to a
// file. Times are time steps; columns are 1..1024, one outside is fatal (file_data_invalid).
#pragma once

#include <cstdint>
#include <cstdio>

#include "canvas/canvas.h"
#include "kernel/context.h"

// Layout: column and row of every entry; with a bus, stops after that bus.
void kol_update_column_list(yx_bus_rec_t* bus);
void kol_update_col_list_bus(yx_bus_rec_t* bus);
// Assigns the columns; false when they do not end within 1024, which drawing and writing require.
bool kol_list_fits();

// Cursors.
void kol_list_get_sigresult(yx_signal_rec_t* signal, std::int32_t cur_time);
void kol_list_get_busresult(yx_bus_rec_t* bus, std::int32_t cur_time);
void kol_list_get_signextime(yx_signal_rec_t* signal, std::int32_t curtime, std::int32_t& nextime);
void kol_list_get_busnextime(yx_bus_rec_t* bus, std::int32_t curtime, std::int32_t& nextime);
void kol_list_get_nextime(std::int32_t curtime, std::int32_t& nextime);

// Drawing on rs_results_canvas.
void kol_list_write_signame();
void kol_list_bus_write_signame(yx_bus_rec_t* bus);
void kol_list_write_sigresult();
void kol_list_writebusresult(std::int32_t row, yx_bus_rec_t* bus, std::int32_t cur_time);
// The time of the row that stands at a height of the page, at most of the last row.
std::int32_t kol_list_time_at(std::int32_t y);
// The geometry of both views from the height of the drawing bitmap at start-up.
void kol_set_list_geometry(std::int32_t bitmap_height);
// Draws the Results page on its canvas when drawing is enabled; tm_shell.redraw_results calls it and shows
// the page.
void kol_update_darea_edit();
// Draws the list, or else the trace, on any canvas.
void kol_draw_results(tm_canvas& canvas, bool list);
// Scrolling of the list by one time step, about a hundredth of end_time.
void kol_cursor_down_1st();
void kol_cursor_up_1st();

// The list file, on the stream kol_wli.
extern std::FILE* kol_wli;
void kol_list_wfile_signame();
void kol_list_bus_wfile_signame(std::int16_t row_cur, yx_bus_rec_t* bus, std::int16_t& column);
void kol_list_wfile_sigresult(std::int32_t begin_time, std::int32_t end_time);
void kol_list_wfilebusresult(yx_bus_rec_t* bus, std::int32_t cur_time, std::int16_t& column);

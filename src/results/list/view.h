// kol: the list view.  Shows the values of the listed signals over time: one column per signal, buses spread
// into their members, one row per time, names at the foot in four staggered lines.  Times are time steps;
// columns are 1..kol_list_max_column, one outside is fatal (file_data_invalid).
#pragma once

#include <cstdint>

#include "canvas/canvas.h"
#include "kernel/context.h"

// Drawing; the entries have their columns already.
void kol_list_write_signame(tm_canvas& canvas);
void kol_list_bus_write_signame(tm_canvas& canvas, yx_bus_rec_t* bus);
void kol_list_write_sigresult(tm_canvas& canvas);
void kol_list_writebusresult(tm_canvas& canvas, std::int32_t row, yx_bus_rec_t* bus, std::int32_t cur_time);
// Lines above and below the rows that hold the times of the cursors.
void rs_draw_list_cursors(tm_canvas& canvas);
// The time of the row that stands at a height of the page, at most of the last row.
std::int32_t kol_list_time_at(std::int32_t y);
// From the height of the drawing bitmap at start-up.
void kol_set_list_places(std::int32_t bitmap_height);

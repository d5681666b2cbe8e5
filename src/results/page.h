// kol: the Results page.  Shows the list or the trace (kol_ext.list_or_trace).
#pragma once

#include <cstdint>

#include "canvas/canvas.h"

// The geometry of both views from the height of the drawing bitmap at start-up.
void kol_set_list_geometry(std::int32_t bitmap_height);
// Names of the trace in the middle of their rows, until the geometry is set anew.
void kol_put_names_beside_rows();
// Draws the page on its canvas when drawing is enabled.
void kol_update_darea_edit(tm_canvas& canvas);
// Draws the list, or else the trace, on any canvas.
void kol_draw_results(tm_canvas& canvas, bool list);

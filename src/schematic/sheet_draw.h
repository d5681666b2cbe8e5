// tm: the picture of a sheet.  Draws an open file's objects on a canvas through a viewport, in this order
// from below: page border and grid, fillings, shapes, wires, junctions, texts and tags, what is selected,
// probes. Deleted and unvisible objects are left out, with all they contain, and so is whatever lies outside.
//
// Selected objects, with all they contain, are white and two pixels wider; a selected text stands in a white
// box, a selected vertex or pin in a white square.  A text is height high and 3/5 of that wide for each
// character; it fills the place it has in the frame of its holder, but is always read from left to right or
// upward: turned round or mirrored it ends where it would begin.  Texts below tm_least_text pixels are lines.
// A property of an instance or of its pin hides the symbol's property of the same name.  Unconnected pins are
// marked with a red square.  Buses are at least tm_bus_width wide; junction dots have the colour of the net's
// first segment.  Page border and grid are blue, tags cyan, probes yellow.
#pragma once

#include "schematic/viewport.h"

inline constexpr std::int32_t tm_bus_width = 3;

// The canvas is not cleared.  Whether the display is on is for the caller to know.
void tm_draw_sheet(tm_file_index_t file_index, const tm_viewport_t& viewport, tm_canvas& canvas);

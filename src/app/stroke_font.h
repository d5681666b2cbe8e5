// rs: the stroke font.  Turns characters into line segments that fill a cell of a given size; glyphs come
// from the Hershey font files and are kept per cell size.  Without the font files there are no glyphs, and
// rs_font_loaded says so.
#pragma once

#include <cstdint>
#include <span>

#include "results/canvas.h"

struct rs_stroke {
    rs_point from, to;  // from the upper left corner of the cell
};

bool rs_font_loaded();
// The strokes of a character in a cell of that width and height, pixels; valid until the program ends.
std::span<const rs_stroke> rs_font_strokes(char character, std::int32_t cell_width, std::int32_t cell_height);

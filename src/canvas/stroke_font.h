// tm: the stroke font.  Turns characters into line segments that fill a cell of a given size; glyphs come
// from the Hershey font files and are kept for the cell sizes in use, tm_font_sizes of them at most.  Without
// the font files there are no glyphs, and tm_font_loaded says so.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "canvas/canvas.h"

struct tm_stroke {
    tm_pixel from, to;  // from the upper left corner of the cell
};

inline constexpr std::size_t tm_font_sizes = 64;

bool tm_font_loaded();
// The strokes of a character in a cell of that width and height, pixels; valid until the next call.
std::span<const tm_stroke> tm_font_strokes(char character, std::int32_t cell_width, std::int32_t cell_height);

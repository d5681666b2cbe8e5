// tm: the outlines of the primitives.  A line, arc, circle, rectangle or polyline as the points of one path,
// in the frame of its holder, with its pen and filling.  Colours are palette indexes modulo 8, line styles
// 0..4 are those of tm_dash and any other is solid, a width is at least one pixel and at most tm_most_width.
#pragma once

#include <vector>

#include "canvas/canvas.h"
#include "schematic/object_records.h"
#include "schematic/spot.h"

inline constexpr std::int32_t tm_most_width = 64;

struct tm_outline_t {
    std::vector<tm_spot_t> points;  // a closed path ends where it begins
    tm_pen pen;
    bool filled = false;
    tm_colour fill_colour = tm_colour::black;
};

tm_colour tm_palette_colour(std::int8_t index);
tm_pen tm_pen_of(std::int8_t colour, std::int16_t style, std::int8_t width = 1);
// False when the object is no primitive with an outline.  Curves leave their true course by a sixteenth of
// the tolerance at most, as long as 4096 pieces to the circle suffice.
bool tm_outline(const tm_object_gene_rec_t& object, double tolerance, tm_outline_t& outline);

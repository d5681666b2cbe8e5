// tm: the circle of an arc through three points.  Points are offsets from the first one; angles are 1/64
// degree counter-clockwise from the x direction.
#pragma once

#include "foundation/context.h"

inline constexpr std::int32_t tm_full_circle = 360 * 64;

struct tm_arc_circle {
    tm_point_t center;
    std::int32_t rad = 0;
    std::int32_t angle1 = 0;  // of the first point, 0..23039
    std::int32_t angle2 = 0;  // from there over pt2 to pt3, negative when clockwise
};

// Two equal points make a full circle on the diameter between the others, angle1 0: pt3 on the first point or
// on pt2 leaves the diameter to pt2, pt2 on the first point that to pt3.  Points on one line, or so close to
// one that the circle leaves the range of coordinates, give a radius of 0.
tm_arc_circle tm_circle_through(tm_point_t pt2, tm_point_t pt3);

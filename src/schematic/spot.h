// tm: places and boxes.  Model units kept as doubles, in which every whole number of 32 bits and the sum of
// any two are exact, so that nothing here can overflow.
#pragma once

#include <cstdint>
#include <limits>

#include "foundation/context.h"

struct tm_spot_t {
    double x = 0, y = 0;
};

inline tm_spot_t tm_spot(const tm_point_t& at) {
    return {static_cast<double>(at.x), static_cast<double>(at.y)};
}

// The nearest coordinate of 32 bits.
std::int32_t tm_coordinate(double value);

struct tm_box_t {  // encloses nothing as it is made
    double xmin = std::numeric_limits<double>::infinity(), ymin = xmin;
    double xmax = -xmin, ymax = -xmin;
    bool is_empty() const { return xmin > xmax || ymin > ymax; }
};

void tm_enclose(tm_box_t& box, const tm_spot_t& at);
void tm_enclose(tm_box_t& box, const tm_box_t& other);
bool tm_lies_inside(const tm_box_t& inner, const tm_box_t& outer);  // an empty box lies nowhere
// Corners in any order.
tm_box_t tm_box(const tm_bounds_t& bounds);

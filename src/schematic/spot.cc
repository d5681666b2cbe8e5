// Boxes around places.
#include "schematic/spot.h"

#include <algorithm>
#include <cmath>

std::int32_t tm_coordinate(double value) {
    using limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<double>(std::round(value), limits::min(), limits::max()));
}

void tm_enclose(tm_box_t& box, const tm_spot_t& at) {
    box.xmin = std::min(box.xmin, at.x);
    box.ymin = std::min(box.ymin, at.y);
    box.xmax = std::max(box.xmax, at.x);
    box.ymax = std::max(box.ymax, at.y);
}

void tm_enclose(tm_box_t& box, const tm_box_t& other) {
    if (other.is_empty()) return;
    tm_enclose(box, tm_spot_t{other.xmin, other.ymin});
    tm_enclose(box, tm_spot_t{other.xmax, other.ymax});
}

bool tm_lies_inside(const tm_box_t& inner, const tm_box_t& outer) {
    return !inner.is_empty() && inner.xmin >= outer.xmin && inner.xmax <= outer.xmax &&
           inner.ymin >= outer.ymin && inner.ymax <= outer.ymax;
}

tm_box_t tm_box(const tm_bounds_t& bounds) {
    tm_box_t box;
    tm_enclose(box, tm_spot({bounds.xmin, bounds.ymin}));
    tm_enclose(box, tm_spot({bounds.xmax, bounds.ymax}));
    return box;
}

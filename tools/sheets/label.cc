// Room for the names of nets.
#include <algorithm>

#include "sheets/label.h"

namespace {

constexpr std::int32_t lift = 1000, step = 5000;

bool overlap(const sg_rectangle& a, const sg_rectangle& b) {
    return a.xmin < b.xmax && b.xmin < a.xmax && a.ymin < b.ymax && b.ymin < a.ymax;
}

sg_rectangle rectangle_of(const sg_wire& wire) {  // a wire covers what it touches
    return {std::min(wire.from.x, wire.to.x) - 1, std::min(wire.from.y, wire.to.y) - 1,
            std::max(wire.from.x, wire.to.x) + 1, std::max(wire.from.y, wire.to.y) + 1};
}

bool is_clear(const sg_rectangle& text, const sg_obstacles& obstacles) {
    return std::none_of(obstacles.rectangles.begin(), obstacles.rectangles.end(),
                        [&](const sg_rectangle& other) { return overlap(text, other); }) &&
           std::none_of(obstacles.wires.begin(), obstacles.wires.end(),
                        [&](const sg_wire& wire) { return overlap(text, rectangle_of(wire)); });
}

}  // namespace

sg_label sg_place_label(const std::vector<sg_wire>& wires, std::int32_t width, std::int32_t height,
                        const sg_obstacles& obstacles) {
    std::vector<sg_wire> level;
    for (const sg_wire& wire : wires)
        if (wire.from.y == wire.to.y && wire.to.x - wire.from.x >= width) level.push_back(wire);
    std::stable_sort(level.begin(), level.end(), [](const sg_wire& a, const sg_wire& b) {
        return a.to.x - a.from.x > b.to.x - b.from.x;
    });
    for (const sg_wire& wire : level)
        for (std::int32_t x = wire.from.x; x + width <= wire.to.x; x += step)
            if (is_clear({x, wire.from.y + lift, x + width, wire.from.y + lift + height}, obstacles))
                return {true, {x, wire.from.y + lift}};
    return {};
}

// sg_label: where the name of a net finds room.
#pragma once

#include "sheets/graph.h"

// A place for a text of that size above one of the wires, clear of everything else.
struct sg_label {
    bool found = false;
    sg_point at;  // lower left corner
};
struct sg_obstacles {
    std::vector<sg_rectangle> rectangles;
    std::vector<sg_wire> wires;
};
sg_label sg_place_label(const std::vector<sg_wire>& wires, std::int32_t width, std::int32_t height,
                        const sg_obstacles& obstacles);

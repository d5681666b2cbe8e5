// sg_graph: what a layout is given.  Owns the points, wires and rectangles of drawings, and the boxes with
// pins on their left and right sides, joined by nets.  Coordinates are model units, x to the right, y up;
// pins lie on rows of sg_pitch.
#pragma once

#include <cstdint>
#include <vector>

inline constexpr std::int32_t sg_pitch = 10000;

struct sg_point {
    std::int32_t x = 0, y = 0;
    bool operator==(const sg_point&) const = default;
    auto operator<=>(const sg_point&) const = default;
};

struct sg_wire {  // axis-parallel
    sg_point from, to;
    bool operator==(const sg_wire&) const = default;
};

struct sg_rectangle {
    std::int32_t xmin = 0, ymin = 0, xmax = 0, ymax = 0;
};

enum class sg_place : std::uint8_t {
    inner,
    first,  // in the leftmost rank, pins on the right
    last,   // in the rightmost rank, pins on the left
};

struct sg_box_pin {
    std::int32_t net = -1;  // -1: not wired
    std::int32_t y = 0;     // from the origin, a multiple of sg_pitch
    bool is_right = false;  // at x = width, else at x = 0
};

// The origin of a box is a point of its left side.
struct sg_box {
    sg_place place = sg_place::inner;
    bool is_register = false;
    bool can_flip = false;     // may be turned upside down: the rows of its pins lie evenly about the origin
    std::int32_t column = -1;  // boxes of one column stand in one rank, one below the other in their order
    std::int32_t width = 0;    // between the columns of its pins
    std::int32_t above = 0, below = 0;               // its extent with its texts, from the origin
    std::int32_t margin_left = 0, margin_right = 0;  // beyond the columns of its pins
    std::vector<sg_box_pin> pins;
};

struct sg_graph {
    std::vector<sg_box> boxes;
    std::int32_t net_count = 0;
    std::vector<bool> is_wide;  // by net, or empty: a thick wire, which counts for more where loops are cut
};

// sg_layout: where the boxes of a sheet stand and how its wires run.  Owns no design: it is given boxes with
// pins on their left and right sides and gives back an origin for every box and, for every net, a tree of
// axis-parallel wires.  Coordinates are model units, x to the right, y up; pins lie on rows of sg_pitch,
// wires on rows and columns of sg_pitch.
//
// Signals flow from the left to the right.  Boxes stand in ranks, by longest path; where a loop must be cut,
// it is cut behind a register.  Between two ranks lies a channel in which every net has one column for its
// vertical wire; a net that goes on to the next channel passes the rank on a row of its own.  No wire runs
// through the extent of a box and no two nets share a piece of wire.
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
    bool can_flip = false;   // may be turned upside down: the rows of its pins lie evenly about the origin
    std::int32_t width = 0;  // between the columns of its pins
    std::int32_t above = 0, below = 0;               // its extent with its texts, from the origin
    std::int32_t margin_left = 0, margin_right = 0;  // beyond the columns of its pins
    std::vector<sg_box_pin> pins;
};

struct sg_graph {
    std::vector<sg_box> boxes;
    std::int32_t net_count = 0;
};

struct sg_layout {
    std::vector<sg_point> origins;            // by box
    std::vector<bool> is_flipped;             // by box: its pins are at -y
    std::vector<std::vector<sg_wire>> wires;  // by net: a tree, split where wires meet
    std::vector<std::vector<sg_point>> ties;  // by net: the points where three or more wires meet
    sg_rectangle extent;
};

void sg_lay_out(const sg_graph& graph, sg_layout& layout);

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

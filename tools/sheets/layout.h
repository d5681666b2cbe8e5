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

#include "sheets/graph.h"

struct sg_layout {
    std::vector<sg_point> origins;            // by box
    std::vector<bool> is_flipped;             // by box: its pins are at -y
    std::vector<std::vector<sg_wire>> wires;  // by net: a tree, split where wires meet
    std::vector<std::vector<sg_point>> ties;  // by net: the points where three or more wires meet
    sg_rectangle extent;
};

void sg_lay_out(const sg_graph& graph, sg_layout& layout);

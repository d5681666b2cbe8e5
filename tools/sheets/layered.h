// sg_layered: a layout in the making.  Owns the ranks with their nodes, which are the boxes and the rows by
// which nets pass a rank, and the channels between them.  Within a rank nodes go from the top down; y grows
// downward here.
#pragma once

#include "sheets/graph.h"

struct sg_node {
    std::int32_t box = -1;  // -1: a row of the net
    std::int32_t net = -1;
    std::int32_t rank = 0;
    std::int32_t above = 0, below = 0;
    std::int32_t y = 0;
    bool is_flipped = false;
};

struct sg_terminal {  // an end of a net at a side of a channel
    std::int32_t net = 0, node = 0;
    std::int32_t offset = 0;  // of y from the node's
};

struct sg_channel {  // between a rank and the next
    std::vector<sg_terminal> left, right;
};

// A wire across a channel as seen from a node: the offsets of its rows there and at the other side.
struct sg_reach {
    std::int32_t net = 0, own = 0, far_node = 0, far_offset = 0;
    std::int32_t ends = 0;  // of the net at the other side
};
struct sg_reaches {
    std::vector<std::vector<sg_reach>> to_left, to_right;  // by node
};

struct sg_track {  // the vertical wire of a net in a channel
    std::int32_t net = 0, column = 0;
    std::vector<std::int32_t> left, right;  // rows of the terminals
    std::int32_t link = -1;                 // row by which it goes on in another track of the net, -1 none
    bool has_link = false;
};

struct sg_layered {
    const sg_graph& graph;
    std::vector<std::int32_t> rank_of_box;
    std::int32_t rank_count = 0;
    std::vector<sg_node> nodes;
    std::vector<std::vector<std::int32_t>> ranks;  // nodes from the top down
    std::vector<sg_channel> channels;              // rank_count - 1
};

// Of a pin from its node, as the node stands.
inline std::int32_t sg_offset(const sg_layered& l, std::int32_t node, std::int32_t offset) {
    return l.nodes[static_cast<std::size_t>(node)].is_flipped ? -offset : offset;
}
inline std::int32_t sg_row(const sg_layered& l, const sg_terminal& terminal) {
    return l.nodes[static_cast<std::size_t>(terminal.node)].y + sg_offset(l, terminal.node, terminal.offset);
}

inline std::int32_t sg_far_row(const sg_layered& l, const sg_reach& reach) {
    return l.nodes[static_cast<std::size_t>(reach.far_node)].y +
           sg_offset(l, reach.far_node, reach.far_offset);
}
sg_reaches sg_find_reaches(const sg_layered& l);

// Places the nodes of a rank in their order as near to where each wants to be as their extents allow.
void sg_spread_rank(sg_layered& l, const std::vector<std::int32_t>& rank, const std::vector<double>& wanted,
                    const std::vector<double>& weight);
// shape: the most that the boxes of a rank may be high, to the width of the page.
void sg_choose_ranks(sg_layered& l, double shape);
void sg_make_nodes(sg_layered& l);
void sg_order_ranks(sg_layered& l);
void sg_place_nodes(sg_layered& l);
// The tracks of a channel, the leftmost column being 0; the result is the number of columns.
std::int32_t sg_route_channel(const sg_layered& l, const sg_channel& channel, std::vector<sg_track>& tracks);

// xp_cell_gates: the gates of one cell.  Owns how the gates of a cell, the nets between them and its input
// pins enter the body of the module.  The gates of one output bit form a part: inner gates first, at the end
// the one that drives the bit.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "expand/body.h"

// What a gate pin is connected to.
struct xp_signal {
    std::int32_t net = 0;
    std::int32_t depth = 0;  // gates of the cell behind it
    std::string_view pin;    // name of the pin it makes; empty: by its position
};

struct xp_cell_gates {
    xp_mapping& m;
    std::uint32_t cell;
    std::string where;   // path of the cell, for messages
    std::string suffix;  // of the bit being made
};

inline const xp_cell& xp_cell_of(const xp_cell_gates& c) { return c.m.module.cells[c.cell]; }

// Makes ready for a cell; drive strengths that are none are refused.
xp_cell_gates xp_begin_cell(xp_mapping& m, std::uint32_t cell);
// Bit k of an output port of that many bits: where it goes, an open one to a net of its own.
std::int32_t xp_output_net(xp_cell_gates& c, const xp_bits& output, std::uint32_t k, std::string_view port);
// What the cell's port is connected to; none for one that the netlist leaves open or out.
xp_bits xp_bits_at_port(const xp_cell_gates& c, std::string_view port);
// The bits of such a port: of an input nets that nothing drives.
xp_bits xp_open_port(xp_cell_gates& c, std::string_view port, bool is_output, std::int64_t width);
void xp_begin_part(xp_cell_gates& c, const xp_bits& output, std::uint32_t k);
void xp_end_part(xp_cell_gates& c);
// The net at a place of the module's bits, which the part depends on.
std::int32_t xp_leaf(xp_cell_gates& c, std::uint32_t place);
// A gate inside the cell, with a net of its own behind it.  One that would only repeat its input is left out.
xp_signal xp_add_inner_gate(xp_cell_gates& c, xp_model model, const std::vector<xp_signal>& operands);
void xp_add_last_gate(xp_cell_gates& c, xp_model model, const std::vector<xp_signal>& operands,
                      std::int32_t net);
// The most gates behind one of the signals.
std::int32_t xp_depth_of(const std::vector<xp_signal>& operands);

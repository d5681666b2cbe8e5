// sg_symbol: what the cells of a sheet look like.  Owns the shapes: gates with their distinctive outlines, a
// bubble for an inverted output or input; multiplexers as trapezoids, switches as triangles, everything else
// as a box with the names of its pins, clocks with a wedge, tables with a line below their name, memories
// with words beside it; joints of thick wires are room for their bars. Pins lie on rows of sg_pitch, inputs
// at x = 0, outputs at x = width; the origin is on the row of the output, or of the first pin of a box.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sheets/graph.h"

inline constexpr std::int32_t sg_text = 10000, sg_pin_text = 9000;  // heights of INST; of MODEL, PIN, NET
inline constexpr std::int32_t sg_tag_text = 8500;                   // of tags, as they are drawn

// The width of a text of that height.
constexpr std::int32_t sg_text_width(std::size_t characters, std::int32_t height) {
    return static_cast<std::int32_t>(characters) * height / 5 * 3;
}

enum class sg_form : std::uint8_t {
    and_gate,
    or_gate,
    xor_gate,
    buffer,
    multiplexer,
    tristate,
    box,
    table,
    memory,
    joint
};

struct sg_pin_kind {
    std::string name;  // with its range when it is a bus
    bool is_right = false, is_bus = false;
    bool is_clock = false, is_low = false;
    bool is_control = false;          // select of a multiplexer, enable of a switch
    std::int16_t start = 0, end = 0;  // of a bus
};

struct sg_symbol_kind {
    sg_form form = sg_form::box;
    bool is_inverted = false;
    std::string model;   // MODEL: that of the simulator, or the module
    std::string type;    // TYPE: of the cell, where the model does not say it
    std::string module;  // MODULE: the full name of a module that is called MODEL, empty for the same
    std::vector<sg_pin_kind> pins;
};

struct sg_line {
    sg_point from, to;
    bool is_bus = false;
};
struct sg_arc {
    sg_point from, over, to;
};
struct sg_circle {
    sg_point centre;
    std::int32_t radius = 0;
};
struct sg_words {
    sg_point at;  // lower left corner
    std::int32_t height = 0;
    bool is_visible = true;
};

struct sg_symbol {
    bool is_even = false;                          // looks and is used alike upside down
    std::int32_t width = 0, above = 0, below = 0;  // above includes the room for INST
    sg_words inst, model, type;
    std::vector<sg_point> pin_at;  // by pin of the kind
    std::vector<sg_words> pin_name;
    std::vector<sg_line> lines;
    std::vector<sg_arc> arcs;
    std::vector<sg_circle> circles;
};

void sg_draw_symbol(const sg_symbol_kind& kind, sg_symbol& symbol);
// A text that two kinds share only if they look the same.
std::string sg_key(const sg_symbol_kind& kind);

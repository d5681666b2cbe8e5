// tm: the drawing list of a sheet.  Takes lines, fillings and texts in model units, leaves out what lies
// outside the canvas, cuts off what reaches beyond tm_cut_margin pixels around it, so that no pixel
// coordinate is large, and gives the rest to the canvas ordered by layer and then by pen, so that the canvas
// draws much with few changes of its pen.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "schematic/placement.h"
#include "schematic/viewport.h"

inline constexpr std::int32_t tm_least_text = 6;
inline constexpr double tm_cut_margin = 2000, tm_mark_reach = 200;

// From below.
enum class tm_layer : std::uint8_t {
    page,
    filling,
    shape,
    wire,
    junction,
    junction_rim,
    text,
    selected,
    selected_text
};

struct tm_drawing_t {
    explicit tm_drawing_t(const tm_viewport_t& seen) : viewport(seen) {}

    struct line {
        std::uint32_t order = 0;  // layer and pen
        tm_pen pen;
        std::size_t first = 0, count = 0;  // of the pixels
        bool filled = false;
    };
    struct lettering {
        std::uint32_t order = 0;
        tm_pixel at;
        std::string_view text;
        tm_lettering how;
    };
    tm_viewport_t viewport;
    std::vector<tm_pixel> pixels;
    std::vector<line> lines;
    std::vector<lettering> texts;
    std::vector<tm_spot_t> path, cut;  // scratch, kept for their storage
};

// Whether a box with a border of pixels around it touches the canvas.
bool tm_is_seen(const tm_viewport_t& viewport, const tm_box_t& box, double border = 0);

void tm_add_line(tm_drawing_t& drawing, std::span<const tm_spot_t> points, const tm_pen& pen, tm_layer layer);
// The corners of a polygon; one that is less than a pixel in each direction is a dot.
void tm_add_filling(tm_drawing_t& drawing, std::span<const tm_spot_t> corners, tm_colour colour,
                    tm_layer layer);
// A path in pixels about a place, tm_mark_reach at most away from it.
void tm_add_mark(tm_drawing_t& drawing, const tm_spot_t& at, std::span<const tm_pixel> offsets,
                 const tm_pen& pen, tm_layer layer, bool filled = false);
// The characters are read when the list is drawn.
void tm_add_text(tm_drawing_t& drawing, const tm_sheet_text_t& place, std::string_view text, tm_colour colour,
                 tm_layer layer);
void tm_draw_list(tm_drawing_t& drawing, tm_canvas& canvas);

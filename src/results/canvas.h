// rs: the canvas.  What the results views and the schematic need of a drawing surface; coordinates are pixels
// of the drawing area, the origin at its upper left corner.  The window draws on the page's off-screen
// pixmap, tests record, plots write files.
#pragma once

#include <cstdint>
#include <string_view>

enum class rs_colour : std::uint8_t { black, red, green, blue, cyan, yellow, magenta, white };
// Pixels on and off: dashed 6 6, dotted 3 6, dash_dot 12 6 3 6, dash_dot_dot 12 6 3 6 3 6.
enum class rs_dash : std::uint8_t { solid, dashed, dotted, dash_dot, dash_dot_dot };

struct rs_point {
    std::int32_t x = 0, y = 0;
};

struct rs_canvas {
    virtual ~rs_canvas() = default;
    virtual std::int32_t width() const = 0;
    virtual std::int32_t height() const = 0;
    virtual void clear() = 0;
    virtual void segment(rs_point from, rs_point to, rs_colour colour, rs_dash dash) = 0;
    virtual void dots(rs_point from, rs_point step, rs_point count, rs_colour colour) = 0;
    // Text in the stroke font, its first character cell beginning at the point; cells are cell_width wide and
    // cell_height high.
    virtual void text(rs_point at, std::string_view text, rs_colour colour, std::int32_t cell_width,
                      std::int32_t cell_height) = 0;
};

// The canvas of the Results page; null while there is none, and then nothing is drawn.
extern rs_canvas* rs_results_canvas;

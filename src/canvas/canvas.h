// tm: the canvas.  What the results views and the sheets need of a drawing surface; coordinates are pixels of
// the surface, the origin at its upper left corner, y downward.  The window draws on a page's off-screen
// pixmap, tests record, plots write files.  Whatever lies outside the surface is cut off.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

// Grey is a ground, on which everything else can be read.
enum class tm_colour : std::uint8_t { black, red, green, blue, cyan, yellow, magenta, white, grey };
// Pixels on and off: dashed 6 6, dotted 3 6, dash_dot 12 6 3 6, dash_dot_dot 12 6 3 6 3 6.
enum class tm_dash : std::uint8_t { solid, dashed, dotted, dash_dot, dash_dot_dot };

struct tm_pixel {
    std::int32_t x = 0, y = 0;
};

// How a line is drawn; the width is in pixels.
struct tm_pen {
    tm_colour colour = tm_colour::white;
    tm_dash dash = tm_dash::solid;
    std::int32_t width = 1;
};

// A line of text in the stroke font: its first character cell begins at the point, its upper left corner as
// one reads it; cells are cell_width wide and cell_height high; the line is turned about that corner by
// quarter turns counter-clockwise.
struct tm_lettering {
    tm_colour colour = tm_colour::white;
    std::int32_t cell_width = 0, cell_height = 0;
    std::int32_t quarter_turns = 0;
};

struct tm_canvas {
    virtual ~tm_canvas() = default;
    virtual std::int32_t width() const = 0;
    virtual std::int32_t height() const = 0;
    // Pixels that stand for one of the usual size, 1/96 inch; what has a size of its own is drawn so much
    // larger.
    virtual double scale() const { return 1; }
    virtual void clear() = 0;
    // Connected points; the dash pattern runs on over the corners.
    virtual void polyline(std::span<const tm_pixel> points, const tm_pen& pen) = 0;
    virtual void fill(std::span<const tm_pixel> corners, tm_colour colour) = 0;
    virtual void dots(tm_pixel from, tm_pixel step, tm_pixel count, tm_colour colour) = 0;
    virtual void text(tm_pixel at, std::string_view text, const tm_lettering& how) = 0;
    // Single dots anywhere.
    virtual void points(std::span<const tm_pixel> places, tm_colour colour) {
        for (const tm_pixel& place : places) dots(place, {1, 1}, {1, 1}, colour);
    }

    void segment(tm_pixel from, tm_pixel to, const tm_pen& pen) {
        const tm_pixel ends[] = {from, to};
        polyline(ends, pen);
    }
};

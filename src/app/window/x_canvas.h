// tm: the canvas of a drawing page.  Draws with Xlib on the page's off-screen pixmap, never on the window;
// pages.h copies the picture to the window.  Thin segments are gathered: whoever reads the pixmap, draws on
// it or frees it calls x_canvas_flush first, which also leaves the drawing context with a thin solid line.
#pragma once

#include <cstddef>

#include "app/window/window_record.h"
#include "canvas/canvas.h"

class x_canvas final : public tm_canvas {
public:
    explicit x_canvas(tm_page page) : page_(static_cast<std::size_t>(page)) {}
    std::int32_t width() const override;
    std::int32_t height() const override;
    double scale() const override;
    void clear() override;
    void polyline(std::span<const tm_pixel> points, const tm_pen& pen) override;
    void fill(std::span<const tm_pixel> corners, tm_colour colour) override;
    void dots(tm_pixel from, tm_pixel step, tm_pixel count, tm_colour colour) override;
    void text(tm_pixel at, std::string_view text, const tm_lettering& how) override;
    void points(std::span<const tm_pixel> places, tm_colour colour) override;

private:
    Pixmap target() const { return tm_window.drareapixmap[page_]; }
    void set_colour(tm_colour colour) const;
    void gather(tm_colour colour) const;
    std::size_t page_;
};

// Allocates the colours of the palette and the drawing context, once the display is open and the options are
// read.
void x_canvas_open();
unsigned long x_canvas_pixel(tm_colour colour);
void x_canvas_flush();

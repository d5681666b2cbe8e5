// rs: the canvas of a drawing page.  Draws with Xlib on the page's off-screen pixmap, never on the window;
// pages.h copies the picture to the window.
#pragma once

#include <cstddef>

#include "app/window_record.h"
#include "results/canvas.h"

class x_canvas final : public rs_canvas {
public:
    explicit x_canvas(std::size_t pixmap) : pixmap_(pixmap) {}
    std::int32_t width() const override;
    std::int32_t height() const override;
    void clear() override;
    void segment(rs_point from, rs_point to, rs_colour colour, rs_dash dash) override;
    void dots(rs_point from, rs_point step, rs_point count, rs_colour colour) override;
    void text(rs_point at, std::string_view text, rs_colour colour, std::int32_t cell_width,
              std::int32_t cell_height) override;

private:
    Pixmap target() const { return tm_window.drareapixmap[pixmap_]; }
    void set_colour(rs_colour colour) const;
    std::size_t pixmap_;
};

// Allocates the eight palette colours and the drawing context, once the display is open.
void x_canvas_open();

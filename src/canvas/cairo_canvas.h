// cairo: the canvas of a PNG, SVG or PDF plot.  A PNG has cairo_png_scale dots to the pixel in each
// direction; in SVG and PDF a pixel is 1/96 inch.
#pragma once

#include <memory>
#include <string>

#include "canvas/canvas.h"
#include "canvas/plot_format.h"

typedef struct _cairo cairo_t;
typedef struct _cairo_surface cairo_surface_t;

inline constexpr int cairo_png_scale = 2;

class cairo_canvas final : public tm_canvas {
public:
    // format: not HP-GL.
    cairo_canvas(std::int32_t width, std::int32_t height, tm_plot_format format);
    std::int32_t width() const override { return width_; }
    std::int32_t height() const override { return height_; }
    void clear() override;
    void polyline(std::span<const tm_pixel> points, const tm_pen& pen) override;
    void fill(std::span<const tm_pixel> corners, tm_colour colour) override;
    void dots(tm_pixel from, tm_pixel step, tm_pixel count, tm_colour colour) override;
    void text(tm_pixel at, std::string_view text, const tm_lettering& how) override;
    // Ends the picture and hands over the whole file; error: the library's word for what went wrong.
    std::string finish(std::string& error);

private:
    struct closer {
        void operator()(cairo_t* context) const;
        void operator()(cairo_surface_t* surface) const;
    };
    void use_colour(tm_colour colour);
    void trace_path(std::span<const tm_pixel> points);

    std::int32_t width_, height_;
    tm_plot_format format_;
    std::string bytes_;  // the surface may write into them until it is destroyed
    std::unique_ptr<cairo_surface_t, closer> surface_;
    std::unique_ptr<cairo_t, closer> context_;
};

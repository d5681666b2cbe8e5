// hpgl: the canvas of an HP-GL plot.  Fits the picture into a page of hpgl_page_width by hpgl_page_height
// plotter units (1/40 mm), which lies on A4 and on letter paper, keeping its proportions.  Pens: 1 white
// (black ink), 2 red, 3 green, 4 blue, 5 cyan, 6 yellow, 7 magenta; black is paper and is not drawn.  The
// dash patterns are the line types 2, 1, 5 and 6.
#pragma once

#include <string>

#include "canvas/canvas.h"
#include "canvas/plot_text.h"

inline constexpr int hpgl_page_width = 10000, hpgl_page_height = 7200, hpgl_margin = 250;

class hpgl_canvas final : public tm_canvas {
public:
    hpgl_canvas(std::int32_t width, std::int32_t height);
    std::int32_t width() const override { return width_; }
    std::int32_t height() const override { return height_; }
    void clear() override;
    void polyline(std::span<const tm_pixel> points, const tm_pen& pen) override;
    void fill(std::span<const tm_pixel> corners, tm_colour colour) override;
    void dots(tm_pixel from, tm_pixel step, tm_pixel count, tm_colour colour) override;
    void text(tm_pixel at, std::string_view text, const tm_lettering& how) override;
    // The whole plot.
    std::string finish() const;

private:
    struct place {
        int x = 0, y = 0;
        bool operator==(const place&) const = default;
    };
    place on_paper(tm_fine_point at) const;
    void use_pen(const tm_pen& pen);
    void move_to(place at);
    void draw_to(place at);

    std::int32_t width_, height_;
    double units_per_pixel_;
    std::string drawn_;
    tm_pen pen_;
    place at_;
    bool pen_used_ = false, pen_is_down_ = false;
};

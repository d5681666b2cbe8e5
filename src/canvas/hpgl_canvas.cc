// Plots as HP-GL.
#include "canvas/hpgl_canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace {

// By colour; 0: not drawn.
constexpr std::array<int, 9> pens = {0, 2, 3, 4, 5, 6, 7, 1, 0};

// By dash: the line type, and the pixels that one pattern covers.
struct dash_row {
    int type, pixels;
};
constexpr std::array<dash_row, 5> dashes = {{{0, 0}, {2, 12}, {1, 9}, {5, 27}, {6, 36}}};

constexpr double units_per_millimetre = 40;

std::string pair_of(int x, int y) { return std::to_string(x) + "," + std::to_string(y); }

std::string decimal(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

int pen_of(tm_colour colour) { return pens[static_cast<std::size_t>(colour)]; }

}  // namespace

hpgl_canvas::hpgl_canvas(std::int32_t width, std::int32_t height)
    : width_(width),
      height_(height),
      units_per_pixel_(std::min(double{hpgl_page_width} / width, double{hpgl_page_height} / height)) {}

void hpgl_canvas::clear() {
    drawn_.clear();
    pen_used_ = pen_is_down_ = false;
}

hpgl_canvas::place hpgl_canvas::on_paper(tm_fine_point at) const {
    const auto unit = [&](double pixels) {
        return hpgl_margin + static_cast<int>(std::lround(pixels * units_per_pixel_));
    };
    return {unit(at.x), unit(height_ - at.y)};
}

// A pen that is not black, its line type and, once a wide line is drawn, its width.
void hpgl_canvas::use_pen(const tm_pen& pen) {
    const tm_pen last = pen_used_ ? pen_ : tm_pen{tm_colour::black, tm_dash::solid, 1};
    std::string change;
    if (pen_of(pen.colour) != pen_of(last.colour)) change += "SP" + std::to_string(pen_of(pen.colour)) + ";";
    if (pen.dash != last.dash) {
        const dash_row& row = dashes[static_cast<std::size_t>(pen.dash)];
        // Pattern lengths are in percent of the diagonal of the page.
        const double percent =
            100 * row.pixels * units_per_pixel_ / std::hypot(hpgl_page_width, hpgl_page_height);
        change += row.pixels == 0 ? "LT;" : "LT" + std::to_string(row.type) + "," + decimal(percent) + ";";
    }
    if (std::max(pen.width, 1) != std::max(last.width, 1))
        change += "PW" + decimal(pen.width * units_per_pixel_ / units_per_millimetre) + ";";
    pen_ = pen;
    pen_used_ = true;
    if (change.empty()) return;
    drawn_ += (pen_is_down_ ? "PU;" : "") + change;
    pen_is_down_ = false;
}

void hpgl_canvas::move_to(place at) {
    if (pen_is_down_ && at == at_) return;
    drawn_ += "PU" + pair_of(at.x, at.y) + ";PD;";
    at_ = at;
    pen_is_down_ = true;
}

void hpgl_canvas::draw_to(place at) {
    if (at == at_) return;
    drawn_ += "PD" + pair_of(at.x, at.y) + ";";
    at_ = at;
}

void hpgl_canvas::polyline(std::span<const tm_pixel> points, const tm_pen& pen) {
    if (points.empty() || pen_of(pen.colour) == 0) return;
    use_pen(pen);
    const auto on_page = [&](tm_pixel at) { return on_paper({double(at.x), double(at.y)}); };
    move_to(on_page(points.front()));
    for (const tm_pixel& point : points.subspan(1)) draw_to(on_page(point));
}

void hpgl_canvas::fill(std::span<const tm_pixel> corners, tm_colour colour) {
    if (corners.empty() || pen_of(colour) == 0) return;
    use_pen({colour, tm_dash::solid, 1});
    const auto on_page = [&](tm_pixel at) { return on_paper({double(at.x), double(at.y)}); };
    move_to(on_page(corners.front()));
    drawn_ += "PM0;";
    for (const tm_pixel& corner : corners.subspan(1)) draw_to(on_page(corner));
    drawn_ += "PM2;FP;EP;PU;";
    pen_is_down_ = false;
}

void hpgl_canvas::dots(tm_pixel from, tm_pixel step, tm_pixel count, tm_colour colour) {
    if (pen_of(colour) == 0) return;
    use_pen({colour, tm_dash::solid, 1});
    for (std::int32_t j = 0; j < count.y; ++j)
        for (std::int32_t i = 0; i < count.x; ++i)
            move_to(on_paper({double(from.x) + double(i) * step.x, double(from.y) + double(j) * step.y}));
}

void hpgl_canvas::text(tm_pixel at, std::string_view text, const tm_lettering& how) {
    if (pen_of(how.colour) == 0) return;
    use_pen({how.colour, tm_dash::solid, 1});
    for (const tm_fine_path& path : tm_text_paths(at, text, how)) {
        move_to(on_paper(path.front()));
        for (const tm_fine_point& point : path) draw_to(on_paper(point));
    }
}

// What lies outside the picture is cut off by the plotter's input window.
std::string hpgl_canvas::finish() const {
    const place low = on_paper({0, double(height_)}), high = on_paper({double(width_), 0});
    return "IN;IP" + pair_of(hpgl_margin, hpgl_margin) + "," +
           pair_of(hpgl_margin + hpgl_page_width, hpgl_margin + hpgl_page_height) + ";IW" +
           pair_of(low.x, low.y) + "," + pair_of(high.x, high.y) + ";" + drawn_ + "PU;SP0;\n";
}

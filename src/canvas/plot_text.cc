// The stroke font on plots.
#include "canvas/plot_text.h"

#include "canvas/stroke_font.h"

namespace {

// The cell in which the font is asked for its strokes.
constexpr std::int32_t fine_width = 2200, fine_height = 3200;

// From the upper left corner of the first cell, unturned, to the page.
struct placing {
    tm_pixel at;
    std::int32_t quarter_turns;
    tm_fine_point operator()(double x, double y) const {
        switch (quarter_turns & 3) {
            case 0:
                return {at.x + x, at.y + y};
            case 1:
                return {at.x + y, at.y - x};
            case 2:
                return {at.x - x, at.y - y};
            default:
                return {at.x - y, at.y + x};
        }
    }
};

}  // namespace

std::vector<tm_fine_path> tm_text_paths(tm_pixel at, std::string_view text, const tm_lettering& how) {
    std::vector<tm_fine_path> paths;
    const placing place{at, how.quarter_turns};
    double along = 0;
    for (const char character : text) {
        tm_pixel last{-1, -1};
        const auto put = [&](tm_pixel p) {
            paths.back().push_back(place(along + p.x * double{1} * how.cell_width / fine_width,
                                         p.y * double{1} * how.cell_height / fine_height));
        };
        for (const tm_stroke& stroke : tm_font_strokes(character, fine_width, fine_height)) {
            if (paths.empty() || stroke.from.x != last.x || stroke.from.y != last.y) {
                paths.emplace_back();
                put(stroke.from);
            }
            put(last = stroke.to);
        }
        along += how.cell_width;
    }
    return paths;
}

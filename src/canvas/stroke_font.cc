// The stroke font from the Hershey glyphs.
#include "canvas/stroke_font.h"

extern "C" {  // the header does not say so itself
#include <hersheyfont.h>
}

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace {

// Font units: capitals are 21 high; strokes reach from 7 below the base line to 25 above it.
constexpr double units_above = 25, units_high = 32, usual_width = 22;
constexpr int first_printable = 32, after_printable = 127;

struct glyph {
    bool made = false;
    std::vector<tm_stroke> strokes;
};
using glyph_set = std::array<glyph, after_printable - first_printable>;

struct font_closer {
    void operator()(hershey_font* font) const { hershey_font_free(font); }
};

hershey_font* font() {
    static const std::unique_ptr<hershey_font, font_closer> loaded(hershey_font_load("futural"));
    return loaded.get();
}

// Places font units in a cell: one height for all, wide characters narrowed, each in the middle of its cell.
struct cell_fit {
    double scale_x, scale_y, left;
    cell_fit(const hershey_glyph& g, double cell_width, double cell_height)
        : scale_x(cell_width / std::max<double>(g.width, usual_width)),
          scale_y(cell_height / units_high),
          left((cell_width - g.width * scale_x) / 2) {}
    tm_pixel operator()(const hershey_vertex& v) const {
        return {static_cast<std::int32_t>(std::lround(left + v.x * scale_x)),
                static_cast<std::int32_t>(std::lround((units_above - v.y) * scale_y))};
    }
};

std::vector<tm_stroke> make_strokes(const hershey_glyph& source, const cell_fit& fit) {
    std::vector<tm_stroke> strokes;
    for (const hershey_path* path = source.paths; path != nullptr; path = path->next)
        for (int i = 1; i < path->nverts; ++i)
            strokes.push_back({fit(path->verts[i - 1]), fit(path->verts[i])});
    return strokes;
}

// Zooming asks for ever new sizes: when too many are kept, all are made anew.
glyph_set& set_of(std::int32_t cell_width, std::int32_t cell_height) {
    static std::map<std::pair<std::int32_t, std::int32_t>, glyph_set> sets;
    const std::pair size(cell_width, cell_height);
    if (sets.size() >= tm_font_sizes && !sets.contains(size)) sets.clear();
    return sets[size];
}

}  // namespace

bool tm_font_loaded() { return font() != nullptr; }

std::span<const tm_stroke> tm_font_strokes(char character, std::int32_t cell_width,
                                           std::int32_t cell_height) {
    if (!tm_font_loaded() || character < first_printable || character >= after_printable) return {};
    glyph& g = set_of(cell_width, cell_height)[static_cast<std::size_t>(character - first_printable)];
    if (!g.made) {
        const hershey_glyph& source = *hershey_font_glyph(font(), static_cast<unsigned char>(character));
        g.strokes = make_strokes(source, cell_fit(source, cell_width, cell_height));
        g.made = true;
    }
    return g.strokes;
}

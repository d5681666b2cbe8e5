#include "app/x_canvas.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <vector>

#include "app/stroke_font.h"

namespace {

constexpr std::array<const char*, tm_colours> palette = {"black", "red",    "green",   "blue",
                                                         "cyan",  "yellow", "magenta", "white"};

struct dash_row {
    int line_style;
    std::array<char, 6> pattern;
    int length;
};
constexpr std::array<dash_row, 5> dashes = {{
    /* solid        */ {LineSolid, {}, 0},
    /* dashed       */ {LineOnOffDash, {6, 6}, 2},
    /* dotted       */ {LineOnOffDash, {3, 6}, 2},
    /* dash_dot     */ {LineOnOffDash, {12, 6, 3, 6}, 4},
    /* dash_dot_dot */ {LineOnOffDash, {12, 6, 3, 6, 3, 6}, 6},
}};

// Coordinates beyond what the protocol carries are held at its limits.
short coordinate(std::int32_t value) {
    using limits = std::numeric_limits<short>;
    return static_cast<short>(std::clamp<std::int32_t>(value, limits::min(), limits::max()));
}

XSegment segment_of(rs_point from, rs_point to) {
    return {coordinate(from.x), coordinate(from.y), coordinate(to.x), coordinate(to.y)};
}

void draw_segments(Pixmap target, std::span<XSegment> segments) {
    if (segments.empty()) return;
    XDrawSegments(tm_window.dpy, target, tm_window.our_gc, segments.data(),
                  static_cast<int>(segments.size()));
}

void set_dash(rs_dash dash) {
    const dash_row& row = dashes[static_cast<std::size_t>(dash)];
    XSetLineAttributes(tm_window.dpy, tm_window.our_gc, 0, row.line_style, CapButt, JoinMiter);
    if (row.length > 0) XSetDashes(tm_window.dpy, tm_window.our_gc, 0, row.pattern.data(), row.length);
}

void allocate(std::size_t index) {
    XColor exact;
    XColor& colour = tm_window.colorrec[index];
    const int screen = DefaultScreen(tm_window.dpy);
    if (XAllocNamedColor(tm_window.dpy, DefaultColormap(tm_window.dpy, screen), palette[index], &colour,
                         &exact))
        return;
    colour.pixel = index == 0 ? BlackPixel(tm_window.dpy, screen) : WhitePixel(tm_window.dpy, screen);
}

// The server's own font, one character to a cell, where the stroke font is not installed.
void draw_plain(Pixmap target, rs_point at, std::string_view text, std::int32_t cell_width,
                std::int32_t cell_height) {
    for (const char& character : text) {
        XDrawString(tm_window.dpy, target, tm_window.our_gc, at.x, at.y + cell_height * 3 / 4, &character, 1);
        at.x += cell_width;
    }
}

}  // namespace

std::int32_t x_canvas::width() const { return tm_vext.bitmap_size.xmax; }
std::int32_t x_canvas::height() const { return tm_vext.bitmap_size.ymax; }

void x_canvas::set_colour(rs_colour colour) const {
    tm_window.picture_changed = true;
    XSetForeground(tm_window.dpy, tm_window.our_gc,
                   tm_window.colorrec[static_cast<std::size_t>(colour)].pixel);
}

void x_canvas::clear() {
    set_colour(rs_colour::black);
    XFillRectangle(tm_window.dpy, target(), tm_window.our_gc, 0, 0, static_cast<unsigned>(width()),
                   static_cast<unsigned>(height()));
}

void x_canvas::segment(rs_point from, rs_point to, rs_colour colour, rs_dash dash) {
    set_colour(colour);
    if (dash != rs_dash::solid) set_dash(dash);
    XSegment line = segment_of(from, to);
    draw_segments(target(), {&line, 1});
    if (dash != rs_dash::solid) set_dash(rs_dash::solid);
}

void x_canvas::dots(rs_point from, rs_point step, rs_point count, rs_colour colour) {
    set_colour(colour);
    std::vector<XPoint> row(static_cast<std::size_t>(std::max(count.x, 0)));
    for (std::int32_t j = 0; j < count.y && !row.empty(); ++j) {
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = {coordinate(from.x + static_cast<std::int32_t>(i) * step.x),
                      coordinate(from.y + j * step.y)};
        XDrawPoints(tm_window.dpy, target(), tm_window.our_gc, row.data(), static_cast<int>(row.size()),
                    CoordModeOrigin);
    }
}

void x_canvas::text(rs_point at, std::string_view text, rs_colour colour, std::int32_t cell_width,
                    std::int32_t cell_height) {
    set_colour(colour);
    if (!rs_font_loaded()) return draw_plain(target(), at, text, cell_width, cell_height);
    static std::vector<XSegment> segments;  // kept for its storage
    segments.clear();
    for (const char character : text) {
        for (const rs_stroke& stroke : rs_font_strokes(character, cell_width, cell_height))
            segments.push_back(segment_of({at.x + stroke.from.x, at.y + stroke.from.y},
                                          {at.x + stroke.to.x, at.y + stroke.to.y}));
        at.x += cell_width;
    }
    draw_segments(target(), segments);
}

void x_canvas_open() {
    for (std::size_t i = 0; i < tm_colours; ++i) allocate(i);
    Display* dpy = tm_window.dpy;
    XGCValues values{};
    values.graphics_exposures = False;  // copies from a pixmap are always whole
    tm_window.our_gc = XCreateGC(dpy, DefaultRootWindow(dpy), GCGraphicsExposures, &values);
    set_dash(rs_dash::solid);
}

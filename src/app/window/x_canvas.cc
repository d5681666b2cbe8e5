// Drawing with Xlib.
#include "app/window/x_canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <vector>

#include "app/window/options.h"
#include "canvas/stroke_font.h"

namespace {

using palette_t = std::array<const char*, tm_colours>;
constexpr palette_t dark_palette = {"black",  "red",     "green", "blue",   "cyan",
                                    "yellow", "magenta", "white", "#303438"};
// On paper and for eyes that a dark ground tires; all but the ground stand out from white at 4.5 : 1 or more.
constexpr palette_t light_palette = {"white",   "#b80000", "#006a1c", "#0000c8", "#006078",
                                     "#6e5200", "#9a0096", "black",   "#dcdfe2"};

double page_scale = 1;
int thin = 1;  // pixels of a line that is one pixel wide at the usual resolution

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

XPoint point_of(tm_pixel at) { return {coordinate(at.x), coordinate(at.y)}; }

XSegment segment_of(tm_pixel from, tm_pixel to) {
    return {coordinate(from.x), coordinate(from.y), coordinate(to.x), coordinate(to.y)};
}

// Thin solid segments of one colour wait here, to go to the server together.
struct waiting_segments {
    Pixmap target = 0;
    unsigned long pixel = 0;
    std::vector<XSegment> segments;
};
waiting_segments waiting;
constexpr std::size_t most_waiting = 4096;

void send_waiting() {
    if (waiting.segments.empty()) return;
    XSetForeground(tm_window.dpy, tm_window.our_gc, waiting.pixel);
    XDrawSegments(tm_window.dpy, waiting.target, tm_window.our_gc, waiting.segments.data(),
                  static_cast<int>(waiting.segments.size()));
    waiting.segments.clear();
}

// The points as the server takes them; kept for its storage.
std::vector<XPoint>& points_of(std::span<const tm_pixel> points) {
    static std::vector<XPoint> made;
    made.clear();
    for (const tm_pixel& at : points) made.push_back(point_of(at));
    return made;
}

// Lines of one pixel have width 0, which servers draw fastest; wide ones reach far enough to join at corners.
void set_line(tm_dash dash, std::int32_t usual_width) {
    const auto width = std::max(static_cast<std::int32_t>(std::lround(usual_width * page_scale)), 1);
    static tm_pen current{tm_colour::black, tm_dash::solid, 0};
    if (current.dash == dash && current.width == width) return;
    current = {tm_colour::black, dash, width};
    const dash_row& row = dashes[static_cast<std::size_t>(dash)];
    XSetLineAttributes(tm_window.dpy, tm_window.our_gc, width > 1 ? static_cast<unsigned>(width) : 0,
                       row.line_style, width > 1 && row.length == 0 ? CapProjecting : CapButt, JoinMiter);
    if (row.length == 0) return;
    std::array<char, 6> pattern = row.pattern;
    for (char& length : pattern) length = static_cast<char>(std::lround(length * page_scale));
    XSetDashes(tm_window.dpy, tm_window.our_gc, 0, pattern.data(), row.length);
}

// A stroke of a character at a place, turned counter-clockwise.
XSegment turned(const tm_stroke& stroke, tm_pixel at, std::int32_t quarter_turns) {
    const auto turn = [&](tm_pixel p) -> tm_pixel {
        switch (quarter_turns & 3) {
            case 0:
                return {at.x + p.x, at.y + p.y};
            case 1:
                return {at.x + p.y, at.y - p.x};
            case 2:
                return {at.x - p.x, at.y - p.y};
            default:
                return {at.x - p.y, at.y + p.x};
        }
    };
    return segment_of(turn(stroke.from), turn(stroke.to));
}

void allocate(std::size_t index) {
    XColor exact;
    XColor& colour = tm_window.colorrec[index];
    const window_options_t& options = window_options();
    const bool is_light = options.scheme != nullptr && std::string_view(options.scheme) == "light";
    const char* const usual = (is_light ? light_palette : dark_palette)[index];
    const char* const chosen = options.colours[index] != nullptr ? options.colours[index] : usual;
    const int screen = DefaultScreen(tm_window.dpy);
    for (const char* const name : {chosen, usual})
        if (XAllocNamedColor(tm_window.dpy, DefaultColormap(tm_window.dpy, screen), name, &colour, &exact))
            return;
    colour.pixel =
        (index == 0) == !is_light ? BlackPixel(tm_window.dpy, screen) : WhitePixel(tm_window.dpy, screen);
}

// The server's own font, one character to a cell, where the stroke font is not installed.
void draw_plain(Pixmap target, tm_pixel at, std::string_view text, std::int32_t cell_width,
                std::int32_t cell_height) {
    for (const char& character : text) {
        XDrawString(tm_window.dpy, target, tm_window.our_gc, at.x, at.y + cell_height * 3 / 4, &character, 1);
        at.x += cell_width;
    }
}

}  // namespace

std::int32_t x_canvas::width() const { return tm_vext.bitmap_size.xmax; }
std::int32_t x_canvas::height() const { return tm_vext.bitmap_size.ymax; }
double x_canvas::scale() const { return page_scale; }

void x_canvas::set_colour(tm_colour colour) const {
    tm_window.picture_changed = true;
    send_waiting();
    XSetForeground(tm_window.dpy, tm_window.our_gc, x_canvas_pixel(colour));
}

// Makes room for segments of the colour.
void x_canvas::gather(tm_colour colour) const {
    tm_window.picture_changed = true;
    const unsigned long pixel = x_canvas_pixel(colour);
    if (waiting.target != target() || waiting.pixel != pixel || waiting.segments.size() >= most_waiting)
        send_waiting();
    if (waiting.segments.empty()) set_line(tm_dash::solid, 1);
    waiting.target = target();
    waiting.pixel = pixel;
}

void x_canvas::clear() {
    set_colour(tm_colour::black);
    XFillRectangle(tm_window.dpy, target(), tm_window.our_gc, 0, 0, static_cast<unsigned>(width()),
                   static_cast<unsigned>(height()));
}

void x_canvas::polyline(std::span<const tm_pixel> points, const tm_pen& pen) {
    if (pen.dash == tm_dash::solid && pen.width <= 1) {
        gather(pen.colour);
        for (std::size_t i = 1; i < points.size(); ++i)
            waiting.segments.push_back(segment_of(points[i - 1], points[i]));
        return;
    }
    set_colour(pen.colour);
    set_line(pen.dash, pen.width);
    std::vector<XPoint>& path = points_of(points);
    XDrawLines(tm_window.dpy, target(), tm_window.our_gc, path.data(), static_cast<int>(path.size()),
               CoordModeOrigin);
}

void x_canvas::fill(std::span<const tm_pixel> corners, tm_colour colour) {
    set_colour(colour);
    std::vector<XPoint>& path = points_of(corners);
    XFillPolygon(tm_window.dpy, target(), tm_window.our_gc, path.data(), static_cast<int>(path.size()),
                 Complex, CoordModeOrigin);
}

void x_canvas::dots(tm_pixel from, tm_pixel step, tm_pixel count, tm_colour colour) {
    set_colour(colour);
    if (thin > 1) {
        for (std::int32_t j = 0; j < count.y; ++j)
            for (std::int32_t i = 0; i < count.x; ++i)
                XFillRectangle(tm_window.dpy, target(), tm_window.our_gc, from.x + i * step.x * thin,
                               from.y + j * step.y * thin, static_cast<unsigned>(thin),
                               static_cast<unsigned>(thin));
        return;
    }
    std::vector<XPoint> row(static_cast<std::size_t>(std::max(count.x, 0)));
    for (std::int32_t j = 0; j < count.y && !row.empty(); ++j) {
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = {coordinate(from.x + static_cast<std::int32_t>(i) * step.x),
                      coordinate(from.y + j * step.y)};
        XDrawPoints(tm_window.dpy, target(), tm_window.our_gc, row.data(), static_cast<int>(row.size()),
                    CoordModeOrigin);
    }
}

void x_canvas::points(std::span<const tm_pixel> places, tm_colour colour) {
    set_colour(colour);
    if (thin > 1) {
        std::vector<XRectangle> squares;
        const auto side = static_cast<unsigned short>(thin);
        for (const tm_pixel& at : places) squares.push_back({coordinate(at.x), coordinate(at.y), side, side});
        XFillRectangles(tm_window.dpy, target(), tm_window.our_gc, squares.data(),
                        static_cast<int>(squares.size()));
        return;
    }
    std::vector<XPoint>& all = points_of(places);
    XDrawPoints(tm_window.dpy, target(), tm_window.our_gc, all.data(), static_cast<int>(all.size()),
                CoordModeOrigin);
}

void x_canvas::text(tm_pixel at, std::string_view text, const tm_lettering& how) {
    if (!tm_font_loaded()) {
        set_colour(how.colour);
        return draw_plain(target(), at, text, how.cell_width, how.cell_height);
    }
    gather(how.colour);
    std::int32_t along = 0;
    for (const char character : text) {
        for (const tm_stroke& stroke : tm_font_strokes(character, how.cell_width, how.cell_height))
            waiting.segments.push_back(
                turned({{stroke.from.x + along, stroke.from.y}, {stroke.to.x + along, stroke.to.y}}, at,
                       how.quarter_turns));
        along += how.cell_width;
    }
}

void x_canvas_flush() {
    send_waiting();
    set_line(tm_dash::solid, 1);
}

unsigned long x_canvas_pixel(tm_colour colour) {
    return tm_window.colorrec[static_cast<std::size_t>(colour)].pixel;
}

void x_canvas_open() {
    page_scale = window_page_scale();
    thin = std::max(static_cast<int>(std::lround(page_scale)), 1);
    for (std::size_t i = 0; i < tm_colours; ++i) allocate(i);
    Display* dpy = tm_window.dpy;
    XGCValues values{};
    values.graphics_exposures = False;  // copies from a pixmap are always whole
    tm_window.our_gc = XCreateGC(dpy, DefaultRootWindow(dpy), GCGraphicsExposures, &values);
    set_line(tm_dash::solid, 1);
}

// The drawing list: cutting, ordering, drawing.
#include "schematic/sheet_draw_list.h"

#include <algorithm>
#include <cmath>

namespace {

struct window_t {  // what is kept, pixels
    double xmin, ymin, xmax, ymax;
};

window_t window_of(const tm_viewport_t& viewport) {
    return {-tm_cut_margin, -tm_cut_margin, viewport.width + tm_cut_margin, viewport.height + tm_cut_margin};
}

bool is_inside(const window_t& window, const tm_spot_t& at) {
    return at.x >= window.xmin && at.x <= window.xmax && at.y >= window.ymin && at.y <= window.ymax;
}

constexpr double most_pixel = 1e9;

// The pixel of a place; the ends of a large text may lie where no pixel can be counted.
tm_pixel whole(const tm_spot_t& at) {
    const auto pixel = [](double value) {
        return static_cast<std::int32_t>(std::clamp(std::floor(value), -most_pixel, most_pixel));
    };
    return {pixel(at.x), pixel(at.y)};
}

std::uint32_t order_of(tm_layer layer, const tm_pen& pen) {
    return static_cast<std::uint32_t>(layer) << 24 | static_cast<std::uint32_t>(pen.colour) << 16 |
           static_cast<std::uint32_t>(pen.dash) << 8 | static_cast<std::uint32_t>(pen.width & 255);
}

// The part of a segment inside the window; false when there is none.
bool cut_segment(const window_t& window, tm_spot_t& from, tm_spot_t& to) {
    const double dx = to.x - from.x, dy = to.y - from.y;
    const double towards[] = {-dx, dx, -dy, dy};
    const double room[] = {from.x - window.xmin, window.xmax - from.x, from.y - window.ymin,
                           window.ymax - from.y};
    double begin = 0, end = 1;
    for (int side = 0; side < 4; ++side) {
        if (towards[side] == 0 && room[side] < 0) return false;
        if (towards[side] < 0) begin = std::max(begin, room[side] / towards[side]);
        if (towards[side] > 0) end = std::min(end, room[side] / towards[side]);
    }
    if (begin > end) return false;
    const tm_spot_t start = from;
    from = {start.x + begin * dx, start.y + begin * dy};
    to = {start.x + end * dx, start.y + end * dy};
    return true;
}

// One side of the window as a half plane: how far inside a point is.
struct side_t {
    double x, y, offset;
    double depth(const tm_spot_t& at) const { return x * at.x + y * at.y + offset; }
};

void cut_polygon(const side_t& side, std::vector<tm_spot_t>& corners, std::vector<tm_spot_t>& kept) {
    kept.clear();
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const tm_spot_t &here = corners[i], &next = corners[(i + 1) % corners.size()];
        const double depth = side.depth(here), depth_next = side.depth(next);
        if (depth >= 0) kept.push_back(here);
        if ((depth >= 0) == (depth_next >= 0)) continue;
        const double share = depth / (depth - depth_next);
        kept.push_back({here.x + share * (next.x - here.x), here.y + share * (next.y - here.y)});
    }
    corners.swap(kept);
}

tm_box_t box_of(std::span<const tm_spot_t> points) {
    tm_box_t box;
    for (const tm_spot_t& at : points) tm_enclose(box, at);
    return box;
}

// The points in pixels, in the scratch path; false when none can be seen.
bool to_pixels(tm_drawing_t& drawing, std::span<const tm_spot_t> points, double border) {
    drawing.path.clear();
    if (points.empty() || !tm_is_seen(drawing.viewport, box_of(points), border)) return false;
    for (const tm_spot_t& at : points) drawing.path.push_back(tm_pixels(drawing.viewport, at));
    return true;
}

void end_line(tm_drawing_t& drawing, std::size_t first, const tm_pen& pen, tm_layer layer, bool filled) {
    const std::size_t count = drawing.pixels.size() - first;
    if (count > 0) drawing.lines.push_back({order_of(layer, pen), pen, first, count, filled});
}

// A pixel behind the others of the path, unless the path is there already.
void add_pixel(tm_drawing_t& drawing, std::size_t first, tm_pixel at) {
    std::vector<tm_pixel>& all = drawing.pixels;
    if (all.size() == first || all.back().x != at.x || all.back().y != at.y) all.push_back(at);
}

// A path that leaves the window: the pieces inside.
void add_pieces(tm_drawing_t& drawing, const window_t& window, const tm_pen& pen, tm_layer layer) {
    std::size_t first = drawing.pixels.size();
    for (std::size_t i = 1; i < drawing.path.size(); ++i) {
        tm_spot_t from = drawing.path[i - 1], to = drawing.path[i];
        if (!cut_segment(window, from, to)) continue;
        const bool goes_on = drawing.pixels.size() > first && is_inside(window, drawing.path[i - 1]);
        if (!goes_on) {
            end_line(drawing, first, pen, layer, false);
            first = drawing.pixels.size();
            drawing.pixels.push_back(whole(from));
        }
        add_pixel(drawing, first, whole(to));
    }
    end_line(drawing, first, pen, layer, false);
}

tm_pixel text_corner(const tm_spot_t& low, const tm_spot_t& high, const tm_sheet_text_t& place,
                     const tm_lettering& how, std::int32_t length) {
    const tm_pixel least = whole(low), most = whole(high);  // lower left and upper right
    if (how.quarter_turns == 0)
        return {place.ends_at_origin ? most.x - length : least.x, least.y - how.cell_height};
    return {most.x - how.cell_height, place.ends_at_origin ? most.y + length : least.y};
}

// What is too small to read: a line in the middle of its place.
void add_text_line(tm_drawing_t& drawing, const tm_sheet_text_t& place, tm_colour colour, tm_layer layer) {
    const tm_box_t& box = place.box;
    const double x = (box.xmin + box.xmax) / 2, y = (box.ymin + box.ymax) / 2;
    const tm_spot_t flat[] = {{box.xmin, y}, {box.xmax, y}}, upright[] = {{x, box.ymin}, {x, box.ymax}};
    tm_add_line(drawing, place.quarter_turns == 0 ? flat : upright, {colour}, layer);
}

void draw_line(const tm_drawing_t& drawing, const tm_drawing_t::line& line, tm_canvas& canvas) {
    const std::span<const tm_pixel> points(&drawing.pixels[line.first], line.count);
    if (line.filled && line.count > 2)
        canvas.fill(points, line.pen.colour);
    else if (line.count == 1)
        canvas.points(points, line.pen.colour);
    else
        canvas.polyline(points, line.pen);
}

}  // namespace

bool tm_is_seen(const tm_viewport_t& viewport, const tm_box_t& box, double border) {
    const tm_spot_t low = tm_pixels(viewport, {box.xmin, box.ymin});
    const tm_spot_t high = tm_pixels(viewport, {box.xmax, box.ymax});
    return low.x - border < viewport.width && high.x + border >= 0 && high.y - border < viewport.height &&
           low.y + border >= 0;
}

void tm_add_line(tm_drawing_t& drawing, std::span<const tm_spot_t> points, const tm_pen& pen,
                 tm_layer layer) {
    if (!to_pixels(drawing, points, pen.width)) return;
    const window_t window = window_of(drawing.viewport);
    const auto inside = [&](const tm_spot_t& at) { return is_inside(window, at); };
    if (!std::all_of(drawing.path.begin(), drawing.path.end(), inside))
        return add_pieces(drawing, window, pen, layer);
    const std::size_t first = drawing.pixels.size();
    for (const tm_spot_t& at : drawing.path) add_pixel(drawing, first, whole(at));
    end_line(drawing, first, pen, layer, false);
}

void tm_add_filling(tm_drawing_t& drawing, std::span<const tm_spot_t> corners, tm_colour colour,
                    tm_layer layer) {
    if (!to_pixels(drawing, corners, 1)) return;
    const window_t window = window_of(drawing.viewport);
    const side_t sides[] = {
        {1, 0, -window.xmin}, {-1, 0, window.xmax}, {0, 1, -window.ymin}, {0, -1, window.ymax}};
    for (const side_t& side : sides) cut_polygon(side, drawing.path, drawing.cut);
    const std::size_t first = drawing.pixels.size();
    const tm_box_t box = box_of(drawing.path);
    if (box.xmax - box.xmin < 1 && box.ymax - box.ymin < 1 && drawing.path.size() > 1) drawing.path.resize(1);
    for (const tm_spot_t& at : drawing.path) drawing.pixels.push_back(whole(at));
    end_line(drawing, first, {colour}, layer, true);
}

void tm_add_mark(tm_drawing_t& drawing, const tm_spot_t& at, std::span<const tm_pixel> offsets,
                 const tm_pen& pen, tm_layer layer, bool filled) {
    tm_box_t box;
    tm_enclose(box, at);
    if (!tm_is_seen(drawing.viewport, box, tm_mark_reach)) return;
    const tm_pixel middle = whole(tm_pixels(drawing.viewport, at));
    const std::size_t first = drawing.pixels.size();
    for (const tm_pixel& offset : offsets)
        drawing.pixels.push_back({middle.x + offset.x, middle.y + offset.y});
    end_line(drawing, first, pen, layer, filled);
}

void tm_add_text(tm_drawing_t& drawing, const tm_sheet_text_t& place, std::string_view text, tm_colour colour,
                 tm_layer layer) {
    if (text.empty() || !tm_is_seen(drawing.viewport, place.box)) return;
    const double height = place.height / drawing.viewport.units;
    if (height < tm_least_text) return add_text_line(drawing, place, colour, layer);
    const auto cell = [](double size) {
        return std::max(static_cast<std::int32_t>(std::min(size, tm_cut_margin)), 1);
    };
    const tm_lettering how = {colour, cell(height * tm_text_aspect), cell(height), place.quarter_turns};
    const auto length = static_cast<std::int32_t>(text.size()) * how.cell_width;
    const tm_pixel at =
        text_corner(tm_pixels(drawing.viewport, {place.box.xmin, place.box.ymin}),
                    tm_pixels(drawing.viewport, {place.box.xmax, place.box.ymax}), place, how, length);
    drawing.texts.push_back({order_of(layer, {colour}), at, text, how});
}

void tm_draw_list(tm_drawing_t& drawing, tm_canvas& canvas) {
    const auto earlier = [](const auto& a, const auto& b) { return a.order < b.order; };
    std::stable_sort(drawing.lines.begin(), drawing.lines.end(), earlier);
    std::stable_sort(drawing.texts.begin(), drawing.texts.end(), earlier);
    auto text = drawing.texts.begin();
    const auto draw_texts_below = [&](std::uint32_t order) {
        for (; text != drawing.texts.end() && text->order < order; ++text)
            canvas.text(text->at, text->text, text->how);
    };
    for (const tm_drawing_t::line& line : drawing.lines) {
        draw_texts_below(line.order);
        draw_line(drawing, line, canvas);
    }
    draw_texts_below(~std::uint32_t{0});
}

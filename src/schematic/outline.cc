// The primitives as paths.
#include "schematic/outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double full_circle = 360 * 64;  // angles are 1/64 degree
constexpr double least_pieces = 16, most_pieces = 4096;

struct arc_t {
    tm_spot_t center;
    double rad, begin, extent;
};

void add_arc(const arc_t& arc, double tolerance, std::vector<tm_spot_t>& points) {
    const double deviation = std::min(tolerance / 16 / std::max(arc.rad, 1.0), 1.0);
    const double circle = std::clamp(std::numbers::pi / std::acos(1 - deviation), least_pieces, most_pieces);
    const double extent = std::clamp(arc.extent, -full_circle, full_circle);
    const int pieces = std::max(static_cast<int>(std::ceil(circle * std::abs(extent) / full_circle)), 1);
    for (int i = 0; i <= pieces; ++i) {
        const double angle = (arc.begin + extent * i / pieces) / full_circle * 2 * std::numbers::pi;
        points.push_back(
            {arc.center.x + arc.rad * std::cos(angle), arc.center.y + arc.rad * std::sin(angle)});
    }
}

template <std::int16_t Type>
const tm_record_of<Type>& as(const tm_object_gene_rec_t& object) {
    return static_cast<const tm_record_of<Type>&>(object);
}

tm_spot_t offset_from(const tm_object_gene_rec_t& object, const tm_point_t& offset) {
    return {tm_spot(object.origin).x + offset.x, tm_spot(object.origin).y + offset.y};
}

void outline_of(const tm_object_line_rec_t& line, double, tm_outline_t& outline) {
    outline.points = {tm_spot(line.origin), offset_from(line, line.pt2)};
    outline.pen = tm_pen_of(line.line_color, line.line_style, line.line_width);
}

void outline_of(const tm_object_arc_rec_t& arc, double tolerance, tm_outline_t& outline) {
    outline.pen = tm_pen_of(arc.border_color, arc.border_style);
    if (arc.rad <= 0)
        outline.points = {tm_spot(arc.origin), offset_from(arc, arc.pt2), offset_from(arc, arc.pt3)};
    else
        add_arc({offset_from(arc, arc.center), double(arc.rad), double(arc.angle1), double(arc.angle2)},
                tolerance, outline.points);
}

void outline_of(const tm_object_circle_rec_t& circle, double tolerance, tm_outline_t& outline) {
    add_arc({tm_spot(circle.origin), std::abs(double(circle.rad)), 0, full_circle}, tolerance,
            outline.points);
    outline.pen = tm_pen_of(circle.border_color, circle.border_style);
    outline.filled = circle.filled;
    outline.fill_colour = tm_palette_colour(circle.fill_color);
}

void outline_of(const tm_object_rectangle_rec_t& rectangle, double, tm_outline_t& outline) {
    const tm_spot_t from = tm_spot(rectangle.origin), to = offset_from(rectangle, rectangle.pt2);
    outline.points = {from, {to.x, from.y}, to, {from.x, to.y}, from};
    outline.pen = tm_pen_of(rectangle.line_color, rectangle.line_style);
    outline.filled = rectangle.filled;
    outline.fill_colour = tm_palette_colour(rectangle.fill_color);
}

template <std::size_t Points>
void outline_of(const tm_object_points_rec_t<Points>& line, double, tm_outline_t& outline) {
    const auto count = std::clamp<std::size_t>(std::max<std::int16_t>(line.n_points, 0), 0, Points);
    for (std::size_t i = 0; i < count; ++i) outline.points.push_back(offset_from(line, line.points[i]));
    outline.pen = tm_pen_of(line.line_color, line.line_style);
}

template <std::int16_t Type>
void outline_as(const tm_object_gene_rec_t& object, double tolerance, tm_outline_t& outline) {
    outline_of(as<Type>(object), tolerance, outline);
}

struct outline_row {
    std::int16_t type;
    void (*make)(const tm_object_gene_rec_t& object, double tolerance, tm_outline_t& outline);
};
constexpr outline_row outlines[] = {
    {tm_type_line_2d, outline_as<tm_type_line_2d>},
    {tm_type_arc3p_2d, outline_as<tm_type_arc3p_2d>},
    {tm_type_circle_2d, outline_as<tm_type_circle_2d>},
    {tm_type_rectangle_2d, outline_as<tm_type_rectangle_2d>},
    {tm_type_polyline5_2d, outline_as<tm_type_polyline5_2d>},
    {tm_type_polyline_2d, outline_as<tm_type_polyline_2d>},
};

}  // namespace

tm_colour tm_palette_colour(std::int8_t index) { return static_cast<tm_colour>(index & 7); }

tm_pen tm_pen_of(std::int8_t colour, std::int16_t style, std::int8_t width) {
    const auto dash = style >= 0 && style <= 4 ? static_cast<tm_dash>(style) : tm_dash::solid;
    return {tm_palette_colour(colour), dash, std::clamp<std::int32_t>(width, 1, tm_most_width)};
}

bool tm_outline(const tm_object_gene_rec_t& object, double tolerance, tm_outline_t& outline) {
    for (const outline_row& row : outlines) {
        if (row.type != object.object_type) continue;
        outline.points.clear();
        outline.filled = false;
        row.make(object, tolerance, outline);
        return true;
    }
    return false;
}

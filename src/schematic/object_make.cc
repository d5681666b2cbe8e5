// The procedures that make each type of object.
#include "schematic/object_make.h"

#include <algorithm>

#include "schematic/arc.h"
#include "schematic/link_file.h"
#include "schematic/object_bounds.h"

namespace {

[[noreturn]] void stop(const char* constructor, std::int32_t code) {
    tm_trace(" ## error in %s ( object %d )", constructor, tm_vext.open_obj_id);
    tm_fatal(code);
}

// The object just created, which must be of the type; the code is the constructor's own.
tm_object_gene_rec_t& just_created(std::int16_t type, std::int32_t code) {
    const char* const name = type_array[static_cast<std::size_t>(type)].data();
    if (tm_vext.open_obj_id == 0) stop(name, code);
    tm_object_gene_rec_t& object = tm_object(tm_vext.cur_file, tm_vext.open_obj_id);
    if (object.object_type != type || (object.status & tm_object_is_create) == 0) stop(name, code);
    return object;
}

template <std::int16_t Type>
tm_record_of<Type>& new_object(std::int32_t code = object_create_invalid) {
    return static_cast<tm_record_of<Type>&>(just_created(Type, code));
}

void mark_updated() { tm_vext.filear[static_cast<std::size_t>(tm_vext.cur_file - 1)].file_updated = true; }

template <typename Record>
std::int16_t finish(Record& object) {
    object.fin = tm_fin_object;
    mark_updated();
    return object.object_id;
}

// The object at its place: its box is known relative to the origin.
template <typename Record>
std::int16_t finish_at(Record& object, tm_point_t origin, const tm_bounds_t& box, tm_bounds_t& absolute) {
    object.origin = origin;
    object.bounds = box;
    absolute = tm_moved(box, origin);
    tm_enclose_in_ancestors(tm_file_header(tm_vext.cur_file), object);
    return finish(object);
}

template <typename Record>
std::int16_t finish_at(Record& object, tm_point_t origin, std::initializer_list<tm_point_t> offsets,
                       tm_bounds_t& absolute) {
    return finish_at(object, origin, tm_box_of(std::span(offsets.begin(), offsets.size())), absolute);
}

void check_net(tm_file_index_t file_index, std::int16_t net) {
    if (net != 0) tm_object_as<tm_type_net>(file_index, net);
}

tm_point_t place_of_end(std::int16_t vertex) {
    const tm_object_gene_rec_t& end = tm_object(tm_vext.cur_file, vertex);
    if (end.object_type != tm_type_vertex_2d && end.object_type != tm_type_pinpropfam)
        stop("segment", object_type_invalid);
    return end.origin;
}

template <std::int16_t Type>
std::int16_t make_polyline(std::int16_t line_style, std::int8_t line_color,
                           std::span<const tm_point_t> points, std::int32_t code, tm_bounds_t& bounds) {
    auto& object = new_object<Type>(code);
    if (points.empty() || points.size() > object.points.size()) stop("polyline", code);
    std::ranges::transform(points, object.points.begin(),
                           [&](tm_point_t point) { return tm_offset(point, points.front()); });
    object.line_style = line_style;
    object.line_color = line_color;
    object.n_points = static_cast<std::int16_t>(points.size());
    const tm_bounds_t box = tm_box_of(std::span(object.points).first(points.size()));
    return finish_at(object, points.front(), box, bounds);
}

// The far corner of a text's box from its lower left corner, turned.
tm_point_t far_corner(std::int32_t length, std::int32_t height, std::int8_t rotate) {
    const auto across = static_cast<std::int32_t>(
        std::clamp<std::int64_t>(std::int64_t{length} * height * 3 / 5, INT32_MIN, INT32_MAX));
    switch (rotate & 3) {
        case 0:
            return {across, height};
        case 1:
            return {-height, across};
        case 2:
            return {-across, -height};
        default:
            return {height, -across};
    }
}

}  // namespace

std::int16_t tm_make_plain(std::int16_t object_type) {
    return finish(static_cast<tm_object_plain_rec_t&>(just_created(object_type, object_create_invalid)));
}

std::int16_t tm_symbol(const tm_string_record_t& path) {
    auto& object = new_object<tm_type_symbol>();
    tm_copy_line(path, object.path);
    return finish(object);
}

std::int16_t tm_instance(std::int16_t symbol, std::int8_t rotate, bool fliph) {
    auto& object = new_object<tm_type_instance>();
    tm_string_record_t directory;
    tm_get_path_n0version(tm_object_as<tm_type_symbol>(tm_vext.cur_file, symbol).path, directory,
                          object.n0_version);
    object.symbol = symbol;
    object.rotate = rotate;
    object.fliph = fliph;
    return finish(object);
}

std::int16_t tm_pinpropfam(std::int16_t net, bool dotted, std::int16_t pin_start, std::int16_t pin_end,
                           std::int16_t pin_net_start) {
    auto& object = new_object<tm_type_pinpropfam>();
    check_net(tm_vext.cur_file, net);
    object.net = net;
    object.dotted = dotted;
    object.pin_start = pin_start;
    object.pin_end = pin_end;
    object.pin_net_start = pin_net_start;
    return finish(object);
}

void tm_pinpropfam_set_net(tm_file_index_t file_index, std::int16_t object_id, std::int16_t net,
                           bool dotted) {
    auto& object = tm_object_as<tm_type_pinpropfam>(file_index, object_id);
    check_net(file_index, net);
    object.net = net;
    object.dotted = dotted;
    tm_vext.filear[static_cast<std::size_t>(file_index - 1)].file_updated = true;
}

std::int16_t tm_net(bool is_bus, std::int16_t bus_start, std::int16_t bus_end) {
    auto& object = new_object<tm_type_net>();
    object.is_bus = is_bus;
    object.bus_start = bus_start;
    object.bus_end = bus_end;
    return finish(object);
}

std::int16_t tm_segment(std::int16_t line_style, std::int8_t line_color, std::int8_t line_width,
                        std::int16_t vertex1, std::int16_t vertex2) {
    auto& object = new_object<tm_type_segment>();
    const tm_point_t from = place_of_end(vertex1), to = place_of_end(vertex2);
    object.line_style = line_style;
    object.line_color = line_color;
    object.line_width = line_width;
    object.vertex1 = vertex1;
    object.vertex2 = vertex2;
    tm_bounds_t bounds;
    return finish_at(object, from, {{}, tm_offset(to, from)}, bounds);
}

std::int16_t tm_tag(const tm_name_record_t& name, const tm_value_record_t& nvalue) {
    auto& object = new_object<tm_type_tag>(invalid_tag);
    tm_check_name(name);
    tm_check_value(nvalue);
    object.name = name;
    object.nvalue = nvalue;
    tm_bounds_t bounds;
    return finish_at(object, object.origin, {{}}, bounds);
}

std::int16_t tm_vertex_2dreal(std::int16_t net, bool dotted, tm_point_t at, tm_bounds_t& bounds) {
    auto& object = new_object<tm_type_vertex_2d>();
    check_net(tm_vext.cur_file, net);
    object.net = net;
    object.dotted = dotted;
    return finish_at(object, at, {{}}, bounds);
}

std::int16_t tm_arc3p_2dreal(std::int16_t border_style, std::int8_t border_color, tm_point_t pt1,
                             tm_point_t pt2, tm_point_t pt3, tm_bounds_t& bounds) {
    auto& object = new_object<tm_type_arc3p_2d>(invalid_arc3p_2d);
    object.pt2 = tm_offset(pt2, pt1);
    object.pt3 = tm_offset(pt3, pt1);
    const tm_arc_circle circle = tm_circle_through(object.pt2, object.pt3);
    object.center = circle.center;
    object.rad = circle.rad;
    object.angle1 = circle.angle1;
    object.angle2 = circle.angle2;
    object.border_style = border_style;
    object.border_color = border_color;
    if (object.pt3.x != 0 || object.pt3.y != 0)
        return finish_at(object, pt1, {{}, object.pt2, object.pt3}, bounds);
    const std::int32_t r = circle.rad;
    return finish_at(object, pt1, tm_moved({-r, -r, r, r}, circle.center), bounds);
}

std::int16_t tm_circle_real(std::int16_t border_style, std::int8_t border_color, bool filled,
                            std::int8_t fill_color, tm_point_t center, std::int32_t rad,
                            tm_bounds_t& bounds) {
    auto& object = new_object<tm_type_circle_2d>(invalid_circle_2d);
    object.border_style = border_style;
    object.border_color = border_color;
    object.filled = filled;
    object.fill_color = fill_color;
    object.rad = rad;
    return finish_at(object, center, {{-rad, -rad}, {rad, rad}}, bounds);
}

std::int16_t tm_grid_real(tm_point_t pt1, tm_point_t opposite_pt, std::int32_t step_point,
                          std::int32_t step_pin, bool grid_on, bool snap_on, tm_bounds_t& bounds) {
    auto& object = new_object<tm_type_grid_2d>(invalid_grid_2d);
    object.opposite_pt = tm_offset(opposite_pt, pt1);
    object.step_point = step_point;
    object.step_pin = step_pin;
    object.grid_on = grid_on;
    object.snap_on = snap_on;
    return finish_at(object, pt1, {{}, object.opposite_pt}, bounds);
}

std::int16_t tm_line_2dreal(std::int16_t line_style, std::int8_t line_color, std::int8_t line_width,
                            tm_point_t pt1, tm_point_t pt2, tm_bounds_t& bounds) {
    auto& object = new_object<tm_type_line_2d>(invalid_line_2d);
    object.line_style = line_style;
    object.line_color = line_color;
    object.line_width = line_width;
    object.pt2 = tm_offset(pt2, pt1);
    return finish_at(object, pt1, {{}, object.pt2}, bounds);
}

std::int16_t tm_polyline5_2dreal(std::int16_t line_style, std::int8_t line_color,
                                 std::span<const tm_point_t> points, tm_bounds_t& bounds) {
    return make_polyline<tm_type_polyline5_2d>(line_style, line_color, points, invalid_polyline5_2d, bounds);
}

std::int16_t tm_polyline_2dreal(std::int16_t line_style, std::int8_t line_color,
                                std::span<const tm_point_t> points, tm_bounds_t& bounds) {
    return make_polyline<tm_type_polyline_2d>(line_style, line_color, points, invalid_polyline_2d, bounds);
}

std::int16_t tm_rectangle_2dreal(std::int16_t line_style, std::int8_t line_color, bool filled,
                                 std::int8_t fill_color, tm_point_t pt1, tm_point_t pt2,
                                 tm_bounds_t& bounds) {
    auto& object = new_object<tm_type_rectangle_2d>(invalid_rectangle_2d);
    object.line_style = line_style;
    object.line_color = line_color;
    object.filled = filled;
    object.fill_color = fill_color;
    object.pt2 = tm_offset(pt2, pt1);
    return finish_at(object, pt1, {{}, object.pt2}, bounds);
}

std::int16_t tm_property_2dreal(const tm_name_record_t& name, const tm_value_record_t& nvalue, bool fixed,
                                bool visible, std::int8_t line_color, std::int8_t rotate, std::int32_t height,
                                tm_point_t at, tm_bounds_t& bounds) {
    auto& object = new_object<tm_type_property_2d>(invalid_property_2d);
    tm_check_name(name);
    tm_check_value(nvalue);
    object.name = name;
    object.nvalue = nvalue;
    object.fixed = fixed;
    object.visible = visible;
    object.line_color = line_color;
    object.rotate = rotate;
    object.height = height;
    return finish_at(object, at, {{}, far_corner(nvalue.len, height, rotate)}, bounds);
}

// tm: the constructors.  Each fills the type's part of the object just created (tm_object_create) in the
// current file, marks the file as updated, finishes the record and returns the object's id.  The object just
// created must be of the constructor's type and in the create state, else object_create_invalid; the shapes
// have codes of their own (invalid_line_2d and so on).
// Shapes take their points in the coordinates of their holder: the first becomes the object's origin, the
// others and the bounds are stored as offsets from it, and the bounds of all ancestors grow to enclose the
// shape.  bounds, where it is a result, is the shape's box in those same coordinates.
#pragma once

#include <span>

#include "schematic/object.h"

// The types that hold nothing of their own: tm_main(), tm_page() ...
std::int16_t tm_make_plain(std::int16_t object_type);
template <std::int16_t Type>
std::int16_t tm_make_plain_object() {
    return tm_make_plain(Type);
}
// clang-format off
inline constexpr auto& tm_main             = tm_make_plain_object<tm_type_main>;
inline constexpr auto& tm_page             = tm_make_plain_object<tm_type_page>;
inline constexpr auto& tm_component_family = tm_make_plain_object<tm_type_component_family>;
inline constexpr auto& tm_instance_family  = tm_make_plain_object<tm_type_instance_family>;
inline constexpr auto& tm_symbol_family    = tm_make_plain_object<tm_type_symbol_family>;
inline constexpr auto& tm_net_family       = tm_make_plain_object<tm_type_net_family>;
inline constexpr auto& tm_component        = tm_make_plain_object<tm_type_component>;
inline constexpr auto& tm_bodpropfam       = tm_make_plain_object<tm_type_bodpropfam>;
inline constexpr auto& tm_vertex_family    = tm_make_plain_object<tm_type_vertex_family>;
inline constexpr auto& tm_body             = tm_make_plain_object<tm_type_body>;
inline constexpr auto& tm_pin_family       = tm_make_plain_object<tm_type_pin_family>;
inline constexpr auto& tm_tag_family       = tm_make_plain_object<tm_type_tag_family>;
inline constexpr auto& tm_frame_family     = tm_make_plain_object<tm_type_frame_family>;
inline constexpr auto& tm_frame            = tm_make_plain_object<tm_type_frame>;
inline constexpr auto& tm_pin              = tm_make_plain_object<tm_type_pin>;
inline constexpr auto& tm_graphics         = tm_make_plain_object<tm_type_graphics>;
inline constexpr auto& tm_property_family  = tm_make_plain_object<tm_type_property_family>;
// clang-format on

std::int16_t tm_symbol(const tm_string_record_t& path);
// The symbol must exist (object_id_invalid, object_type_invalid); the version is taken from its path's end.
std::int16_t tm_instance(std::int16_t symbol, std::int8_t rotate, bool fliph);
// Ids named by these must be 0 or objects of the right type (object_id_invalid, object_type_invalid).
std::int16_t tm_pinpropfam(std::int16_t net, bool dotted, std::int16_t pin_start, std::int16_t pin_end,
                           std::int16_t pin_net_start);
std::int16_t tm_net(bool is_bus, std::int16_t bus_start, std::int16_t bus_end);
// vertex1 and vertex2 are vertices or pin property families of the sheet; the segment's origin becomes the
// place of vertex1, its bounds reach to vertex2 and its ancestors' bounds grow as for a shape.
std::int16_t tm_segment(std::int16_t line_style, std::int8_t line_color, std::int8_t line_width,
                        std::int16_t vertex1, std::int16_t vertex2);
// A tag stays where it was created; its own bounds are that point.
std::int16_t tm_tag(const tm_name_record_t& name, const tm_value_record_t& nvalue);

// Gives a pin property family its net later, when the net came after it.
void tm_pinpropfam_set_net(tm_file_index_t file_index, std::int16_t object_id, std::int16_t net, bool dotted);

std::int16_t tm_vertex_2dreal(std::int16_t net, bool dotted, tm_point_t at, tm_bounds_t& bounds);
std::int16_t tm_arc3p_2dreal(std::int16_t border_style, std::int8_t border_color, tm_point_t pt1,
                             tm_point_t pt2, tm_point_t pt3, tm_bounds_t& bounds);
std::int16_t tm_circle_real(std::int16_t border_style, std::int8_t border_color, bool filled,
                            std::int8_t fill_color, tm_point_t center, std::int32_t rad, tm_bounds_t& bounds);
std::int16_t tm_grid_real(tm_point_t pt1, tm_point_t opposite_pt, std::int32_t step_point,
                          std::int32_t step_pin, bool grid_on, bool snap_on, tm_bounds_t& bounds);
std::int16_t tm_line_2dreal(std::int16_t line_style, std::int8_t line_color, std::int8_t line_width,
                            tm_point_t pt1, tm_point_t pt2, tm_bounds_t& bounds);
// 1..5 and 1..16 points; another number is invalid_polyline5_2d or invalid_polyline_2d.
std::int16_t tm_polyline5_2dreal(std::int16_t line_style, std::int8_t line_color,
                                 std::span<const tm_point_t> points, tm_bounds_t& bounds);
std::int16_t tm_polyline_2dreal(std::int16_t line_style, std::int8_t line_color,
                                std::span<const tm_point_t> points, tm_bounds_t& bounds);
std::int16_t tm_rectangle_2dreal(std::int16_t line_style, std::int8_t line_color, bool filled,
                                 std::int8_t fill_color, tm_point_t pt1, tm_point_t pt2, tm_bounds_t& bounds);
// rotate: quarter turns counter-clockwise about at, the lower left corner of the text before it is turned.
// The bounds take cells of height * 3 / 5 by height.
std::int16_t tm_property_2dreal(const tm_name_record_t& name, const tm_value_record_t& nvalue, bool fixed,
                                bool visible, std::int8_t line_color, std::int8_t rotate, std::int32_t height,
                                tm_point_t at, tm_bounds_t& bounds);

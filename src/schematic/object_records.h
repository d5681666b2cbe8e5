// tm: the records of a sheet.  A sheet file holds numbered objects, ids 1..30000, arranged as a tree; every
// object begins with the generic part and goes on with the part of its type.  Coordinates are model units,
// 100000 to 1.0, x to the right, y upward.  Further points of a shape and all bounds are offsets from the
// object's own origin.  Ids are 0 for none.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string_view>
#include <tuple>
#include <vector>

#include "foundation/context.h"
#include "foundation/strings.h"

inline constexpr std::int16_t tm_max_objects = 30000;
inline constexpr std::int16_t tm_fin_object = -10;
inline constexpr std::int16_t tm_fin_header = -20;
inline constexpr std::int32_t tm_bounds_empty = 1000000000;
inline constexpr tm_bounds_t tm_empty_bounds = {tm_bounds_empty, tm_bounds_empty, -tm_bounds_empty,
                                                -tm_bounds_empty};

// The numbers are those of the sheet file.
enum tm_object_type : std::int16_t {
    tm_type_nil = 0,
    tm_type_main,
    tm_type_page,
    tm_type_component_family,
    tm_type_instance_family,
    tm_type_symbol_family,
    tm_type_net_family,
    tm_type_component,
    tm_type_instance,
    tm_type_symbol,
    tm_type_bodpropfam,
    tm_type_pinpropfam,
    tm_type_net,
    tm_type_vertex_family,
    tm_type_segment,
    tm_type_body,
    tm_type_pin_family,
    tm_type_tag_family,
    tm_type_frame_family,
    tm_type_frame,
    tm_type_pin,
    tm_type_graphics,
    tm_type_property_family,
    tm_type_tag,
    tm_type_vertex_2d,
    tm_type_arc3p_2d,
    tm_type_circle_2d,
    tm_type_grid_2d,
    tm_type_line_2d,
    tm_type_polyline5_2d,
    tm_type_polyline_2d,
    tm_type_rectangle_2d,
    tm_type_property_2d,
};
inline constexpr std::int16_t tm_type_count = tm_type_property_2d + 1;
extern const std::array<std::string_view, tm_type_count> type_array;  // the types' names, "nil" first

enum tm_object_status : std::int16_t {
    tm_object_is_selected = 1,
    tm_object_is_temporary = 2,
    tm_object_is_create = 4,  // between tm_object_create and tm_object_close
    tm_object_is_open = 8,    // between tm_object_open and tm_object_close
    tm_object_is_picked = 16,
    tm_object_is_deleted = 32,
    tm_object_is_unvisible = 64,
    tm_object_is_fixed = 128,
};

struct tm_object_gene_rec_t {
    std::int16_t object_id = 0;
    std::int16_t father = 0;
    std::int16_t previous = 0, following = 0;  // siblings
    std::int16_t child1 = 0;
    std::int16_t id_tmp = 0;  // scratch, while objects are copied and renumbered
    std::int16_t object_type = tm_type_nil;
    std::int16_t status = 0;  // tm_object_status bits
    tm_point_t origin;
    tm_bounds_t bounds = tm_empty_bounds;
};

struct tm_object_plain_rec_t : tm_object_gene_rec_t {  // types 1..7, 10, 13, 15..22
    std::int16_t fin = 0;
};

struct tm_object_instance_rec_t : tm_object_gene_rec_t {
    std::int8_t rotate = 0;  // quarter turns counter-clockwise, after the flip
    bool fliph = false;
    std::int16_t symbol = 0;
    std::int16_t n0_version = 0;  // of the symbol's file
    std::int16_t previous_inst = 0, following_inst = 0;
    std::int16_t fin = 0;
};

struct tm_object_symbol_rec_t : tm_object_gene_rec_t {
    std::int16_t instance = 0;
    tm_string_record_t path;  // of the symbol's file, ending in its version
    std::int16_t fin = 0;
};

struct tm_object_pinpropfam_rec_t : tm_object_gene_rec_t {
    bool dotted = false, reserved = false;
    std::int16_t net = 0;
    std::int16_t pin_start = 0, pin_end = 0, pin_net_start = 0;
    std::int16_t fin = 0;
};

struct tm_object_net_rec_t : tm_object_gene_rec_t {
    std::int32_t net_index = 0;
    void* ptrto_probe = nullptr;  // a probe's display record; not in the file
    bool is_bus = false, reserved = false;
    std::int16_t bus_start = 0, bus_end = 0;
    std::int16_t fin = 0;  // not in the file
};

struct tm_object_segment_rec_t : tm_object_gene_rec_t {
    std::int16_t reserved = 0;
    std::int8_t line_color = 0, line_width = 0;
    std::int16_t vertex1 = 0, vertex2 = 0;  // vertex_2d or pinpropfam
    std::int16_t line_style = 0;
    std::int16_t fin = 0;
};

struct tm_object_tag_rec_t : tm_object_gene_rec_t {
    tm_name_record_t name;
    tm_value_record_t nvalue;
    std::int16_t reserved = 0;
    std::int16_t fin = 0;
};

struct tm_object_vertex_rec_t : tm_object_gene_rec_t {
    bool dotted = false, reserved = false;
    std::int16_t net = 0;
    std::int16_t fin = 0;
};

// From the origin over pt2 to pt3.  Angles are 1/64 degree counter-clockwise from the x direction; angle1 is
// the origin's (0..23039), angle2 the way to pt3, negative when it runs clockwise.  rad 0: the three points
// lie on one line, which is drawn straight from point to point.
struct tm_object_arc_rec_t : tm_object_gene_rec_t {
    tm_point_t pt2, pt3, center;
    std::int32_t rad = 0, angle1 = 0, angle2 = 0;
    std::int8_t border_color = 0, c_reserved = 0;
    std::int16_t border_style = 0;
    std::int16_t i_reserved = 0;
    std::int16_t fin = 0;
};

struct tm_object_circle_rec_t : tm_object_gene_rec_t {
    std::int8_t reserved = 0, border_color = 0;
    bool filled = false;
    std::int8_t fill_color = 0;
    std::int32_t rad = 0;
    std::int16_t border_style = 0;
    std::int16_t fin = 0;
};

struct tm_object_grid_rec_t : tm_object_gene_rec_t {
    tm_point_t opposite_pt;
    std::int32_t step_point = 0, step_pin = 0;
    bool grid_on = false, snap_on = false;
    std::int16_t fin = 0;
};

struct tm_object_line_rec_t : tm_object_gene_rec_t {
    std::int16_t reserved = 0;
    std::int8_t line_color = 0, line_width = 0;
    tm_point_t pt2;
    std::int16_t line_style = 0;
    std::int16_t fin = 0;
};

template <std::size_t Points>
struct tm_object_points_rec_t : tm_object_gene_rec_t {
    std::int16_t line_style = 0;
    std::int16_t n_points = 0;                // 0..Points
    std::array<tm_point_t, Points> points{};  // the first is the origin itself, (0, 0)
    std::int8_t line_color = 0, reserved = 0;
    std::int16_t fin = 0;
};
using tm_object_polyline5_rec_t = tm_object_points_rec_t<5>;
using tm_object_polyline_rec_t = tm_object_points_rec_t<16>;

struct tm_object_rectangle_rec_t : tm_object_gene_rec_t {
    std::int8_t reserved = 0, line_color = 0;
    bool filled = false;
    std::int8_t fill_color = 0;
    tm_point_t pt2;  // the opposite corner
    std::int16_t line_style = 0;
    std::int16_t fin = 0;
};

struct tm_object_property_rec_t : tm_object_gene_rec_t {
    bool fixed = false, visible = false;
    std::int8_t line_color = 0;
    std::int8_t rotate = 0;  // quarter turns counter-clockwise
    tm_name_record_t name;
    tm_value_record_t nvalue;
    std::int32_t height = 0;  // of the text
    std::int16_t reserved = 0;
    std::int16_t fin = 0;
};

// Which record an object type has; tm_record_of<tm_type_net> is tm_object_net_rec_t.
template <std::int16_t Type>
struct tm_record_of_type {
    using record = tm_object_plain_rec_t;
};
// clang-format off
template <> struct tm_record_of_type<tm_type_instance>     { using record = tm_object_instance_rec_t; };
template <> struct tm_record_of_type<tm_type_symbol>       { using record = tm_object_symbol_rec_t; };
template <> struct tm_record_of_type<tm_type_pinpropfam>   { using record = tm_object_pinpropfam_rec_t; };
template <> struct tm_record_of_type<tm_type_net>          { using record = tm_object_net_rec_t; };
template <> struct tm_record_of_type<tm_type_segment>      { using record = tm_object_segment_rec_t; };
template <> struct tm_record_of_type<tm_type_tag>          { using record = tm_object_tag_rec_t; };
template <> struct tm_record_of_type<tm_type_vertex_2d>    { using record = tm_object_vertex_rec_t; };
template <> struct tm_record_of_type<tm_type_arc3p_2d>     { using record = tm_object_arc_rec_t; };
template <> struct tm_record_of_type<tm_type_circle_2d>    { using record = tm_object_circle_rec_t; };
template <> struct tm_record_of_type<tm_type_grid_2d>      { using record = tm_object_grid_rec_t; };
template <> struct tm_record_of_type<tm_type_line_2d>      { using record = tm_object_line_rec_t; };
template <> struct tm_record_of_type<tm_type_polyline5_2d> { using record = tm_object_polyline5_rec_t; };
template <> struct tm_record_of_type<tm_type_polyline_2d>  { using record = tm_object_polyline_rec_t; };
template <> struct tm_record_of_type<tm_type_rectangle_2d> { using record = tm_object_rectangle_rec_t; };
template <> struct tm_record_of_type<tm_type_property_2d>  { using record = tm_object_property_rec_t; };
// clang-format on
template <std::int16_t Type>
using tm_record_of = typename tm_record_of_type<Type>::record;

// Where the objects of a file live: a record keeps its place as long as the file is open.
using tm_object_pools =
    std::tuple<std::deque<tm_object_plain_rec_t>, std::deque<tm_object_instance_rec_t>,
               std::deque<tm_object_symbol_rec_t>, std::deque<tm_object_pinpropfam_rec_t>,
               std::deque<tm_object_net_rec_t>, std::deque<tm_object_segment_rec_t>,
               std::deque<tm_object_tag_rec_t>, std::deque<tm_object_vertex_rec_t>,
               std::deque<tm_object_arc_rec_t>, std::deque<tm_object_circle_rec_t>,
               std::deque<tm_object_grid_rec_t>, std::deque<tm_object_line_rec_t>,
               std::deque<tm_object_polyline5_rec_t>, std::deque<tm_object_polyline_rec_t>,
               std::deque<tm_object_rectangle_rec_t>, std::deque<tm_object_property_rec_t>>;

// The header of a sheet file and the file's objects.
struct tm_file_gene_recf_t {
    float software_revision = 0;
    std::int16_t day = 0, month = 0, year = 0, hour = 0, minute = 0;  // of writing
    std::int16_t object_id_max = 0;
    std::int16_t primary_object = 0;  // the main object
    std::int16_t page_obj_id = 0;     // the first page
    std::int16_t grid_obj_id = 0;     // the first grid
    std::int16_t check_data_done = 0;
    std::int16_t num_errors = 0;
    std::int32_t dot_width = 0;
    bool displayed = false;
    std::int32_t ptr_to_ar_objindex = 0;  // no meaning
    std::int8_t reserved = 0;
    std::int16_t fin = 0;
    // Not in the file.
    std::vector<tm_object_gene_rec_t*> ar_objindex;  // object id 1 is element 0; null behind object_id_max
    std::vector<std::int16_t> last_child;            // by father's id, 0 the top level; 0 none
    tm_object_pools objects;
};

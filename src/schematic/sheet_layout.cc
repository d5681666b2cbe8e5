#include "schematic/sheet_layout.h"

#include <algorithm>
#include <type_traits>

namespace {

template <typename Value>
struct form_of {
    static constexpr tm_field_form form = std::is_same_v<Value, bool> ? tm_field_form::boolean
                                          : sizeof(Value) == 1        ? tm_field_form::stored
                                                                      : tm_field_form::reversed;
    static constexpr std::int16_t rectype = 0;
    static constexpr std::size_t width = sizeof(Value);
};

template <std::int16_t Rectype, std::size_t Width>
struct record_form {
    static constexpr tm_field_form form = tm_field_form::record;
    static constexpr std::int16_t rectype = Rectype;
    static constexpr std::size_t width = Width;
};
// clang-format off
template <> struct form_of<tm_point_t>                 : record_form<tm_rec_point, 8> {};
template <> struct form_of<tm_bounds_t>                : record_form<tm_rec_bounds, 16> {};
template <> struct form_of<tm_string_record_t>         : record_form<tm_rec_string, 4> {};
template <> struct form_of<tm_name_record_t>           : record_form<tm_rec_name, 4> {};
template <> struct form_of<tm_value_record_t>          : record_form<tm_rec_value, 4> {};
template <> struct form_of<std::array<tm_point_t, 5>>  : record_form<tm_rec_points5, 40> {};
template <> struct form_of<std::array<tm_point_t, 16>> : record_form<tm_rec_points16, 128> {};
// clang-format on

template <typename Record, typename Value, Value Record::*Member>
void* member_at(void* record) {
    if constexpr (std::is_base_of_v<tm_object_gene_rec_t, Record>)
        return &(static_cast<Record*>(static_cast<tm_object_gene_rec_t*>(record))->*Member);
    else
        return &(static_cast<Record*>(record)->*Member);
}

// Member belongs to Holder or to what Holder is made from.
template <typename Holder, auto Member>
struct row;
template <typename Holder, typename Base, typename Value, Value Base::*Member>
struct row<Holder, Member> {
    static constexpr tm_sheet_field make(std::string_view name, std::size_t offset) {
        using form = form_of<Value>;
        return {name,       offset,        form::width,
                form::form, form::rectype, member_at<Holder, Value, static_cast<Value Holder::*>(Member)>};
    }
};

template <typename Holder, auto Member>
constexpr tm_sheet_field field(std::string_view name, std::size_t offset) {
    return row<Holder, Member>::make(name, offset);
}

template <typename Holder, auto Member>
constexpr tm_sheet_field low_first(std::string_view name, std::size_t offset) {
    tm_sheet_field made = field<Holder, Member>(name, offset);
    made.form = tm_field_form::stored;
    return made;
}

// No gap, no overlap, the size that the file has.
template <std::size_t Count>
constexpr bool covers(const tm_sheet_field (&fields)[Count], std::size_t bytes) {
    std::size_t at = 0;
    for (const tm_sheet_field& each : fields) {
        if (each.offset != at) return false;
        at += each.width;
    }
    return at == bytes;
}

// clang-format off
using header = tm_file_gene_recf_t;
constexpr tm_sheet_field header_fields[] = {
    field<header, &header::software_revision>("software_revision", 0),
    field<header, &header::day>("day", 4),
    field<header, &header::month>("month", 6),
    field<header, &header::year>("year", 8),
    field<header, &header::hour>("hour", 10),
    field<header, &header::minute>("minute", 12),
    field<header, &header::object_id_max>("object_id_max", 14),
    field<header, &header::primary_object>("primary_object", 16),
    field<header, &header::page_obj_id>("page_obj_id", 18),
    field<header, &header::grid_obj_id>("grid_obj_id", 20),
    field<header, &header::check_data_done>("check_data_done", 22),
    field<header, &header::num_errors>("num_errors", 24),
    field<header, &header::dot_width>("dot_width", 26),
    field<header, &header::displayed>("displayed", 30),
    field<header, &header::ptr_to_ar_objindex>("ptr_to_ar_objindex", 31),
    field<header, &header::reserved>("reserved", 35),
    field<header, &header::fin>("fin", 36),
};
static_assert(covers(header_fields, tm_header_bytes));

using generic = tm_object_gene_rec_t;
constexpr tm_sheet_field generic_fields[] = {
    field<generic, &generic::object_id>("object_id", 0),
    field<generic, &generic::father>("father", 2),
    field<generic, &generic::previous>("previous", 4),
    field<generic, &generic::following>("following", 6),
    field<generic, &generic::child1>("child1", 8),
    field<generic, &generic::id_tmp>("id_tmp", 10),
    field<generic, &generic::object_type>("object_type", 12),
    field<generic, &generic::status>("status", 14),
    field<generic, &generic::origin>("origin", 16),
    field<generic, &generic::bounds>("bounds", 24),
};
static_assert(covers(generic_fields, tm_generic_bytes));

constexpr tm_sheet_field point_fields[] = {
    field<tm_point_t, &tm_point_t::x>("x", 0),
    field<tm_point_t, &tm_point_t::y>("y", 4),
};
static_assert(covers(point_fields, 8));

constexpr tm_sheet_field bounds_fields[] = {
    field<tm_bounds_t, &tm_bounds_t::xmin>("xmin", 0),
    field<tm_bounds_t, &tm_bounds_t::ymin>("ymin", 4),
    field<tm_bounds_t, &tm_bounds_t::xmax>("xmax", 8),
    field<tm_bounds_t, &tm_bounds_t::ymax>("ymax", 12),
};
static_assert(covers(bounds_fields, 16));

using plain = tm_object_plain_rec_t;
constexpr tm_sheet_field plain_fields[] = {
    field<plain, &plain::fin>("fin", 0),
};
static_assert(covers(plain_fields, 2));

using instance = tm_object_instance_rec_t;
constexpr tm_sheet_field instance_fields[] = {
    field<instance, &instance::rotate>("rotate", 0),
    field<instance, &instance::fliph>("fliph", 1),
    field<instance, &instance::symbol>("symbol", 2),
    field<instance, &instance::n0_version>("n0_version", 4),
    field<instance, &instance::previous_inst>("previous_inst", 6),
    field<instance, &instance::following_inst>("following_inst", 8),
    field<instance, &instance::fin>("fin", 10),
};
static_assert(covers(instance_fields, 12));

using symbol = tm_object_symbol_rec_t;
constexpr tm_sheet_field symbol_fields[] = {
    field<symbol, &symbol::instance>("instance", 0),
    field<symbol, &symbol::path>("path", 2),
    field<symbol, &symbol::fin>("fin", 6),
};
static_assert(covers(symbol_fields, 8));

using pinpropfam = tm_object_pinpropfam_rec_t;
constexpr tm_sheet_field pinpropfam_fields[] = {
    field<pinpropfam, &pinpropfam::dotted>("dotted", 0),
    field<pinpropfam, &pinpropfam::reserved>("reserved", 1),
    field<pinpropfam, &pinpropfam::net>("net", 2),
    low_first<pinpropfam, &pinpropfam::pin_start>("pin_start", 4),
    field<pinpropfam, &pinpropfam::pin_end>("pin_end", 6),
    field<pinpropfam, &pinpropfam::pin_net_start>("pin_net_start", 8),
    field<pinpropfam, &pinpropfam::fin>("fin", 10),
};
static_assert(covers(pinpropfam_fields, 12));

using net = tm_object_net_rec_t;
constexpr tm_sheet_field net_fields[] = {
    field<net, &net::net_index>("net_index", 0),
    field<net, &net::is_bus>("is_bus", 4),
    field<net, &net::reserved>("reserved", 5),
    field<net, &net::bus_start>("bus_start", 6),
    field<net, &net::bus_end>("bus_end", 8),
};
static_assert(covers(net_fields, 10));

using segment = tm_object_segment_rec_t;
constexpr tm_sheet_field segment_fields[] = {
    field<segment, &segment::reserved>("reserved", 0),
    field<segment, &segment::line_color>("line_color", 2),
    field<segment, &segment::line_width>("line_width", 3),
    field<segment, &segment::vertex1>("vertex1", 4),
    field<segment, &segment::vertex2>("vertex2", 6),
    field<segment, &segment::line_style>("line_style", 8),
    field<segment, &segment::fin>("fin", 10),
};
static_assert(covers(segment_fields, 12));

using tag = tm_object_tag_rec_t;
constexpr tm_sheet_field tag_fields[] = {
    field<tag, &tag::name>("name", 0),
    field<tag, &tag::nvalue>("nvalue", 4),
    field<tag, &tag::reserved>("reserved", 8),
    field<tag, &tag::fin>("fin", 10),
};
static_assert(covers(tag_fields, 12));

using vertex = tm_object_vertex_rec_t;
constexpr tm_sheet_field vertex_fields[] = {
    field<vertex, &vertex::dotted>("dotted", 0),
    field<vertex, &vertex::reserved>("reserved", 1),
    field<vertex, &vertex::net>("net", 2),
    field<vertex, &vertex::fin>("fin", 4),
};
static_assert(covers(vertex_fields, 6));

using arc = tm_object_arc_rec_t;
constexpr tm_sheet_field arc_fields[] = {  // the last fields stand in another order than in the record
    field<arc, &arc::pt2>("pt2", 0),
    field<arc, &arc::pt3>("pt3", 8),
    field<arc, &arc::center>("center", 16),
    field<arc, &arc::rad>("rad", 24),
    field<arc, &arc::angle1>("angle1", 28),
    field<arc, &arc::angle2>("angle2", 32),
    field<arc, &arc::border_color>("border_color", 36),
    low_first<arc, &arc::border_style>("border_style", 37),
    field<arc, &arc::c_reserved>("c_reserved", 39),
    field<arc, &arc::i_reserved>("i_reserved", 40),
    field<arc, &arc::fin>("fin", 42),
};
static_assert(covers(arc_fields, 44));

using circle = tm_object_circle_rec_t;
constexpr tm_sheet_field circle_fields[] = {
    field<circle, &circle::reserved>("reserved", 0),
    field<circle, &circle::border_color>("border_color", 1),
    field<circle, &circle::filled>("filled", 2),
    field<circle, &circle::fill_color>("fill_color", 3),
    field<circle, &circle::rad>("rad", 4),
    field<circle, &circle::border_style>("border_style", 8),
    field<circle, &circle::fin>("fin", 10),
};
static_assert(covers(circle_fields, 12));

using grid = tm_object_grid_rec_t;
constexpr tm_sheet_field grid_fields[] = {
    field<grid, &grid::opposite_pt>("opposite_pt", 0),
    field<grid, &grid::step_point>("step_point", 8),
    field<grid, &grid::step_pin>("step_pin", 12),
    field<grid, &grid::grid_on>("grid_on", 16),
    field<grid, &grid::snap_on>("snap_on", 17),
    field<grid, &grid::fin>("fin", 18),
};
static_assert(covers(grid_fields, 20));

using line = tm_object_line_rec_t;
constexpr tm_sheet_field line_fields[] = {
    field<line, &line::reserved>("reserved", 0),
    field<line, &line::line_color>("line_color", 2),
    field<line, &line::line_width>("line_width", 3),
    field<line, &line::pt2>("pt2", 4),
    field<line, &line::line_style>("line_style", 12),
    field<line, &line::fin>("fin", 14),
};
static_assert(covers(line_fields, 16));

using polyline5 = tm_object_polyline5_rec_t;
constexpr tm_sheet_field polyline5_fields[] = {
    field<polyline5, &polyline5::line_style>("line_style", 0),
    field<polyline5, &polyline5::n_points>("n_points", 2),
    field<polyline5, &polyline5::points>("points", 4),
    field<polyline5, &polyline5::line_color>("line_color", 44),
    field<polyline5, &polyline5::reserved>("reserved", 45),
    field<polyline5, &polyline5::fin>("fin", 46),
};
static_assert(covers(polyline5_fields, 48));

using polyline = tm_object_polyline_rec_t;
constexpr tm_sheet_field polyline_fields[] = {
    field<polyline, &polyline::line_style>("line_style", 0),
    field<polyline, &polyline::n_points>("n_points", 2),
    field<polyline, &polyline::points>("points", 4),
    field<polyline, &polyline::line_color>("line_color", 132),
    field<polyline, &polyline::reserved>("reserved", 133),
    field<polyline, &polyline::fin>("fin", 134),
};
static_assert(covers(polyline_fields, 136));

using rectangle = tm_object_rectangle_rec_t;
constexpr tm_sheet_field rectangle_fields[] = {
    field<rectangle, &rectangle::reserved>("reserved", 0),
    field<rectangle, &rectangle::line_color>("line_color", 1),
    field<rectangle, &rectangle::filled>("filled", 2),
    field<rectangle, &rectangle::fill_color>("fill_color", 3),
    field<rectangle, &rectangle::pt2>("pt2", 4),
    field<rectangle, &rectangle::line_style>("line_style", 12),
    field<rectangle, &rectangle::fin>("fin", 14),
};
static_assert(covers(rectangle_fields, 16));

using property = tm_object_property_rec_t;
constexpr tm_sheet_field property_fields[] = {
    field<property, &property::fixed>("fixed", 0),
    field<property, &property::visible>("visible", 1),
    field<property, &property::line_color>("line_color", 2),
    field<property, &property::rotate>("rotate", 3),
    field<property, &property::name>("name", 4),
    field<property, &property::nvalue>("nvalue", 8),
    field<property, &property::height>("height", 12),
    field<property, &property::reserved>("reserved", 16),
    field<property, &property::fin>("fin", 18),
};
static_assert(covers(property_fields, 20));

template <std::int16_t Type, auto Member>
std::int16_t& id_at(tm_object_gene_rec_t& object) {
    return static_cast<tm_record_of<Type>&>(object).*Member;
}

constexpr tm_sheet_reference references[] = {  // by object type
    // type          field             where                                                       names
    {tm_type_instance,   "symbol",         id_at<tm_type_instance, &instance::symbol>,         tm_type_symbol,    tm_type_nil, false},
    {tm_type_instance,   "previous_inst",  id_at<tm_type_instance, &instance::previous_inst>,  tm_type_instance,  tm_type_nil, true},
    {tm_type_instance,   "following_inst", id_at<tm_type_instance, &instance::following_inst>, tm_type_instance,  tm_type_nil, true},
    {tm_type_symbol,     "instance",       id_at<tm_type_symbol, &symbol::instance>,           tm_type_instance,  tm_type_nil, true},
    {tm_type_pinpropfam, "net",            id_at<tm_type_pinpropfam, &pinpropfam::net>,        tm_type_net,       tm_type_nil, true},
    {tm_type_segment,    "vertex1",        id_at<tm_type_segment, &segment::vertex1>,          tm_type_vertex_2d, tm_type_pinpropfam, true},
    {tm_type_segment,    "vertex2",        id_at<tm_type_segment, &segment::vertex2>,          tm_type_vertex_2d, tm_type_pinpropfam, true},
    {tm_type_vertex_2d,  "net",            id_at<tm_type_vertex_2d, &vertex::net>,             tm_type_net,       tm_type_nil, true},
};
// clang-format on

constexpr auto reference_order = [](const tm_sheet_reference& each) { return each.object_type; };

}  // namespace

std::span<const tm_sheet_field> tm_layout_of(std::int16_t rectype) {
    // clang-format off
    switch (rectype) {
        case tm_type_instance:     return instance_fields;
        case tm_type_symbol:       return symbol_fields;
        case tm_type_pinpropfam:   return pinpropfam_fields;
        case tm_type_net:          return net_fields;
        case tm_type_segment:      return segment_fields;
        case tm_type_tag:          return tag_fields;
        case tm_type_vertex_2d:    return vertex_fields;
        case tm_type_arc3p_2d:     return arc_fields;
        case tm_type_circle_2d:    return circle_fields;
        case tm_type_grid_2d:      return grid_fields;
        case tm_type_line_2d:      return line_fields;
        case tm_type_polyline5_2d: return polyline5_fields;
        case tm_type_polyline_2d:  return polyline_fields;
        case tm_type_rectangle_2d: return rectangle_fields;
        case tm_type_property_2d:  return property_fields;
        case tm_rec_header:        return header_fields;
        case tm_rec_generic:       return generic_fields;
        case tm_rec_point:         return point_fields;
        case tm_rec_bounds:        return bounds_fields;
        default: break;
    }
    // clang-format on
    if (rectype >= tm_type_main && rectype < tm_type_count) return plain_fields;
    return {};
}

std::span<const tm_sheet_reference> tm_references_of(std::int16_t object_type) {
    const auto found = std::ranges::equal_range(references, object_type, {}, reference_order);
    return {found.begin(), found.end()};
}

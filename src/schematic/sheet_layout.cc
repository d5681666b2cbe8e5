// The rows of sheet files.
#include "schematic/sheet_layout.h"

#include <algorithm>

namespace {

// clang-format off
using header = tm_file_gene_recf_t;
using header_row = lay_rows_of<header, lay_order::high_first>;
constexpr std::array header_rows = {
    header_row::field<&header::software_revision>(0, "software_revision"),
    header_row::field<&header::day>(4, "day"),
    header_row::field<&header::month>(6, "month"),
    header_row::field<&header::year>(8, "year"),
    header_row::field<&header::hour>(10, "hour"),
    header_row::field<&header::minute>(12, "minute"),
    header_row::field<&header::object_id_max>(14, "object_id_max"),
    header_row::field<&header::primary_object>(16, "primary_object"),
    header_row::field<&header::page_obj_id>(18, "page_obj_id"),
    header_row::field<&header::grid_obj_id>(20, "grid_obj_id"),
    header_row::field<&header::check_data_done>(22, "check_data_done"),
    header_row::field<&header::num_errors>(24, "num_errors"),
    header_row::field<&header::dot_width>(26, "dot_width"),
    header_row::field<&header::displayed>(30, "displayed"),
    header_row::field<&header::ptr_to_ar_objindex>(31, "ptr_to_ar_objindex"),
    header_row::field<&header::reserved>(35, "reserved"),
    header_row::field<&header::fin>(36, "fin"),
};
static_assert(lay_fills(header_rows, tm_header_bytes, 0));

using generic = tm_object_gene_rec_t;
using row = lay_rows_of<generic, lay_order::high_first>;
using low_first = lay_rows_of<generic, lay_order::low_first>;
constexpr std::array generic_rows = {
    row::field<&generic::object_id>(0, "object_id"),
    row::field<&generic::father>(2, "father"),
    row::field<&generic::previous>(4, "previous"),
    row::field<&generic::following>(6, "following"),
    row::field<&generic::child1>(8, "child1"),
    row::field<&generic::id_tmp>(10, "id_tmp"),
    row::field<&generic::object_type>(12, "object_type"),
    row::field<&generic::status>(14, "status"),
    row::field<&generic::origin>(16, "origin"),
    row::field<&generic::bounds>(24, "bounds"),
};
static_assert(lay_fills(generic_rows, tm_generic_bytes, 0));

using plain = tm_object_plain_rec_t;
constexpr std::array plain_rows = {
    row::field<&plain::fin>(0, "fin"),
};
static_assert(lay_fills(plain_rows, 2, 0));

using instance = tm_object_instance_rec_t;
constexpr std::array instance_rows = {
    row::field<&instance::rotate>(0, "rotate"),
    row::field<&instance::fliph>(1, "fliph"),
    row::field<&instance::symbol>(2, "symbol"),
    row::field<&instance::n0_version>(4, "n0_version"),
    row::field<&instance::previous_inst>(6, "previous_inst"),
    row::field<&instance::following_inst>(8, "following_inst"),
    row::field<&instance::fin>(10, "fin"),
};
static_assert(lay_fills(instance_rows, 12, 0));

using symbol = tm_object_symbol_rec_t;
constexpr std::array symbol_rows = {
    row::field<&symbol::instance>(0, "instance"),
    row::field<&symbol::path>(2, "path"),
    row::field<&symbol::fin>(6, "fin"),
};
static_assert(lay_fills(symbol_rows, 8, 0));

using pinpropfam = tm_object_pinpropfam_rec_t;
constexpr std::array pinpropfam_rows = {
    row::field<&pinpropfam::dotted>(0, "dotted"),
    row::field<&pinpropfam::reserved>(1, "reserved"),
    row::field<&pinpropfam::net>(2, "net"),
    low_first::field<&pinpropfam::pin_start>(4, "pin_start"),
    row::field<&pinpropfam::pin_end>(6, "pin_end"),
    row::field<&pinpropfam::pin_net_start>(8, "pin_net_start"),
    row::field<&pinpropfam::fin>(10, "fin"),
};
static_assert(lay_fills(pinpropfam_rows, 12, 0));

using net = tm_object_net_rec_t;
constexpr std::array net_rows = {
    row::field<&net::net_index>(0, "net_index"),
    row::field<&net::is_bus>(4, "is_bus"),
    row::field<&net::reserved>(5, "reserved"),
    row::field<&net::bus_start>(6, "bus_start"),
    row::field<&net::bus_end>(8, "bus_end"),
};
static_assert(lay_fills(net_rows, 10, 0));

using segment = tm_object_segment_rec_t;
constexpr std::array segment_rows = {
    row::field<&segment::reserved>(0, "reserved"),
    row::field<&segment::line_color>(2, "line_color"),
    row::field<&segment::line_width>(3, "line_width"),
    row::field<&segment::vertex1>(4, "vertex1"),
    row::field<&segment::vertex2>(6, "vertex2"),
    row::field<&segment::line_style>(8, "line_style"),
    row::field<&segment::fin>(10, "fin"),
};
static_assert(lay_fills(segment_rows, 12, 0));

using tag = tm_object_tag_rec_t;
constexpr std::array tag_rows = {
    row::field<&tag::name>(0, "name"),
    row::field<&tag::nvalue>(4, "nvalue"),
    row::field<&tag::reserved>(8, "reserved"),
    row::field<&tag::fin>(10, "fin"),
};
static_assert(lay_fills(tag_rows, 12, 0));

using vertex = tm_object_vertex_rec_t;
constexpr std::array vertex_rows = {
    row::field<&vertex::dotted>(0, "dotted"),
    row::field<&vertex::reserved>(1, "reserved"),
    row::field<&vertex::net>(2, "net"),
    row::field<&vertex::fin>(4, "fin"),
};
static_assert(lay_fills(vertex_rows, 6, 0));

using arc = tm_object_arc_rec_t;
constexpr std::array arc_rows = {  // the last fields stand in another order than in the record
    row::field<&arc::pt2>(0, "pt2"),
    row::field<&arc::pt3>(8, "pt3"),
    row::field<&arc::center>(16, "center"),
    row::field<&arc::rad>(24, "rad"),
    row::field<&arc::angle1>(28, "angle1"),
    row::field<&arc::angle2>(32, "angle2"),
    row::field<&arc::border_color>(36, "border_color"),
    low_first::field<&arc::border_style>(37, "border_style"),
    row::field<&arc::c_reserved>(39, "c_reserved"),
    row::field<&arc::i_reserved>(40, "i_reserved"),
    row::field<&arc::fin>(42, "fin"),
};
static_assert(lay_fills(arc_rows, 44, 0));

using circle = tm_object_circle_rec_t;
constexpr std::array circle_rows = {
    row::field<&circle::reserved>(0, "reserved"),
    row::field<&circle::border_color>(1, "border_color"),
    row::field<&circle::filled>(2, "filled"),
    row::field<&circle::fill_color>(3, "fill_color"),
    row::field<&circle::rad>(4, "rad"),
    row::field<&circle::border_style>(8, "border_style"),
    row::field<&circle::fin>(10, "fin"),
};
static_assert(lay_fills(circle_rows, 12, 0));

using grid = tm_object_grid_rec_t;
constexpr std::array grid_rows = {
    row::field<&grid::opposite_pt>(0, "opposite_pt"),
    row::field<&grid::step_point>(8, "step_point"),
    row::field<&grid::step_pin>(12, "step_pin"),
    row::field<&grid::grid_on>(16, "grid_on"),
    row::field<&grid::snap_on>(17, "snap_on"),
    row::field<&grid::fin>(18, "fin"),
};
static_assert(lay_fills(grid_rows, 20, 0));

using line = tm_object_line_rec_t;
constexpr std::array line_rows = {
    row::field<&line::reserved>(0, "reserved"),
    row::field<&line::line_color>(2, "line_color"),
    row::field<&line::line_width>(3, "line_width"),
    row::field<&line::pt2>(4, "pt2"),
    row::field<&line::line_style>(12, "line_style"),
    row::field<&line::fin>(14, "fin"),
};
static_assert(lay_fills(line_rows, 16, 0));

using polyline5 = tm_object_polyline5_rec_t;
constexpr std::array polyline5_rows = {
    row::field<&polyline5::line_style>(0, "line_style"),
    row::field<&polyline5::n_points>(2, "n_points"),
    row::field<&polyline5::points>(4, "points"),
    row::field<&polyline5::line_color>(44, "line_color"),
    row::field<&polyline5::reserved>(45, "reserved"),
    row::field<&polyline5::fin>(46, "fin"),
};
static_assert(lay_fills(polyline5_rows, 48, 0));

using polyline = tm_object_polyline_rec_t;
constexpr std::array polyline_rows = {
    row::field<&polyline::line_style>(0, "line_style"),
    row::field<&polyline::n_points>(2, "n_points"),
    row::field<&polyline::points>(4, "points"),
    row::field<&polyline::line_color>(132, "line_color"),
    row::field<&polyline::reserved>(133, "reserved"),
    row::field<&polyline::fin>(134, "fin"),
};
static_assert(lay_fills(polyline_rows, 136, 0));

using rectangle = tm_object_rectangle_rec_t;
constexpr std::array rectangle_rows = {
    row::field<&rectangle::reserved>(0, "reserved"),
    row::field<&rectangle::line_color>(1, "line_color"),
    row::field<&rectangle::filled>(2, "filled"),
    row::field<&rectangle::fill_color>(3, "fill_color"),
    row::field<&rectangle::pt2>(4, "pt2"),
    row::field<&rectangle::line_style>(12, "line_style"),
    row::field<&rectangle::fin>(14, "fin"),
};
static_assert(lay_fills(rectangle_rows, 16, 0));

using property = tm_object_property_rec_t;
constexpr std::array property_rows = {
    row::field<&property::fixed>(0, "fixed"),
    row::field<&property::visible>(1, "visible"),
    row::field<&property::line_color>(2, "line_color"),
    row::field<&property::rotate>(3, "rotate"),
    row::field<&property::name>(4, "name"),
    row::field<&property::nvalue>(8, "nvalue"),
    row::field<&property::height>(12, "height"),
    row::field<&property::reserved>(16, "reserved"),
    row::field<&property::fin>(18, "fin"),
};
static_assert(lay_fills(property_rows, 20, 0));

template <std::int16_t Type, auto Member>
std::int16_t& id_at(generic& object) {
    return static_cast<tm_record_of<Type>&>(object).*Member;
}

constexpr tm_sheet_reference references[] = {  // by object type
    // type          field             where                                                       names
    {tm_type_instance,   "symbol",         id_at<tm_type_instance, &instance::symbol>,         tm_type_symbol,    tm_type_nil},
    {tm_type_instance,   "previous_inst",  id_at<tm_type_instance, &instance::previous_inst>,  tm_type_instance,  tm_type_nil},
    {tm_type_instance,   "following_inst", id_at<tm_type_instance, &instance::following_inst>, tm_type_instance,  tm_type_nil},
    {tm_type_symbol,     "instance",       id_at<tm_type_symbol, &symbol::instance>,           tm_type_instance,  tm_type_nil},
    {tm_type_pinpropfam, "net",            id_at<tm_type_pinpropfam, &pinpropfam::net>,        tm_type_net,       tm_type_nil},
    {tm_type_segment,    "vertex1",        id_at<tm_type_segment, &segment::vertex1>,          tm_type_vertex_2d, tm_type_pinpropfam},
    {tm_type_segment,    "vertex2",        id_at<tm_type_segment, &segment::vertex2>,          tm_type_vertex_2d, tm_type_pinpropfam},
    {tm_type_vertex_2d,  "net",            id_at<tm_type_vertex_2d, &vertex::net>,             tm_type_net,       tm_type_nil},
};
// clang-format on

// The part of an object's type: what its rows cover.
template <const auto& Rows>
constexpr lay_layout<generic> part(std::string_view name) {
    return {name, Rows.back().end(), lay_only<Rows>};
}

constexpr auto parts = [] {
    std::array<lay_layout<generic>, tm_type_count> all{};
    all.fill(part<plain_rows>("plain"));
    all[tm_type_instance] = part<instance_rows>("instance");
    all[tm_type_symbol] = part<symbol_rows>("symbol");
    all[tm_type_pinpropfam] = part<pinpropfam_rows>("pinpropfam");
    all[tm_type_net] = part<net_rows>("net");
    all[tm_type_segment] = part<segment_rows>("segment");
    all[tm_type_tag] = part<tag_rows>("tag");
    all[tm_type_vertex_2d] = part<vertex_rows>("vertex");
    all[tm_type_arc3p_2d] = part<arc_rows>("arc");
    all[tm_type_circle_2d] = part<circle_rows>("circle");
    all[tm_type_grid_2d] = part<grid_rows>("grid");
    all[tm_type_line_2d] = part<line_rows>("line");
    all[tm_type_polyline5_2d] = part<polyline5_rows>("polyline5");
    all[tm_type_polyline_2d] = part<polyline_rows>("polyline");
    all[tm_type_rectangle_2d] = part<rectangle_rows>("rectangle");
    all[tm_type_property_2d] = part<property_rows>("property");
    return all;
}();

constexpr auto reference_order = [](const tm_sheet_reference& each) { return each.object_type; };

}  // namespace

constexpr lay_layout<header> tm_header_layout{"header", tm_header_bytes, lay_only<header_rows>};
constexpr lay_layout<generic> tm_generic_layout{"generic", tm_generic_bytes, lay_only<generic_rows>};

const lay_layout<generic>& tm_part_layout(std::int16_t object_type) {
    return parts[static_cast<std::size_t>(object_type)];
}

std::span<const tm_sheet_reference> tm_references_of(std::int16_t object_type) {
    const auto found = std::ranges::equal_range(references, object_type, {}, reference_order);
    return {found.begin(), found.end()};
}

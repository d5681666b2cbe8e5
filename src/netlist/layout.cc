// The rows of the design file.
#include "netlist/layout.h"

#include <array>

namespace {

// ---- the columns of a row

constexpr lay_range own_place{lay_bound::place, 0, 0, nullptr};
constexpr lay_range within(std::int32_t lowest, std::int32_t highest) {
    return {lay_bound::fixed, lowest, highest, nullptr};
}
constexpr lay_range one_of(const std::int32_t& counter) { return {lay_bound::counter, 1, 0, &counter}; }
constexpr lay_range one_or_none(const std::int32_t& counter) { return {lay_bound::counter, 0, 0, &counter}; }

constexpr auto a_string = one_of(yx_sext.max_string_cur);
constexpr auto a_string_or_none = one_or_none(yx_sext.max_string_cur);
constexpr lay_range a_count = one_or_none(yx_sext.max_index);
constexpr lay_range a_name_count = within(0, yx_max_names);

template <typename Record>
using rows_of = lay_rows_of<Record, lay_order::low_first>;
constexpr std::size_t padding = 3;  // between fields, as a 32-bit machine aligns them

// ---- header and property names

// clang-format off
using header = yx_general_info_record_t;
constexpr std::array header_rows = {
    rows_of<header>::field<&header::day>(0, "day"),
    rows_of<header>::field<&header::month>(2, "month"),
    rows_of<header>::field<&header::year>(4, "year"),
    rows_of<header>::field<&header::software_revision>(8, "software_revision"),
    rows_of<header>::field<&header::nbof_prop_instance>(12, "nbof_prop_instance", a_name_count),
    rows_of<header>::field<&header::nbof_prop_pin>(16, "nbof_prop_pin", a_name_count),
    rows_of<header>::field<&header::nbof_prop_net>(20, "nbof_prop_net", a_name_count),
    rows_of<header>::field<&header::nbof_char>(24, "nbof_char", a_count),
    rows_of<header>::field<&header::nbof_string>(28, "nbof_string", a_count),
    rows_of<header>::field<&header::nbof_prop>(32, "nbof_prop", a_count),
    rows_of<header>::field<&header::nbof_instance>(36, "nbof_instance", a_count),
    rows_of<header>::field<&header::nbof_pin>(40, "nbof_pin", a_count),
    rows_of<header>::field<&header::nbof_net>(44, "nbof_net", a_count),
    rows_of<header>::field<&header::nbof_net_child>(48, "nbof_net_child", a_count),
    rows_of<header>::field<&header::nbof_pinm>(52, "nbof_pinm", a_count),
    rows_of<header>::field<&header::nbof_macro>(56, "nbof_macro", a_count),
    rows_of<header>::field<&header::time_step>(60, "time_step"),
    rows_of<header>::field<&header::num_errors>(64, "num_errors", within(0, INT16_MAX)),
    rows_of<header>::field<&header::num_warnings>(66, "num_warnings", within(0, INT16_MAX)),
};
static_assert(lay_fills(header_rows, yxl_header_bytes, padding));

using names = yx_prop_type_record_t;
constexpr lay_range a_text_length = within(0, tm_string_max);
constexpr std::array name_rows = {
    rows_of<names>::field<&names::name, &tm_string_record_t::len>(0, "name", a_text_length),
    rows_of<names>::field<&names::name, &tm_string_record_t::char_>(4, "name text"),
    rows_of<names>::field<&names::prop_type, &tm_string_record_t::len>(208, "prop_type", a_text_length),
    rows_of<names>::field<&names::prop_type, &tm_string_record_t::char_>(212, "prop_type text"),
};
static_assert(lay_fills(name_rows, yxl_name_entry_bytes, padding));

// ---- strings and property values

using string = yx_string_record_t;
constexpr std::array string_rows = {
    rows_of<string>::field<&string::index>(0, "index", one_or_none(yx_sext.max_char_cur)),
    rows_of<string>::slot(4, "charp"),
    rows_of<string>::field<&string::len>(8, "len", within(0, INT8_MAX)),
};
static_assert(lay_fills(string_rows, yxl_string_bytes, padding));

using prop = yx_prop_record_t;
constexpr std::array prop_rows = {
    rows_of<prop>::field<&prop::prop_type>(0, "prop_type", within(YX_PSTRING, YX_PREAL)),
};
constexpr std::array prop_string_rows = {rows_of<prop>::field<&prop::valuec>(4, "valuec", a_string_or_none)};
constexpr std::array prop_integer_rows = {rows_of<prop>::field<&prop::valuei>(4, "valuei")};
constexpr std::array prop_time_rows = {rows_of<prop>::field<&prop::valuet>(4, "valuet")};
constexpr std::array prop_real_rows = {rows_of<prop>::field<&prop::valuer>(4, "valuer")};
static_assert(lay_fits(lay_in_file_order(prop_rows, prop_string_rows), yxl_prop_bytes, padding));
static_assert(lay_fills(lay_in_file_order(prop_rows, prop_integer_rows), yxl_prop_bytes, padding));
static_assert(lay_fills(lay_in_file_order(prop_rows, prop_time_rows), yxl_prop_bytes, padding));
static_assert(lay_fills(lay_in_file_order(prop_rows, prop_real_rows), yxl_prop_bytes, padding));

// ---- instances and pins

constexpr lay_range a_timing_index = within(0, yx_timing_indexes);
constexpr lay_range a_prop_or_none = one_or_none(yx_sext.max_prop_cur);

using inst = yx_inst_record_t;
constexpr std::array inst_rows = {
    rows_of<inst>::field<&inst::self>(0, "self", own_place),
    rows_of<inst>::field<&inst::object_id>(4, "object_id"),
    rows_of<inst>::field<&inst::status>(6, "status"),
    rows_of<inst>::field<&inst::timing_index>(8, "timing_index", a_timing_index),
    rows_of<inst>::slot(12, "user_data_area"),
    rows_of<inst>::field<&inst::sim_path>(16, "sim_path", a_string),
    rows_of<inst>::field<&inst::file_path>(20, "file_path", a_string_or_none),
    rows_of<inst>::field<&inst::nb_of_pin>(24, "nb_of_pin", within(0, INT16_MAX)),
    rows_of<inst>::field<&inst::first_pin_ind>(28, "first_pin_ind", one_or_none(yx_sext.max_pin_cur)),
    rows_of<inst>::slot(32, "first_pin_ptr"),
    rows_of<inst>::field<&inst::nb_of_property>(36, "nb_of_property", one_or_none(yx_sext.nbof_property_instance)),
    rows_of<inst>::field<&inst::first_prop>(40, "first_prop", a_prop_or_none),
};
static_assert(lay_fills(inst_rows, yxl_inst_bytes, padding));

using pin = yx_pin_record_t;
constexpr lay_range a_pin_or_none = one_or_none(yx_sext.max_pin_cur);
constexpr std::array pin_rows = {
    rows_of<pin>::field<&pin::self>(0, "self", own_place),
    rows_of<pin>::field<&pin::object_id>(4, "object_id"),
    rows_of<pin>::field<&pin::status>(6, "status"),
    rows_of<pin>::field<&pin::io_type>(8, "io_type"),
    rows_of<pin>::slot(12, "pin_hdler"),
    rows_of<pin>::field<&pin::pin_hdl_priority>(16, "pin_hdl_priority"),
    rows_of<pin>::slot(32, "last_event"),
    rows_of<pin>::field<&pin::rise>(36, "rise"),
    rows_of<pin>::field<&pin::fall>(48, "fall"),
    rows_of<pin>::field<&pin::drive_array>(60, "drive_array"),
    rows_of<pin>::field<&pin::sim_path>(68, "sim_path", a_string),
    rows_of<pin>::field<&pin::instance_ind>(72, "instance_ind", one_of(yx_sext.max_inst_cur)),
    rows_of<pin>::slot(76, "instance_ptr"),
    rows_of<pin>::slot(80, "next_pin_inst_ptr"),
    rows_of<pin>::field<&pin::net_ind>(84, "net_ind", one_of(yx_sext.max_net_cur)),
    rows_of<pin>::slot(88, "net_ptr"),
    rows_of<pin>::field<&pin::next_pin_in_ind>(92, "next_pin_in_ind", a_pin_or_none),
    rows_of<pin>::slot(96, "next_pin_in_ptr"),
    rows_of<pin>::field<&pin::next_pin_out_ind>(100, "next_pin_out_ind", a_pin_or_none),
    rows_of<pin>::slot(104, "next_pin_out_ptr"),
    rows_of<pin>::field<&pin::pin_start>(108, "pin_start"),
    rows_of<pin>::field<&pin::pin_end>(110, "pin_end"),
    rows_of<pin>::field<&pin::pin_net_start>(112, "pin_net_start"),
    rows_of<pin>::field<&pin::nb_of_property>(114, "nb_of_property", one_or_none(yx_sext.nbof_property_pin)),
    rows_of<pin>::field<&pin::first_prop>(116, "first_prop", a_prop_or_none),
};
using pin_state = yx_pin_signal_state_rec;
using state = yx_signal_state_rec;
constexpr std::array pin_bit_rows = {
    rows_of<pin>::field<&pin::pin_state, &pin_state::std, &state::state>(20, "pin_state.state"),
    rows_of<pin>::field<&pin::pin_state, &pin_state::std, &state::time>(24, "pin_state.time"),
    rows_of<pin>::field<&pin::pin_state, &pin_state::std, &state::fixed>(28, "pin_state.fixed"),
};
constexpr std::array pin_bus_rows = {rows_of<pin>::slot(20, "pin_state.bus")};
static_assert(lay_fills(lay_in_file_order(pin_rows, pin_bit_rows), yxl_pin_bytes, padding));

// ---- nets and net children

using net = yx_net_record_t;
constexpr std::array net_rows = {
    rows_of<net>::field<&net::self>(0, "self", own_place),
    rows_of<net>::field<&net::object_id>(4, "object_id"),
    rows_of<net>::field<&net::net_type>(6, "net_type", within(YX_TSTANDARD, YX_TSTD_BUS)),
    rows_of<net>::field<&net::status>(8, "status"),
    rows_of<net>::field<&net::net_kind>(10, "net_kind"),
    rows_of<net>::field<&net::name>(12, "name", a_string_or_none),
    rows_of<net>::field<&net::sim_path>(16, "sim_path", a_string),
    rows_of<net>::field<&net::nb_of_child>(20, "nb_of_child", one_or_none(yx_sext.max_net_child_cur)),
    rows_of<net>::field<&net::first_child>(24, "first_child", one_or_none(yx_sext.max_net_child_cur)),
    rows_of<net>::slot(28, "first_child_ptr"),
    rows_of<net>::field<&net::nb_of_property>(32, "nb_of_property", one_or_none(yx_sext.nbof_property_net)),
    rows_of<net>::field<&net::first_prop>(36, "first_prop", a_prop_or_none),
    rows_of<net>::field<&net::nb_pin_in>(40, "nb_pin_in", within(0, INT16_MAX)),
    rows_of<net>::field<&net::first_pin_in_ind>(44, "first_pin_in_ind", a_pin_or_none),
    rows_of<net>::slot(48, "first_pin_in_ptr"),
    rows_of<net>::field<&net::nb_pin_out>(52, "nb_pin_out", within(0, INT16_MAX)),
    rows_of<net>::field<&net::first_pin_out_ind>(56, "first_pin_out_ind", a_pin_or_none),
    rows_of<net>::slot(60, "first_pin_out_ptr"),
};
using forms = decltype(net::UU);
using u1 = yx_net_u1_t;
using u2 = yx_net_u2_t;
constexpr lay_range a_net_or_none = one_or_none(yx_sext.max_net_cur);
constexpr std::array net_u1_rows = {
    rows_of<net>::field<&net::UU, &forms::U1, &u1::state_init>(64, "state_init", within(0, 19)),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::cur_state, &state::state>(68, "cur_state.state"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::cur_state, &state::time>(72, "cur_state.time"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::cur_state, &state::fixed>(76, "cur_state.fixed"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::old_state, &state::state>(80, "old_state.state"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::old_state, &state::time>(84, "old_state.time"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::old_state, &state::fixed>(88, "old_state.fixed"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::rise>(92, "rise"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::fall>(104, "fall"),
    rows_of<net>::slot(116, "break_signal"),
    rows_of<net>::slot(120, "list_state"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::bus>(124, "bus", a_net_or_none),
    rows_of<net>::slot(128, "bus_ptr"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::posinbus>(132, "posinbus"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::first_sub_net>(136, "first_sub_net", a_net_or_none),
    rows_of<net>::slot(140, "first_sub_net_ptr"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::father_net>(144, "father_net", a_net_or_none),
    rows_of<net>::slot(148, "father_net_ptr"),
    rows_of<net>::field<&net::UU, &forms::U1, &u1::next_sub_net>(152, "next_sub_net", a_net_or_none),
    rows_of<net>::slot(156, "next_sub_net_ptr"),
};
constexpr std::array net_u2_rows = {
    rows_of<net>::field<&net::UU, &forms::U2, &u2::net_bus_start>(64, "net_bus_start"),
    rows_of<net>::field<&net::UU, &forms::U2, &u2::net_bus_end>(66, "net_bus_end"),
    rows_of<net>::field<&net::UU, &forms::U2, &u2::netind_start>(68, "netind_start", one_of(yx_sext.max_net_cur)),
    rows_of<net>::slot(72, "netind_start_ptr"),
};
static_assert(lay_fills(lay_in_file_order(net_rows, net_u1_rows), yxl_net_bytes, padding));
static_assert(lay_fits(lay_in_file_order(net_rows, net_u2_rows), yxl_net_bytes, padding));

using child = yx_net_child_record_t;
constexpr std::array net_child_rows = {
    rows_of<child>::field<&child::self>(0, "self", own_place),
    rows_of<child>::field<&child::sim_path>(4, "sim_path", a_string),
    rows_of<child>::field<&child::object_id>(8, "object_id"),
    rows_of<child>::field<&child::name>(12, "name", a_string_or_none),
    rows_of<child>::field<&child::net_kind>(16, "net_kind"),
    rows_of<child>::field<&child::next_child>(20, "next_child", one_or_none(yx_sext.max_net_child_cur)),
    rows_of<child>::slot(24, "next_child_ptr"),
};
static_assert(lay_fills(net_child_rows, yxl_net_child_bytes, padding));

// ---- macros and macro pins

using macro = yx_macro_record_t;
constexpr std::array macro_rows = {
    rows_of<macro>::field<&macro::self>(0, "self", own_place),
    rows_of<macro>::field<&macro::object_id>(4, "object_id"),
    rows_of<macro>::field<&macro::status>(6, "status"),
    rows_of<macro>::field<&macro::timing_index>(8, "timing_index", a_timing_index),
    rows_of<macro>::field<&macro::sim_path>(12, "sim_path", a_string_or_none),
    rows_of<macro>::field<&macro::file_path>(16, "file_path", a_string_or_none),
    rows_of<macro>::field<&macro::nb_of_pin>(20, "nb_of_pin", within(0, INT16_MAX)),
    rows_of<macro>::field<&macro::first_pin_ind>(24, "first_pin_ind", one_or_none(yx_sext.max_pinm_cur)),
    rows_of<macro>::slot(28, "first_pin_ptr"),
    rows_of<macro>::field<&macro::nb_of_property>(32, "nb_of_property", one_or_none(yx_sext.nbof_property_instance)),
    rows_of<macro>::field<&macro::first_prop>(36, "first_prop", a_prop_or_none),
};
static_assert(lay_fills(macro_rows, yxl_macro_bytes, padding));

using pinm = yx_pinm_record_t;
constexpr std::array pinm_rows = {
    rows_of<pinm>::field<&pinm::self>(0, "self", own_place),
    rows_of<pinm>::field<&pinm::object_id>(4, "object_id"),
    rows_of<pinm>::field<&pinm::status>(6, "status"),
    rows_of<pinm>::field<&pinm::sim_path>(8, "sim_path", a_string_or_none),
    rows_of<pinm>::field<&pinm::macro_ind>(12, "macro_ind", one_or_none(yx_sext.max_macro_cur)),
    rows_of<pinm>::slot(16, "macro_ptr"),
    rows_of<pinm>::field<&pinm::net_ind>(20, "net_ind", a_net_or_none),
    rows_of<pinm>::slot(24, "net_ptr"),
    rows_of<pinm>::field<&pinm::pin_start>(28, "pin_start"),
    rows_of<pinm>::field<&pinm::pin_end>(30, "pin_end"),
    rows_of<pinm>::field<&pinm::pin_net_start>(32, "pin_net_start"),
    rows_of<pinm>::field<&pinm::nb_of_property>(34, "nb_of_property", one_or_none(yx_sext.nbof_property_pin)),
    rows_of<pinm>::field<&pinm::first_prop>(36, "first_prop", a_prop_or_none),
};
static_assert(lay_fills(pinm_rows, yxl_pinm_bytes, padding));
// clang-format on

// ---- forms

template <std::int16_t Type>
bool is_prop_type(const prop& record) {
    return record.prop_type == Type;
}
bool spans_bits(const pin& record) { return record.pin_end != 0; }
bool is_one_bit(const pin& record) { return record.pin_end == 0; }
bool is_bus(const net& record) { return record.net_type == YX_TSTD_BUS; }
bool is_no_bus(const net& record) {
    return record.net_type == YX_TSTANDARD || record.net_type == YX_TSUB_NET;
}

constexpr lay_form<prop> prop_forms[] = {
    {lay_always<prop>, prop_rows},
    {is_prop_type<YX_PSTRING>, prop_string_rows},
    {is_prop_type<YX_PINTEGER>, prop_integer_rows},
    {is_prop_type<YX_PTIME>, prop_time_rows},
    {is_prop_type<YX_PREAL>, prop_real_rows},
};
constexpr lay_form<pin> pin_forms[] = {
    {lay_always<pin>, pin_rows},
    {is_one_bit, pin_bit_rows},
    {spans_bits, pin_bus_rows},
};
constexpr lay_form<net> net_forms[] = {
    {lay_always<net>, net_rows},
    {is_no_bus, net_u1_rows},
    {is_bus, net_u2_rows},
};

}  // namespace

constexpr lay_layout<header> yxl_header{"header", yxl_header_bytes, lay_only<header_rows>};
constexpr lay_layout<names> yxl_prop_instance_names{"instance property names", yxl_name_entry_bytes,
                                                    lay_only<name_rows>};
constexpr lay_layout<names> yxl_prop_pin_names{"pin property names", yxl_name_entry_bytes,
                                               lay_only<name_rows>};
constexpr lay_layout<names> yxl_prop_net_names{"net property names", yxl_name_entry_bytes,
                                               lay_only<name_rows>};
constexpr lay_layout<string> yxl_strings{"strings", yxl_string_bytes, lay_only<string_rows>};
constexpr lay_layout<prop> yxl_props{"property values", yxl_prop_bytes, prop_forms};
constexpr lay_layout<inst> yxl_insts{"instances", yxl_inst_bytes, lay_only<inst_rows>};
constexpr lay_layout<pin> yxl_pins{"pins", yxl_pin_bytes, pin_forms};
constexpr lay_layout<net> yxl_nets{"nets", yxl_net_bytes, net_forms};
constexpr lay_layout<child> yxl_net_children{"net children", yxl_net_child_bytes, lay_only<net_child_rows>};
constexpr lay_layout<macro> yxl_macros{"macros", yxl_macro_bytes, lay_only<macro_rows>};
constexpr lay_layout<pinm> yxl_pinms{"macro pins", yxl_pinm_bytes, lay_only<pinm_rows>};

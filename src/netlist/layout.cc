#include "netlist/layout.h"

#include <array>

namespace {

using store = yx_defref_exp_rec_t;

// ---- the columns of a row

constexpr yxl_range any{};
constexpr yxl_range own_place{yxl_bound::place, 0, 0, nullptr};
constexpr yxl_range within(std::int32_t lowest, std::int32_t highest) {
    return {yxl_bound::fixed, lowest, highest, nullptr};
}
constexpr yxl_range one_of(std::int32_t store::*counter) { return {yxl_bound::counter, 1, 0, counter}; }
constexpr yxl_range one_or_none(std::int32_t store::*counter) { return {yxl_bound::counter, 0, 0, counter}; }

constexpr auto a_string = one_of(&store::max_string_cur);
constexpr auto a_string_or_none = one_or_none(&store::max_string_cur);
constexpr yxl_range a_count = within(0, yx_max_index);
constexpr yxl_range a_name_count = within(0, yx_max_names);

template <typename Record, auto... Path>
void get_field(const std::uint8_t* image, std::size_t offset, Record& record) {
    auto& field = (record.*....*Path);
    using value_t = std::remove_reference_t<decltype(field)>;
    if constexpr (std::is_array_v<value_t>) {
        using element_t = std::remove_extent_t<value_t>;
        for (std::size_t i = 0; i < std::extent_v<value_t>; ++i)
            field[i] = yxl_get_value<element_t>(image + offset + i * sizeof(element_t));
    } else {
        field = yxl_get_value<value_t>(image + offset);
    }
}

template <typename Record, auto... Path>
void put_field(const Record& record, std::size_t offset, std::uint8_t* image) {
    const auto& field = (record.*....*Path);
    using value_t = std::remove_cvref_t<decltype(field)>;
    if constexpr (std::is_array_v<value_t>) {
        using element_t = std::remove_extent_t<value_t>;
        for (std::size_t i = 0; i < std::extent_v<value_t>; ++i)
            yxl_put_value(field[i], image + offset + i * sizeof(element_t));
    } else {
        yxl_put_value(field, image + offset);
    }
}

template <typename Record, auto... Path>
std::int32_t field_value(const Record& record) {
    const auto& field = (record.*....*Path);
    if constexpr (std::is_array_v<std::remove_cvref_t<decltype(field)>>)
        return static_cast<std::int32_t>(field[0]);
    else
        return static_cast<std::int32_t>(field);
}

// Builds rows of one record kind; the offset is a template argument so that a row is three plain procedures.
template <typename Record>
struct rows_of {
    template <std::size_t Offset, auto... Path>
    static constexpr yxl_row<Record> field(std::string_view name, yxl_range range = any) {
        using value_t = std::remove_reference_t<decltype((std::declval<Record&>().*....*Path))>;
        constexpr std::size_t width = sizeof(std::remove_extent_t<value_t>);
        return {name,
                Offset,
                width,
                sizeof(value_t) / width,
                [](const std::uint8_t* image, Record& record) {
                    get_field<Record, Path...>(image, Offset, record);
                },
                [](const Record& record, std::uint8_t* image) {
                    put_field<Record, Path...>(record, Offset, image);
                },
                field_value<Record, Path...>,
                range};
    }

    template <std::size_t Offset>
    static constexpr yxl_row<Record> slot(std::string_view name) {
        return {
            name,    Offset, 4, 1, [](const std::uint8_t*, Record&) {}, [](const Record&, std::uint8_t*) {},
            nullptr, any};
    }

    static bool always(const Record&) { return true; }
};

// ---- proofs

template <typename Record>
constexpr std::size_t end_of(const yxl_row<Record>& row) {
    return row.offset + row.width * row.count;
}

// The rows stand in the order of the file, aligned on their width, without overlap, with no more than padding
// between them, and end within the record.
template <typename Record, std::size_t Count>
constexpr bool rows_fit(const std::array<yxl_row<Record>, Count>& rows, std::size_t begin, std::size_t end) {
    std::size_t at = begin;
    for (const auto& row : rows) {
        if (row.offset < at || row.offset - at >= 4 || row.offset % row.width != 0) return false;
        at = end_of(row);
    }
    return at <= end;
}

template <typename Record, std::size_t Count>
constexpr bool rows_fill(const std::array<yxl_row<Record>, Count>& rows, std::size_t begin, std::size_t end) {
    return rows_fit(rows, begin, end) && end_of(rows.back()) + 4 > end;
}

// Two groups of rows, the second lying in a gap of the first.
template <typename Record, std::size_t Outer, std::size_t Inner>
constexpr std::array<yxl_row<Record>, Outer + Inner> in_file_order(
    const std::array<yxl_row<Record>, Outer>& outer, const std::array<yxl_row<Record>, Inner>& inner) {
    std::array<yxl_row<Record>, Outer + Inner> merged{};
    std::size_t count = 0;
    for (const auto& row : outer)
        if (row.offset < inner.front().offset) merged[count++] = row;
    for (const auto& row : inner) merged[count++] = row;
    for (const auto& row : outer)
        if (row.offset >= inner.front().offset) merged[count++] = row;
    return merged;
}

// ---- header and property names

// clang-format off
using header = yx_general_info_record_t;
constexpr std::array header_rows = {
    rows_of<header>::field< 0, &header::day>("day"),
    rows_of<header>::field< 2, &header::month>("month"),
    rows_of<header>::field< 4, &header::year>("year"),
    rows_of<header>::field< 8, &header::software_revision>("software_revision"),
    rows_of<header>::field<12, &header::nbof_prop_instance>("nbof_prop_instance", a_name_count),
    rows_of<header>::field<16, &header::nbof_prop_pin>("nbof_prop_pin", a_name_count),
    rows_of<header>::field<20, &header::nbof_prop_net>("nbof_prop_net", a_name_count),
    rows_of<header>::field<24, &header::nbof_char>("nbof_char", a_count),
    rows_of<header>::field<28, &header::nbof_string>("nbof_string", a_count),
    rows_of<header>::field<32, &header::nbof_prop>("nbof_prop", a_count),
    rows_of<header>::field<36, &header::nbof_instance>("nbof_instance", a_count),
    rows_of<header>::field<40, &header::nbof_pin>("nbof_pin", a_count),
    rows_of<header>::field<44, &header::nbof_net>("nbof_net", a_count),
    rows_of<header>::field<48, &header::nbof_net_child>("nbof_net_child", a_count),
    rows_of<header>::field<52, &header::nbof_pinm>("nbof_pinm", a_count),
    rows_of<header>::field<56, &header::nbof_macro>("nbof_macro", a_count),
    rows_of<header>::field<60, &header::time_step>("time_step"),
    rows_of<header>::field<64, &header::num_errors>("num_errors", within(0, INT16_MAX)),
    rows_of<header>::field<66, &header::num_warnings>("num_warnings", within(0, INT16_MAX)),
};
static_assert(rows_fill(header_rows, 0, yxl_header_bytes));

using names = yx_prop_type_record_t;
constexpr yxl_range a_text_length = within(0, tm_string_max);
constexpr std::array name_rows = {
    rows_of<names>::field<  0, &names::name, &tm_string_record_t::len>("name", a_text_length),
    rows_of<names>::field<  4, &names::name, &tm_string_record_t::char_>("name text"),
    rows_of<names>::field<208, &names::prop_type, &tm_string_record_t::len>("prop_type", a_text_length),
    rows_of<names>::field<212, &names::prop_type, &tm_string_record_t::char_>("prop_type text"),
};
static_assert(rows_fill(name_rows, 0, yxl_name_entry_bytes));

// ---- strings and property values

using string = yx_string_record_t;
constexpr std::array string_rows = {
    rows_of<string>::field<0, &string::index>("index", one_or_none(&store::max_char_cur)),
    rows_of<string>::slot <4>("charp"),
    rows_of<string>::field<8, &string::len>("len", within(0, INT8_MAX)),
};
static_assert(rows_fill(string_rows, 0, yxl_string_bytes));

using prop = yx_prop_record_t;
constexpr std::array prop_rows = {
    rows_of<prop>::field<0, &prop::prop_type>("prop_type", within(YX_PSTRING, YX_PREAL)),
};
constexpr std::array prop_string_rows = {rows_of<prop>::field<4, &prop::valuec>("valuec", a_string_or_none)};
constexpr std::array prop_integer_rows = {rows_of<prop>::field<4, &prop::valuei>("valuei")};
constexpr std::array prop_time_rows = {rows_of<prop>::field<4, &prop::valuet>("valuet")};
constexpr std::array prop_real_rows = {rows_of<prop>::field<4, &prop::valuer>("valuer")};
static_assert(rows_fit(in_file_order(prop_rows, prop_string_rows), 0, yxl_prop_bytes));
static_assert(rows_fill(in_file_order(prop_rows, prop_integer_rows), 0, yxl_prop_bytes));
static_assert(rows_fill(in_file_order(prop_rows, prop_time_rows), 0, yxl_prop_bytes));
static_assert(rows_fill(in_file_order(prop_rows, prop_real_rows), 0, yxl_prop_bytes));

// ---- instances and pins

constexpr yxl_range a_timing_index = within(0, yx_timing_indexes);
constexpr yxl_range a_prop_or_none = one_or_none(&store::max_prop_cur);

using inst = yx_inst_record_t;
constexpr std::array inst_rows = {
    rows_of<inst>::field< 0, &inst::self>("self", own_place),
    rows_of<inst>::field< 4, &inst::object_id>("object_id"),
    rows_of<inst>::field< 6, &inst::status>("status"),
    rows_of<inst>::field< 8, &inst::timing_index>("timing_index", a_timing_index),
    rows_of<inst>::slot <12>("user_data_area"),
    rows_of<inst>::field<16, &inst::sim_path>("sim_path", a_string),
    rows_of<inst>::field<20, &inst::file_path>("file_path", a_string_or_none),
    rows_of<inst>::field<24, &inst::nb_of_pin>("nb_of_pin", within(0, INT16_MAX)),
    rows_of<inst>::field<28, &inst::first_pin_ind>("first_pin_ind", one_or_none(&store::max_pin_cur)),
    rows_of<inst>::slot <32>("first_pin_ptr"),
    rows_of<inst>::field<36, &inst::nb_of_property>("nb_of_property", one_or_none(&store::nbof_property_instance)),
    rows_of<inst>::field<40, &inst::first_prop>("first_prop", a_prop_or_none),
};
static_assert(rows_fill(inst_rows, 0, yxl_inst_bytes));

using pin = yx_pin_record_t;
constexpr yxl_range a_pin_or_none = one_or_none(&store::max_pin_cur);
constexpr std::array pin_rows = {
    rows_of<pin>::field<  0, &pin::self>("self", own_place),
    rows_of<pin>::field<  4, &pin::object_id>("object_id"),
    rows_of<pin>::field<  6, &pin::status>("status"),
    rows_of<pin>::field<  8, &pin::io_type>("io_type"),
    rows_of<pin>::slot < 12>("pin_hdler"),
    rows_of<pin>::field< 16, &pin::pin_hdl_priority>("pin_hdl_priority"),
    rows_of<pin>::slot < 32>("last_event"),
    rows_of<pin>::field< 36, &pin::rise>("rise"),
    rows_of<pin>::field< 48, &pin::fall>("fall"),
    rows_of<pin>::field< 60, &pin::drive_array>("drive_array"),
    rows_of<pin>::field< 68, &pin::sim_path>("sim_path", a_string),
    rows_of<pin>::field< 72, &pin::instance_ind>("instance_ind", one_of(&store::max_inst_cur)),
    rows_of<pin>::slot < 76>("instance_ptr"),
    rows_of<pin>::slot < 80>("next_pin_inst_ptr"),
    rows_of<pin>::field< 84, &pin::net_ind>("net_ind", one_of(&store::max_net_cur)),
    rows_of<pin>::slot < 88>("net_ptr"),
    rows_of<pin>::field< 92, &pin::next_pin_in_ind>("next_pin_in_ind", a_pin_or_none),
    rows_of<pin>::slot < 96>("next_pin_in_ptr"),
    rows_of<pin>::field<100, &pin::next_pin_out_ind>("next_pin_out_ind", a_pin_or_none),
    rows_of<pin>::slot <104>("next_pin_out_ptr"),
    rows_of<pin>::field<108, &pin::pin_start>("pin_start"),
    rows_of<pin>::field<110, &pin::pin_end>("pin_end"),
    rows_of<pin>::field<112, &pin::pin_net_start>("pin_net_start"),
    rows_of<pin>::field<114, &pin::nb_of_property>("nb_of_property", one_or_none(&store::nbof_property_pin)),
    rows_of<pin>::field<116, &pin::first_prop>("first_prop", a_prop_or_none),
};
using pin_state = yx_pin_signal_state_rec;
using state = yx_signal_state_rec;
constexpr std::array pin_bit_rows = {
    rows_of<pin>::field<20, &pin::pin_state, &pin_state::std, &state::state>("pin_state.state"),
    rows_of<pin>::field<24, &pin::pin_state, &pin_state::std, &state::time>("pin_state.time"),
    rows_of<pin>::field<28, &pin::pin_state, &pin_state::std, &state::fixed>("pin_state.fixed"),
};
constexpr std::array pin_bus_rows = {rows_of<pin>::slot<20>("pin_state.bus")};
static_assert(rows_fill(in_file_order(pin_rows, pin_bit_rows), 0, yxl_pin_bytes));

// ---- nets and net children

using net = yx_net_record_t;
constexpr std::array net_rows = {
    rows_of<net>::field< 0, &net::self>("self", own_place),
    rows_of<net>::field< 4, &net::object_id>("object_id"),
    rows_of<net>::field< 6, &net::net_type>("net_type", within(YX_TSTANDARD, YX_TSTD_BUS)),
    rows_of<net>::field< 8, &net::status>("status"),
    rows_of<net>::field<10, &net::net_kind>("net_kind"),
    rows_of<net>::field<12, &net::name>("name", a_string_or_none),
    rows_of<net>::field<16, &net::sim_path>("sim_path", a_string),
    rows_of<net>::field<20, &net::nb_of_child>("nb_of_child", one_or_none(&store::max_net_child_cur)),
    rows_of<net>::field<24, &net::first_child>("first_child", one_or_none(&store::max_net_child_cur)),
    rows_of<net>::slot <28>("first_child_ptr"),
    rows_of<net>::field<32, &net::nb_of_property>("nb_of_property", one_or_none(&store::nbof_property_net)),
    rows_of<net>::field<36, &net::first_prop>("first_prop", a_prop_or_none),
    rows_of<net>::field<40, &net::nb_pin_in>("nb_pin_in", within(0, INT16_MAX)),
    rows_of<net>::field<44, &net::first_pin_in_ind>("first_pin_in_ind", a_pin_or_none),
    rows_of<net>::slot <48>("first_pin_in_ptr"),
    rows_of<net>::field<52, &net::nb_pin_out>("nb_pin_out", within(0, INT16_MAX)),
    rows_of<net>::field<56, &net::first_pin_out_ind>("first_pin_out_ind", a_pin_or_none),
    rows_of<net>::slot <60>("first_pin_out_ptr"),
};
using forms = decltype(net::UU);
using u1 = yx_net_u1_t;
using u2 = yx_net_u2_t;
constexpr yxl_range a_net_or_none = one_or_none(&store::max_net_cur);
constexpr std::array net_u1_rows = {
    rows_of<net>::field< 64, &net::UU, &forms::U1, &u1::state_init>("state_init", within(0, 19)),
    rows_of<net>::field< 68, &net::UU, &forms::U1, &u1::cur_state, &state::state>("cur_state.state"),
    rows_of<net>::field< 72, &net::UU, &forms::U1, &u1::cur_state, &state::time>("cur_state.time"),
    rows_of<net>::field< 76, &net::UU, &forms::U1, &u1::cur_state, &state::fixed>("cur_state.fixed"),
    rows_of<net>::field< 80, &net::UU, &forms::U1, &u1::old_state, &state::state>("old_state.state"),
    rows_of<net>::field< 84, &net::UU, &forms::U1, &u1::old_state, &state::time>("old_state.time"),
    rows_of<net>::field< 88, &net::UU, &forms::U1, &u1::old_state, &state::fixed>("old_state.fixed"),
    rows_of<net>::field< 92, &net::UU, &forms::U1, &u1::rise>("rise"),
    rows_of<net>::field<104, &net::UU, &forms::U1, &u1::fall>("fall"),
    rows_of<net>::slot <116>("break_signal"),
    rows_of<net>::slot <120>("list_state"),
    rows_of<net>::field<124, &net::UU, &forms::U1, &u1::bus>("bus", a_net_or_none),
    rows_of<net>::slot <128>("bus_ptr"),
    rows_of<net>::field<132, &net::UU, &forms::U1, &u1::posinbus>("posinbus"),
    rows_of<net>::field<136, &net::UU, &forms::U1, &u1::first_sub_net>("first_sub_net", a_net_or_none),
    rows_of<net>::slot <140>("first_sub_net_ptr"),
    rows_of<net>::field<144, &net::UU, &forms::U1, &u1::father_net>("father_net", a_net_or_none),
    rows_of<net>::slot <148>("father_net_ptr"),
    rows_of<net>::field<152, &net::UU, &forms::U1, &u1::next_sub_net>("next_sub_net", a_net_or_none),
    rows_of<net>::slot <156>("next_sub_net_ptr"),
};
constexpr std::array net_u2_rows = {
    rows_of<net>::field<64, &net::UU, &forms::U2, &u2::net_bus_start>("net_bus_start"),
    rows_of<net>::field<66, &net::UU, &forms::U2, &u2::net_bus_end>("net_bus_end"),
    rows_of<net>::field<68, &net::UU, &forms::U2, &u2::netind_start>("netind_start", one_of(&store::max_net_cur)),
    rows_of<net>::slot <72>("netind_start_ptr"),
};
static_assert(rows_fill(in_file_order(net_rows, net_u1_rows), 0, yxl_net_bytes));
static_assert(rows_fit(in_file_order(net_rows, net_u2_rows), 0, yxl_net_bytes));

using child = yx_net_child_record_t;
constexpr std::array net_child_rows = {
    rows_of<child>::field< 0, &child::self>("self", own_place),
    rows_of<child>::field< 4, &child::sim_path>("sim_path", a_string),
    rows_of<child>::field< 8, &child::object_id>("object_id"),
    rows_of<child>::field<12, &child::name>("name", a_string_or_none),
    rows_of<child>::field<16, &child::net_kind>("net_kind"),
    rows_of<child>::field<20, &child::next_child>("next_child", one_or_none(&store::max_net_child_cur)),
    rows_of<child>::slot <24>("next_child_ptr"),
};
static_assert(rows_fill(net_child_rows, 0, yxl_net_child_bytes));

// ---- macros and macro pins

using macro = yx_macro_record_t;
constexpr std::array macro_rows = {
    rows_of<macro>::field< 0, &macro::self>("self", own_place),
    rows_of<macro>::field< 4, &macro::object_id>("object_id"),
    rows_of<macro>::field< 6, &macro::status>("status"),
    rows_of<macro>::field< 8, &macro::timing_index>("timing_index", a_timing_index),
    rows_of<macro>::field<12, &macro::sim_path>("sim_path", a_string_or_none),
    rows_of<macro>::field<16, &macro::file_path>("file_path", a_string_or_none),
    rows_of<macro>::field<20, &macro::nb_of_pin>("nb_of_pin", within(0, INT16_MAX)),
    rows_of<macro>::field<24, &macro::first_pin_ind>("first_pin_ind", one_or_none(&store::max_pinm_cur)),
    rows_of<macro>::slot <28>("first_pin_ptr"),
    rows_of<macro>::field<32, &macro::nb_of_property>("nb_of_property", one_or_none(&store::nbof_property_instance)),
    rows_of<macro>::field<36, &macro::first_prop>("first_prop", a_prop_or_none),
};
static_assert(rows_fill(macro_rows, 0, yxl_macro_bytes));

using pinm = yx_pinm_record_t;
constexpr std::array pinm_rows = {
    rows_of<pinm>::field< 0, &pinm::self>("self", own_place),
    rows_of<pinm>::field< 4, &pinm::object_id>("object_id"),
    rows_of<pinm>::field< 6, &pinm::status>("status"),
    rows_of<pinm>::field< 8, &pinm::sim_path>("sim_path", a_string_or_none),
    rows_of<pinm>::field<12, &pinm::macro_ind>("macro_ind", one_or_none(&store::max_macro_cur)),
    rows_of<pinm>::slot <16>("macro_ptr"),
    rows_of<pinm>::field<20, &pinm::net_ind>("net_ind", a_net_or_none),
    rows_of<pinm>::slot <24>("net_ptr"),
    rows_of<pinm>::field<28, &pinm::pin_start>("pin_start"),
    rows_of<pinm>::field<30, &pinm::pin_end>("pin_end"),
    rows_of<pinm>::field<32, &pinm::pin_net_start>("pin_net_start"),
    rows_of<pinm>::field<34, &pinm::nb_of_property>("nb_of_property", one_or_none(&store::nbof_property_pin)),
    rows_of<pinm>::field<36, &pinm::first_prop>("first_prop", a_prop_or_none),
};
static_assert(rows_fill(pinm_rows, 0, yxl_pinm_bytes));
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

constexpr yxl_form<header> header_forms[] = {{rows_of<header>::always, header_rows}};
constexpr yxl_form<names> name_forms[] = {{rows_of<names>::always, name_rows}};
constexpr yxl_form<string> string_forms[] = {{rows_of<string>::always, string_rows}};
constexpr yxl_form<prop> prop_forms[] = {
    {rows_of<prop>::always, prop_rows},
    {is_prop_type<YX_PSTRING>, prop_string_rows},
    {is_prop_type<YX_PINTEGER>, prop_integer_rows},
    {is_prop_type<YX_PTIME>, prop_time_rows},
    {is_prop_type<YX_PREAL>, prop_real_rows},
};
constexpr yxl_form<inst> inst_forms[] = {{rows_of<inst>::always, inst_rows}};
constexpr yxl_form<pin> pin_forms[] = {
    {rows_of<pin>::always, pin_rows},
    {is_one_bit, pin_bit_rows},
    {spans_bits, pin_bus_rows},
};
constexpr yxl_form<net> net_forms[] = {
    {rows_of<net>::always, net_rows},
    {is_no_bus, net_u1_rows},
    {is_bus, net_u2_rows},
};
constexpr yxl_form<child> net_child_forms[] = {{rows_of<child>::always, net_child_rows}};
constexpr yxl_form<macro> macro_forms[] = {{rows_of<macro>::always, macro_rows}};
constexpr yxl_form<pinm> pinm_forms[] = {{rows_of<pinm>::always, pinm_rows}};

}  // namespace

constexpr yxl_layout<header> yxl_header{"header", yxl_header_bytes, header_forms};
constexpr yxl_layout<names> yxl_prop_instance_names{"instance property names", yxl_name_entry_bytes,
                                                    name_forms};
constexpr yxl_layout<names> yxl_prop_pin_names{"pin property names", yxl_name_entry_bytes, name_forms};
constexpr yxl_layout<names> yxl_prop_net_names{"net property names", yxl_name_entry_bytes, name_forms};
constexpr yxl_layout<string> yxl_strings{"strings", yxl_string_bytes, string_forms};
constexpr yxl_layout<prop> yxl_props{"property values", yxl_prop_bytes, prop_forms};
constexpr yxl_layout<inst> yxl_insts{"instances", yxl_inst_bytes, inst_forms};
constexpr yxl_layout<pin> yxl_pins{"pins", yxl_pin_bytes, pin_forms};
constexpr yxl_layout<net> yxl_nets{"nets", yxl_net_bytes, net_forms};
constexpr yxl_layout<child> yxl_net_children{"net children", yxl_net_child_bytes, net_child_forms};
constexpr yxl_layout<macro> yxl_macros{"macros", yxl_macro_bytes, macro_forms};
constexpr yxl_layout<pinm> yxl_pinms{"macro pins", yxl_pinm_bytes, pinm_forms};

// Self-contained views of a net, an instance or a pin.
#include "netlist/views.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace {

using name_table_t = std::array<yx_prop_type_record_t, yx_max_names>;

// A view to fill for the record at an index, or none.
template <typename View>
bool prepare(std::int32_t index, std::int32_t count, std::unique_ptr<View>& view) {
    if (!yx_sext.open_file_ok || index < 1 || index > count) {
        view.reset();
        return false;
    }
    if (view == nullptr) view = std::make_unique<View>();
    view->self_id = index;
    return true;
}

void copy_text(std::int32_t string_index, yxi_text_t& text) {
    text.len = 0;
    if (string_index != 0) yxi_copy_string_yx_yxi(string_index, text);
}

void copy_property(const yx_prop_type_record_t& declared, const yx_prop_record_t& value,
                   yxi_prop_record_t& prop) {
    yxi_coprec_tm_yxi(declared.name, prop.name);
    prop.vtype = value.prop_type;
    prop.svalue.len = 0;
    if (value.prop_type == YX_PSTRING)
        copy_text(value.valuec, prop.svalue);
    else if (value.prop_type == YX_PREAL)
        std::copy(std::begin(value.valuer), std::end(value.valuer), prop.rvalue);
    else
        std::copy(std::begin(value.valuei), std::end(value.valuei), prop.ivalue);
}

template <typename Record, typename View>
void copy_properties(const Record& record, const name_table_t& names, View& view) {
    view.nb_of_property = record.nb_of_property;
    for (std::int32_t k = 0; k < record.nb_of_property; ++k) {
        auto& prop = view.prop[static_cast<std::size_t>(k)];
        if (prop == nullptr) prop = std::make_unique<yxi_prop_record_t>();
        copy_property(names[static_cast<std::size_t>(k)], *yx_ptrto_prop_rec(record.first_prop + k), *prop);
    }
}

bool is_named(const yxi_prop_record_t& prop, const char* wanted) {
    const std::string_view name = yxi_view(prop.name);
    return std::equal(name.begin(), name.end(), wanted, wanted + std::strlen(wanted),
                      [](char a, char b) { return yxi_upper_case(a) == b; });
}

// The name out of a string property: the first of that name, or the last.
template <typename View>
bool name_from_property(View& view, const char* wanted, bool take_first) {
    bool found = false;
    for (std::int32_t k = 0; k < view.nb_of_property && !(found && take_first); ++k) {
        const yxi_prop_record_t& prop = *view.prop[static_cast<std::size_t>(k)];
        if (prop.vtype != YX_PSTRING || !is_named(prop, wanted)) continue;
        yxi_copy_string(prop.svalue, view.name);
        found = true;
    }
    return found;
}

template <typename View>
void name_by_index(View& view, const char* letter) {
    yxi_copy_const((letter + std::to_string(view.self_id)).c_str(), view.name);
}

void copy_links(const yx_net_record_t& net, yxi_net_record_t& view) {
    const bool is_bus = net.net_type == YX_TSTD_BUS, is_sub_net = net.net_type == YX_TSUB_NET;
    const yx_net_u1_t& u1 = net.UU.U1;
    const yx_net_u2_t& u2 = net.UU.U2;
    view.bus = is_bus ? 0 : u1.bus;
    view.first_sub_net = is_bus ? 0 : u1.first_sub_net;
    view.father_net = is_sub_net ? u1.father_net : 0;
    view.next_sub_net = is_sub_net ? u1.next_sub_net : 0;
    view.net_bus_start = is_bus ? u2.net_bus_start : std::int16_t{0};
    view.net_bus_end = is_bus ? u2.net_bus_end : std::int16_t{0};
    view.netind_start = is_bus ? u2.netind_start : 0;
}

template <typename View>
bool find_property(const View& view, const yxi_string_record_t& name, const yxi_prop_record_t*& prop) {
    prop = nullptr;
    if (name.len < 1 || name.len > yxi_string_max) return false;
    for (std::int32_t k = 0; k < view.nb_of_property; ++k) {
        const yxi_prop_record_t& candidate = *view.prop[static_cast<std::size_t>(k)];
        if (!yxi_equal_string(name, candidate.name)) continue;
        prop = &candidate;
        return true;
    }
    return false;
}

}  // namespace

void yxi_get_net_record(std::int32_t net, std::unique_ptr<yxi_net_record_t>& view) {
    if (!prepare(net, yx_sext.max_net_cur, view)) return;
    const yx_net_record_t& record = *yx_ptrto_net_rec(net);
    view->net_kind = record.net_kind;
    view->net_type = record.net_type;
    copy_links(record, *view);
    copy_text(record.sim_path, view->sim_path);
    copy_properties(record, yx_sext.property_net, *view);
    copy_text(record.name, view->name);
    if (view->name.len == 0 && !name_from_property(*view, "NET", true)) name_by_index(*view, "N_");
}

void yxi_get_instance_record(std::int32_t instance, std::unique_ptr<yxi_instance_record_t>& view) {
    if (!prepare(instance, yx_sext.max_inst_cur, view)) return;
    const yx_inst_record_t& record = *yx_ptrto_inst_rec(instance);
    view->primitive = true;
    view->owning_instance = 0;
    view->timing_index = record.timing_index;
    view->location = {};
    copy_text(record.sim_path, view->sim_path);
    copy_text(record.file_path, view->file_path);
    copy_properties(record, yx_sext.property_instance, *view);
    if (!name_from_property(*view, "INST", false)) name_by_index(*view, "I_");
}

void yxi_get_pin_record(std::int32_t pin, std::unique_ptr<yxi_pin_record_t>& view) {
    if (!prepare(pin, yx_sext.max_pin_cur, view)) return;
    const yx_pin_record_t& record = *yx_ptrto_pin_rec(pin);
    view->pin_type = record.io_type;
    view->instance = record.instance_ind;
    view->net = record.net_ind;
    view->pin_start = record.pin_start;
    view->pin_end = record.pin_end;
    view->pin_net_start = record.pin_net_start;
    view->location = {};
    copy_text(record.sim_path, view->sim_path);
    copy_properties(record, yx_sext.property_pin, *view);
    if (!name_from_property(*view, "PIN", false)) name_by_index(*view, "N_");
}

bool yxi_find_net_property(const yxi_net_record_t& view, const yxi_string_record_t& name,
                           const yxi_prop_record_t*& prop) {
    return find_property(view, name, prop);
}

bool yxi_find_instance_property(const yxi_instance_record_t& view, const yxi_string_record_t& name,
                                const yxi_prop_record_t*& prop) {
    return find_property(view, name, prop);
}

bool yxi_find_pin_property(const yxi_pin_record_t& view, const yxi_string_record_t& name,
                           const yxi_prop_record_t*& prop) {
    return find_property(view, name, prop);
}

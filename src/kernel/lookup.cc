// The forms of names, and the order in which they are tried.
#include "kernel/lookup.h"

#include "foundation/numbers.h"
#include "kernel/name_index.h"
#include "kernel/say.h"
#include "netlist/text.h"

namespace {

enum name_results : std::int16_t {
    not_found = 0,
    by_index = 1,
    relative = 2,
    absolute = 3,
    by_object_id = 4,
    by_probe = 5,
    user_bus = 7,
};

// Of the current level's sheet.
std::int32_t highest_net() {
    const std::int16_t level = kol_ext.file_level_cur;
    const bool is_level = level >= 1 && static_cast<std::size_t>(level) <= kol_max_levels;
    return is_level ? kol_ext.arrayof_file[static_cast<std::size_t>(level - 1)].highest_net : 0;
}

bool begins_with(std::string_view text, std::string_view capitals) {
    if (text.size() < capitals.size()) return false;
    for (std::size_t k = 0; k < capitals.size(); ++k)
        if (tm_upper_case(text[k]) != capitals[k]) return false;
    return true;
}
bool is_index_form(std::string_view name) { return begins_with(name, "NI_"); }
bool is_object_form(std::string_view name) { return begins_with(name, "N_"); }
bool is_path_form(std::string_view name) { return begins_with(name, "/"); }

// The decimal number behind a prefix, when it lies in 1..highest.
bool number_behind(std::string_view name, std::size_t prefix, std::int32_t highest, std::int32_t& number) {
    return tm_string_to_number(tm_string(name.substr(prefix)), highest, number);
}

std::int16_t root_found(std::int32_t net_index, std::int16_t result, yx_net_record_t*& net) {
    net = net_index == 0 ? nullptr : yx_ptrto_net_rec(net_index);
    if (net == nullptr) return not_found;
    while (net->UU.U1.father_net_ptr != nullptr) net = net->UU.U1.father_net_ptr;
    return result;
}

tm_string_record_t full_name(const tm_string_record_t& name) {
    tm_string_record_t full = kol_ext.cur_sim_path;
    tm_append(tm_view(name), full);
    return full;
}

bool begins_with_sim_path(std::int32_t string_index) {
    return string_index != 0 && tmstring_equal_yxistring(kol_ext.cur_sim_path, string_index);
}

bool has_child_of_object(const yx_net_record_t& net, std::int32_t object_id) {
    for (const auto* child = net.first_child_ptr; child != nullptr; child = child->next_child_ptr)
        if (child->object_id == object_id && begins_with_sim_path(child->sim_path)) return true;
    return false;
}

// The net that an object of the current sheet stands for.
std::int32_t net_of_object(std::int32_t object_id) {
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        const yx_net_record_t& net = *yx_ptrto_net_rec(i);
        const bool is_taken =
            begins_with_sim_path(net.name) ? has_child_of_object(net, object_id) : net.object_id == object_id;
        if (is_taken) return i;
    }
    return 0;
}

// The first record from `first` on, along one of its links, that a name given now may mean: an absolute name
// at any level of the hierarchy, a relative one at the level where the record was made.
template <typename Record>
std::int16_t find_record(Record* first, tm_string_record_t Record::*record_name,
                         const tm_string_record_t& name, Record*& record) {
    const bool at_any_level = is_path_form(tm_view(name)) || is_index_form(tm_view(name));
    for (record = first; record != nullptr; record = record->previous) {
        if (!tm_string_iden_string(record->*record_name, name)) continue;
        if (at_any_level) return 1;
        if (tm_string_iden_string(record->cur_sim_path, kol_ext.cur_sim_path)) return 2;
    }
    return not_found;
}

}  // namespace

std::int16_t kol_find_net(const tm_string_record_t& name, yx_net_record_t*& net) {
    net = nullptr;
    const std::string_view text = tm_view(name);
    if (text.empty()) {
        kol_trace(" KOL_FIND_NET : name length : %d", name.len);
        return not_found;
    }
    if (is_index_form(text)) return kol_find_net_abs(name, net);
    if (is_object_form(text)) return kol_find_net_rid(name, net);
    if (is_path_form(text)) return kol_find_net_path(name, net);
    kol_probe_signal_rec_t* probe = nullptr;
    if (kol_find_net_probe(name, probe) == not_found) return kol_find_net_rel(name, net);
    net = probe->net;
    return by_probe;
}

std::string_view kol_chosen_among_cases(const tm_string_record_t& name) {
    const bool is_path = is_path_form(tm_view(name));
    yx_net_record_t* net = nullptr;
    const std::int16_t found = kol_find_net(name, net);
    if ((found != relative && found != absolute) || !kol_names_several_nets(is_path ? name : full_name(name)))
        return {};
    return kol_path(net->sim_path);
}

std::int16_t kol_find_net_abs(const tm_string_record_t& name, yx_net_record_t*& net) {
    net = nullptr;
    std::int32_t index = 0;
    if (!is_index_form(tm_view(name))) return not_found;
    if (!number_behind(tm_view(name), 3, yx_sext.max_net_cur, index)) return not_found;
    return root_found(index, by_index, net);
}

std::int16_t kol_find_net_rel(const tm_string_record_t& name, yx_net_record_t*& net) {
    return root_found(kol_find_named(full_name(name)).net, relative, net);
}

std::int16_t kol_find_net_path(const tm_string_record_t& name, yx_net_record_t*& net) {
    if (root_found(kol_find_named(name).net, absolute, net) != not_found) return absolute;
    const std::string_view text = tm_view(name);
    const std::size_t slash = text.rfind('/');
    const std::string_view last = slash == text.npos ? text : text.substr(slash + 1);
    std::int32_t object_id = 0;
    if (!is_object_form(last) || kol_ext.cur_sim_path.len < 1) return not_found;
    if (!number_behind(last, 2, highest_net(), object_id)) return not_found;
    return root_found(net_of_object(object_id), absolute, net);
}

std::int16_t kol_find_net_rid(const tm_string_record_t& name, yx_net_record_t*& net) {
    net = nullptr;
    std::int32_t object_id = 0;
    if (!is_object_form(tm_view(name))) return not_found;
    if (!number_behind(tm_view(name), 2, highest_net(), object_id)) return not_found;
    return root_found(kol_find_named(full_name(name)).net_alone, by_object_id, net);
}

std::int16_t kol_find_net_probe(const tm_string_record_t& name, kol_probe_signal_rec_t*& probe) {
    probe = nullptr;
    if (kol_ext.cur_sim_path.len < 1) return not_found;
    for (probe = kol_ext.start_probe_signal; probe != nullptr; probe = probe->next)
        if (tm_string_iden_string(probe->probe_name, name) &&
            tm_string_iden_string(probe->cur_sim_path, kol_ext.cur_sim_path))
            return by_probe;
    return not_found;
}

std::int16_t kol_find_sim_bus(const tm_string_record_t& name, yx_bus_rec_t*& bus) {
    for (bus = kol_ext.start_sim_bus; bus != nullptr; bus = bus->next)
        if (tm_string_iden_string(bus->name, name)) return user_bus;
    return not_found;
}

std::int16_t kol_find_break_inrec(const tm_string_record_t& name, yx_break_signal_rec_t*& record) {
    return find_record(kol_ext.break_signal, &yx_break_signal_rec_t::break_name, name, record);
}

std::int16_t kol_find_listsig_inrec(const tm_string_record_t& name, yx_signal_rec_t*& record) {
    return find_record(kol_ext.list_signal, &yx_signal_rec_t::name, name, record);
}

std::int16_t kol_find_tracesig_inrec(const tm_string_record_t& name, yx_signal_rec_t*& record) {
    return find_record(kol_ext.trace_signal, &yx_signal_rec_t::name, name, record);
}

bool kol_find_pin_rel(const tm_string_record_t& instance, const tm_string_record_t& pin_name,
                      yx_pin_record_t*& pin) {
    pin = nullptr;
    if (instance.len < 1 || pin_name.len < 1) return false;
    tm_string_record_t full = full_name(instance);
    tm_append("/", full);
    tm_append(tm_view(pin_name), full);
    const std::int32_t index = kol_find_named(full).pin;
    if (index != 0) pin = yx_ptrto_pin_rec(index);
    return index != 0;
}

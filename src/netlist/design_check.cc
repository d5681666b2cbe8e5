// What makes a design sound beyond the ranges of its fields.
#include "netlist/design_check.h"

#include <cmath>
#include <vector>

#include "foundation/printable.h"

namespace {

std::string number(std::int64_t n) { return std::to_string(n); }

// The place, from 1, and the code of the first character that is not printable; empty when all are.
std::string character_error(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i)
        if (!tm_is_printable(text[i]))
            return "character " + number(static_cast<std::int64_t>(i) + 1) + " has code " +
                   number(static_cast<unsigned char>(text[i]));
    return {};
}

// Calls check(record) for the records 1..count of a kind until it finds a fault.
template <typename Record, typename Check>
void each_record(const lay_layout<Record>& layout, Record* (*ptrto)(std::int32_t), std::int32_t count,
                 yxc_fault_t& fault, Check check) {
    for (std::int32_t i = 1; i <= count && yxc_is_sound(fault); ++i) {
        std::string what = check(*ptrto(i));
        if (!what.empty()) yxc_set_fault(fault, layout.section, i, std::move(what));
    }
}

// ---- runs: `count` consecutive records from `first` on

std::string run_error(const char* first_name, std::int32_t first, const char* count_name, std::int32_t count,
                      std::int32_t highest) {
    if (count == 0 || (first >= 1 && first <= highest - count + 1)) return {};
    return std::string(first_name) + " " + number(first) + " with " + count_name + " " + number(count) +
           " outside 1.." + number(highest);
}

template <typename Record>
std::string property_error(const Record& record) {
    return run_error("first_prop", record.first_prop, "nb_of_property", record.nb_of_property,
                     yx_sext.max_prop_cur);
}

template <typename Record>
std::string pin_run_error(const Record& record, std::int32_t highest) {
    return run_error("first_pin_ind", record.first_pin_ind, "nb_of_pin", record.nb_of_pin, highest);
}

// ---- strings

std::string string_error(const yx_string_record_t& string) {
    if (string.len == 0) return {};
    const std::int32_t last = string.index + string.len - 1;
    const std::string characters = "characters " + number(string.index) + ".." + number(last);
    if (string.index < 1 || last > yx_sext.max_char_cur)
        return characters + " outside 1.." + number(yx_sext.max_char_cur);
    const auto at = static_cast<std::size_t>(string.index - 1);
    if (at / yx_block_records != static_cast<std::size_t>(last - 1) / yx_block_records)
        return characters + " cross a border between blocks of " + number(yx_block_records);
    const char* text = &yx_sext.arrayof_bcharptr[at / yx_block_records][at % yx_block_records];
    return character_error({text, static_cast<std::size_t>(string.len)});
}

// ---- instances and pins

std::string instance_error(const yx_inst_record_t& inst) {
    std::string what = property_error(inst);
    if (what.empty()) what = pin_run_error(inst, yx_sext.max_pin_cur);
    for (std::int32_t k = 0; k < inst.nb_of_pin && what.empty(); ++k) {
        const yx_pin_record_t& pin = *yx_ptrto_pin_rec(inst.first_pin_ind + k);
        if (pin.instance_ind != inst.self)
            what = "pin " + number(pin.self) + " names instance " + number(pin.instance_ind);
    }
    return what;
}

std::int32_t bus_width(const yx_net_record_t& bus) {
    return bus.UU.U2.net_bus_end - bus.UU.U2.net_bus_start + 1;
}

// The bits of a pin against the members of the bus it stands on.
std::string pin_bits_error(const yx_pin_record_t& pin, const yx_net_record_t& net) {
    if (net.net_type != YX_TSTD_BUS)
        return pin.pin_end == 0 ? std::string()
                                : "pin_end " + number(pin.pin_end) + " on a net that is no bus";
    const bool spans_bits = pin.pin_end != 0;
    const std::int32_t width = bus_width(net);
    const std::int32_t first = pin.pin_net_start + pin.pin_start;
    const std::int32_t last = pin.pin_net_start + (spans_bits ? pin.pin_end : pin.pin_start);
    if (first < 0 || first > last || last >= width)
        return "bits " + number(first) + ".." + number(last) + " outside 0.." + number(width - 1) +
               " of bus " + number(net.self);
    if (spans_bits && width > yx_max_bus_bits)
        return "spans bits of a bus of " + number(width) + " bits, at most " + number(yx_max_bus_bits);
    return {};
}

std::string pin_error(const yx_pin_record_t& pin) {
    const yx_inst_record_t& inst = *yx_ptrto_inst_rec(pin.instance_ind);
    if (pin.self < inst.first_pin_ind || pin.self >= inst.first_pin_ind + inst.nb_of_pin)
        return "instance_ind " + number(inst.self) + " whose pins do not include it";
    std::string what = property_error(pin);
    return what.empty() ? pin_bits_error(pin, *yx_ptrto_net_rec(pin.net_ind)) : what;
}

// ---- chains

// How many records a chain has from each record of a kind on; entry 0, the end of every chain, has none.
// settle(i, next) is called for every record, its successor first.
template <typename Record, typename Settle>
std::vector<std::int32_t> chain_lengths(const lay_layout<Record>& layout, Record* (*ptrto)(std::int32_t),
                                        std::int32_t count, std::int32_t Record::*next, const char* next_name,
                                        yxc_fault_t& fault, Settle settle) {
    constexpr std::int32_t unknown = -1, on_path = -2;
    std::vector<std::int32_t> length(static_cast<std::size_t>(count) + 1, unknown);
    std::vector<std::int32_t> path;
    length[0] = 0;
    for (std::int32_t i = 1; i <= count; ++i) {
        std::int32_t at = i;
        for (; length[at] == unknown; at = ptrto(at)->*next) {
            length[at] = on_path;
            path.push_back(at);
        }
        if (length[at] == on_path) {
            yxc_set_fault(fault, layout.section, at, std::string(next_name) + " leads in a circle");
            return length;
        }
        for (; !path.empty(); path.pop_back()) {
            length[path.back()] = length[at] + 1;
            settle(path.back(), at);
            at = path.back();
        }
    }
    return length;
}

std::string chain_error(const char* first_name, std::int32_t found, const char* count_name,
                        std::int32_t count) {
    if (found == count) return {};
    return std::string(count_name) + " " + number(count) + " but the chain from " + first_name + " has " +
           number(found);
}

// Which nets the pins of a chain name, from a pin on: at most one net that is no bus and one bus.
struct named_t {
    std::int32_t net = 0, bus = 0;
    bool others = false;
};

void add_name(const yx_net_record_t& net, named_t& named) {
    std::int32_t& name = net.net_type == YX_TSTD_BUS ? named.bus : named.net;
    if (name != 0 && name != net.self) named.others = true;
    name = net.self;
}

// One of the two families of pin chains.
struct pin_chains_t {
    const char *next_name, *first_name, *count_name;
    std::int32_t yx_pin_record_t::*next;
    std::int32_t yx_net_record_t::*first;
    std::int16_t yx_net_record_t::*count;
};

constexpr pin_chains_t pin_chains[] = {
    {"next_pin_in_ind", "first_pin_in_ind", "nb_pin_in", &yx_pin_record_t::next_pin_in_ind,
     &yx_net_record_t::first_pin_in_ind, &yx_net_record_t::nb_pin_in},
    {"next_pin_out_ind", "first_pin_out_ind", "nb_pin_out", &yx_pin_record_t::next_pin_out_ind,
     &yx_net_record_t::first_pin_out_ind, &yx_net_record_t::nb_pin_out},
};

// The chain of a net holds pins of the net and of the bus it is a member of, the chain of a bus its own pins.
bool names_fit(const named_t& named, const yx_net_record_t& net) {
    const bool is_bus = net.net_type == YX_TSTD_BUS;
    const std::int32_t own_net = is_bus ? 0 : net.self, own_bus = is_bus ? net.self : net.UU.U1.bus;
    return !named.others && (named.net == 0 || named.net == own_net) &&
           (named.bus == 0 || named.bus == own_bus);
}

void check_pin_chains(const pin_chains_t& chains, yxc_fault_t& fault) {
    std::vector<named_t> named(static_cast<std::size_t>(yx_sext.max_pin_cur) + 1);
    const std::vector<std::int32_t> length =
        chain_lengths(yxl_pins, yx_ptrto_pin_rec, yx_sext.max_pin_cur, chains.next, chains.next_name, fault,
                      [&](std::int32_t pin, std::int32_t next) {
                          named[pin] = named[next];
                          add_name(*yx_ptrto_net_rec(yx_ptrto_pin_rec(pin)->net_ind), named[pin]);
                      });
    // Members of one bus may share the chain of its pins; all chains together stay walkable.
    std::int64_t steps_left = std::int64_t{yx_sext.max_index} * yx_max_bus_bits;
    each_record(yxl_nets, yx_ptrto_net_rec, yx_sext.max_net_cur, fault, [&](const yx_net_record_t& net) {
        const std::int32_t first = net.*chains.first;
        if (!names_fit(named[first], net))
            return "the chain from " + std::string(chains.first_name) + " holds a pin of another net";
        steps_left -= length[first];
        if (steps_left < 0) return "too many nets share the chain from " + std::string(chains.first_name);
        return chain_error(chains.first_name, length[first], chains.count_name, net.*chains.count);
    });
}

void check_child_chains(yxc_fault_t& fault) {
    const std::vector<std::int32_t> length =
        chain_lengths(yxl_net_children, yx_ptrto_net_child_rec, yx_sext.max_net_child_cur,
                      &yx_net_child_record_t::next_child, "next_child", fault, [](auto, auto) {});
    std::int32_t children_left = yx_sext.max_net_child_cur;  // a child belongs to one net
    each_record(yxl_nets, yx_ptrto_net_rec, yx_sext.max_net_cur, fault, [&](const yx_net_record_t& net) {
        children_left -= length[net.first_child];
        if (children_left < 0) return std::string("first_child belongs to another net");
        return chain_error("first_child", length[net.first_child], "nb_of_child", net.nb_of_child);
    });
}

// ---- nets

// Every member names the bus and its position: a net is the member of one bus only, so this is linear.
std::string bus_error(const yx_net_record_t& bus) {
    const std::int32_t width = bus_width(bus);
    const std::int32_t first = bus.UU.U2.netind_start;
    if (width < 1 || first > yx_sext.max_net_cur - width + 1)
        return "netind_start " + number(first) + " with net_bus_start " + number(bus.UU.U2.net_bus_start) +
               " and net_bus_end " + number(bus.UU.U2.net_bus_end) + " outside 1.." +
               number(yx_sext.max_net_cur);
    for (std::int32_t k = 0; k < width; ++k) {
        const yx_net_record_t& member = *yx_ptrto_net_rec(first + k);
        if (member.net_type == YX_TSTD_BUS || member.UU.U1.bus != bus.self || member.UU.U1.posinbus != k + 1)
            return "member net " + number(member.self) + " is not net " + number(k + 1) + " of this bus";
    }
    return {};
}

std::string member_error(const yx_net_record_t& net) {
    if (net.UU.U1.bus == 0) return {};
    const yx_net_record_t& bus = *yx_ptrto_net_rec(net.UU.U1.bus);
    const bool inside = bus.net_type == YX_TSTD_BUS && net.self >= bus.UU.U2.netind_start &&
                        net.self - bus.UU.U2.netind_start < bus_width(bus);
    return inside ? std::string() : "bus " + number(bus.self) + " of which it is no member";
}

std::string root_error(const yx_net_record_t& net) {
    const yx_net_u1_t& u1 = net.UU.U1;
    if (u1.father_net != 0) return "father_net " + number(u1.father_net) + " of a standard net";
    if (u1.next_sub_net != 0) return "next_sub_net " + number(u1.next_sub_net) + " of a standard net";
    return {};
}

std::string net_error(const yx_net_record_t& net) {
    std::string what = property_error(net);
    if (!what.empty()) return what;
    if (net.net_type == YX_TSTD_BUS) return bus_error(net);
    what = member_error(net);
    return what.empty() && net.net_type == YX_TSTANDARD ? root_error(net) : what;
}

// ---- net trees

struct trees_t {
    std::vector<bool> reached;
    yxc_fault_t& fault;
};

// Goes on to a sub-net named by the net `from`, which must hang under `father` and be new.
const yx_net_record_t* enter_sub_net(std::int32_t index, const char* field, const yx_net_record_t& from,
                                     const yx_net_record_t& father, trees_t& trees) {
    const yx_net_record_t* net = yx_ptrto_net_rec(index);
    if (net->net_type != YX_TSUB_NET || net->UU.U1.father_net != father.self || trees.reached[index]) {
        yxc_set_fault(
            trees.fault, yxl_nets.section, from.self,
            std::string(field) + " " + number(index) + " is no sub-net of net " + number(father.self));
        return nullptr;
    }
    trees.reached[index] = true;
    return net;
}

// The next net of a tree in pre-order; none at its end or at a fault.
const yx_net_record_t* next_of_tree(const yx_net_record_t* net, trees_t& trees) {
    if (net->UU.U1.first_sub_net != 0)
        return enter_sub_net(net->UU.U1.first_sub_net, "first_sub_net", *net, *net, trees);
    while (net->net_type == YX_TSUB_NET) {
        const yx_net_record_t& father = *yx_ptrto_net_rec(net->UU.U1.father_net);
        if (net->UU.U1.next_sub_net != 0)
            return enter_sub_net(net->UU.U1.next_sub_net, "next_sub_net", *net, father, trees);
        net = &father;
    }
    return nullptr;
}

void check_trees(yxc_fault_t& fault) {
    trees_t trees{std::vector<bool>(static_cast<std::size_t>(yx_sext.max_net_cur) + 1), fault};
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        const yx_net_record_t* net = yx_ptrto_net_rec(i);
        if (net->net_type != YX_TSTANDARD) continue;
        while (net != nullptr) net = next_of_tree(net, trees);
    }
    each_record(yxl_nets, yx_ptrto_net_rec, yx_sext.max_net_cur, fault, [&](const yx_net_record_t& net) {
        if (net.net_type != YX_TSUB_NET || trees.reached[net.self]) return std::string();
        return "father_net " + number(net.UU.U1.father_net) +
               " does not lead to a standard net that holds it";
    });
}

}  // namespace

void yxc_set_fault(yxc_fault_t& fault, std::string_view section, std::int32_t record, std::string what) {
    if (yxc_is_sound(fault)) fault = {section, record, std::move(what)};
}

std::string yxc_outside(std::string_view field, std::int32_t value, lay_limits limits) {
    return std::string(field) + " " + number(value) + " outside " + number(limits.lowest) + ".." +
           number(limits.highest);
}

void yxc_check_header(const yx_general_info_record_t& info, yxc_fault_t& fault) {
    if (!std::isfinite(info.time_step)) yxc_set_fault(fault, yxl_header.section, 1, "time_step is no number");
}

void yxc_check_names(std::string_view section, const yx_prop_type_record_t& names, std::int32_t place,
                     yxc_fault_t& fault) {
    for (const tm_string_record_t* text : {&names.name, &names.prop_type}) {
        std::string what = character_error(tm_view(*text));
        if (!what.empty()) yxc_set_fault(fault, section, place, std::move(what));
    }
}

void yxc_check_strings(yxc_fault_t& fault) {
    each_record(yxl_strings, yx_ptrto_string_rec, yx_sext.max_string_cur, fault, string_error);
}

void yxc_check_references(yxc_fault_t& fault) {
    each_record(yxl_nets, yx_ptrto_net_rec, yx_sext.max_net_cur, fault, net_error);
    each_record(yxl_insts, yx_ptrto_inst_rec, yx_sext.max_inst_cur, fault, instance_error);
    each_record(yxl_pins, yx_ptrto_pin_rec, yx_sext.max_pin_cur, fault, pin_error);
    each_record(yxl_macros, yx_ptrto_macro_rec, yx_sext.max_macro_cur, fault,
                [](const yx_macro_record_t& macro) {
                    std::string what = property_error(macro);
                    return what.empty() ? pin_run_error(macro, yx_sext.max_pinm_cur) : what;
                });
    each_record(yxl_pinms, yx_ptrto_pinm_rec, yx_sext.max_pinm_cur, fault,
                [](const yx_pinm_record_t& pinm) { return property_error(pinm); });
    for (const pin_chains_t& chains : pin_chains)
        if (yxc_is_sound(fault)) check_pin_chains(chains, fault);
    if (yxc_is_sound(fault)) check_child_chains(fault);
    if (yxc_is_sound(fault)) check_trees(fault);
}

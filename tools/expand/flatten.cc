// Module instances become scopes, joined bits nets, names aliases and buses.
#include "expand/flatten.h"

#include <algorithm>
#include <numeric>

#include "netlist/store.h"

namespace {

constexpr std::size_t limit = yx_max_large;
constexpr std::size_t bits_max = 4 * limit;  // bits of all module instances together

// Joined bits, before they are numbered as nets.  The constants are the first four elements.
struct joints {
    xp_flat& flat;
    xp_status& status;
    std::vector<std::int32_t> root;
};

std::int32_t root_of(joints& j, std::int32_t element) {
    while (j.root[element] != element) element = j.root[element] = j.root[j.root[element]];
    return element;
}

constexpr std::int32_t element_of_constant(std::int32_t constant) { return -1 - constant; }

std::int32_t element_at(const joints& j, const xp_scope& scope, std::int32_t bit) {
    return bit < 0 ? element_of_constant(bit)
                   : j.flat.net_of[scope.first_bit + static_cast<std::size_t>(bit)];
}

// ---- scopes

std::string instance_path(const xp_flat& flat, std::size_t scope) {
    std::string path = xp_raw_scope_path(flat, scope);
    if (path.size() > 1) path.pop_back();
    return path;
}

void join(joints& j, std::int32_t a, std::int32_t b, std::size_t scope) {
    a = root_of(j, a);
    b = root_of(j, b);
    if (a != b && std::max(a, b) < xp_constants)
        xp_fail(j.status, xp_fault::joined_constants, instance_path(j.flat, scope));
    j.root[std::max(a, b)] = std::min(a, b);
}

void bind(joints& j, std::size_t index) {
    const xp_scope scope = j.flat.scopes[index];
    const xp_scope& parent = j.flat.scopes[static_cast<std::size_t>(scope.parent)];
    const xp_child& child = xp_child_of(j.flat, scope);
    const xp_body& body = xp_body_of(j.flat, parent);
    for (std::uint32_t i = 0; i < child.binding_count; ++i) {
        const xp_binding& binding = body.bindings[child.first_binding + i];
        const std::int32_t outside = element_at(j, parent, binding.outside);
        const std::int32_t inside = element_at(j, scope, binding.inside);
        if (inside < 0)
            j.flat.net_of[scope.first_bit + static_cast<std::size_t>(binding.inside)] = outside;
        else
            join(j, inside, outside, index);
    }
}

void refuse_size(xp_status& status, const char* what, std::size_t count, std::size_t most) {
    if (count > most)
        xp_fail(status, xp_fault::too_large, "",
                std::string(what) + ": more than " + std::to_string(most) + ", the limit");
}

// Adds a scope and gives its bits elements: those of its ports are the parent's, the others are new.
void add_scope(joints& j, xp_scope scope) {
    xp_flat& flat = j.flat;
    const xp_module& module = xp_module_of(flat, scope);
    const xp_body& body = xp_body_of(flat, scope);
    scope.first_bit = flat.net_of.size();
    scope.first_gate = flat.gate_count;
    scope.first_part = flat.part_count;
    refuse_size(j.status, "instances", flat.gate_count + body.gates.size(), limit);
    refuse_size(j.status, "pins", flat.pin_count + body.gates.size() + body.pins.size(), limit);
    refuse_size(j.status, "macros", flat.scopes.size(), limit);
    refuse_size(j.status, "bits of all module instances",
                flat.net_of.size() + static_cast<std::size_t>(module.net_count), bits_max);
    if (scope.depth > xp_depth_max)
        xp_fail(j.status, xp_fault::too_deep, "", "at most " + std::to_string(xp_depth_max) + " levels");
    if (!xp_ok(j.status)) return;
    flat.gate_count += static_cast<std::uint32_t>(body.gates.size());
    flat.part_count += static_cast<std::uint32_t>(body.parts.size());
    flat.pin_count += static_cast<std::uint32_t>(body.gates.size() + body.pins.size());
    flat.net_of.resize(scope.first_bit + static_cast<std::size_t>(module.net_count), -1);
    flat.scopes.push_back(scope);
    if (scope.parent >= 0) bind(j, flat.scopes.size() - 1);
    for (std::size_t bit = scope.first_bit; bit < flat.net_of.size(); ++bit)
        if (flat.net_of[bit] < 0) {
            flat.net_of[bit] = static_cast<std::int32_t>(j.root.size());
            j.root.push_back(flat.net_of[bit]);
        }
    refuse_size(j.status, "nets", j.root.size() - xp_constants, limit);
}

void add_scopes(joints& j) {
    j.root.resize(xp_constants);
    std::iota(j.root.begin(), j.root.end(), 0);
    add_scope(j, {-1, j.flat.hierarchy->top, 0, 0, 0, 0, 0});
    for (std::size_t i = 0; i < j.flat.scopes.size() && xp_ok(j.status); ++i) {
        const xp_scope parent = j.flat.scopes[i];
        const xp_body& body = xp_body_of(j.flat, parent);
        for (std::uint32_t child = 0; child < body.children.size() && xp_ok(j.status); ++child)
            add_scope(j, {static_cast<std::int32_t>(i), body.children[child].module, child, parent.depth + 1,
                          0, 0, 0});
    }
    for (std::int32_t& net : j.flat.net_of) net = root_of(j, net);
}

// ---- numbering and names

struct numbering {
    joints& j;
    std::vector<std::int32_t> net_of_element;  // -1: not numbered yet
};

std::int32_t new_net(numbering& n, std::int32_t element, const xp_net_ref& name) {
    xp_flat_net net;
    net.name = name;
    n.j.flat.nets.push_back(net);
    return n.net_of_element[element] = static_cast<std::int32_t>(n.j.flat.nets.size() - 1);
}

// A vector becomes a bus when none of its bits has a name yet.
bool can_be_bus(numbering& n, const xp_scope& scope, const xp_net_name& name) {
    if (!xp_is_vector(name) || (name.hidden && !n.j.flat.hierarchy->draws_sheets) ||
        name.bits.count > INT16_MAX)
        return false;
    std::vector<std::int32_t> elements;
    for (std::uint32_t k = 0; k < name.bits.count; ++k) {
        const std::int32_t element =
            root_of(n.j, element_at(n.j, scope, xp_module_of(n.j.flat, scope).bits[name.bits.first + k]));
        if (element < xp_constants || n.net_of_element[element] >= 0) return false;
        elements.push_back(element);
    }
    std::sort(elements.begin(), elements.end());
    return std::adjacent_find(elements.begin(), elements.end()) == elements.end();
}

void name_bits(numbering& n, std::uint32_t scope, std::uint32_t index) {
    xp_flat& flat = n.j.flat;
    const xp_net_name& name = xp_name_of(flat, {scope, index, 0});
    const bool is_bus = can_be_bus(n, flat.scopes[scope], name);
    if (is_bus) flat.buses.push_back({static_cast<std::int32_t>(flat.nets.size()), scope, index});
    for (std::uint32_t k = 0; k < name.bits.count; ++k) {
        const std::int32_t bit = xp_module_of(flat, flat.scopes[scope]).bits[name.bits.first + k];
        const std::int32_t element = root_of(n.j, element_at(n.j, flat.scopes[scope], bit));
        const std::int32_t known = n.net_of_element[element];
        if (known >= 0 || element < xp_constants)
            flat.aliases.push_back({known >= 0 ? known : -1 - element, {scope, index, k}});
        else
            flat.nets[static_cast<std::size_t>(new_net(n, element, {scope, index, k}))].bus =
                is_bus ? static_cast<std::int32_t>(flat.buses.size() - 1) : -1;
    }
}

// Which names of a module come first: ports, vectors, scalars, hidden names.
int rank_of(const xp_net_name& name) {
    return name.is_port ? 0 : name.hidden ? 3 : xp_is_vector(name) ? 1 : 2;
}

void name_nets(numbering& n) {
    std::vector<std::vector<std::uint32_t>> orders(n.j.flat.hierarchy->bodies.size());
    for (std::uint32_t scope = 0; scope < n.j.flat.scopes.size(); ++scope) {
        std::vector<std::uint32_t>& order = orders[n.j.flat.scopes[scope].module];
        if (order.empty()) order = xp_naming_order(xp_body_of(n.j.flat, n.j.flat.scopes[scope]));
        for (const std::uint32_t name : order) name_bits(n, scope, name);
    }
}

// ---- constants

constexpr std::string_view constant_names[xp_constants] = {"logic0", "logic1", "logicx", "logicz"};

// The constants that a gate reads or a port of the top carries become nets; the other names for them go.
void add_constants(numbering& n, xp_netlist& netlist, xp_hierarchy& hierarchy,
                   const std::vector<bool>& is_used) {
    xp_flat& flat = n.j.flat;
    xp_body& top = hierarchy.bodies[hierarchy.top];
    for (std::int32_t element = 0; element < xp_constants; ++element) {
        if (!is_used[static_cast<std::size_t>(element)]) continue;
        const std::string name = xp_take_name(top.taken, constant_names[element]);
        xp_net_name net_name;
        net_name.raw = net_name.name = xp_keep(netlist.texts, name);
        top.names.push_back(net_name);
        const std::int32_t net =
            new_net(n, element, {0, static_cast<std::uint32_t>(top.names.size() - 1), 0});
        flat.nets[static_cast<std::size_t>(net)].constant = -1 - element;
        flat.constant_net[element] = net;
    }
    for (xp_alias& alias : flat.aliases)
        if (alias.net < 0) alias.net = flat.constant_net[-1 - alias.net];
    std::erase_if(flat.aliases, [](const xp_alias& alias) { return alias.net < 0; });
    std::stable_sort(flat.aliases.begin(), flat.aliases.end(),
                     [](const xp_alias& a, const xp_alias& b) { return a.net < b.net; });
}

std::vector<bool> used_constants(joints& j) {
    std::vector<bool> is_used(xp_constants);
    const auto use = [&](const xp_scope& scope, std::int32_t bit) {
        const std::int32_t element = root_of(j, element_at(j, scope, bit));
        if (element < xp_constants) is_used[static_cast<std::size_t>(element)] = true;
    };
    for (const xp_scope& scope : j.flat.scopes) {
        const xp_body& body = xp_body_of(j.flat, scope);
        for (const xp_pin& pin : body.pins) use(scope, pin.net);
        for (const xp_gate& gate : body.gates) use(scope, gate.output);
        if (!j.flat.hierarchy->draws_sheets) continue;
        for (const xp_binding& binding : body.bindings) use(scope, binding.outside);  // a pin on a sheet
    }
    const xp_scope& top = j.flat.scopes[0];
    for (const xp_port& port : xp_module_of(j.flat, top).ports)
        for (std::uint32_t k = 0; k < port.bits.count; ++k)
            use(top, xp_module_of(j.flat, top).bits[port.bits.first + k]);
    return is_used;
}

// ---- loads and drivers

xp_flat_net& net_at(xp_flat& flat, const xp_scope& scope, std::int32_t bit) {
    return flat.nets[static_cast<std::size_t>(xp_net_at(flat, scope, bit))];
}

void count_ports(xp_flat& flat) {
    const xp_scope& top = flat.scopes[0];
    for (const xp_port& port : xp_module_of(flat, top).ports)
        for (std::uint32_t k = 0; k < port.bits.count; ++k) {
            xp_flat_net& net = net_at(flat, top, xp_module_of(flat, top).bits[port.bits.first + k]);
            if (port.direction != xp_direction::output) net.is_input = true;
            if (port.direction == xp_direction::input) continue;
            net.is_output = true;
            ++net.loads;
        }
}

bool has_drive(const xp_flat& flat, const xp_scope& scope, const xp_gate& gate) {
    return xp_is_tristate(gate.model) ||
           !xp_module_of(flat, scope).cells[xp_body_of(flat, scope).parts[gate.part].cell].drive.empty();
}

const xp_scope& scope_of_gate(const xp_flat& flat, std::uint32_t gate) {
    const auto behind = std::upper_bound(
        flat.scopes.begin(), flat.scopes.end(), gate,
        [](std::uint32_t number, const xp_scope& scope) { return number < scope.first_gate; });
    return *(behind - 1);
}

std::string gate_path(const xp_flat& flat, std::uint32_t number) {
    const xp_scope& scope = scope_of_gate(flat, number);
    return xp_raw_scope_path(flat, static_cast<std::size_t>(&scope - flat.scopes.data())) +
           std::string(xp_body_of(flat, scope).gates[number - scope.first_gate].raw);
}

void add_driver(xp_flat& flat, const xp_scope& scope, std::uint32_t gate, std::int32_t bit,
                xp_status& status) {
    const xp_body& body = xp_body_of(flat, scope);
    xp_flat_net& net = net_at(flat, scope, bit);
    if (net.constant != 0)
        return xp_fail(status, xp_fault::driven_constant, gate_path(flat, scope.first_gate + gate));
    if (net.drivers++ == 0) {
        net.driver = scope.first_gate + gate;
        return;
    }
    const xp_scope& other = scope_of_gate(flat, net.driver);
    const xp_gate& first = xp_body_of(flat, other).gates[net.driver - other.first_gate];
    if (has_drive(flat, scope, body.gates[gate]) && has_drive(flat, other, first)) return;
    xp_fail(status, xp_fault::two_drivers, gate_path(flat, scope.first_gate + gate),
            gate_path(flat, net.driver) + " drives the same net");
}

void add_drivers(xp_flat& flat, const xp_scope& scope, std::uint32_t gate, xp_status& status) {
    const xp_body& body = xp_body_of(flat, scope);
    add_driver(flat, scope, gate, body.gates[gate].output, status);
    for (std::uint32_t i = 0; i < body.gates[gate].pin_count && xp_ok(status); ++i)
        if (const xp_pin& pin = body.pins[body.gates[gate].first_pin + i]; pin.is_output)
            add_driver(flat, scope, gate, pin.net, status);
}

bool is_clock_pin(const xp_gate& gate, const xp_pin& pin) {
    if (xp_is_memory(gate.model)) return pin.name.ends_with("CP") || pin.name.ends_with("CN");
    return xp_is_register(gate.model) && pin.name.starts_with(gate.model->clock);
}

void mark_clocks(xp_flat& flat, const xp_scope& scope, const xp_body& body) {
    for (const xp_gate& gate : body.gates)
        for (std::uint32_t i = 0; i < gate.pin_count; ++i)
            if (const xp_pin& pin = body.pins[gate.first_pin + i]; is_clock_pin(gate, pin))
                net_at(flat, scope, pin.net).is_clock = true;
}

void count_pins(xp_flat& flat, xp_status& status) {
    for (const xp_scope& scope : flat.scopes) {
        const xp_body& body = xp_body_of(flat, scope);
        for (const std::int32_t leaf : body.leaves) ++net_at(flat, scope, leaf).loads;
        for (std::uint32_t gate = 0; gate < body.gates.size() && xp_ok(status); ++gate)
            add_drivers(flat, scope, gate, status);
        mark_clocks(flat, scope, body);
    }
}

// ---- initial values

std::string net_path(const xp_flat& flat, const xp_net_ref& ref) {
    const xp_net_name& name = xp_name_of(flat, ref);
    return xp_raw_scope_path(flat, ref.scope) + std::string(name.raw) + xp_bit_suffix(name, ref.bit);
}

void set_initial(xp_flat& flat, xp_flat_net& net, std::int32_t initial, xp_status& status) {
    if (!xp_is_register_net(flat, net))
        return xp_warn(status, net_path(flat, net.name),
                       "the initial value of a net that no register drives is left out");
    if (net.initial != 0 && net.initial != initial)
        return xp_fail(status, xp_fault::bad_value, net_path(flat, net.name), "two initial values");
    net.initial = initial;
}

void set_initial_bits(xp_flat& flat, const xp_scope& scope, const xp_netname& name, xp_status& status) {
    const std::size_t count = std::min<std::size_t>(name.init.size(), name.bits.count);
    for (std::size_t k = 0; k < count; ++k) {
        const char digit = name.init[name.init.size() - 1 - k];
        const std::int32_t bit = xp_module_of(flat, scope).bits[name.bits.first + k];
        const std::int32_t net = xp_net_at(flat, scope, bit);
        if ((digit != '0' && digit != '1') || net < 0) continue;
        set_initial(flat, flat.nets[static_cast<std::size_t>(net)], digit == '0' ? xp_const_0 : xp_const_1,
                    status);
    }
}

// Of what a memory reads, from the first of its values.
void set_initial_reads(xp_flat& flat, const xp_scope& scope, const xp_gate& gate) {
    const auto set = [&](std::int32_t bit, std::string_view values) {
        if (!values.empty() && (values[0] == '0' || values[0] == '1'))
            net_at(flat, scope, bit).initial = values[0] == '0' ? xp_const_0 : xp_const_1;
    };
    if (!xp_is_memory(gate.model)) return;
    set(gate.output, gate.output_values);
    for (std::uint32_t i = 0; i < gate.pin_count; ++i)
        if (const xp_pin& pin = xp_body_of(flat, scope).pins[gate.first_pin + i]; pin.is_output)
            set(pin.net, pin.values);
}

void set_initial_values(xp_flat& flat, xp_status& status) {
    for (const xp_scope& scope : flat.scopes)
        for (const xp_gate& gate : xp_body_of(flat, scope).gates) set_initial_reads(flat, scope, gate);
    for (const xp_scope& scope : flat.scopes)
        for (const xp_netname& name : xp_module_of(flat, scope).netnames)
            if (!name.init.empty()) set_initial_bits(flat, scope, name, status);
}

void warn_of_nets(const xp_flat& flat, xp_status& status) {
    for (const xp_flat_net& net : flat.nets) {
        const bool is_driven_input = net.is_input && !net.is_output && net.drivers > 0;
        const bool is_open = !net.is_input && net.drivers == 0 && net.loads > 0 && net.constant == 0;
        if (!is_driven_input && !is_open) continue;
        xp_warn(status, net_path(flat, net.name),
                is_open ? "nothing drives this net" : "an input port is driven by a cell");
    }
}

}  // namespace

void xp_flatten(xp_netlist& netlist, xp_hierarchy& hierarchy, xp_flat& flat, xp_status& status) {
    if (!xp_ok(status)) return;
    flat.netlist = &netlist;
    flat.hierarchy = &hierarchy;
    joints j{flat, status, {}};
    add_scopes(j);
    if (!xp_ok(status)) return;
    numbering n{j, std::vector<std::int32_t>(j.root.size(), -1)};
    name_nets(n);
    add_constants(n, netlist, hierarchy, used_constants(j));
    for (std::int32_t& net : flat.net_of) net = n.net_of_element[net];
    count_ports(flat);
    count_pins(flat, status);
    if (xp_ok(status)) set_initial_values(flat, status);
    if (xp_ok(status)) warn_of_nets(flat, status);
}

std::vector<std::uint32_t> xp_naming_order(const xp_body& body) {
    std::vector<std::uint32_t> order(body.names.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        return rank_of(body.names[a]) < rank_of(body.names[b]);
    });
    return order;
}

bool xp_is_register_net(const xp_flat& flat, const xp_flat_net& net) {
    if (net.drivers == 0) return false;
    const xp_scope& scope = scope_of_gate(flat, net.driver);
    return xp_is_register(xp_body_of(flat, scope).gates[net.driver - scope.first_gate].model);
}

const xp_body& xp_body_of(const xp_flat& flat, const xp_scope& scope) {
    return flat.hierarchy->bodies[scope.module];
}

const xp_module& xp_module_of(const xp_flat& flat, const xp_scope& scope) {
    return flat.netlist->modules[scope.module];
}

const xp_net_name& xp_name_of(const xp_flat& flat, const xp_net_ref& ref) {
    return xp_body_of(flat, flat.scopes[ref.scope]).names[ref.name];
}

std::int32_t xp_net_at(const xp_flat& flat, const xp_scope& scope, std::int32_t bit) {
    return bit < 0 ? flat.constant_net[element_of_constant(bit)]
                   : flat.net_of[scope.first_bit + static_cast<std::size_t>(bit)];
}

const xp_child& xp_child_of(const xp_flat& flat, const xp_scope& scope) {
    return xp_body_of(flat, flat.scopes[static_cast<std::size_t>(scope.parent)]).children[scope.child];
}

std::string xp_raw_scope_path(const xp_flat& flat, std::size_t scope) {
    std::vector<std::string_view> names;
    for (const xp_scope* at = &flat.scopes[scope]; at->parent >= 0;) {
        const xp_scope& parent = flat.scopes[static_cast<std::size_t>(at->parent)];
        names.push_back(xp_module_of(flat, parent).cells[xp_child_of(flat, *at).cell].name);
        at = &parent;
    }
    std::string path = "/";
    for (auto name = names.rbegin(); name != names.rend(); ++name) (path += *name) += '/';
    return path;
}

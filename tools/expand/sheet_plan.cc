// What stands on the sheets of a module.
#include "expand/sheet_plan.h"

#include <algorithm>
#include <map>

namespace {

struct owner {  // the vector that a bit of the module belongs to
    std::int32_t vector = -1;
    std::uint32_t bit = 0;
};

struct planner {
    const xp_flat& flat;
    const xp_netlist& netlist;
    const xp_bus_table& buses;
    std::uint32_t module;
    const std::string* constant_names;
    xp_sheet_plan& plan;
    std::vector<xp_net_ref> bit_name;                  // by bit: its first name
    std::vector<owner> owners;                         // by bit
    std::map<std::int32_t, std::int32_t> scalar_nets;  // sheet net by bit or constant
    std::map<std::uint32_t, std::int32_t> bus_nets;    // sheet net by vector
    std::map<std::uint32_t, xp_model> models;          // by cell: of the gate that drives its output
};

const xp_module& module_of(const planner& p) { return p.netlist.modules[p.module]; }
const xp_body& body_of(const planner& p) { return p.flat.hierarchy->bodies[p.module]; }
std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

void name_bits(planner& p) {
    const xp_body& body = body_of(p);
    const auto bits = at(module_of(p).net_count);
    std::vector<bool> is_named(bits);
    p.bit_name.resize(bits);
    p.owners.resize(bits);
    for (const std::uint32_t name : xp_naming_order(body))
        for (std::uint32_t k = 0; k < body.names[name].bits.count; ++k) {
            const std::int32_t bit = module_of(p).bits[body.names[name].bits.first + k];
            if (bit < 0 || at(bit) >= bits) continue;
            if (!is_named[at(bit)]) p.bit_name[at(bit)] = {0, name, k};
            is_named[at(bit)] = true;
            if (p.buses[p.module][name] && p.owners[at(bit)].vector < 0)
                p.owners[at(bit)] = {static_cast<std::int32_t>(name), k};
        }
}

// ---- nets

std::int32_t scalar_net(planner& p, std::int32_t bit) {
    const auto [known, is_new] =
        p.scalar_nets.try_emplace(bit, static_cast<std::int32_t>(p.plan.nets.size()));
    if (!is_new) return known->second;
    xp_sheet_net net;
    net.bit = bit;
    if (bit < 0) {
        net.name = p.constant_names[-1 - bit];
    } else {
        const xp_net_ref& ref = p.bit_name[at(bit)];
        const xp_net_name& name = body_of(p).names[ref.name];
        net.name = std::string(name.name) + xp_bit_suffix(name, ref.bit);
        net.is_hidden = name.hidden;
    }
    p.plan.nets.push_back(net);
    return known->second;
}

std::int32_t bus_net(planner& p, std::uint32_t vector) {
    const auto [known, is_new] =
        p.bus_nets.try_emplace(vector, static_cast<std::int32_t>(p.plan.nets.size()));
    if (!is_new) return known->second;
    const xp_net_name& name = body_of(p).names[vector];
    xp_sheet_net net;
    net.name = std::string(name.name) + xp_range_suffix(name);
    net.is_bus = true;
    net.is_hidden = name.hidden;
    net.start = static_cast<std::int16_t>(xp_bit_label(name, name.bits.count - 1));
    net.end = static_cast<std::int16_t>(xp_bit_label(name, 0));
    net.vector = vector;
    p.plan.nets.push_back(net);
    return known->second;
}

// The bus that the bits are the whole of, -1 for none.
std::int32_t bus_of(const planner& p, const xp_bits& bits) {
    const std::vector<std::int32_t>& all = module_of(p).bits;
    if (bits.count < 2 || all[bits.first] < 0) return -1;
    const std::int32_t vector = p.owners[at(all[bits.first])].vector;
    if (vector < 0 || body_of(p).names[at(vector)].bits.count != bits.count) return -1;
    for (std::uint32_t k = 0; k < bits.count; ++k) {
        const std::int32_t bit = all[bits.first + k];
        if (bit < 0 || p.owners[at(bit)].vector != vector || p.owners[at(bit)].bit != k) return -1;
    }
    return vector;
}

// ---- cells

struct port_look {
    std::string name;
    xp_direction direction = xp_direction::input;
    bool is_clock = false, is_low = false, is_control = false;
    std::int32_t offset = 0;
    bool upto = false;
};

std::int16_t label(const port_look& port, std::uint32_t count, std::uint32_t k) {
    return static_cast<std::int16_t>(port.offset + static_cast<std::int32_t>(port.upto ? count - 1 - k : k));
}

void add_pin(xp_sheet_cell& cell, const port_look& port, const std::string& suffix, std::int32_t net) {
    sg_pin_kind pin;
    pin.name = port.name + suffix;
    pin.is_right = port.direction != xp_direction::input;
    pin.is_clock = port.is_clock;
    pin.is_low = port.is_low;
    pin.is_control = port.is_control;
    cell.kind.pins.push_back(pin);
    cell.nets.push_back(net);
}

bool is_open(const port_look& port, std::int32_t bit) {
    return port.direction != xp_direction::input && (bit == xp_const_x || bit == xp_const_z);
}

// One pin at a bus, or one a bit, the most significant on top.
void add_port(planner& p, xp_sheet_cell& cell, const port_look& port, const xp_bits& bits) {
    const std::int32_t vector = bus_of(p, bits);
    const auto range = [&](std::uint32_t k) {
        return "[" + std::to_string(label(port, bits.count, k)) + "]";
    };
    if (vector < 0) {
        for (std::uint32_t k = bits.count; k-- > 0;) {
            const std::int32_t bit = module_of(p).bits[bits.first + k];
            add_pin(cell, port, bits.count > 1 ? range(k) : "", is_open(port, bit) ? -1 : scalar_net(p, bit));
        }
        return;
    }
    const std::int16_t start = label(port, bits.count, bits.count - 1), end = label(port, bits.count, 0);
    add_pin(cell, port, "[" + std::to_string(start) + ":" + std::to_string(end) + "]",
            bus_net(p, static_cast<std::uint32_t>(vector)));
    cell.kind.pins.back().is_bus = true;
    cell.kind.pins.back().start = start;
    cell.kind.pins.back().end = end;
}

// What the pins of a type are, in the order in which they stand.
std::vector<port_look> ports_of_gate(const xp_cell_type& type, sg_form form) {
    std::vector<port_look> ports;
    for (const char letter : type.inputs) {
        port_look port;
        port.name = letter;
        port.is_control = form == sg_form::multiplexer && letter >= 'S';
        port.is_low = letter == 'B' && (type.name == "$_ANDNOT_" || type.name == "$_ORNOT_");
        ports.push_back(port);
    }
    ports.push_back({"Y", xp_direction::output});
    return ports;
}

std::vector<port_look> ports_of_timed(const planner& p, const xp_cell& cell, const xp_timed_row& row,
                                      const xp_timed_form& form) {
    std::vector<port_look> ports;
    for (const char letter : std::string_view("DAELSRCQ")) {
        if (!xp_has_port(row, letter)) continue;
        port_look port;
        port.name = xp_timed_port_name(row, letter);
        port.direction = letter == 'Q' ? xp_direction::output : xp_direction::input;
        port.is_clock = letter == 'C';
        port.is_low =
            form.low.find(letter) != std::string::npos ||
            (xp_is_word(row) && xp_parameter_of(module_of(p), cell, port.name + "_POLARITY", 1) == 0);
        port.is_control = xp_is_tristate(row.model) && letter == 'E';
        ports.push_back(port);
    }
    return ports;
}

std::vector<port_look> ports_of_module(const planner& p, std::uint32_t contents) {
    std::vector<port_look> ports;
    for (const xp_port& port : p.netlist.modules[contents].ports)
        ports.push_back({std::string(p.flat.hierarchy->bodies[contents].names[ports.size()].name),
                         port.direction, false, false, false, port.offset, port.upto});
    return ports;
}

void add_ports(planner& p, xp_sheet_cell& drawn, const std::vector<port_look>& ports,
               const std::vector<std::string_view>& names) {
    const xp_cell& cell = module_of(p).cells[drawn.cell];
    for (std::size_t i = 0; i < ports.size(); ++i)
        if (const xp_connection* c = xp_find_connection(module_of(p), cell, names[i]); c != nullptr)
            add_port(p, drawn, ports[i], c->bits);
        else
            add_pin(drawn, ports[i], "", -1);
}

void add_primitive(planner& p, xp_sheet_cell& drawn) {
    const xp_cell& cell = module_of(p).cells[drawn.cell];
    const xp_connection* input = xp_find_connection(module_of(p), cell, "A");
    const xp_cell_look look = xp_look_of(cell.type, input != nullptr ? input->bits.count : 0);
    drawn.kind.form = look.form;
    drawn.kind.is_inverted = look.is_inverted;
    const auto model = p.models.find(drawn.cell);
    if (model != p.models.end()) drawn.kind.model = model->second->model.name;
    if (look.type != drawn.kind.model) drawn.kind.type = look.type;
    std::vector<port_look> ports;
    xp_timed_form form;
    if (const xp_timed_row* row = xp_find_timed(cell.type, form); row != nullptr) {
        ports = ports_of_timed(p, cell, *row, form);
        drawn.is_register = xp_is_register(row->model);
    } else {
        ports = ports_of_gate(*xp_find_cell_type(cell.type), look.form);
    }
    std::vector<std::string_view> names;
    for (const port_look& port : ports) names.push_back(port.name);
    add_ports(p, drawn, ports, names);
}

void add_module(planner& p, xp_sheet_cell& drawn, const xp_child& child) {
    const std::vector<port_look> ports = ports_of_module(p, child.module);
    drawn.module = static_cast<std::int32_t>(child.module);
    drawn.kind.model = xp_clean_name(p.netlist.modules[child.module].name);
    std::vector<std::string_view> names;
    for (const xp_port& port : p.netlist.modules[child.module].ports) names.push_back(port.name);
    add_ports(p, drawn, ports, names);
}

void find_models(planner& p) {
    for (const xp_part& part : body_of(p).parts)
        p.models[part.cell] = body_of(p).gates[part.first_gate + part.gate_count - 1].model;
}

void add_cells(planner& p) {
    std::map<std::uint32_t, const xp_child*> children;
    for (const xp_child& child : body_of(p).children) children.emplace(child.cell, &child);
    for (std::uint32_t cell = 0; cell < module_of(p).cells.size(); ++cell) {
        const auto child = children.find(cell);
        const xp_cell_type* type = xp_find_cell_type(module_of(p).cells[cell].type);
        if (type != nullptr && type->shape == xp_shape::ignored) continue;
        xp_sheet_cell drawn;
        drawn.cell = cell;
        drawn.name = body_of(p).cell_names[cell];
        drawn.is_hidden = module_of(p).cells[cell].hidden;
        if (child != children.end())
            add_module(p, drawn, *child->second);
        else
            add_primitive(p, drawn);
        p.plan.cells.push_back(std::move(drawn));
    }
}

// ---- ports

// A vector port is a tag at a bus if a pin of a cell is, else one tag a bit.
void add_module_ports(planner& p) {
    const xp_module& module = module_of(p);
    for (std::size_t i = 0; i < module.ports.size(); ++i) {
        const xp_net_name& name = body_of(p).names[i];
        const std::int32_t vector = bus_of(p, name.bits);
        if (vector >= 0 && p.bus_nets.contains(static_cast<std::uint32_t>(vector))) {
            p.plan.ports.push_back({std::string(name.name) + xp_range_suffix(name), name.direction,
                                    bus_net(p, static_cast<std::uint32_t>(vector))});
            continue;
        }
        for (std::uint32_t k = name.bits.count; k-- > 0;)
            p.plan.ports.push_back({std::string(name.name) + xp_bit_suffix(name, k), name.direction,
                                    scalar_net(p, module.bits[name.bits.first + k])});
    }
}

// ---- what is joined by name

struct use {
    bool is_read = false, is_driven = false;
};

std::vector<use> uses_of(const xp_sheet_plan& plan) {
    std::vector<use> uses(plan.nets.size());
    for (const xp_sheet_cell& cell : plan.cells)
        for (std::size_t pin = 0; pin < cell.nets.size(); ++pin)
            if (cell.nets[pin] >= 0)
                (cell.kind.pins[pin].is_right ? uses[at(cell.nets[pin])].is_driven
                                              : uses[at(cell.nets[pin])].is_read) = true;
    for (const xp_sheet_port& port : plan.ports) {
        if (port.direction != xp_direction::output) uses[at(port.net)].is_driven = true;
        if (port.direction != xp_direction::input) uses[at(port.net)].is_read = true;
    }
    return uses;
}

void join_bits(planner& p) {
    const std::vector<use> uses = uses_of(p.plan);
    for (const auto& [vector, bus] : p.bus_nets) {
        const xp_bits& bits = body_of(p).names[vector].bits;
        for (std::uint32_t k = 0; k < bits.count; ++k) {
            const auto bit = p.scalar_nets.find(module_of(p).bits[bits.first + k]);
            if (bit == p.scalar_nets.end()) continue;
            xp_sheet_net& one = p.plan.nets[at(bit->second)];
            xp_sheet_net& all = p.plan.nets[at(bus)];
            one.is_read_elsewhere |= uses[at(bus)].is_read;
            one.is_driven_elsewhere |= uses[at(bus)].is_driven;
            all.is_read_elsewhere |= uses[at(bit->second)].is_read;
            all.is_driven_elsewhere |= uses[at(bit->second)].is_driven;
        }
    }
}

bool is_bus_in(const xp_flat& flat, const xp_scope& scope, const xp_net_name& name) {
    const std::vector<std::int32_t>& bits = xp_module_of(flat, scope).bits;
    const std::int32_t first = xp_net_at(flat, scope, bits[name.bits.first]);
    if (first < 0 || flat.nets[at(first)].bus < 0) return false;
    const xp_bus& bus = flat.buses[at(flat.nets[at(first)].bus)];
    if (bus.first_net != first || xp_name_of(flat, {bus.scope, bus.name, 0}).bits.count != name.bits.count)
        return false;
    for (std::uint32_t k = 0; k < name.bits.count; ++k)
        if (xp_net_at(flat, scope, bits[name.bits.first + k]) != first + static_cast<std::int32_t>(k))
            return false;
    return true;
}

}  // namespace

xp_bus_table xp_find_buses(const xp_flat& flat) {
    xp_bus_table table;
    for (const xp_body& body : flat.hierarchy->bodies) {
        table.emplace_back();
        for (const xp_net_name& name : body.names) table.back().push_back(xp_is_vector(name));
    }
    for (const xp_scope& scope : flat.scopes) {
        const xp_body& body = xp_body_of(flat, scope);
        std::vector<bool>& is_bus = table[scope.module];
        for (std::size_t name = 0; name < body.names.size(); ++name)
            if (is_bus[name]) is_bus[name] = is_bus_in(flat, scope, body.names[name]);
    }
    return table;
}

void xp_plan_sheet(const xp_flat& flat, const xp_bus_table& buses, std::uint32_t module,
                   const std::string constant_names[xp_constants], xp_sheet_plan& plan) {
    planner p{flat, *flat.netlist, buses, module, constant_names, plan, {}, {}, {}, {}, {}};
    plan.title = xp_clean_name(module_of(p).name);
    name_bits(p);
    find_models(p);
    add_cells(p);
    add_module_ports(p);
    join_bits(p);
}

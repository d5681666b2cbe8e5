// What stands on the sheets of a module.
#include "expand/sheet_planner.h"

#include <algorithm>
#include <map>

#include "expand/sheet_nets.h"
#include "sheets/place_of.h"

namespace {

struct planner {
    const xp_flat& flat;
    const xp_netlist& netlist;
    std::uint32_t module;
    xp_sheet_plan& plan;
    xp_sheet_nets nets;
    std::map<std::uint32_t, xp_model> models;  // by cell: of the gate that drives its output
};

const xp_module& module_of(const planner& p) { return p.netlist.modules[p.module]; }
const xp_body& body_of(const planner& p) { return p.flat.hierarchy->bodies[p.module]; }

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

std::string range_text(std::int32_t from, std::int32_t to) {
    return "[" + std::to_string(from) + (from == to ? "" : ":" + std::to_string(to)) + "]";
}

// One pin, at a thick wire when it has several bits.
void add_port(planner& p, xp_sheet_cell& cell, const port_look& port, const xp_bits& range) {
    const auto first = module_of(p).bits.begin() + range.first;
    std::vector<std::int32_t> bits(first, first + range.count);
    if (port.direction != xp_direction::input)
        for (std::int32_t& bit : bits)
            if (bit == xp_const_x || bit == xp_const_z) bit = xp_open_bit;
    const bool is_open =
        std::all_of(bits.begin(), bits.end(), [](std::int32_t bit) { return bit == xp_open_bit; });
    if (range.count == 1) return add_pin(cell, port, "", is_open ? -1 : xp_sheet_scalar(p.nets, bits[0]));
    const std::int16_t start = label(port, range.count, range.count - 1), end = label(port, range.count, 0);
    add_pin(cell, port, range_text(start, end),
            is_open ? -1 : xp_sheet_word(p.nets, bits, cell.name + "." + port.name));
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

// The ports that the memory has, without the constants that only fill up.
std::vector<port_look> ports_of_memory(const planner& p, const xp_cell& cell) {
    std::vector<port_look> ports;
    for (std::uint32_t i = 0; i < cell.connection_count; ++i) {
        const xp_connection& connection = module_of(p).connections[cell.first_connection + i];
        const auto first = module_of(p).bits.begin() + connection.bits.first;
        if (std::all_of(first, first + connection.bits.count, [](std::int32_t bit) { return bit < 0; }))
            continue;
        port_look port;
        port.name = connection.port;
        port.direction = port.name == "RD_DATA" ? xp_direction::output : xp_direction::input;
        port.is_clock = port.name.ends_with("_CLK");
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
        if (const xp_connection* c = xp_find_connection(module_of(p), cell, names[i]);
            c != nullptr && c->bits.count > 0)
            add_port(p, drawn, ports[i], c->bits);
        else
            add_pin(drawn, ports[i], "", -1);
}

void find_vector(const planner& p, xp_sheet_cell& drawn) {
    for (std::size_t pin = 0; pin < drawn.nets.size(); ++pin) {
        const std::int32_t net = drawn.nets[pin];
        if (!drawn.kind.pins[pin].is_right || net < 0 || p.plan.nets[sg_at(net)].is_bus) continue;
        const std::int32_t bit = p.plan.nets[sg_at(net)].bits[0];
        if (bit < 0 || !xp_is_vector(body_of(p).names[p.nets.names[sg_at(bit)].name])) continue;
        drawn.vector = static_cast<std::int32_t>(p.nets.names[sg_at(bit)].name);
        drawn.vector_bit = p.nets.names[sg_at(bit)].bit;
    }
}

// Inputs, then outputs; what a register captures with is a clock.
std::vector<port_look> ports_of_library(const xp_library_cell& type) {
    std::vector<port_look> ports, outputs;
    for (std::size_t i = 0; i < type.pins.size(); ++i) {
        port_look port;
        port.name = type.pins[i].name;
        port.direction = type.pins[i].direction;
        const auto is_single = [&](const xp_function& f) {
            return xp_is_literal(f) && f.inputs[0] == static_cast<std::int32_t>(i);
        };
        for (const xp_library_register& r : type.registers) {
            port.is_clock = port.is_clock || (is_single(r.control) && !r.is_latch);
            for (const xp_function* f : {&r.control, &r.clear, &r.preset})
                port.is_low = port.is_low || (is_single(*f) && xp_is_inverted_literal(*f));
        }
        for (const xp_library_pin& pin : type.pins)
            if (pin.is_tristate && is_single(pin.enable)) {
                port.is_control = true;
                port.is_low = xp_is_inverted_literal(pin.enable);
            }
        (port.direction == xp_direction::input ? ports : outputs).push_back(port);
    }
    ports.insert(ports.end(), outputs.begin(), outputs.end());
    return ports;
}

void add_named_ports(planner& p, xp_sheet_cell& drawn, const std::vector<port_look>& ports) {
    std::vector<std::string_view> names;
    names.reserve(ports.size());
    for (const port_look& port : ports) names.push_back(port.name);
    add_ports(p, drawn, ports, names);
}

void add_library_cell(planner& p, xp_sheet_cell& drawn, const xp_library_cell& type) {
    const xp_cell_look look = xp_look_of_library(type);
    drawn.kind.form = look.form;
    drawn.kind.is_inverted = look.is_inverted;
    drawn.kind.type = type.name;
    if (const auto model = p.models.find(drawn.cell); model != p.models.end())
        drawn.kind.model = model->second->model.name;
    drawn.is_register = !type.registers.empty();
    add_named_ports(p, drawn, ports_of_library(type));
    if (drawn.is_register) find_vector(p, drawn);
}

void add_primitive(planner& p, xp_sheet_cell& drawn) {
    const xp_cell& cell = module_of(p).cells[drawn.cell];
    if (const xp_library_cell* type = xp_find_library_cell(p.flat.hierarchy->library, cell.type);
        type != nullptr)
        return add_library_cell(p, drawn, *type);
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
    } else if (cell.type == "$mem_v2") {
        ports = ports_of_memory(p, cell);
    } else {
        ports = ports_of_gate(*xp_find_cell_type(cell.type), look.form);
    }
    add_named_ports(p, drawn, ports);
    if (drawn.is_register) find_vector(p, drawn);
}

void add_module(planner& p, xp_sheet_cell& drawn, const xp_child& child) {
    const std::vector<port_look> ports = ports_of_module(p, child.module);
    drawn.module = static_cast<std::int32_t>(child.module);
    const std::string_view name = p.netlist.modules[child.module].name;
    drawn.kind.model = xp_clean_name(xp_readable_name(name));
    if (xp_clean_name(name) != drawn.kind.model) drawn.kind.module = name;
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

void add_module_ports(planner& p) {
    const xp_module& module = module_of(p);
    for (std::size_t i = 0; i < module.ports.size(); ++i) {
        const xp_net_name& name = body_of(p).names[i];
        if (name.bits.count == 0) continue;
        const auto first = module.bits.begin() + name.bits.first;
        const bool is_word = name.bits.count > 1;
        p.plan.ports.push_back(
            {std::string(name.name) + (is_word ? xp_range_suffix(name) : xp_bit_suffix(name, 0)),
             name.direction,
             is_word ? xp_sheet_word(p.nets, {first, first + name.bits.count}, "")
                     : xp_sheet_scalar(p.nets, *first)});
    }
}

// ---- who reads and drives

struct use {
    bool is_read = false, is_driven = false;
};

std::vector<use> uses_of(const xp_sheet_plan& plan) {
    std::vector<use> uses(plan.nets.size());
    for (const xp_sheet_cell& cell : plan.cells)
        for (std::size_t pin = 0; pin < cell.nets.size(); ++pin)
            if (cell.nets[pin] >= 0)
                (cell.kind.pins[pin].is_right ? uses[sg_at(cell.nets[pin])].is_driven
                                              : uses[sg_at(cell.nets[pin])].is_read) = true;
    for (const xp_sheet_port& port : plan.ports) {
        if (port.direction != xp_direction::output) uses[sg_at(port.net)].is_driven = true;
        if (port.direction != xp_direction::input) uses[sg_at(port.net)].is_read = true;
    }
    return uses;
}

// ---- joints

struct jointing {
    planner& p;
    std::vector<use> uses;                  // by net
    std::vector<std::int32_t> nets_of_bit;  // how many nets have the bit
};

void count_nets_of_bits(jointing& j) {
    j.nets_of_bit.resize(sg_at(module_of(j.p).net_count));
    for (const xp_sheet_net& net : j.p.plan.nets)
        for (const std::int32_t bit : net.bits)
            if (bit >= 0) ++j.nets_of_bit[sg_at(bit)];
}

// A part of a wire that something drives is let out where another net has its bits.
bool is_part_shown(const jointing& j, std::span<const std::int32_t> bits, bool is_driven) {
    if (!is_driven) return bits[0] != xp_open_bit;
    return std::any_of(bits.begin(), bits.end(),
                       [&](std::int32_t bit) { return bit >= 0 && j.nets_of_bit[sg_at(bit)] > 1; });
}

void add_joint_pin(xp_sheet_cell& joint, const std::string& name, bool is_right, bool is_bus,
                   std::int32_t net) {
    sg_pin_kind pin;
    pin.name = name;
    pin.is_right = is_right;
    pin.is_bus = is_bus;
    joint.kind.pins.push_back(pin);
    joint.nets.push_back(net);
}

void add_joint(jointing& j, std::int32_t word) {
    const xp_sheet_net net = j.p.plan.nets[sg_at(word)];  // a copy: parts may add nets
    const bool is_driven = j.uses[sg_at(word)].is_driven;
    const auto label_of = [&](std::uint32_t k) {
        return net.start >= net.end ? net.end + static_cast<std::int32_t>(k)
                                    : net.end - static_cast<std::int32_t>(k);
    };
    xp_sheet_cell joint;
    joint.name = net.name;
    joint.kind.form = sg_form::joint;
    for (const xp_word_part& part : xp_parts_of_word(j.p.nets, net.bits)) {
        const auto bits = std::span(net.bits).subspan(part.first, part.count);
        if (is_part_shown(j, bits, is_driven))
            add_joint_pin(joint, range_text(label_of(part.first + part.count - 1), label_of(part.first)),
                          is_driven, part.count > 1, xp_sheet_part(j.p.nets, bits));
    }
    if (joint.nets.empty()) return;
    add_joint_pin(joint, net.name, !is_driven, true, word);
    j.p.plan.cells.push_back(std::move(joint));
}

void add_joints(planner& p) {
    jointing j{p, uses_of(p.plan), {}};
    count_nets_of_bits(j);
    const auto count = static_cast<std::int32_t>(p.plan.nets.size());
    for (std::int32_t net = 0; net < count; ++net)
        if (p.plan.nets[sg_at(net)].is_mixture) add_joint(j, net);
}

// ---- what is joined by name

void join_by_name(planner& p) {
    const std::vector<use> uses = uses_of(p.plan);
    std::vector<std::vector<std::int32_t>> nets_at(sg_at(module_of(p).net_count));  // by bit
    const auto count = static_cast<std::int32_t>(p.plan.nets.size());
    for (std::int32_t net = 0; net < count; ++net)
        for (const std::int32_t bit : p.plan.nets[sg_at(net)].bits)
            if (bit >= 0 && !p.plan.nets[sg_at(net)].is_mixture) nets_at[sg_at(bit)].push_back(net);
    for (const std::vector<std::int32_t>& nets : nets_at)
        for (const std::int32_t net : nets)
            for (const std::int32_t other : nets) {
                if (net == other) continue;
                p.plan.nets[sg_at(net)].joined.push_back(other);
                p.plan.nets[sg_at(net)].is_read_elsewhere |= uses[sg_at(other)].is_read;
                p.plan.nets[sg_at(net)].is_driven_elsewhere |= uses[sg_at(other)].is_driven;
            }
    for (xp_sheet_net& net : p.plan.nets) {
        std::sort(net.joined.begin(), net.joined.end());
        net.joined.erase(std::unique(net.joined.begin(), net.joined.end()), net.joined.end());
    }
}

}  // namespace

// Of "$paramod\\alu\\W=..." and "$paramod$1f3a...\\alu".
std::string_view xp_readable_name(std::string_view module) {
    const std::size_t begin = module.find('\\');
    if (!module.starts_with("$paramod") || begin == std::string_view::npos) return module;
    const std::string_view name = module.substr(begin + 1);
    return name.substr(0, name.find('\\'));
}

void xp_plan_sheet(const xp_flat& flat, std::uint32_t module, const std::string constant_names[xp_constants],
                   xp_sheet_plan& plan) {
    const xp_module& contents = flat.netlist->modules[module];
    const xp_body& body = flat.hierarchy->bodies[module];
    planner p{
        flat, *flat.netlist, module, plan, {flat, contents, body, constant_names, plan, {}, {}, {}, {}, {}},
        {}};
    plan.title = xp_clean_name(xp_readable_name(contents.name));
    xp_name_sheet_bits(p.nets);
    find_models(p);
    add_cells(p);
    add_module_ports(p);
    add_joints(p);
    join_by_name(p);
}

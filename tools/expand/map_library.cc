// The gates of library cells, from the plan of their type.
#include <algorithm>

#include "expand/cell_gates.h"
#include "expand/liberty.h"
#include "expand/naming.h"

namespace {

constexpr std::int32_t no_place = -1;

struct library_context : xp_cell_gates {
    const xp_library_cell& type;
    std::vector<std::int32_t> places;      // by pin: its bit in the module's bits
    std::vector<std::int32_t> nets;        // by part: what its last gate drives
    std::vector<std::int32_t> state_nets;  // by register
};

std::int32_t place_of(library_context& c, const xp_library_pin& pin) {
    const xp_connection* connection = xp_find_connection(c.m.module, xp_cell_of(c), pin.name);
    if (connection == nullptr || connection->bits.count == 0)
        return static_cast<std::int32_t>(
            xp_open_port(c, pin.name, pin.direction == xp_direction::output, 1).first);
    if (connection->bits.count != 1)
        xp_fail(c.m.status, xp_fault::bad_width, c.where,
                "port " + xp_quoted(pin.name) + " has 1 bit, the connection " +
                    std::to_string(connection->bits.count));
    return static_cast<std::int32_t>(connection->bits.first);
}

void refuse_other_ports(library_context& c) {
    for (std::uint32_t i = 0; i < xp_cell_of(c).connection_count; ++i) {
        const std::string_view port = c.m.module.connections[xp_cell_of(c).first_connection + i].port;
        const bool is_known =
            std::ranges::any_of(c.type.pins, [&](const xp_library_pin& pin) { return pin.name == port; });
        if (!is_known) xp_fail(c.m.status, xp_fault::unknown_port, c.where, xp_quoted(port));
    }
}

std::int32_t inner_net(library_context& c, const std::string& suffix) {
    const std::int32_t net = c.m.module.net_count++;
    xp_add_net_name(c.m, net, std::string(xp_cell_of(c).name) + suffix,
                    std::string(c.m.body.cell_names[c.cell]) + suffix);
    return net;
}

xp_bits bits_at(std::int32_t place) { return {static_cast<std::uint32_t>(place), 1}; }

void find_nets(library_context& c) {
    c.state_nets.resize(c.type.registers.size(), no_place);
    for (const xp_plan_part& part : c.type.parts) {
        const auto pin = static_cast<std::size_t>(part.pin);
        c.nets.push_back(part.pin < 0 ? inner_net(c, part.suffix)
                                      : xp_output_net(c, bits_at(c.places[pin]), 0, c.type.pins[pin].name));
        if (part.state >= 0 && part.output == "Q")
            c.state_nets[static_cast<std::size_t>(part.state)] = c.nets.back();
    }
}

xp_signal signal_of(library_context& c, const xp_plan_pin& pin, const std::vector<xp_signal>& gates) {
    const std::string_view name = xp_keep_once(c.m.netlist.texts, pin.name);
    const auto index = static_cast<std::size_t>(pin.source.index);
    switch (pin.source.kind) {
        case xp_plan_source::kind::port:
            return {xp_leaf(c, static_cast<std::uint32_t>(c.places[index])), 0, name};
        case xp_plan_source::kind::state:
            return {c.state_nets[index], 0, name};
        case xp_plan_source::kind::constant:
            return {index == 0 ? xp_const_0 : xp_const_1, 0, name};
        case xp_plan_source::kind::gate:
            break;
    }
    return {gates[index].net, gates[index].depth, name};
}

std::vector<xp_signal> operands_of(library_context& c, const xp_plan_gate& gate,
                                   const std::vector<xp_signal>& gates) {
    std::vector<xp_signal> operands;
    for (const xp_plan_pin& pin : gate.pins) operands.push_back(signal_of(c, pin, gates));
    return operands;
}

void map_part(library_context& c, std::size_t place) {
    const xp_plan_part& part = c.type.parts[place];
    xp_begin_part(c, {}, 0);
    c.suffix = part.suffix;
    std::vector<xp_signal> gates;
    for (const xp_plan_gate& gate : part.gates) {
        const std::vector<xp_signal> operands = operands_of(c, gate, gates);
        if (&gate == &part.gates.back()) {
            xp_add_last_gate(c, gate.model, operands, c.nets[place]);
            if (!xp_is_register(gate.model)) c.m.body.parts.back().depth = xp_depth_of(operands);
        } else {
            gates.push_back(xp_add_inner_gate(c, gate.model, operands));
        }
        c.m.body.gates.back().config = xp_keep_once(c.m.netlist.texts, gate.table);
    }
    c.m.body.gates.back().output_name = xp_keep_once(c.m.netlist.texts, part.output);
    c.m.body.gates.back().is_checked = part.is_checked;
    xp_end_part(c);
}

}  // namespace

void xp_map_library_cell(xp_mapping& m, std::uint32_t cell, const xp_library_cell& type) {
    library_context c{xp_begin_cell(m, cell), type, {}, {}, {}};
    for (const xp_library_pin& pin : type.pins) c.places.push_back(place_of(c, pin));
    refuse_other_ports(c);
    if (xp_ok(m.status)) find_nets(c);
    for (std::size_t part = 0; part < type.parts.size() && xp_ok(m.status); ++part) map_part(c, part);
}

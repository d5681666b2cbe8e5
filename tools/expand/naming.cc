// The names of a module, and how its module instances are bound.
#include "expand/naming.h"

#include "expand/register_names.h"

namespace {

std::string_view keep(xp_mapping& m, std::string_view text) { return xp_keep(m.netlist.texts, text); }

// Cleaned and taken; the text of the netlist itself where nothing had to change.
std::string_view take_name(xp_mapping& m, std::string_view raw, const std::string& wanted) {
    const std::string name = xp_take_name(m.body.taken, wanted);
    return name == raw ? raw : keep(m, name);
}

void add_name(xp_mapping& m, xp_net_name name, const std::string& wanted) {
    if (xp_is_vector(name)) {
        const std::string base = xp_take_vector(m.body.taken, wanted, name);
        name.name = base == name.raw ? name.raw : keep(m, base);
    } else {
        name.name = take_name(m, name.raw, wanted);
    }
    m.body.names.push_back(name);
}

// Commands do not tell letters by their case.
void warn_of_case(xp_mapping& m, const xp_net_name& port) {
    for (const xp_port& other : m.module.ports)
        if (other.name != port.raw && xp_are_equal_names(other.name, port.raw))
            return xp_warn(m.status, m.path + std::string(port.raw),
                           "the port differs from " + xp_quoted(other.name) + " in case only and is called " +
                               xp_quoted(port.name));
}

void name_ports(xp_mapping& m) {
    for (const xp_port& port : m.module.ports) {
        const std::string wanted = xp_clean_name(port.name);
        m.body.port_index.emplace(port.name, static_cast<std::uint32_t>(m.body.names.size()));
        add_name(m, {port.name, {}, false, true, port.direction, port.bits, port.offset, port.upto}, wanted);
        if (m.body.names.back().name != wanted) warn_of_case(m, m.body.names.back());
    }
}

// What a name made up by the netlist is replaced with.
std::string short_name(char letter, std::size_t& count) { return letter + std::to_string(++count); }

void name_nets(xp_mapping& m, bool hidden) {
    std::size_t count = 0;
    for (const xp_netname& net : m.module.netnames)
        if (net.hidden == hidden && net.bits.count > 0 && !m.body.port_index.contains(net.name)) {
            const std::string wanted = hidden ? short_name('n', count) : xp_clean_name(net.name);
            add_name(m, {net.name, {}, hidden, false, xp_direction::none, net.bits, net.offset, net.upto},
                     wanted);
        }
}

void name_cells(xp_mapping& m, bool hidden) {
    std::size_t count = 0;
    const std::vector<std::string> registers = hidden ? xp_register_names(m) : std::vector<std::string>();
    for (std::size_t i = 0; i < m.module.cells.size(); ++i) {
        const std::string_view raw = m.module.cells[i].name;
        if (m.module.cells[i].hidden != hidden) continue;
        const std::string wanted = !hidden                 ? xp_clean_name(raw)
                                   : !registers[i].empty() ? registers[i]
                                                           : short_name('g', count);
        m.body.cell_names[i] = take_name(m, raw, wanted);
    }
}

// The port of the module whose name differs in case only.
std::string other_case(std::string_view name, const xp_module& contents) {
    for (const xp_port& port : contents.ports)
        if (xp_are_equal_names(port.name, name)) return ", which has " + xp_quoted(port.name);
    return "";
}

bool is_open(std::int32_t bit) { return bit == xp_const_x || bit == xp_const_z; }

void bind_port(xp_mapping& m, const std::string& where, const xp_connection& connection,
               const xp_net_name& port, const xp_module& contents) {
    if (connection.bits.count == 0) return;
    if (connection.bits.count != port.bits.count)
        return xp_fail(m.status, xp_fault::bad_width, where,
                       "port " + xp_quoted(port.raw) + " has " + std::to_string(port.bits.count) +
                           " bits, the connection " + std::to_string(connection.bits.count));
    for (std::uint32_t k = 0; k < port.bits.count; ++k) {
        const std::int32_t outside = m.module.bits[connection.bits.first + k];
        if (port.direction == xp_direction::output && is_open(outside)) continue;
        m.body.bindings.push_back({contents.bits[port.bits.first + k], outside});
    }
}

}  // namespace

void xp_name_module(xp_mapping& m) {
    m.body.cell_names.resize(m.module.cells.size());
    name_ports(m);
    for (const bool hidden : {false, true}) {
        name_nets(m, hidden);
        name_cells(m, hidden);
    }
}

void xp_add_net_name(xp_mapping& m, std::int32_t net, std::string_view raw, std::string_view wanted) {
    const xp_bits bits{static_cast<std::uint32_t>(m.module.bits.size()), 1};
    m.module.bits.push_back(net);
    const std::string_view name = keep(m, xp_take_name(m.body.taken, wanted));
    m.body.names.push_back({keep(m, raw), name, true, false, xp_direction::none, bits, 0, false});
}

void xp_bind_child(xp_mapping& m, std::uint32_t cell, std::uint32_t module, const xp_body& body,
                   const xp_module& contents) {
    const xp_cell& instance = m.module.cells[cell];
    const std::string where = m.path + std::string(instance.name);
    xp_child child{cell, module, m.body.cell_names[cell], static_cast<std::uint32_t>(m.body.bindings.size()),
                   0};
    for (std::uint32_t i = 0; i < instance.connection_count && xp_ok(m.status); ++i) {
        const xp_connection& connection = m.module.connections[instance.first_connection + i];
        const auto port = body.port_index.find(connection.port);
        if (port == body.port_index.end())
            return xp_fail(m.status, xp_fault::unknown_port, where,
                           xp_quoted(connection.port) + " of module " + xp_quoted(contents.name) +
                               other_case(connection.port, contents));
        bind_port(m, where, connection, body.names[port->second], contents);
    }
    child.binding_count = static_cast<std::uint32_t>(m.body.bindings.size()) - child.first_binding;
    m.body.children.push_back(child);
}

void xp_name_remaining_nets(xp_mapping& m) {
    std::vector<bool> named(static_cast<std::size_t>(m.module.net_count));
    for (const xp_net_name& name : m.body.names)
        for (std::uint32_t k = 0; k < name.bits.count; ++k) {
            const std::int32_t bit = m.module.bits[name.bits.first + k];
            if (bit >= 0) named[static_cast<std::size_t>(bit)] = true;
        }
    const auto name_output = [&](const xp_gate& gate, std::string_view pin, std::int32_t net) {
        if (named[static_cast<std::size_t>(net)]) return;
        named[static_cast<std::size_t>(net)] = true;
        const std::string end = "." + std::string(pin);
        xp_add_net_name(m, net, std::string(gate.raw) + end, std::string(gate.name) + end);
    };
    for (const xp_gate& gate : m.body.gates) {
        name_output(gate, xp_output_name(gate), gate.output);
        for (std::uint32_t i = 0; i < gate.pin_count; ++i)
            if (const xp_pin& pin = m.body.pins[gate.first_pin + i]; pin.is_output)
                name_output(gate, pin.name, pin.net);
    }
    for (std::int32_t net = 0; net < m.module.net_count; ++net)
        if (!named[static_cast<std::size_t>(net)]) xp_add_net_name(m, net, "net", "net");
}

#include <algorithm>
#include <cstdint>

#include "expand/body.h"

namespace {

constexpr std::int32_t not_a_step = 0;

// What a gate pin is connected to.
struct signal {
    std::int32_t net = 0;
    std::int32_t depth = not_a_step;  // gates of the cell behind it
    std::string_view pin;             // name of the pin it makes; empty: by its position
};

struct cell_context {
    xp_mapping& m;
    std::uint32_t cell;
    const xp_cell_type& type;
    std::string where;
    std::vector<xp_bits> inputs;  // by letter of the type
    xp_bits output;
    bool is_signed = false;
    std::string suffix;  // of the bit being made
};

std::string_view keep(cell_context& c, std::string_view text) { return xp_keep(c.m.netlist.texts, text); }
std::int32_t bit_of(const cell_context& c, const xp_bits& bits, std::uint32_t k) {
    return c.m.module.bits[bits.first + k];
}
const xp_cell& cell_of(const cell_context& c) { return c.m.module.cells[c.cell]; }

// ---- ports

std::int64_t declared_width(const cell_context& c, char port) {
    const std::string name = std::string(1, port) + "_WIDTH";
    const std::int64_t own = xp_parameter_of(c.m.module, cell_of(c), name, -1);
    const std::int64_t width = own >= 0 ? own : xp_parameter_of(c.m.module, cell_of(c), "WIDTH", -1);
    const bool counts_choices = c.type.shape == xp_shape::selector && port == 'B';
    if (own < 0 && port == 'S') return -1;
    return counts_choices && width >= 0 ? width * xp_parameter_of(c.m.module, cell_of(c), "S_WIDTH", 1)
                                        : width;
}

xp_bits port_bits(cell_context& c, char port) {
    const std::string_view name(&port, 1);
    const xp_connection* connection = xp_find_connection(c.m.module, cell_of(c), name);
    if (connection == nullptr || connection->bits.count == 0) {
        xp_fail(c.m.status, xp_fault::missing_port, c.where, xp_quoted(name));
        return {};
    }
    const std::int64_t wanted = c.type.shape == xp_shape::gate ? 1 : declared_width(c, port);
    if (wanted >= 0 && wanted != connection->bits.count)
        xp_fail(c.m.status, xp_fault::bad_width, c.where,
                "port " + xp_quoted(name) + " has " + std::to_string(wanted) + " bits, the connection " +
                    std::to_string(connection->bits.count));
    return connection->bits;
}

bool widths_agree(const cell_context& c) {
    if (c.type.name == "$mux")
        return c.inputs[0].count == c.output.count && c.inputs[1].count == c.output.count &&
               c.inputs[2].count == 1;
    if (c.type.shape != xp_shape::selector) return true;
    return c.inputs[0].count == c.output.count &&
           c.inputs[1].count == std::uint64_t{c.output.count} * c.inputs[2].count;
}

void find_ports(cell_context& c) {
    for (const char port : c.type.inputs) c.inputs.push_back(port_bits(c, port));
    c.output = port_bits(c, 'Y');
    if (!widths_agree(c)) xp_fail(c.m.status, xp_fault::bad_width, c.where, "the widths of its ports differ");
    c.is_signed = c.type.shape == xp_shape::word;
    for (const char port : c.type.inputs)
        if (port != 'S')
            c.is_signed = c.is_signed &&
                          xp_parameter_of(c.m.module, cell_of(c), std::string(1, port) + "_SIGNED", 0) != 0;
    for (std::uint32_t i = 0; i < cell_of(c).connection_count; ++i) {
        const std::string_view port = c.m.module.connections[cell_of(c).first_connection + i].port;
        if (port.size() != 1 || (port != "Y" && c.type.inputs.find(port[0]) == std::string_view::npos))
            xp_fail(c.m.status, xp_fault::unknown_port, c.where, xp_quoted(port));
    }
}

// ---- signals

// Bit k of a port as an input of the output bit being made.
signal leaf(cell_context& c, std::size_t port, std::uint32_t k, bool with_index) {
    const std::int32_t net = bit_of(c, c.inputs[port], k);
    std::uint32_t& part = c.m.leaf_part[c.inputs[port].first + k];
    if (part != c.m.body.parts.size()) c.m.body.leaves.push_back(net);
    part = static_cast<std::uint32_t>(c.m.body.parts.size());
    const std::string_view letter = c.type.inputs.substr(port, 1);
    if (!with_index) return {net, not_a_step, letter};
    return {net, not_a_step,
            xp_keep_once(c.m.netlist.texts, std::string(letter) + "[" + std::to_string(k) + "]")};
}

// Bit k of a port extended to the width of the output.
signal extended(cell_context& c, std::size_t port, std::uint32_t k) {
    const xp_bits& bits = c.inputs[port];
    if (c.type.inputs[port] == 'S') return leaf(c, port, 0, false);
    if (k < bits.count) return leaf(c, port, k, false);
    if (c.is_signed) return leaf(c, port, bits.count - 1, false);
    return {xp_const_0, not_a_step, c.type.inputs.substr(port, 1)};
}

void add_operand(cell_context& c, const xp_operand& operand, std::uint32_t k,
                 const std::vector<signal>& steps, std::vector<signal>& operands) {
    switch (operand.kind) {
        case xp_operand::kind::port:
            operands.push_back(extended(c, operand.index, k));
            break;
        case xp_operand::kind::whole_port:
            for (std::uint32_t i = 0; i < c.inputs[operand.index].count; ++i)
                operands.push_back(leaf(c, operand.index, i, c.inputs[operand.index].count > 1));
            break;
        case xp_operand::kind::step:
            operands.push_back(steps[operand.index]);
            break;
        case xp_operand::kind::constant:
            operands.push_back({operand.index == 0 ? xp_const_0 : xp_const_1, not_a_step, {}});
            break;
    }
}

// ---- gates

// Where the output bit goes; an open one to a net of its own.
std::int32_t output_net(cell_context& c, std::uint32_t k) {
    const std::int32_t bit = bit_of(c, c.output, k);
    if (bit == xp_const_0 || bit == xp_const_1)
        xp_fail(c.m.status, xp_fault::driven_constant, c.where, "port \"Y\"");
    return bit >= 0 ? bit : c.m.module.net_count++;
}

std::int32_t depth_of(const std::vector<signal>& operands) {
    std::int32_t depth = 0;
    for (const signal& operand : operands) depth = std::max(depth, operand.depth);
    return depth;
}

void add_pins(cell_context& c, const std::vector<signal>& operands) {
    for (std::size_t i = 0; i < operands.size(); ++i) {
        const std::string_view name = operands[i].pin.empty()
                                          ? xp_keep_once(c.m.netlist.texts, "I" + std::to_string(i + 1))
                                          : operands[i].pin;
        c.m.body.pins.push_back({name, operands[i].net});
    }
}

void add_gate(cell_context& c, xp_model model, const std::vector<signal>& operands, std::int32_t net,
              const std::string& suffix) {
    xp_body& body = c.m.body;
    const std::string_view raw = cell_of(c).name, name = body.cell_names[c.cell];
    xp_gate gate{model,
                 raw,
                 name,
                 net,
                 static_cast<std::uint32_t>(body.parts.size() - 1),
                 static_cast<std::uint32_t>(body.pins.size()),
                 static_cast<std::uint32_t>(operands.size())};
    if (!suffix.empty()) {
        gate.raw = keep(c, std::string(raw) + suffix);
        gate.name = keep(c, xp_take_name(body.taken, std::string(name) + suffix));
    }
    add_pins(c, operands);
    body.gates.push_back(gate);
    ++body.parts.back().gate_count;
}

// A gate inside the cell, with a net of its own behind it.  One that would only repeat its input is left out.
signal add_inner_gate(cell_context& c, xp_model model, const std::vector<signal>& operands) {
    const bool inverts = model == xp_model::nand_gate || model == xp_model::nor_gate;
    if (operands.size() == 1 && !inverts) return operands[0];
    const std::string place = std::to_string(c.m.body.parts.back().gate_count + 1);
    const std::int32_t net = c.m.module.net_count++;
    add_gate(c, model, operands, net, c.suffix + ".g" + place);
    xp_add_net_name(c.m, net, std::string(cell_of(c).name) + c.suffix + ".n" + place,
                    std::string(c.m.body.cell_names[c.cell]) + c.suffix + ".n" + place);
    return {net, depth_of(operands) + 1, {}};
}

void add_last_gate(cell_context& c, xp_model model, const std::vector<signal>& operands, std::int32_t net) {
    add_gate(c, model, operands, net, c.suffix);
    c.m.body.parts.back().depth = depth_of(operands);
}

void add_steps(cell_context& c, const xp_steps& steps, std::uint32_t k, std::int32_t net) {
    std::vector<signal> results;
    for (const xp_step& step : steps) {
        std::vector<signal> operands;
        for (const xp_operand& operand : step.operands) add_operand(c, operand, k, results, operands);
        if (&step == &steps.back()) return add_last_gate(c, step.model, operands, net);
        results.push_back(add_inner_gate(c, step.model, operands));
    }
}

// Bit k of A when no bit of S is 1, else of the word of B that S chooses.
void add_selector(cell_context& c, std::uint32_t k, std::int32_t net) {
    constexpr std::size_t a = 0, b = 1, s = 2;
    std::vector<signal> choices, chosen;
    for (std::uint32_t i = 0; i < c.inputs[s].count; ++i)
        choices.push_back(leaf(c, s, i, c.inputs[s].count > 1));
    const signal none = add_inner_gate(c, xp_model::nor_gate, choices);
    chosen.push_back(add_inner_gate(c, xp_model::and_gate, {leaf(c, a, k, false), none}));
    for (std::uint32_t i = 0; i < c.inputs[s].count; ++i)
        chosen.push_back(
            add_inner_gate(c, xp_model::and_gate, {leaf(c, b, i * c.output.count + k, false), choices[i]}));
    add_last_gate(c, xp_model::or_gate, chosen, net);
}

// ---- cells

const xp_steps& steps_of(const xp_cell_type& type) {
    static std::unordered_map<std::string_view, xp_steps> compiled;
    const auto [known, is_new] = compiled.try_emplace(type.name);
    if (is_new) known->second = xp_compile(type.formula, type.inputs);
    return known->second;
}

void map_bit(cell_context& c, std::uint32_t k) {
    static const xp_steps zero = xp_compile("buf(0)", "");
    const std::int32_t net = output_net(c, k);
    if (!xp_ok(c.m.status)) return;
    xp_body& body = c.m.body;
    c.suffix = c.output.count > 1 ? "[" + std::to_string(k) + "]" : "";
    body.parts.push_back({c.cell, static_cast<std::uint32_t>(body.gates.size()), 0,
                          static_cast<std::uint32_t>(body.leaves.size()), 0, 0});
    if (c.type.shape == xp_shape::selector)
        add_selector(c, k, net);
    else
        add_steps(c, c.type.shape == xp_shape::reduce && k > 0 ? zero : steps_of(c.type), k, net);
    xp_part& part = body.parts.back();
    if (body.gates.back().pin_count >= INT16_MAX)
        xp_fail(c.m.status, xp_fault::too_large, c.where,
                "a gate of " + std::to_string(body.gates.back().pin_count) + " inputs, at most " +
                    std::to_string(INT16_MAX - 1));
    part.leaf_count = static_cast<std::uint32_t>(body.leaves.size()) - part.first_leaf;
}

bool is_drive(std::string_view drive) {
    return drive.empty() ||
           (drive.size() == 4 && drive.find_first_not_of("UZRWSuzrws") == std::string_view::npos);
}

}  // namespace

void xp_map_cell(xp_mapping& m, std::uint32_t cell, const xp_cell_type& type) {
    if (type.shape == xp_shape::ignored) return;
    cell_context c{m, cell, type, m.path + std::string(m.module.cells[cell].name), {}, {}, false, {}};
    m.leaf_part.resize(std::max(m.leaf_part.size(), m.module.bits.size()));
    if (!is_drive(cell_of(c).drive))
        xp_fail(m.status, xp_fault::bad_drive, c.where,
                xp_quoted(cell_of(c).drive) + ", expected four letters of U, Z, R, W, S");
    find_ports(c);
    for (std::uint32_t k = 0; k < c.output.count && xp_ok(m.status); ++k) map_bit(c, k);
}

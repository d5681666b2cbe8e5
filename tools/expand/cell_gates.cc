// How the gates of one cell enter the body of its module.
#include "expand/cell_gates.h"

#include "expand/naming.h"

#include <algorithm>

namespace {

bool is_drive(std::string_view drive) {
    return drive.empty() ||
           (drive.size() == 4 && drive.find_first_not_of("UZRWSuzrws") == std::string_view::npos);
}

void add_pins(xp_cell_gates& c, const std::vector<xp_signal>& operands) {
    for (std::size_t i = 0; i < operands.size(); ++i) {
        const std::string_view name = operands[i].pin.empty()
                                          ? xp_keep_once(c.m.netlist.texts, "I" + std::to_string(i + 1))
                                          : operands[i].pin;
        c.m.body.pins.push_back({name, operands[i].net, false, {}});
    }
}

void add_gate(xp_cell_gates& c, xp_model model, const std::vector<xp_signal>& operands, std::int32_t net,
              const std::string& suffix) {
    xp_body& body = c.m.body;
    const std::string_view raw = xp_cell_of(c).name, name = body.cell_names[c.cell];
    xp_gate gate{model,
                 raw,
                 name,
                 {},
                 {},
                 net,
                 static_cast<std::uint32_t>(body.parts.size() - 1),
                 static_cast<std::uint32_t>(body.pins.size()),
                 static_cast<std::uint32_t>(operands.size())};
    if (!suffix.empty()) {
        gate.raw = xp_keep(c.m.netlist.texts, std::string(raw) + suffix);
        gate.name = xp_keep(c.m.netlist.texts, xp_take_name(body.taken, std::string(name) + suffix));
    }
    add_pins(c, operands);
    body.gates.push_back(gate);
    ++body.parts.back().gate_count;
}

}  // namespace

xp_cell_gates xp_begin_cell(xp_mapping& m, std::uint32_t cell) {
    xp_cell_gates c{m, cell, m.path + std::string(m.module.cells[cell].name), {}};
    m.leaf_part.resize(std::max(m.leaf_part.size(), m.module.bits.size()));
    if (!is_drive(xp_cell_of(c).drive))
        xp_fail(m.status, xp_fault::bad_drive, c.where,
                xp_quoted(xp_cell_of(c).drive) + ", expected four letters of U, Z, R, W, S");
    return c;
}

std::int32_t xp_output_net(xp_cell_gates& c, const xp_bits& output, std::uint32_t k, std::string_view port) {
    const std::int32_t bit = c.m.module.bits[output.first + k];
    if (bit == xp_const_0 || bit == xp_const_1)
        xp_fail(c.m.status, xp_fault::driven_constant, c.where, "port " + xp_quoted(port));
    return bit >= 0 ? bit : c.m.module.net_count++;
}

xp_bits xp_bits_at_port(const xp_cell_gates& c, std::string_view port) {
    const xp_connection* connection = xp_find_connection(c.m.module, xp_cell_of(c), port);
    return connection == nullptr ? xp_bits{} : connection->bits;
}

xp_bits xp_open_port(xp_cell_gates& c, std::string_view port, bool is_output, std::int64_t width) {
    xp_module& module = c.m.module;
    std::vector<std::int32_t> nets;
    for (std::int64_t k = 0; k < std::max<std::int64_t>(width, 1); ++k) {
        nets.push_back(is_output ? xp_const_x : module.net_count++);
        const std::string place = "." + std::string(port) + (width > 1 ? "[" + std::to_string(k) + "]" : "");
        if (!is_output)
            xp_add_net_name(c.m, nets.back(), std::string(xp_cell_of(c).name) + place,
                            std::string(c.m.body.cell_names[c.cell]) + place);
    }
    const xp_bits bits{static_cast<std::uint32_t>(module.bits.size()),
                       static_cast<std::uint32_t>(nets.size())};
    module.bits.insert(module.bits.end(), nets.begin(), nets.end());
    c.m.leaf_part.resize(module.bits.size());
    return bits;
}

void xp_begin_part(xp_cell_gates& c, const xp_bits& output, std::uint32_t k) {
    xp_body& body = c.m.body;
    c.suffix = output.count > 1 ? "[" + std::to_string(k) + "]" : "";
    body.parts.push_back({c.cell, static_cast<std::uint32_t>(body.gates.size()), 0,
                          static_cast<std::uint32_t>(body.leaves.size()), 0, 0});
}

void xp_end_part(xp_cell_gates& c) {
    xp_body& body = c.m.body;
    xp_part& part = body.parts.back();
    if (body.gates.back().pin_count >= INT16_MAX)
        xp_fail(c.m.status, xp_fault::too_large, c.where,
                "a gate of " + std::to_string(body.gates.back().pin_count) + " inputs, at most " +
                    std::to_string(INT16_MAX - 1));
    part.leaf_count = static_cast<std::uint32_t>(body.leaves.size()) - part.first_leaf;
}

std::int32_t xp_leaf(xp_cell_gates& c, std::uint32_t place) {
    const std::int32_t net = c.m.module.bits[place];
    std::uint32_t& part = c.m.leaf_part[place];
    if (part != c.m.body.parts.size()) c.m.body.leaves.push_back(net);
    part = static_cast<std::uint32_t>(c.m.body.parts.size());
    return net;
}

xp_signal xp_add_inner_gate(xp_cell_gates& c, xp_model model, const std::vector<xp_signal>& operands) {
    if (operands.size() == 1 && !model->is_inverted) return operands[0];
    const std::string place = std::to_string(c.m.body.parts.back().gate_count + 1);
    const std::int32_t net = c.m.module.net_count++;
    add_gate(c, model, operands, net, c.suffix + ".g" + place);
    xp_add_net_name(c.m, net, std::string(xp_cell_of(c).name) + c.suffix + ".n" + place,
                    std::string(c.m.body.cell_names[c.cell]) + c.suffix + ".n" + place);
    return {net, xp_depth_of(operands) + 1, {}};
}

void xp_add_last_gate(xp_cell_gates& c, xp_model model, const std::vector<xp_signal>& operands,
                      std::int32_t net) {
    add_gate(c, model, operands, net, c.suffix);
}

std::int32_t xp_depth_of(const std::vector<xp_signal>& operands) {
    std::int32_t depth = 0;
    for (const xp_signal& operand : operands) depth = std::max(depth, operand.depth);
    return depth;
}

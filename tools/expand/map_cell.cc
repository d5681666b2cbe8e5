// The gates of the cells that a formula or a table describes.
#include <algorithm>
#include <cstdint>

#include "expand/cell_gates.h"

namespace {

constexpr std::int32_t not_a_step = 0;

using signal = xp_signal;

struct cell_context : xp_cell_gates {
    const xp_cell_type& type;
    std::vector<xp_bits> inputs;  // by letter of the type
    xp_bits output;
    bool is_signed = false;
};

// ---- ports

std::int64_t declared_width(const cell_context& c, char port) {
    const std::string name = std::string(1, port) + "_WIDTH";
    const std::int64_t own = xp_parameter_of(c.m.module, xp_cell_of(c), name, -1);
    const std::int64_t width = own >= 0 ? own : xp_parameter_of(c.m.module, xp_cell_of(c), "WIDTH", -1);
    const bool counts_choices = c.type.shape == xp_shape::selector && port == 'B';
    if (own < 0 && port == 'S') return -1;
    return counts_choices && width >= 0 ? width * xp_parameter_of(c.m.module, xp_cell_of(c), "S_WIDTH", 1)
                                        : width;
}

xp_bits port_bits(cell_context& c, char port) {
    const std::string_view name(&port, 1);
    const xp_bits bits = xp_bits_at_port(c, name);
    const bool is_bit = c.type.shape == xp_shape::gate || (c.type.shape == xp_shape::table && port == 'Y');
    const std::int64_t wanted = is_bit ? 1 : declared_width(c, port);
    if (bits.count == 0) return xp_open_port(c, name, port == 'Y', wanted);
    if (wanted >= 0 && wanted != bits.count)
        xp_fail(c.m.status, xp_fault::bad_width, c.where,
                "port " + xp_quoted(name) + " has " + std::to_string(wanted) + " bits, the connection " +
                    std::to_string(bits.count));
    return bits;
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
            c.is_signed = c.is_signed && xp_parameter_of(c.m.module, xp_cell_of(c),
                                                         std::string(1, port) + "_SIGNED", 0) != 0;
    for (std::uint32_t i = 0; i < xp_cell_of(c).connection_count; ++i) {
        const std::string_view port = c.m.module.connections[xp_cell_of(c).first_connection + i].port;
        if (port.size() != 1 || (port != "Y" && c.type.inputs.find(port[0]) == std::string_view::npos))
            xp_fail(c.m.status, xp_fault::unknown_port, c.where, xp_quoted(port));
    }
}

// ---- signals

// Bit k of a port as an input of the output bit being made.
signal leaf(cell_context& c, std::size_t port, std::uint32_t k, bool with_index) {
    const std::int32_t net = xp_leaf(c, c.inputs[port].first + k);
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

void add_last_gate(cell_context& c, xp_model model, const std::vector<signal>& operands, std::int32_t net) {
    xp_add_last_gate(c, model, operands, net);
    c.m.body.parts.back().depth = xp_depth_of(operands);
}

void add_steps(cell_context& c, const xp_steps& steps, std::uint32_t k, std::int32_t net) {
    std::vector<signal> results;
    for (const xp_step& step : steps) {
        std::vector<signal> operands;
        for (const xp_operand& operand : step.operands) add_operand(c, operand, k, results, operands);
        if (&step == &steps.back()) return add_last_gate(c, step.model, operands, net);
        results.push_back(xp_add_inner_gate(c, step.model, operands));
    }
}

// The hexadecimal digits of a table whose binary ones are given, 2 to the number of inputs.
std::string hexadecimal(std::string_view binary) {
    std::string text;
    for (std::size_t end = binary.size(); end > 0; end -= std::min<std::size_t>(end, 4)) {
        unsigned digit = 0;
        for (std::size_t at = end - std::min<std::size_t>(end, 4); at < end; ++at)
            digit = digit * 2 + (binary[at] == '1' ? 1 : 0);
        text.insert(text.begin(), "0123456789ABCDEF"[digit]);
    }
    return text;
}

// The table over the lowest inputs; the halves of one that is too large are chosen between by the highest.
std::vector<signal> table_operands(cell_context& c, std::string_view binary, std::size_t count,
                                   std::string& table) {
    std::vector<signal> operands;
    if (count <= kol_lut_max_inputs) {
        for (std::size_t i = 0; i < count; ++i)
            operands.push_back(leaf(c, 0, static_cast<std::uint32_t>(i), c.inputs[0].count > 1));
        table = hexadecimal(binary);
        return operands;
    }
    for (const std::string_view half :
         {binary.substr(binary.size() / 2), binary.substr(0, binary.size() / 2)}) {
        const std::vector<signal> of_half = table_operands(c, half, count - 1, table);
        operands.push_back(xp_add_inner_gate(c, xp_model_named("LUT"), of_half));
        c.m.body.gates.back().config = xp_keep_once(c.m.netlist.texts, table);
    }
    operands.push_back(leaf(c, 0, static_cast<std::uint32_t>(count - 1), true));
    table = "CA";
    return operands;
}

void add_table(cell_context& c, std::int32_t net) {
    constexpr std::size_t inputs_max = 16;
    const std::size_t count = c.inputs[0].count;
    const std::string_view binary = xp_bits_of_parameter(c.m.module, xp_cell_of(c), "LUT");
    if (count > inputs_max || binary.size() != std::size_t{1} << count || c.output.count != 1)
        return xp_fail(c.m.status, xp_fault::bad_width, c.where,
                       "a table of " + std::to_string(binary.size()) + " bits for " + std::to_string(count) +
                           " inputs, at most " + std::to_string(inputs_max));
    std::string table;
    const std::vector<signal> operands = table_operands(c, binary, count, table);
    add_last_gate(c, xp_model_named("LUT"), operands, net);
    c.m.body.gates.back().config = xp_keep_once(c.m.netlist.texts, table);
}

// Bit k of A when no bit of S is 1, else of the word of B that S chooses.
void add_selector(cell_context& c, std::uint32_t k, std::int32_t net) {
    constexpr std::size_t a = 0, b = 1, s = 2;
    std::vector<signal> choices, chosen;
    for (std::uint32_t i = 0; i < c.inputs[s].count; ++i)
        choices.push_back(leaf(c, s, i, c.inputs[s].count > 1));
    const signal none = xp_add_inner_gate(c, xp_model_named("NOR"), choices);
    chosen.push_back(xp_add_inner_gate(c, xp_model_named("AND"), {leaf(c, a, k, false), none}));
    for (std::uint32_t i = 0; i < c.inputs[s].count; ++i)
        chosen.push_back(xp_add_inner_gate(c, xp_model_named("AND"),
                                           {leaf(c, b, i * c.output.count + k, false), choices[i]}));
    add_last_gate(c, xp_model_named("OR"), chosen, net);
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
    const std::int32_t net = xp_output_net(c, c.output, k, "Y");
    if (!xp_ok(c.m.status)) return;
    xp_begin_part(c, c.output, k);
    if (c.type.shape == xp_shape::selector)
        add_selector(c, k, net);
    else if (c.type.shape == xp_shape::table)
        add_table(c, net);
    else
        add_steps(c, c.type.shape == xp_shape::reduce && k > 0 ? zero : steps_of(c.type), k, net);
    if (xp_ok(c.m.status)) xp_end_part(c);
}

}  // namespace

void xp_map_cell(xp_mapping& m, std::uint32_t cell, const xp_cell_type& type) {
    if (type.shape == xp_shape::ignored) return;
    cell_context c{xp_begin_cell(m, cell), type, {}, {}, false};
    find_ports(c);
    for (std::uint32_t k = 0; k < c.output.count && xp_ok(m.status); ++k) map_bit(c, k);
}

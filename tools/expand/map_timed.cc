// The primitives of the cells that store or switch.
#include "expand/cell_gates.h"
#include "expand/timed_cells.h"

namespace {

struct timed_context : xp_cell_gates {
    xp_timed_form form;
    xp_bits ports[xp_timed_ports.size()];
    std::string_view reset_value;  // most significant bit first
};

constexpr std::size_t output_port = xp_timed_ports.find('Q');

const xp_bits& output_of(const timed_context& c) { return c.ports[output_port]; }

xp_bits find_port(timed_context& c, char letter) {
    const std::string_view name = xp_timed_port_name(*c.form.row, letter);
    const xp_bits bits = xp_bits_at_port(c, name);
    if (bits.count > 0) return bits;
    const std::int64_t width = xp_is_word(*c.form.row) && xp_is_per_bit(*c.form.row, letter)
                                   ? xp_parameter_of(c.m.module, xp_cell_of(c), "WIDTH", 1)
                                   : 1;
    return xp_open_port(c, name, letter == 'Q', width);
}

void check_width(timed_context& c, char letter, const xp_bits& bits) {
    const xp_timed_row& row = *c.form.row;
    const std::int64_t width = xp_is_word(row) && xp_is_per_bit(row, letter)
                                   ? xp_parameter_of(c.m.module, xp_cell_of(c), "WIDTH", output_of(c).count)
                                   : 1;
    if (width != bits.count)
        xp_fail(c.m.status, xp_fault::bad_width, c.where,
                "port " + xp_quoted(xp_timed_port_name(row, letter)) + " has " + std::to_string(width) +
                    " bits, the connection " + std::to_string(bits.count));
}

void refuse_other_ports(timed_context& c) {
    for (std::uint32_t i = 0; i < xp_cell_of(c).connection_count; ++i) {
        const std::string_view port = c.m.module.connections[xp_cell_of(c).first_connection + i].port;
        bool is_known = false;
        for (const char letter : xp_timed_ports)
            is_known = is_known ||
                       (xp_has_port(*c.form.row, letter) && port == xp_timed_port_name(*c.form.row, letter));
        if (!is_known) xp_fail(c.m.status, xp_fault::unknown_port, c.where, xp_quoted(port));
    }
}

void find_ports(timed_context& c) {
    for (std::size_t i = 0; i < xp_timed_ports.size(); ++i)
        if (xp_has_port(*c.form.row, xp_timed_ports[i])) c.ports[i] = find_port(c, xp_timed_ports[i]);
    for (std::size_t i = 0; i < xp_timed_ports.size(); ++i)
        if (xp_has_port(*c.form.row, xp_timed_ports[i])) check_width(c, xp_timed_ports[i], c.ports[i]);
    refuse_other_ports(c);
}

// What the polarities and the reset value are where they are parameters.
void read_parameters(timed_context& c) {
    const xp_timed_row& row = *c.form.row;
    if (!xp_is_word(row)) return;
    for (const char control : row.controls) {
        const std::string name(xp_timed_port_name(row, control == 'v' ? 'R' : control));
        if (control == 'v')
            c.reset_value = xp_bits_of_parameter(c.m.module, xp_cell_of(c), name + "_VALUE");
        else if (xp_parameter_of(c.m.module, xp_cell_of(c), name + "_POLARITY", 1) == 0)
            c.form.low += control;
    }
    if (row.controls.find('v') != std::string_view::npos && c.reset_value.size() < output_of(c).count)
        xp_fail(c.m.status, xp_fault::bad_width, c.where,
                "the reset value has " + std::to_string(c.reset_value.size()) + " bits, the output " +
                    std::to_string(output_of(c).count));
}

// ---- signals

struct bit_maker {
    timed_context& c;
    std::uint32_t k;
    std::int32_t output;
};

xp_signal port_signal(bit_maker& b, std::size_t port) {
    const std::string_view letter = xp_timed_ports.substr(port, 1);
    if (port == output_port) return {b.output, 0, letter};
    const std::uint32_t bit = b.c.ports[port].count == 1 ? 0 : b.k;
    return {xp_leaf(b.c, b.c.ports[port].first + bit), 0, letter};
}

xp_signal operand_signal(bit_maker& b, const xp_operand& operand, const std::vector<xp_signal>& steps) {
    return operand.kind == xp_operand::kind::step ? steps[operand.index] : port_signal(b, operand.index);
}

// What an input pin of the primitive reads, with the gates in front of it.
xp_signal pin_signal(bit_maker& b, const xp_timed_pin& pin) {
    if (pin.steps.empty()) return port_signal(b, pin.port);
    std::vector<xp_signal> results;
    for (const xp_step& step : pin.steps) {
        std::vector<xp_signal> operands;
        for (const xp_operand& operand : step.operands)
            operands.push_back(operand_signal(b, operand, results));
        results.push_back(xp_add_inner_gate(b.c, step.model, operands));
    }
    return results.back();
}

void map_bit(timed_context& c, std::uint32_t k) {
    bit_maker b{c, k, xp_output_net(c, output_of(c), k, xp_timed_port_name(*c.form.row, 'Q'))};
    if (!xp_ok(c.m.status)) return;
    xp_begin_part(c, output_of(c), k);
    if (!c.reset_value.empty()) c.form.resets_to_one = c.reset_value[c.reset_value.size() - 1 - k] == '1';
    std::vector<xp_signal> pins;
    for (const xp_timed_pin& pin : xp_plan(c.form)) {
        pins.push_back(pin_signal(b, pin));
        pins.back().pin = pin.name;
    }
    xp_add_last_gate(c, c.form.row->model, pins, b.output);
    xp_end_part(c);
}

}  // namespace

void xp_map_timed(xp_mapping& m, std::uint32_t cell, const xp_timed_form& form) {
    timed_context c{xp_begin_cell(m, cell), form, {}, {}};
    find_ports(c);
    if (xp_ok(m.status)) read_parameters(c);
    for (std::uint32_t k = 0; k < output_of(c).count && xp_ok(m.status); ++k) map_bit(c, k);
}

// The memories of a netlist: one MEM for each, its pins named by port.
#include <algorithm>

#include "expand/cell_gates.h"

namespace {

struct memory_context : xp_cell_gates {
    std::int64_t width = 0, address_bits = 0, reads = 0, writes = 0;
};

constexpr std::string_view memory_ports[] = {"RD_CLK",  "RD_EN",  "RD_ARST", "RD_SRST", "RD_ADDR",
                                             "RD_DATA", "WR_CLK", "WR_EN",   "WR_ADDR", "WR_DATA"};

// ---- parameters

std::int64_t number(const memory_context& c, std::string_view name) {
    return xp_parameter_of(c.m.module, xp_cell_of(c), name, 0);
}

// Bit k of a parameter, 'x' for one that it does not have.
char digit(const memory_context& c, std::string_view name, std::int64_t k) {
    const std::string_view bits = xp_bits_of_parameter(c.m.module, xp_cell_of(c), name);
    const auto count = static_cast<std::int64_t>(bits.size());
    return k < count ? bits[static_cast<std::size_t>(count - 1 - k)] : 'x';
}

bool is_set(const memory_context& c, std::string_view name, std::int64_t k) {
    return digit(c, name, k) == '1';
}

// ---- ports

xp_bits port(memory_context& c, std::string_view name, std::int64_t width) {
    const xp_bits bits = xp_bits_at_port(c, name);
    const std::int64_t count = bits.count;
    if (count == width) return bits;
    if (count == 0) return xp_open_port(c, name, name == "RD_DATA", width);
    xp_fail(c.m.status, xp_fault::bad_width, c.where,
            "port " + xp_quoted(name) + " has " + std::to_string(width) + " bits, the connection " +
                std::to_string(count));
    return {};
}

void refuse_other_ports(const memory_context& c) {
    for (std::uint32_t i = 0; i < xp_cell_of(c).connection_count; ++i) {
        const std::string_view name = c.m.module.connections[xp_cell_of(c).first_connection + i].port;
        if (std::ranges::find(memory_ports, name) == std::end(memory_ports))
            xp_fail(c.m.status, xp_fault::unknown_port, c.where, xp_quoted(name));
    }
}

// ---- pins

struct pin_maker {
    memory_context& c;
    std::vector<xp_pin> pins;

    std::string_view keep(const std::string& text) { return xp_keep_once(c.m.netlist.texts, text); }
    void input(const std::string& name, const xp_bits& bits, std::int64_t k, const std::string& values = "") {
        pins.push_back({keep(name), xp_leaf(c, bits.first + static_cast<std::uint32_t>(k)), false,
                        values.empty() ? std::string_view() : keep(values)});
    }
    // One that may be left out where it is the constant that does nothing.
    void control(const std::string& name, const xp_bits& bits, std::int64_t k, std::int32_t idle,
                 const std::string& values = "") {
        if (c.m.module.bits[bits.first + static_cast<std::size_t>(k)] != idle) input(name, bits, k, values);
    }
    void word(const std::string& name, const xp_bits& bits, std::int64_t first, std::int64_t count) {
        for (std::int64_t k = 0; k < count; ++k) input(name + std::to_string(k), bits, first + k);
    }
};

std::string writes_seen(const memory_context& c, std::int64_t read) {
    std::string text;
    for (std::int64_t write = 0; write < c.writes; ++write) {
        const std::int64_t k = read * c.writes + write;
        text += is_set(c, "RD_COLLISION_X_MASK", k) ? 'x' : is_set(c, "RD_TRANSPARENCY_MASK", k) ? 't' : '-';
    }
    return text.find_first_not_of('-') == text.npos ? "" : text;
}

std::string clock_name(const memory_context& c, const std::string& name, std::string_view polarity,
                       std::int64_t port_number) {
    return name + (is_set(c, polarity, port_number) ? "CP" : "CN");
}

void add_read_inputs(pin_maker& p, std::int64_t read) {
    memory_context& c = p.c;
    const std::string name = "R" + std::to_string(read);
    p.word(name + "A", port(c, "RD_ADDR", c.reads * c.address_bits), read * c.address_bits, c.address_bits);
    if (!is_set(c, "RD_CLK_ENABLE", read)) return;
    const bool needs_enable = is_set(c, "RD_CE_OVER_SRST", read);
    p.input(clock_name(c, name, "RD_CLK_POLARITY", read), port(c, "RD_CLK", c.reads), read,
            writes_seen(c, read));
    p.control(name + "E", port(c, "RD_EN", c.reads), read, xp_const_1);
    p.control(name + "S", port(c, "RD_SRST", c.reads), read, xp_const_0, needs_enable ? "c" : "");
    p.control(name + "R", port(c, "RD_ARST", c.reads), read, xp_const_0);
}

void add_write_inputs(pin_maker& p, std::int64_t write) {
    memory_context& c = p.c;
    const std::string name = "W" + std::to_string(write);
    p.word(name + "A", port(c, "WR_ADDR", c.writes * c.address_bits), write * c.address_bits, c.address_bits);
    p.word(name + "D", port(c, "WR_DATA", c.writes * c.width), write * c.width, c.width);
    if (is_set(c, "WR_CLK_ENABLE", write))
        p.input(clock_name(c, name, "WR_CLK_POLARITY", write), port(c, "WR_CLK", c.writes), write);
    const xp_bits enables = port(c, "WR_EN", c.writes * c.width);
    for (std::int64_t k = 0, before = 0; k < c.width && xp_ok(c.m.status); ++k) {
        const std::int64_t bit =
            c.m.module.bits[enables.first + static_cast<std::size_t>(write * c.width + k)];
        if (k == 0 || bit != before) p.input(name + "E" + std::to_string(k), enables, write * c.width + k);
        before = bit;
    }
}

std::string values_of(const memory_context& c, std::int64_t k) {
    return {digit(c, "RD_INIT_VALUE", k), digit(c, "RD_ARST_VALUE", k), digit(c, "RD_SRST_VALUE", k)};
}

// The data of all read ports but the first bit, which is the output of the gate.
void add_outputs(pin_maker& p, const xp_bits& data) {
    memory_context& c = p.c;
    for (std::int64_t k = 1; k < c.reads * c.width; ++k)
        p.pins.push_back({p.keep("R" + std::to_string(k / c.width) + "D" + std::to_string(k % c.width)),
                          xp_output_net(c, data, static_cast<std::uint32_t>(k), "RD_DATA"), true,
                          p.keep(values_of(c, k))});
}

void add_memory(memory_context& c) {
    const xp_bits data = port(c, "RD_DATA", c.reads * c.width);
    if (!xp_ok(c.m.status)) return;
    const std::int32_t first = xp_output_net(c, data, 0, "RD_DATA");
    xp_begin_part(c, {data.first, 1}, 0);
    pin_maker p{c, {}};
    for (std::int64_t read = 0; read < c.reads; ++read) add_read_inputs(p, read);
    for (std::int64_t write = 0; write < c.writes; ++write) add_write_inputs(p, write);
    add_outputs(p, data);
    if (!xp_ok(c.m.status)) return;
    xp_add_last_gate(c, xp_model_named("MEM"), {}, first);
    xp_gate& gate = c.m.body.gates.back();
    gate.output_values = p.keep(values_of(c, 0));
    const std::int64_t offset = number(c, "OFFSET");
    gate.config = p.keep(std::to_string(offset) + ":" + std::to_string(offset + number(c, "SIZE") - 1));
    gate.pin_count = static_cast<std::uint32_t>(p.pins.size());
    c.m.body.pins.insert(c.m.body.pins.end(), p.pins.begin(), p.pins.end());
    xp_end_part(c);
}

}  // namespace

void xp_map_memory(xp_mapping& m, std::uint32_t cell) {
    memory_context c{xp_begin_cell(m, cell)};
    c.width = number(c, "WIDTH");
    c.address_bits = number(c, "ABITS");
    c.reads = number(c, "RD_PORTS");
    c.writes = number(c, "WR_PORTS");
    refuse_other_ports(c);
    if (c.reads == 0) return xp_warn(m.status, c.where, "a memory that nothing reads is left out");
    constexpr std::int64_t most_ports = 127, most_width = 65536;
    if (c.width < 1 || c.width > most_width || c.reads > most_ports || c.writes > most_ports ||
        number(c, "SIZE") < 1 || number(c, "OFFSET") < 0)
        return xp_fail(
            m.status, xp_fault::too_large, c.where,
            "a memory has 1 to 65536 bits a word, at most 127 ports of each kind, and addresses from 0 on");
    add_memory(c);
}

// What every cell type computes, found by simulating it as expanded.
#include <gtest/gtest.h>

#include <functional>

#include "expand_design.h"
#include "foundation/context.h"
#include "kernel/state.h"

namespace {

using bits = std::uint64_t;
using values = std::map<char, bits>;

struct cell_row {
    const char* type;
    std::map<char, std::size_t> widths;  // inputs, and Y
    const char* parameters;
    std::function<bits(values&)> result;
};

bits all_ones(std::size_t width) { return (bits{1} << width) - 1; }
bits parity(bits value) { return static_cast<bits>(__builtin_popcountll(value)) & 1; }
bits sign_extended(bits value, std::size_t width) { return (value >> (width - 1)) != 0 ? value | ~all_ones(width) : value; }

bits choice(values& v, const char* data, const char* select) {
    bits place = 0;
    for (std::size_t k = 0; select[k] != 0; ++k) place |= v[select[k]] << k;
    return v[data[place]];
}

const cell_row cell_rows[] = {
    {"$_BUF_", {{'A', 1}, {'Y', 1}}, "", [](values& v) { return v['A']; }},
    {"$_NOT_", {{'A', 1}, {'Y', 1}}, "", [](values& v) { return ~v['A']; }},
    {"$_AND_", {{'A', 1}, {'B', 1}, {'Y', 1}}, "", [](values& v) { return v['A'] & v['B']; }},
    {"$_NAND_", {{'A', 1}, {'B', 1}, {'Y', 1}}, "", [](values& v) { return ~(v['A'] & v['B']); }},
    {"$_OR_", {{'A', 1}, {'B', 1}, {'Y', 1}}, "", [](values& v) { return v['A'] | v['B']; }},
    {"$_NOR_", {{'A', 1}, {'B', 1}, {'Y', 1}}, "", [](values& v) { return ~(v['A'] | v['B']); }},
    {"$_XOR_", {{'A', 1}, {'B', 1}, {'Y', 1}}, "", [](values& v) { return v['A'] ^ v['B']; }},
    {"$_XNOR_", {{'A', 1}, {'B', 1}, {'Y', 1}}, "", [](values& v) { return ~(v['A'] ^ v['B']); }},
    {"$_ANDNOT_", {{'A', 1}, {'B', 1}, {'Y', 1}}, "", [](values& v) { return v['A'] & ~v['B']; }},
    {"$_ORNOT_", {{'A', 1}, {'B', 1}, {'Y', 1}}, "", [](values& v) { return v['A'] | ~v['B']; }},
    {"$_MUX_", {{'A', 1}, {'B', 1}, {'S', 1}, {'Y', 1}}, "", [](values& v) { return choice(v, "AB", "S"); }},
    {"$_NMUX_", {{'A', 1}, {'B', 1}, {'S', 1}, {'Y', 1}}, "", [](values& v) { return ~choice(v, "AB", "S"); }},
    {"$_AOI3_", {{'A', 1}, {'B', 1}, {'C', 1}, {'Y', 1}}, "",
     [](values& v) { return ~((v['A'] & v['B']) | v['C']); }},
    {"$_OAI3_", {{'A', 1}, {'B', 1}, {'C', 1}, {'Y', 1}}, "",
     [](values& v) { return ~((v['A'] | v['B']) & v['C']); }},
    {"$_AOI4_", {{'A', 1}, {'B', 1}, {'C', 1}, {'D', 1}, {'Y', 1}}, "",
     [](values& v) { return ~((v['A'] & v['B']) | (v['C'] & v['D'])); }},
    {"$_OAI4_", {{'A', 1}, {'B', 1}, {'C', 1}, {'D', 1}, {'Y', 1}}, "",
     [](values& v) { return ~((v['A'] | v['B']) & (v['C'] | v['D'])); }},
    {"$_MUX4_", {{'A', 1}, {'B', 1}, {'C', 1}, {'D', 1}, {'S', 1}, {'T', 1}, {'Y', 1}}, "",
     [](values& v) { return choice(v, "ABCD", "ST"); }},
    {"$_MUX8_",
     {{'A', 1}, {'B', 1}, {'C', 1}, {'D', 1}, {'E', 1}, {'F', 1}, {'G', 1}, {'H', 1}, {'S', 1}, {'T', 1}, {'U', 1},
      {'Y', 1}}, "", [](values& v) { return choice(v, "ABCDEFGH", "STU"); }},
    {"$_MUX16_",
     {{'A', 1}, {'B', 1}, {'C', 1}, {'D', 1}, {'E', 1}, {'F', 1}, {'G', 1}, {'H', 1}, {'I', 1}, {'J', 1}, {'K', 1},
      {'L', 1}, {'M', 1}, {'N', 1}, {'O', 1}, {'P', 1}, {'S', 1}, {'T', 1}, {'U', 1}, {'V', 1}, {'Y', 1}}, "",
     [](values& v) { return choice(v, "ABCDEFGHIJKLMNOP", "STUV"); }},
    {"$buf", {{'A', 3}, {'Y', 3}}, "WIDTH:3", [](values& v) { return v['A']; }},
    {"$pos", {{'A', 2}, {'Y', 4}}, "A_SIGNED:1 A_WIDTH:2 Y_WIDTH:4",
     [](values& v) { return sign_extended(v['A'], 2); }},
    {"$not", {{'A', 2}, {'Y', 3}}, "A_WIDTH:2 Y_WIDTH:3", [](values& v) { return ~v['A']; }},
    {"$and", {{'A', 3}, {'B', 3}, {'Y', 3}}, "A_WIDTH:3 B_WIDTH:3 Y_WIDTH:3",
     [](values& v) { return v['A'] & v['B']; }},
    {"$or", {{'A', 2}, {'B', 3}, {'Y', 4}}, "A_SIGNED:1 B_SIGNED:1",
     [](values& v) { return sign_extended(v['A'], 2) | sign_extended(v['B'], 3); }},
    {"$xor", {{'A', 2}, {'B', 3}, {'Y', 4}}, "A_SIGNED:1 B_SIGNED:0", [](values& v) { return v['A'] ^ v['B']; }},
    {"$xnor", {{'A', 3}, {'B', 2}, {'Y', 2}}, "", [](values& v) { return ~(v['A'] ^ v['B']); }},
    {"$mux", {{'A', 3}, {'B', 3}, {'S', 1}, {'Y', 3}}, "WIDTH:3", [](values& v) { return choice(v, "AB", "S"); }},
    {"$pmux", {{'A', 2}, {'B', 4}, {'S', 2}, {'Y', 2}}, "WIDTH:2 S_WIDTH:2",
     [](values& v) {
         const bits low = (v['S'] & 1) != 0 ? v['B'] : 0, high = (v['S'] & 2) != 0 ? v['B'] >> 2 : 0;
         return v['S'] == 0 ? v['A'] : low | high;
     }},
    {"$reduce_and", {{'A', 4}, {'Y', 1}}, "", [](values& v) { return bits{v['A'] == 15}; }},
    {"$reduce_or", {{'A', 4}, {'Y', 2}}, "", [](values& v) { return bits{v['A'] != 0}; }},
    {"$reduce_bool", {{'A', 1}, {'Y', 1}}, "", [](values& v) { return v['A']; }},
    {"$reduce_xor", {{'A', 5}, {'Y', 1}}, "", [](values& v) { return parity(v['A']); }},
    {"$reduce_xnor", {{'A', 4}, {'Y', 1}}, "", [](values& v) { return ~parity(v['A']); }},
    {"$logic_not", {{'A', 3}, {'Y', 3}}, "", [](values& v) { return bits{v['A'] == 0}; }},
    {"$logic_and", {{'A', 3}, {'B', 1}, {'Y', 1}}, "", [](values& v) { return bits{v['A'] != 0 && v['B'] != 0}; }},
    {"$logic_or", {{'A', 2}, {'B', 2}, {'Y', 1}}, "", [](values& v) { return bits{v['A'] != 0 || v['B'] != 0}; }},
};

std::string netlist_of(const cell_row& row) {
    std::string text = "module top\n", connections;
    for (const auto& [port, width] : row.widths) {
        text += std::string(port == 'Y' ? "out " : "in ") + port + " " + std::to_string(width) + "\n";
        connections += std::string(" ") + port + "=" + port;
    }
    return text + "cell " + row.type + " g" + connections + " " + row.parameters + "\n";
}

// The k-th pattern of the inputs: every one where they are few, pseudo-random ones where they are many.
bits pattern(bits k, std::size_t width) { return width <= 11 ? k : (k * 2654435761U >> 7) & all_ones(width); }

void check_cell(const cell_row& row) {
    xt_design design;
    xt_load(netlist_of(row), design);
    std::vector<std::string> inputs;
    for (const auto& [port, width] : row.widths)
        for (const std::string& bit : xt_bits(std::string(1, port), width))
            if (port != 'Y') inputs.push_back(bit);
    const bits count = bits{1} << std::min<std::size_t>(inputs.size(), 11);
    for (bits k = 0; k < count && !testing::Test::HasFailure(); ++k) {
        const bits value = pattern(k, inputs.size());
        values by_port;
        std::size_t at = 0;
        for (const auto& [port, width] : row.widths)
            if (port != 'Y') by_port[port] = value >> std::exchange(at, at + width) & all_ones(width);
        xt_force(inputs, value);
        xt_run(100);
        const std::size_t width = row.widths.at('Y');
        EXPECT_EQ(xt_value(xt_bits("Y", width)), static_cast<std::int64_t>(row.result(by_port) & all_ones(width)))
            << "inputs " << value;
    }
    EXPECT_EQ(tm_vext.num_errors, 0);
}

TEST(cells, every_type_computes_its_function) {
    std::size_t types = 0;
    for (const xp_cell_type& type : xp_cell_types()) types += type.shape != xp_shape::ignored;
    EXPECT_EQ(types, std::size(cell_rows)) << "a cell type has no row here";
    for (const cell_row& row : cell_rows) {
        SCOPED_TRACE(row.type);
        kol_ext.spike_on = false;
        check_cell(row);
    }
}

TEST(cells, a_multiplexer_between_equal_inputs_stays) {
    xt_design design;
    xt_load("module top\nin a\nin b\nin s\nout y\ncell $_MUX_ g A=a B=b S=s Y=y", design);
    xt_force({"a", "b", "s"}, 3);
    xt_run(50);
    const std::int32_t settled = xt_net("y").UU.U1.cur_state.time;
    for (const bits s : {1U, 0U, 1U}) {
        xt_force({"s"}, s);
        xt_run(50);
        EXPECT_EQ(xt_value({"y"}), 1);
        EXPECT_EQ(xt_net("y").UU.U1.cur_state.time, settled) << "y has moved";
    }
}

struct delay_row {
    const char* cell;
    const char* port;
    std::int32_t rise, fall;  // from the port, others at 0 but where the cell says, to y
};

// Every way through a cell takes its delay at most, the longest one exactly.
TEST(cells, the_longest_way_through_a_cell_takes_the_delay_of_the_cell) {
    const delay_row rows[] = {
        {"$_NOT_ g A=a Y=y", "a", 4, 3},
        {"$_XNOR_ g A=a B=0 Y=y", "a", 5, 4},
        {"$_ANDNOT_ g A=1 B=a Y=y", "a", 5, 4},
        {"$_MUX_ g A=1 B=0 S=a Y=y", "a", 6, 5},
        {"$_AOI3_ g A=1 B=a C=0 Y=y", "a", 6, 5},
        {"$reduce_or g A=0,0,0,a Y=y", "a", 7, 6},
    };
    for (const delay_row& row : rows) {
        SCOPED_TRACE(row.cell);
        xt_design design;
        xt_load("module top\nin a\nout y\ncell " + std::string(row.cell), design);
        for (const bits value : {0U, 1U, 0U}) {
            const std::int32_t start = kol_ext.cur_time;
            xt_force({row.port}, value);
            xt_run(50);
            if (start == 0) continue;
            EXPECT_EQ(xt_net("y").UU.U1.cur_state.time - start, xt_value({"y"}) == 1 ? row.rise : row.fall);
        }
    }
}

TEST(cells, constants_are_nets_that_nothing_drives) {
    xt_design design;
    xt_load("module top\nin a\nout y 4\nout t\n"
            "cell $and g A=1,1,x,z B=a,0,a,a Y=y\ncell $_BUF_ b A=1 Y=t",
            design);
    xt_force({"a"}, 1);
    xt_run(50);
    const std::pair<const char*, std::int8_t> constants[] = {
        {"logic0", 17}, {"logic1", 19}, {"logicx", 18}, {"logicz", 6}};
    for (const auto& [name, state] : constants) {
        EXPECT_EQ(xt_net(name).net_kind, 4) << name;
        EXPECT_EQ(xt_net(name).nb_pin_out, 0) << name;
        EXPECT_EQ(xt_net(name).UU.U1.cur_state.state, state) << name;
    }
    EXPECT_EQ(xt_value({"y[0]", "y[1]", "t"}), 5);
    EXPECT_EQ(kol_value_of(xt_net("y[2]").UU.U1.cur_state.state), kol_vx);
    EXPECT_EQ(kol_value_of(xt_net("y[3]").UU.U1.cur_state.state), kol_vx);
}

}  // namespace

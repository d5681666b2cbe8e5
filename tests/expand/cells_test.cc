// What every combinational cell computes, found by simulating it as expanded.
#include <functional>

#include "expand/cell_table.h"
#include "expansion.h"
#include "foundation/context.h"

namespace {

using bits = std::uint64_t;
using ports = std::map<char, bits>;  // values

class cells : public expansion {
protected:
    ~cells() override { EXPECT_EQ(tm_vext.num_errors, 0); }
};

struct gate_row {
    const char* type;
    bool (*result)(ports& v);
};

bool choice(ports& v, const char* data, const char* select) {
    bits place = 0;
    for (std::size_t k = 0; select[k] != 0; ++k) place |= v[select[k]] << k;
    return v[data[place]] != 0;
}

// clang-format off
const gate_row gate_rows[] = {
    {"$_BUF_",    [](ports& v) { return v['A'] != 0; }},
    {"$_NOT_",    [](ports& v) { return v['A'] == 0; }},
    {"$_AND_",    [](ports& v) { return v['A'] && v['B']; }},
    {"$_NAND_",   [](ports& v) { return !(v['A'] && v['B']); }},
    {"$_OR_",     [](ports& v) { return v['A'] || v['B']; }},
    {"$_NOR_",    [](ports& v) { return !(v['A'] || v['B']); }},
    {"$_XOR_",    [](ports& v) { return v['A'] != v['B']; }},
    {"$_XNOR_",   [](ports& v) { return v['A'] == v['B']; }},
    {"$_ANDNOT_", [](ports& v) { return v['A'] && !v['B']; }},
    {"$_ORNOT_",  [](ports& v) { return v['A'] || !v['B']; }},
    {"$_MUX_",    [](ports& v) { return choice(v, "AB", "S"); }},
    {"$_NMUX_",   [](ports& v) { return !choice(v, "AB", "S"); }},
    {"$_AOI3_",   [](ports& v) { return !((v['A'] && v['B']) || v['C']); }},
    {"$_OAI3_",   [](ports& v) { return !((v['A'] || v['B']) && v['C']); }},
    {"$_AOI4_",   [](ports& v) { return !((v['A'] && v['B']) || (v['C'] && v['D'])); }},
    {"$_OAI4_",   [](ports& v) { return !((v['A'] || v['B']) && (v['C'] || v['D'])); }},
    {"$_MUX4_",   [](ports& v) { return choice(v, "ABCD", "ST"); }},
    {"$_MUX8_",   [](ports& v) { return choice(v, "ABCDEFGH", "STU"); }},
    {"$_MUX16_",  [](ports& v) { return choice(v, "ABCDEFGHIJKLMNOP", "STUV"); }},
};
// clang-format on

struct word_row {
    const char* type;
    std::map<char, std::size_t> widths;  // inputs, and Y
    const char* parameters;
    bits (*result)(ports& v);
};

bits ones(std::size_t width) { return (bits{1} << width) - 1; }
bits parity(bits value) { return static_cast<bits>(__builtin_popcountll(value)) & 1; }
bits extended(bits value, std::size_t width) {
    return value >> (width - 1) != 0 ? value | ~ones(width) : value;
}
bits selected(ports& v) { return ((v['S'] & 1) != 0 ? v['B'] : 0) | ((v['S'] & 2) != 0 ? v['B'] >> 2 : 0); }

// clang-format off
const word_row word_rows[] = {
    {"$buf",         {{'A', 3}, {'Y', 3}},                     "WIDTH:3", [](ports& v) { return v['A']; }},
    {"$pos",         {{'A', 2}, {'Y', 4}},                     "A_SIGNED:1 A_WIDTH:2", [](ports& v) { return extended(v['A'], 2); }},
    {"$not",         {{'A', 2}, {'Y', 3}},                     "A_WIDTH:2", [](ports& v) { return ~v['A']; }},
    {"$and",         {{'A', 3}, {'B', 3}, {'Y', 3}},           "", [](ports& v) { return v['A'] & v['B']; }},
    {"$or",          {{'A', 2}, {'B', 3}, {'Y', 4}},           "A_SIGNED:1 B_SIGNED:1",
     [](ports& v) { return extended(v['A'], 2) | extended(v['B'], 3); }},
    {"$xor",         {{'A', 2}, {'B', 3}, {'Y', 4}},           "A_SIGNED:1 B_SIGNED:0", [](ports& v) { return v['A'] ^ v['B']; }},
    {"$xnor",        {{'A', 3}, {'B', 2}, {'Y', 2}},           "", [](ports& v) { return ~(v['A'] ^ v['B']); }},
    {"$mux",         {{'A', 3}, {'B', 3}, {'S', 1}, {'Y', 3}}, "WIDTH:3", [](ports& v) { return v['S'] != 0 ? v['B'] : v['A']; }},
    {"$pmux",        {{'A', 2}, {'B', 4}, {'S', 2}, {'Y', 2}}, "WIDTH:2 S_WIDTH:2",
     [](ports& v) { return v['S'] == 0 ? v['A'] : selected(v); }},
    {"$reduce_and",  {{'A', 4}, {'Y', 1}},                     "", [](ports& v) { return bits{v['A'] == 15}; }},
    {"$reduce_or",   {{'A', 4}, {'Y', 2}},                     "", [](ports& v) { return bits{v['A'] != 0}; }},
    {"$reduce_bool", {{'A', 1}, {'Y', 1}},                     "", [](ports& v) { return v['A']; }},
    {"$reduce_xor",  {{'A', 5}, {'Y', 1}},                     "", [](ports& v) { return parity(v['A']); }},
    {"$reduce_xnor", {{'A', 4}, {'Y', 1}},                     "", [](ports& v) { return ~parity(v['A']); }},
    {"$logic_not",   {{'A', 3}, {'Y', 3}},                     "", [](ports& v) { return bits{v['A'] == 0}; }},
    {"$logic_and",   {{'A', 3}, {'B', 1}, {'Y', 1}},           "", [](ports& v) { return bits{v['A'] != 0 && v['B'] != 0}; }},
    {"$logic_or",    {{'A', 2}, {'B', 2}, {'Y', 1}},           "", [](ports& v) { return bits{v['A'] != 0 || v['B'] != 0}; }},
};
// clang-format on

std::vector<std::string> bits_of(char port, std::size_t width) {
    std::vector<std::string> names;
    for (std::size_t k = 0; k < width; ++k)
        names.push_back(std::string(1, port) + (width == 1 ? "" : "[" + std::to_string(k) + "]"));
    return names;
}

std::string netlist_of(const std::string& type, const std::map<char, std::size_t>& widths,
                       const std::string& parameters) {
    std::string text, connections;
    int net = 2;
    for (const auto& [port, width] : widths) {
        const int last = net + static_cast<int>(width) - 1;
        const std::string range = std::to_string(net) + ".." + std::to_string(last);
        text += (port == 'Y' ? "out " : "in ") + std::string(1, port) + " " + range + "\n";
        connections += " " + std::string(1, port) + "=" + range;
        net = last + 1;
    }
    return text + "cell " + type + " g" + connections + " " + parameters;
}

// What the output is when every x among the states may be either: x when that makes a difference.
char expected(const gate_row& row, const std::map<std::string, char>& states) {
    std::map<std::string, char> one_less = states;
    ports values;
    for (auto& [name, state] : one_less) {
        if (state == 'x') {
            state = '0';
            const char low = expected(row, one_less);
            state = '1';
            return low == expected(row, one_less) ? low : 'x';
        }
        values[name[0]] = state == '1';
    }
    return row.result(values) ? '1' : '0';
}

// Every combination of 0, x and 1 where they are few, else pseudo-random ones with three x at most.
std::map<std::string, char> pattern(std::string_view inputs, std::size_t k) {
    std::map<std::string, char> states;
    const bool is_complete = inputs.size() <= 6;
    bits rest = is_complete ? k : (k + 1) * 6364136223846793005U >> 8;
    int unknown = 0;
    for (const char input : inputs) {
        const char state = is_complete                    ? "0x1"[rest % 3]
                           : rest % 8 == 7 && unknown < 3 ? 'x'
                                                          : "01"[rest % 2];
        unknown += state == 'x';
        states[std::string(1, input)] = state;
        rest /= is_complete ? 3 : 7;
    }
    return states;
}

TEST_F(cells, have_a_row_here_for_every_type_of_the_table) {
    std::size_t types = 0;
    for (const xp_cell_type& type : xp_cell_types()) types += type.shape != xp_shape::ignored;
    EXPECT_EQ(types, std::size(gate_rows) + std::size(word_rows));
}

TEST_F(cells, of_one_bit_follow_their_truth_tables_with_unknown_inputs_too) {
    for (const gate_row& row : gate_rows) {
        const std::string_view inputs = xp_find_cell_type(row.type)->inputs;
        std::map<char, std::size_t> widths = {{'Y', 1}};
        std::size_t count = 1;
        for (const char input : inputs) {
            widths[input] = 1;
            count = std::min<std::size_t>(count * 3, 729);
        }
        start(netlist_of(row.type, widths, ""));
        for (std::size_t k = 0; k < count && !HasFailure(); ++k) {
            const std::map<std::string, char> states = pattern(inputs, k);
            force(states);
            EXPECT_EQ(value("Y"), expected(row, states)) << row.type << " pattern " << k;
        }
    }
}

TEST_F(cells, of_many_bits_are_extended_to_the_width_of_their_output) {
    for (const word_row& row : word_rows) {
        start(netlist_of(row.type, row.widths, row.parameters));
        std::size_t inputs = 0;
        for (const auto& [port, width] : row.widths) inputs += port == 'Y' ? 0 : width;
        for (bits k = 0; k < bits{1} << inputs && !HasFailure(); ++k) {
            std::map<std::string, char> states;
            ports values;
            bits rest = k, found_bits = 0;
            for (const auto& [port, width] : row.widths) {
                if (port == 'Y') continue;
                values[port] = rest & ones(width);
                for (const std::string& bit : bits_of(port, width)) states[bit] = "01"[rest & 1], rest >>= 1;
            }
            force(states);
            const std::vector<std::string> outputs = bits_of('Y', row.widths.at('Y'));
            for (std::size_t i = 0; i < outputs.size(); ++i) {
                EXPECT_NE(std::string("01").find(value(outputs[i])), std::string::npos) << row.type;
                found_bits |= bits{value(outputs[i]) == '1'} << i;
            }
            EXPECT_EQ(found_bits, row.result(values) & ones(outputs.size())) << row.type << " inputs " << k;
        }
    }
}

TEST_F(cells, read_constants_from_nets_that_nothing_drives) {
    start("in a 2; out y 3..6; out t 7; cell $and g A=1,1,x,z B=2,0,2,2 Y=3..6; cell $_BUF_ b A=1 Y=7");
    force({{"a", '1'}});
    const std::pair<const char*, std::int8_t> constants[] = {
        {"logic0", 17}, {"logic1", 19}, {"logicx", 18}, {"logicz", 6}};
    for (const auto& [name, state] : constants) {
        EXPECT_EQ(net(name)->net_kind, yx_kind_initialised) << name;
        EXPECT_EQ(net(name)->nb_pin_out, 0) << name;
        EXPECT_EQ(net(name)->UU.U1.cur_state.state, state) << name;
    }
    std::string values;
    for (const char* name : {"y[0]", "y[1]", "y[2]", "y[3]", "t"}) values += value(name);
    EXPECT_EQ(values, "10xx1");
}

TEST_F(cells, that_select_between_equal_inputs_hold_their_output) {
    for (const char data : {'0', '1'}) {
        start("in a 2; in b 3; in s 4; out y 5; cell $_MUX_ g A=2 B=3 S=4 Y=5");
        force({{"a", data}, {"b", data}, {"s", '0'}});
        const std::int32_t settled = net("y")->UU.U1.cur_state.time;
        for (const char select : {'1', '0', 'x', '1'}) {
            force({{"s", select}});
            EXPECT_EQ(value("y"), data);
            EXPECT_EQ(net("y")->UU.U1.cur_state.time, settled) << "y has moved";
        }
    }
}

TEST_F(cells, may_share_a_net_when_they_have_strengths) {
    start("in a 2; in b 3; out y 4; cell $_BUF_ g A=2 Y=4 @drive:SSSZ; cell $_BUF_ h A=3 Y=4 @drive:sssz");
    for (const char* states : {"11", "10", "01", "00", "11"}) {
        force({{"a", states[0]}, {"b", states[1]}});
        EXPECT_EQ(value("y"), std::string(states) == "11" ? '1' : '0') << states;
    }
}

struct delay_row {
    const char* cell;  // from net 2 to net 3
    std::int32_t rise, fall;
};

// fan-in 1 to 4, one load: the rule of the cell, whatever gates it is made of.
TEST_F(cells, take_their_delay_on_their_longest_way) {
    const delay_row rows[] = {
        {"$_NOT_ g A=2 Y=3", 4, 3},          {"$_XNOR_ g A=2 B=0 Y=3", 5, 4},
        {"$_ANDNOT_ g A=1 B=2 Y=3", 5, 4},   {"$_MUX_ g A=1 B=0 S=2 Y=3", 6, 5},
        {"$_AOI3_ g A=1 B=2 C=0 Y=3", 6, 5}, {"$reduce_or g A=0,0,0,2 Y=3", 7, 6},
    };
    for (const delay_row& row : rows) {
        start(std::string("in a 2; out y 3; cell ") + row.cell);
        force({{"a", '0'}});
        for (const char state : {'1', '0'}) {
            const std::int32_t begin = kol_ext.cur_time;
            force({{"a", state}});
            EXPECT_EQ(net("y")->UU.U1.cur_state.time - begin, value("y") == '1' ? row.rise : row.fall)
                << row.cell;
        }
    }
}

}  // namespace

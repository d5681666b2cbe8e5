// What each combinational cell becomes: its function for known and unknown inputs, on words of any width, and
// constants.
#include <algorithm>
#include <random>

#include "expand/cell_table.h"
#include "expansion.h"

namespace {

using inputs_t = std::map<char, char>;  // of the one-letter inputs
using known_t = std::map<char, bool>;
using function_t = bool (*)(known_t&);

// The value of a function of inputs some of which are unknown: what all ways to choose them agree on.
char agreed(inputs_t inputs, function_t function) {
    for (auto& [letter, value] : inputs) {
        if (value != 'x') continue;
        value = '0';
        const char low = agreed(inputs, function);
        value = '1';
        return agreed(inputs, function) == low ? low : 'x';
    }
    known_t known;
    for (const auto& [letter, value] : inputs) known[letter] = value == '1';
    return function(known) ? '1' : '0';
}

// The input from A on that the bits of `select`, lowest first, choose.
bool chosen(known_t& inputs, std::string_view select) {
    int letter = 'A';
    for (std::size_t i = 0; i < select.size(); ++i) letter += inputs[select[i]] << i;
    return inputs[static_cast<char>(letter)];
}

struct gate_row {
    const char* type;
    std::string_view ports;
    function_t function;
};

// clang-format off
constexpr gate_row gate_rows[] = {
    {"$_BUF_",    "A",    [](known_t& v) { return v['A']; }},
    {"$_NOT_",    "A",    [](known_t& v) { return !v['A']; }},
    {"$_AND_",    "AB",   [](known_t& v) { return v['A'] && v['B']; }},
    {"$_NAND_",   "AB",   [](known_t& v) { return !(v['A'] && v['B']); }},
    {"$_OR_",     "AB",   [](known_t& v) { return v['A'] || v['B']; }},
    {"$_NOR_",    "AB",   [](known_t& v) { return !(v['A'] || v['B']); }},
    {"$_XOR_",    "AB",   [](known_t& v) { return v['A'] != v['B']; }},
    {"$_XNOR_",   "AB",   [](known_t& v) { return v['A'] == v['B']; }},
    {"$_ANDNOT_", "AB",   [](known_t& v) { return v['A'] && !v['B']; }},
    {"$_ORNOT_",  "AB",   [](known_t& v) { return v['A'] || !v['B']; }},
    {"$_MUX_",    "ABS",  [](known_t& v) { return v['S'] ? v['B'] : v['A']; }},
    {"$_NMUX_",   "ABS",  [](known_t& v) { return !(v['S'] ? v['B'] : v['A']); }},
    {"$_AOI3_",   "ABC",  [](known_t& v) { return !((v['A'] && v['B']) || v['C']); }},
    {"$_OAI3_",   "ABC",  [](known_t& v) { return !((v['A'] || v['B']) && v['C']); }},
    {"$_AOI4_",   "ABCD", [](known_t& v) { return !((v['A'] && v['B']) || (v['C'] && v['D'])); }},
    {"$_OAI4_",   "ABCD", [](known_t& v) { return !((v['A'] || v['B']) && (v['C'] || v['D'])); }},
    {"$_MUX4_",   "ABCDST",      [](known_t& v) { return chosen(v, "ST"); }},
    {"$_MUX8_",   "ABCDEFGHSTU", [](known_t& v) { return chosen(v, "STU"); }},
    {"$_MUX16_",  "ABCDEFGHIJKLMNOPSTUV",
                                 [](known_t& v) { return chosen(v, "STUV"); }},
};
// clang-format on

class gates : public expansion {};

TEST_F(gates, follow_their_truth_tables_with_unknown_inputs_too) {
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPSTUV";
    for (const xp_cell_type& type : xp_cell_types()) {
        const bool has_row = std::any_of(std::begin(gate_rows), std::end(gate_rows),
                                         [&](const gate_row& row) { return row.type == type.name; });
        EXPECT_EQ(has_row, type.shape == xp_shape::gate) << type.name;
    }
    std::string netlist;
    for (const char letter : letters) netlist += std::string("net ") + letter + " " + letter + "; ";
    for (const gate_row& row : gate_rows) {
        netlist += std::string("cell ") + row.type + " u" + row.type + " Y=y" + row.type;
        for (const char port : row.ports) netlist += std::string(" ") + port + "=" + port;
        netlist += "\n";
    }
    start(netlist);
    std::mt19937 random(1);
    for (unsigned round = 0; round < 1500 && !HasFailure(); ++round) {
        inputs_t inputs;
        for (const char letter : letters) inputs[letter] = "0101x"[random() % 5];
        if (round < 243)  // A B C D S in every way, unknown too
            for (unsigned i = 0, digits = round; i < 5; ++i, digits /= 3)
                inputs["ABCDS"[i]] = "01x"[digits % 3];
        std::map<std::string, char> states;
        for (const auto& [letter, state] : inputs) states[std::string(1, letter)] = state;
        force(states);
        for (const gate_row& row : gate_rows) {
            inputs_t own;
            for (const char port : row.ports) own[port] = inputs[port];
            EXPECT_EQ(value(std::string("y") + row.type), agreed(own, row.function))
                << row.type << testing::PrintToString(own);
        }
    }
}

// ---- words

using word = std::uint64_t;

struct word_row {
    const char* type;
    unsigned a, b, s, y;  // widths; 0: no such port
    bool is_signed;
    word (*function)(word a, word b, word s);  // of the words extended to 64 bits
};

// clang-format off
const word_row word_rows[] = {
    {"$buf",         3, 0, 0, 3, false, [](word a, word, word) { return a; }},
    {"$pos",         3, 0, 0, 5, true,  [](word a, word, word) { return a; }},
    {"$not",         3, 0, 0, 5, true,  [](word a, word, word) { return ~a; }},
    {"$not",         4, 0, 0, 2, true,  [](word a, word, word) { return ~a; }},
    {"$and",         4, 2, 0, 6, false, [](word a, word b, word) { return a & b; }},
    {"$or",          2, 4, 0, 5, true,  [](word a, word b, word) { return a | b; }},
    {"$xor",         3, 4, 0, 3, false, [](word a, word b, word) { return a ^ b; }},
    {"$xnor",        3, 1, 0, 4, true,  [](word a, word b, word) { return ~(a ^ b); }},
    {"$mux",         3, 3, 1, 3, false, [](word a, word b, word s) { return s != 0 ? b : a; }},
    {"$reduce_and",  4, 0, 0, 1, true,  [](word a, word, word) { return word{(a & 15) == 15}; }},
    {"$reduce_or",   4, 0, 0, 1, false, [](word a, word, word) { return word{a != 0}; }},
    {"$reduce_bool", 4, 0, 0, 3, true,  [](word a, word, word) { return word{a != 0}; }},
    {"$reduce_xor",  4, 0, 0, 1, false, [](word a, word, word) { return word(__builtin_parityll(a)); }},
    {"$reduce_xnor", 4, 0, 0, 2, false, [](word a, word, word) { return word(!__builtin_parityll(a)); }},
    {"$logic_not",   4, 0, 0, 2, true,  [](word a, word, word) { return word{a == 0}; }},
    {"$logic_and",   3, 4, 0, 2, false, [](word a, word b, word) { return word{a != 0 && b != 0}; }},
    {"$logic_or",    1, 3, 0, 1, true,  [](word a, word b, word) { return word{a != 0 || b != 0}; }},
    {"$pmux",        2, 4, 2, 2, false, [](word a, word b, word s) { return s == 0 ? a : s == 1 ? b : b >> 2; }},
};
// clang-format on

// The word of a port with its parameters; multiplexers have one WIDTH for A, B and Y.
std::string port(const word_row& row, char name, unsigned width, unsigned first_bit) {
    if (width == 0) return "";
    const std::string n = std::string(" ") + name, digits = std::to_string(width);
    const bool is_declared = name == 'S' || !std::string_view(row.type).ends_with("mux");
    return n + "=" + std::to_string(first_bit) + ".." + std::to_string(first_bit + width - 1) +
           (is_declared ? n + "_WIDTH:" + digits : "") + (name == 'Y' ? " WIDTH:" + digits : "") +
           (row.is_signed ? n + "_SIGNED:1" : "");
}

word extended(unsigned digits, unsigned width, bool is_signed) {
    const word kept = digits & ((1U << width) - 1);
    return is_signed && width > 0 && (kept >> (width - 1)) != 0 ? kept - (word{1} << width) : kept;
}

TEST_F(gates, of_words_are_extended_to_the_width_of_their_output) {
    std::string netlist = "in a 2..5\nin b 6..9\nin s 10,11\n";
    for (unsigned i = 0; i < std::size(word_rows); ++i) {
        const word_row& row = word_rows[i];
        const unsigned first = 100 + 10 * i;
        netlist += "cell " + std::string(row.type) + " u" + std::to_string(i) + port(row, 'A', row.a, 2) +
                   port(row, 'B', row.b, 6) + port(row, 'S', row.s, 10) + port(row, 'Y', row.y, first) + "\n";
        for (unsigned k = 0; k < row.y; ++k) {
            const std::string bit = std::to_string(first + k);
            netlist += "net y" + bit + " " + bit + "\n";
        }
    }
    start(netlist);
    for (unsigned round = 0; round < 0x300 && !HasFailure();
         ++round) {  // no two choices of a selector at once
        std::map<std::string, char> states;
        for (unsigned i = 0; i < 10; ++i)
            states[std::string(1, "abs"[i / 4]) + "[" + std::to_string(i % 4) + "]"] = "01"[round >> i & 1U];
        force(states);
        for (unsigned i = 0; i < std::size(word_rows); ++i) {
            const word_row& row = word_rows[i];
            const word y =
                row.function(extended(round, row.a, row.is_signed),
                             extended(round >> 4, row.b, row.is_signed), round >> 8 & ((1U << row.s) - 1U));
            for (unsigned k = 0; k < row.y; ++k)
                EXPECT_EQ(value("y" + std::to_string(100 + 10 * i + k)), "01"[y >> k & 1U])
                    << row.type << " row " << i << " bit " << k << " inputs " << round;
        }
    }
}

TEST_F(gates, extend_the_sign_of_two_signed_words_only_and_read_constants_that_nothing_drives) {
    start(
        "in a 2,3; cell $or mixed A=2,3 B=0,0 Y=10..12 A_SIGNED:1 B_SIGNED:0"
        "; cell $or with_constants A=2,0,1,x,z B=0,0,0,0,0 Y=20..24"
        "; net mixed 10..12; net w 20..24; out high 1; net alias 0");
    force({{"a[0]", '1'}, {"a[1]", '1'}});
    const std::map<std::string, char> expected = {{"mixed[1]", '1'}, {"mixed[2]", '0'}, {"w[0]", '1'},
                                                  {"w[1]", '0'},     {"w[2]", '1'},     {"w[3]", 'x'},
                                                  {"w[4]", 'x'},     {"high", '1'},     {"alias", '0'}};
    for (const auto& [name, state] : expected) EXPECT_EQ(value(name), state) << name;
    for (const char* const name : {"logic0", "logic1", "logicx", "logicz"})
        EXPECT_EQ(net(name)->nb_pin_out, 0) << name;
}

TEST_F(gates, of_a_multiplexer_hold_while_it_selects_between_equal_inputs) {
    start("in a 2; in b 3; in s 4; out y 5; cell $_MUX_ m A=2 B=3 S=4 Y=5");
    force({{"a", '1'}, {"b", '1'}, {"s", '0'}});
    const std::int32_t settled = net("y")->UU.U1.cur_state.time;
    for (const char s : {'1', '0', 'x', '1'}) force({{"s", s}});
    EXPECT_EQ(net("y")->UU.U1.cur_state.time, settled);
}

TEST_F(gates, beyond_what_a_net_counts_hang_on_sub_nets_and_are_fed_all_the_same) {
    constexpr int count = 66'000, most = 32'767, inputs = 200, cells = count / inputs;
    std::string all = "a";
    for (int i = 1; i < inputs; ++i) all += ",a";
    std::string netlist;
    for (int k = 0; k < cells; ++k)  // an input that is not fed spoils the 1 of an AND, the 0 of an OR
        netlist += std::string("cell ") + (k % 2 == 0 ? "$reduce_and" : "$reduce_or") + " g" +
                   std::to_string(k) + " A=" + all + " Y=" + std::to_string(k + 1'000'000) + "\n";
    start(netlist + "in a a");
    std::vector<int> pins = {net("a")->nb_pin_in};
    for (const yx_net_record_t* sub = net("a")->UU.U1.first_sub_net_ptr; sub != nullptr;
         sub = sub->UU.U1.next_sub_net_ptr)
        pins.push_back(sub->nb_pin_in);
    EXPECT_EQ(pins, (std::vector<int>{most, count - 2 * most, most}));
    for (const auto& [a, y] : {std::pair('0', 1), std::pair('1', 3)}) {
        force({{"a", a}});
        int fed = 0;
        for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
            const yx_net_record_t& out = *yx_ptrto_net_rec(i);
            fed += out.nb_pin_out == 1 && (out.UU.U1.cur_state.state & 3) == y;
        }
        EXPECT_EQ(fed, cells);
    }
}

TEST_F(gates, with_strengths_share_a_net) {
    start("in a 2; in b 3; out y 4; cell $_BUF_ u1 A=2 Y=4 @drive:SSSS; cell $_BUF_ u2 A=3 Y=4 @drive:wwww");
    force({{"a", '0'}, {"b", '1'}});
    EXPECT_EQ(value("y"), '0');
}

}  // namespace

// Combinational cells beside their functions: constants, signs, steady outputs, nets with many readers,
// strengths.
#include "expansion.h"

namespace {

class gates : public expansion {};

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

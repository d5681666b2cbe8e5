// Nets that feed more pins than a net record counts.
#include "expansion.h"

namespace {

class fan_out : public expansion {
protected:
    // How many gates drive their net to a value.
    static int outputs_at(std::int8_t value) {
        int count = 0;
        for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
            const yx_net_record_t* net = yx_ptrto_net_rec(i);
            count += net->nb_pin_out == 1 && (net->UU.U1.cur_state.state & 3) == value;
        }
        return count;
    }
};

TEST_F(fan_out, beyond_what_a_net_counts_hangs_on_sub_nets_and_is_fed_all_the_same) {
    constexpr int gates = 66'000;
    std::string netlist = "in a 2";
    for (int k = 1; k <= gates; ++k)
        netlist += "\ncell $_NOT_ g" + std::to_string(k) + " A=2 Y=" + std::to_string(k + 2);
    start(netlist);
    std::vector<int> pins = {net("a")->nb_pin_in};
    for (const yx_net_record_t* sub = net("a")->UU.U1.first_sub_net_ptr; sub != nullptr;
         sub = sub->UU.U1.next_sub_net_ptr)
        pins.push_back(sub->nb_pin_in);
    EXPECT_EQ(pins, (std::vector<int>{32767, gates - 2 * 32767, 32767}));
    force({{"a", '0'}});
    EXPECT_EQ(outputs_at(3), gates);
    force({{"a", '1'}});
    EXPECT_EQ(outputs_at(1), gates);
}

}  // namespace

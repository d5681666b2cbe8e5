// The set-up of a loaded design and the return to its initial state.
#include "kernel/setup.h"

#include <gtest/gtest.h>

#include <csignal>

#include "foundation/context.h"
#include "kernel/network.h"
#include "models/dff.h"
#include "models/gates.h"
#include "models/latch.h"
#include "models/smos.h"
#include "models/stable.h"
#include "support/design_build.h"
#include "support/rows.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

// clang-format off
TEST(set_up, installs_the_handler_of_the_model_and_the_pin) {
    for (const auto& [model, pin, handler] : tst_rows<std::string, std::string, yx_procedure_t>{
             {"And", "X", kol_and_i1_hdler}, {"or", "X", kol_or_i1_hdler}, {"nor", "X", kol_nor_i1_hdler},
             {"xor", "X", kol_xor_i1_hdler}, {"and2", "X", nullptr}, {"an", "X", nullptr},
             {"dff", "d", kol_dff_d_hdler}, {"dff", "D1", nullptr}, {"DFF", "clkB", kol_dff_clk_hdler},
             {"dff", "CL", nullptr}, {"dff", "CLKPP", nullptr}, {"dff", "CLR", nullptr},
             {"dff", "RQ", kol_dff_r_hdler}, {"dff", "RPX", nullptr}, {"dff", "SET", nullptr}, {"dff", "E", nullptr},
             {"latch", "ENA", nullptr}, {"latch", "R", kol_latch_r_hdler}, {"latch", "s", kol_latch_s_hdler},
             {"latch", "CLK", nullptr}, {"stable", "CLKN", kol_stable_clk_hdler}, {"stable", "R", nullptr},
             {"smos", "e", kol_smos_e_hdler}, {"smos", "ENA", kol_smos_d_hdler}}) {
        tst_build(model + " g = " + pin + ":a iprio 7");
        EXPECT_EQ(tst_pin("/g/" + pin).pin_hdler, handler) << model << ' ' << pin;
        EXPECT_EQ(tst_pin("/g/" + pin).pin_hdl_priority, handler == nullptr ? 1 : 7) << model << ' ' << pin;
    }
    tst_build("nand g y = a b c; pin /g/I2 io 3; pin /g/I3 io 4");
    for (const char* pin : {"/g/I1", "/g/I2", "/g/I3"}) EXPECT_EQ(tst_pin(pin).pin_hdler, kol_nand_i1_hdler);
    EXPECT_EQ(tst_pin("/g/O").pin_hdler, nullptr);
}

TEST(set_up, says_what_is_wrong_with_a_model) {
    const std::string none = "# !! ERROR : NO  handler installed for PIN : \n !! \"/g/D\"\n";
    for (const auto& [design, text, errors] : tst_rows<tst_cstr, std::string, int>{  // the text begins so
             {"and g y = a; and h z = a; inst g without MODEL",
              "# !!! Error : NO property \"MODEL\" in design file on : \n !! \"/g\"\n", 1},
             {"and g y = a; and h z = a; inst g type MODEL integer",
              "# !!! Error : INVALID  property \"MODEL\" type on instance : \n !! \"/g\"\n", 1},
             {"and2 g y = a", "# !! ERROR : NO  handler installed for PIN : \n !! \"/g/I1\"\n"
              "# !! WARNING : NO init handler for instance : \n !! \"/g\"\n", 0},
             {"smos g = D:a; pin /g/D without PIN",  // the model's own set-up counts its refusal, too
              "# !!! Error : NO property \"PIN\" on pin : \n !! \"/g/D\"\n" + none, 2},
             {"smos g = D:a; pin /g/D type PIN integer",
              "# !!! Error : INVALID  property \"PIN\" type on pin : \n !! \"/g/D\"\n" + none, 2}}) {
        tst_build(design);
        const std::string lines = tst_take_text();
        EXPECT_EQ(errors > 1 ? lines.substr(0, text.size()) : lines, text) << design;
        EXPECT_EQ(tm_vext.num_errors, errors) << design;
        EXPECT_EQ(tm_vext.num_warnings, 0) << design;
    }
}
TEST(set_up, ends_at_the_first_instance_without_a_model) {
    std::string error;
    yx_design_image_t image = tst_design("and f x = a; and g y = a; and h z = a", error);
    image.props[static_cast<std::size_t>(image.insts[1].first_prop - 1)].valuec = 0;
    tst_load(image);
    tst_set_up();
    EXPECT_EQ(tst_take_text(), "# !!! Error : NO property \"MODEL\" on instance : \n !! \"/g\"\n");
    EXPECT_EQ(tst_pin("/g/I1").pin_hdler, nullptr);
    tst_schedule("a=1@10");
    tst_run_until(100);
    EXPECT_EQ(tst_net_state("x"), "1S");
    EXPECT_EQ(tst_net_state("z"), "iU");
}

TEST(set_up, computes_the_largest_delay_of_nets_and_pins) {
    for (const auto& [design, delay] : tst_rows<tst_cstr, int>{
             {"net a rise 9", 0}, {"net y rise 1:2:30; and g y = a rise 4 fall 5 irise 20", 34},
             {"net y rise 1; and g y = a rise 4 fall 5 irise 40", 40}, {"bus d 4 rise 6; and g d.1-2 = a rise 5", 11},
             {"net y fall 7 rise 9; and g y = a fall 1:8:3", 15},
             {"net t rise 10; sub s of t rise 99; and g s = a rise 5", 15}}) {
        tst_build(design);
        EXPECT_EQ(kol_max_delay, delay) << design;
        kol_init_net_state();
        EXPECT_EQ(kol_max_delay, delay) << design;
    }
}
// clang-format on

const std::pair<int, int> untouched{0, -1};  // state and time
std::pair<int, int> of(const yx_signal_state_rec& seen) { return {seen.state, seen.time}; }

TEST(set_up, begins_and_begins_again_in_the_initial_states) {
    tst_build(
        "net p init 1; net q kind 4; net r; and g y = a p rise 5 fall 5; bus d 4; and h d = r rise 2 fall 2");
    kol_ext.spike_on = false;
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE(round);
        EXPECT_EQ(tst_queue_text(), "0:/p=1S 0:/q=iU");
        EXPECT_EQ(tst_net("q").UU.U1.cur_state.time + tst_net("q").UU.U1.old_state.time, 0);
        for (const char* name : {"r", "y", "a", "d[1]"}) {
            EXPECT_EQ(of(tst_net(name).UU.U1.cur_state), untouched) << name;
            EXPECT_EQ(of(tst_net(name).UU.U1.old_state), untouched) << name;
        }
        for (const char* name : {"/g/O", "/g/I1", "/g/I2", "/h/I1"})
            EXPECT_EQ(of(tst_pin(name).pin_state.std), untouched) << name;
        for (const char* bit : {"d[0]", "d[1]", "d[2]", "d[3]"})
            EXPECT_EQ(of(kol_pin_state(tst_pin("/h/O"), tst_net(bit))), untouched) << bit;

        tst_run_until(0);
        EXPECT_EQ(tst_net_state("p"), "1S");
        tst_schedule("a=0@10 r=1@10 a=1@13 q=1@900");
        tst_run_until(16);  // y gets 0S at 15, the next change is still queued
        EXPECT_EQ(tst_net_state("y"), "0S");
        EXPECT_EQ(kol_pin_state(tst_pin("/h/O"), tst_net("d[2]")).time, 12);
        EXPECT_EQ(tst_queue_text(), "18:/y=1S 900:/q=1S");
        kol_ext.cur_time = 0;
        kol_init_net_state();
    }
}

TEST(set_up, stops_at_a_pin_with_a_range_on_a_net_that_is_no_bus) {
    tst_build("and g z = a");
    tst_pin("/g/I1").pin_end = 1;
    EXPECT_EXIT(kol_init_net_state(), testing::KilledBySignal(SIGABRT), "");
}

}  // namespace

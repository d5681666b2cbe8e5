// Flip-flop, latch, checker and switch: what their set-ups refuse, and what a restart forgets.
#include <gtest/gtest.h>

#include "foundation/context.h"
#include "kernel/history.h"
#include "kernel/setup.h"
#include "support/design_build.h"
#include "support/rows.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

// clang-format off
TEST(flip_flop, set_up_refuses_with_the_line_of_the_first_fault) {
    for (const auto& [design, fault, path] : tst_rows<tst_cstr, std::string, std::string>{
        {"dff f Q:q = DX:d", "Invalid Data Name (D)", "/f/DX"},
        {"dff f Q:q = CL:c", "Invalid Clock Name (CLK,CLKN,CLKP,CLKX)", "/f/CL"},
        {"dff f Q:q = CLKQ:c", "INVALID Pin Name(CLKN,CLKP,CLKX) ", "/f/CLKQ"},
        {"dff f Q:q = RPX:r", "Invalid Reset Name (R,RN,RP,RX) ", "/f/RPX"},
        {"dff f Q:q = RQ:r", "INVALID Pin Name(RN,RP,RX) ", "/f/RQ"},
        {"dff f Q:q = SPX:s", "Invalid Set Name (S,SN,SP,SX)", "/f/SPX"},
        {"dff f Q:q = SQ:s", "INVALID Pin Name (SN,SP,SX) ", "/f/SQ"},
        {"dff f Q:q = X:x", "Invalid Pin Type Output ", "/f/X"},
        {"dff f Q:q = CLKP:c; pin /f/Q without PIN", "NO property \"PIN\"", "/f/Q"},
        {"dff f Q:q = D:d; pin /f/D without EDGE", "NO property \"EDGE\"", "/f/D"},
        {"dff f Q:q = D:d; pin /f/D edge Q", "INVALID  property \"EDGE\" Value :\"R\"or\"F\"or\"X\")", "/f/D"},
        {"dff f Q:q = D:d; pin /f/D edge X type EDGE integer",
         "INVALID  property \"EDGE\" type(String:R/F/X)", "/f/D"},
        {"dff f Q:q = D:d; pin /f/D edge X setup 1 type SETUP_TIME string",
         "INVALID  property \"SETUP_TIME\" type", "/f/D"},
        {"dff f Q:q = D:d; pin /f/Q io 3", "Invalid Pin Type Output ", "/f/Q"},
        {"bus b 4; dff f Q:b = D:d", "Pin Bus Not Allowed", "/f/Q"},
        {"dff f Q1:a Q2:b Q3:c Q4:d Q5:e Q6:f Q7:g Q8:h Q9:i = CLKP:k", "Invalid Pin Type Output ", "/f/Q9"},
        {"latch l Q:q = EQ:e", "INVALID Pin Name(EN,EP,EX) ", "/l/EQ"},
        {"latch l Q:q = EPX:e", "Invalid Enable Name (E,EN,EP,EX)", "/l/EPX"},
        {"stable t = CLKPP:c", "Invalid Clock Name (CLK,CLKN,CLKP)", "/t/CLKPP"},
        {"smos m = EP:e A:a", "Invalid Pin Type Output ", "/m/A"},
    }) {
        tst_build(design);
        const std::string lines = "\n# !!! Error : " + fault + " on pin : \n !! \"" + path + "\"\n";
        EXPECT_NE(('\n' + tst_take_text()).find(lines), lines.npos) << design << lines;
        EXPECT_GE(tm_vext.num_errors, 1) << design;
    }
    tst_build("stable t = D:d Q:q; pin /t/D edge X");
    EXPECT_NE(tst_take_text().find("# !!! Error : Invalid Pin :   \"/t/Q\"\n !! \"/t/Q\"\n"), std::string::npos);
}
// clang-format on

TEST(flip_flop, a_limit_that_its_pin_has_no_use_for_is_a_warning) {
    tst_build("dff f Q:q = D:d CLKP:c; pin /f/D edge X high 1 low 0; pin /f/CLKP setup 2 hold 3");
    EXPECT_EQ(tst_take_text(),
              "# !!! Warning: Minimum Time High Not Checked on pin : \n    \"/f/D\"\n"
              "# !!! Warning: Setup Not Allowed on Clock : \n    \"/f/CLKP\"\n"
              "# !!! Warning: Hold Not Allowed on Clock : \n    \"/f/CLKP\"\n");
    EXPECT_EQ(tm_vext.num_warnings, 3);
}

TEST(flip_flop, a_restart_forgets_what_its_inputs_did) {
    tst_build("dff f Q:q = D:d CLKP:c RP:r SN:s; pin /f/D edge x");
    kol_ext.spike_on = false;
    tst_schedule("s=1@1 r=0@1 r=1@10");
    tst_run_until(100);
    kol_ext.start_time = kol_ext.cur_time = 0;
    kol_init_net_state();
    kol_observe_net(&tst_net("q"));
    tst_schedule("d=1@2 c=1@60 r=0@70");
    tst_run_until(200);
    EXPECT_EQ(tst_changes_of("q"), "60:1S");  // reset is not on any more
    EXPECT_EQ(tst_take_text(), "");
}

}  // namespace

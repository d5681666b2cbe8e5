// Flip-flop, latch, checker and switch: what their outputs do, what they report, what their set-ups refuse.
#include <gtest/gtest.h>

#include "foundation/context.h"
#include "kernel/history.h"
#include "kernel/setup.h"
#include "support/design_build.h"
#include "support/rows.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

using scenarios = tst_rows<std::string, tst_cstr, tst_cstr, std::string>;

void expect(const scenarios& rows) {
    for (const auto& [design, stimuli, changes, text] : rows) tst_expect_run(design, stimuli, changes, text);
}

std::string violation(const std::string& what, const std::string& pin, const char* from,
                      const std::string& time) {
    const std::string other = from == nullptr ? " " : std::string("\n#    From pin:\"") + from + "\"";
    return "# !! " + what + " Violation on pin:\"" + pin + "\"" + other + "\n#  time:" + time + "\n";
}

const std::string flip_flop = "dff f Q:q QB:qb = D:d CLK:c rise 3 fall 2 irise 1 ifall 4; pin /f/D edge X; ";
const std::string rising = flip_flop + "pin /f/CLK edge R; ";
const std::string set_reset = "dff f Q:q = D:d CLKP:c RP:r SN:s; pin /f/D edge x; pin /f/CLKP setup 0; ";

// clang-format off
TEST(flip_flop, captures_on_the_edge_of_its_clock_after_clock_and_output_delays) {
    const char* const stimuli = "c=0@1 d=1@5 c=1@10 c=0@15 d=0@20 c=1@30 d=x@40 c=0@45 c=x@50";
    expect({
        {rising, stimuli, "q 14:1S 36:0S 54:xS qb 13:0S 37:1S 54:xS", ""},
        {"dff f Q:q = D:d CLKN:c; pin /f/D edge X", stimuli, "q 1:iS 15:1S 45:xS", ""},
        {"dff f Q:q = D:d CLKX:c; pin /f/D edge X", stimuli, "q 1:iS 10:1S 30:0S 45:xS", ""},
        {rising, "c=0@1 c=1@10", "q 14:iS qb 14:iS", ""},
    });
}

TEST(flip_flop, reports_setup_hold_and_pulse_widths_with_their_times) {
    const std::string both_edges = flip_flop + "pin /f/CLK edge X high 5 low 7; ";
    expect({
        {rising + "pin /f/D setup 5", "c=0@1 d=1@8 c=1@10 c=0@20 d=0@25 c=1@30", "",
         violation("Setup Time", "/f/CLK", "/f/D", "8.000-->10.000<->:2.000(<5.000)")},
        {rising + "pin /f/D setup 5", "c=1@1 d=1@8 c=0@10", "",  // the other edge
         violation("Setup Time", "/f/CLK", "/f/D", "0.0-->1.000<->:1.000(<5.000)")},
        {rising + "pin /f/D hold 5", "c=1@10 d=1@14 d=0@15", "",
         violation("Hold Time", "/f/D", "/f/CLK", "10.000-->14.000<->:4.000(<5.000)")},
        {rising + "pin /f/D edge F hold 5", "c=1@10 d=1@12 d=0@13", "",
         violation("Hold Time", "/f/D", "/f/CLK", "10.000-->13.000<->:3.000(<5.000)")},
        {both_edges, "c=0@10 c=1@17 c=0@21", "",
         violation("Min Time High", "/f/CLK", nullptr, "17.000-->21.000<->:4.000(<5.000)")},
        {both_edges, "c=0@10 c=1@16", "",
         violation("Min Time Low", "/f/CLK", nullptr, "10.000-->16.000<->:6.000(<7.000)")},
        {both_edges, "c=x@10 c=i@14", "",
         violation("Min Time", "/f/CLK", nullptr, "10.000-->14.000<->:4.000(<5.000)")},
        {flip_flop + "pin /f/CLK edge X low 7", "c=x@10 c=i@14", "",
         violation("Min Time", "/f/CLK", nullptr, "10.000-->14.000<->:4.000(<7.000)")},
        {flip_flop + "pin /f/CLK edge R low 7", "c=0@4 c=1@6", "",  // the fall is not recorded
         violation("Min Time Low", "/f/CLK", nullptr, "0.0-->6.000<->:6.000(<7.000)")},
        {set_reset + "pin /f/SN setup 6", "r=0@1 s=1@1 c=1@5", "",
         violation("Setup Time", "/f/CLKP", "/f/SN", "0.0-->5.000<->:5.000(<6.000)")},
        {set_reset + "pin /f/RP setup 6 hold 3", "r=0@1 c=1@5 r=1@7 r=0@20 c=0@30", "",
         violation("Setup Time", "/f/CLKP", "/f/RP", "0.0-->5.000<->:5.000(<6.000)") +
         violation("Hold Time", "/f/RP", "/f/CLKP", "5.000-->7.000<->:2.000(<3.000)")},
    });
}

TEST(flip_flop, set_and_reset_override_the_clock_and_reset_wins) {
    const char* const overridden =
        "# !! Reset Already  ON pin:\"/f/RP\"\n#   That Overide Set pin:\"/f/SN\"\n#  time:30.000\n";
    expect({
        {set_reset, "s=1@1 r=0@1 d=1@2 c=1@5 r=1@10 c=0@12 c=1@15 r=0@20 c=0@22 c=1@25", "q 5:1S 10:0S 25:1S", ""},
        {set_reset, "s=1@1 r=0@1 d=0@2 c=1@5 s=0@10 c=0@12 c=1@15 s=1@20 c=0@22 c=1@25", "q 5:0S 10:1S 25:0S", ""},
        {set_reset, "s=1@1 r=0@1 r=1@10 s=0@30", "q 10:0S", overridden},
        {set_reset, "s=1@1 r=0@1 s=0@10 r=1@30", "q 10:1S 30:0S", ""},
        {"dff f QB:q = D:d CLKP:c RX:r; pin /f/D edge x", "r=0@1 r=1@10", "q 1:1S", ""},
    });
}

TEST(latch, passes_data_while_open_and_holds_behind_the_latching_edge) {
    const std::string by_edge = "latch l Q:q = D:d E:e irise 1 ifall 1; pin /l/D edge X; pin /l/E edge F; ";
    const char* const stimuli = "e=1@1 d=1@5 d=0@10 d=1@15 e=0@20 d=0@25 e=1@30 d=x@35";
    expect({
        {by_edge, stimuli, "q 6:1S 11:0S 16:1S 36:xS", ""},
        {"latch l Q:q = D:d EP:e; pin /l/D edge X", stimuli, "q 5:1S 10:0S 15:1S 35:xS", ""},
        {"latch l Q:q = D:d EN:e; pin /l/D edge X", stimuli, "q 1:iS 25:0S", ""},
        {"latch l Q:q = D:d EX:e; pin /l/D edge X",  // captures nothing
         "d=1@5 e=1@10 d=0@15 e=0@20 d=x@30", "q 5:1S 30:xS", ""},
        {by_edge + "pin /l/D setup 5 hold 5", "e=1@1 d=1@18 e=0@20 d=0@23", "q 19:1S",
         violation("Setup Time", "/l/E", "/l/D", "18.000-->20.000<->:2.000(<5.000)") +
         violation("Hold Time", "/l/D", "/l/E", "20.000-->23.000<->:3.000(<5.000)")},
        {"latch l Q:q = D:d EP:e SP:s; pin /l/D edge X",
         "e=1@1 s=0@1 d=0@5 s=1@10 d=1@15 d=0@16 s=0@20 d=0@21 d=1@25", "q 5:0S 10:1S", ""},
    });
}

TEST(checker, checks_while_its_enable_allows) {
    const std::string checker = "stable t = D:d CLK:c EP:e; pin /t/D edge X setup 3; pin /t/CLK edge R; ";
    const std::string setup = violation("Setup Time", "/t/CLK", "/t/D", "19.000-->20.000<->:1.000(<3.000)");
    expect({
        {checker, "c=0@5 d=1@19 c=1@20", "", setup},  // enabled at start
        {checker, "c=1@5 d=1@19 c=0@20", "", ""},
        {checker, "e=0@6 c=0@7 d=1@19 c=1@20", "", ""},
        {checker, "e=0@6 e=1@8 c=0@9 d=1@19 c=1@20", "", setup},
        {checker, "e=x@6 c=0@7 d=1@19 c=1@20", "", ""},  // inverted by an unknown
        {"stable t = D:d CLKX:c EN:e; pin /t/D edge X; pin /t/CLKX high 9", "e=1@2 c=0@12 c=1@20 c=0@25", "",
         violation("Min Time High", "/t/CLKX", nullptr, "20.000-->25.000<->:5.000(<9.000)")},  // in any case
    });
}

TEST(mos_switch, resolves_its_terminals_and_drives_the_ones_that_differ) {
    const std::string terminals = " A:a B:b irise 2 ifall 2; pin /m/A io 4; pin /m/B io 4; ";
    const std::string rising_switch = "smos m = EP:e" + terminals + "and g b = w drive ZZZW";
    expect({
        {rising_switch, "e=0@1 a=1S@5 e=1@10", "b 14:1S", ""},
        {rising_switch, "a=1R@5 e=1@10 a=0S@20", "a 5:1R 20:0S b 14:1R 24:0S", ""},
        {rising_switch, "a=1S@5 e=1@10 e=0@20 a=0S@30", "b 14:1S", ""},
        {rising_switch, "a=1W@5 b=0W@5 e=1@10", "a 5:1W 14:iW b 5:0W 14:iW", ""},
        {rising_switch, "a=1S@5 b=1S@5 e=1@10", "a 5:1S b 5:1S", ""},
        {"smos m = EN:e" + terminals, "e=1@1 a=1S@5 e=0@10", "b 14:1S", ""},
    });
}

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
    tst_build(set_reset);
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

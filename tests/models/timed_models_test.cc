// Flip-flop, latch, checker and switch: what their outputs do, what they report, what their set-ups refuse.
#include <gtest/gtest.h>

#include <algorithm>

#include "foundation/context.h"
#include "kernel/history.h"
#include "kernel/setup.h"
#include "support/design_build.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

using lines_t = std::vector<std::string>;

void build(const std::string& design) {
    tst_build(design);
    kol_ext.spike_on = false;
}

struct scenario {
    const char* name;
    std::string design;
    const char* stimuli;
    std::vector<std::pair<const char*, const char*>> changes;
    lines_t lines;
};

void expect_scenario(const scenario& s) {
    SCOPED_TRACE(s.name);
    build(s.design);
    ASSERT_EQ(tst_take_lines(), lines_t{});
    for (const auto& [net, changes] : s.changes) kol_observe_net(&tst_net(net));
    tst_schedule(s.stimuli);
    tst_run_until(1000);
    for (const auto& [net, changes] : s.changes) EXPECT_EQ(tst_changes_of(net), changes) << net;
    EXPECT_EQ(tst_take_lines(), s.lines);
}

lines_t violation(const char* what, const char* pin, const char* from, const char* time) {
    const std::string first = std::string("# !! ") + what + " Violation on pin:\"" + pin + "\"";
    if (from == nullptr) return {first + " ", std::string("#  time:") + time};
    return {first, std::string("#    From pin:\"") + from + "\"", std::string("#  time:") + time};
}

lines_t both(lines_t first, const lines_t& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const std::string flip_flop = "dff f Q:q QB:qb = D:d CLK:c rise 3 fall 2 irise 1 ifall 4; pin /f/D edge X; ";
const std::string rising = flip_flop + "pin /f/CLK edge R; ";
const std::string set_reset = "dff f Q:q = D:d CLKP:c RP:r SN:s; pin /f/D edge x; pin /f/CLKP setup 0; ";

TEST(flip_flop, captures_on_the_edge_of_its_clock_after_clock_and_output_delays) {
    const char* const stimuli = "c=0@1 d=1@5 c=1@10 c=0@15 d=0@20 c=1@30 d=x@40 c=0@45 c=x@50";
    for (const scenario& s : {
             scenario{"R", rising, stimuli, {{"q", "14:1S 36:0S 54:xS"}, {"qb", "13:0S 37:1S 54:xS"}}, {}},
             {"CLKN", "dff f Q:q = D:d CLKN:c; pin /f/D edge X", stimuli, {{"q", "1:iS 15:1S 45:xS"}}, {}},
             {"CLKX",
              "dff f Q:q = D:d CLKX:c; pin /f/D edge X",
              stimuli,
              {{"q", "1:iS 10:1S 30:0S 45:xS"}},
              {}},
             {"conflict", rising, "c=0@1 c=1@10", {{"q", "14:iS"}, {"qb", "14:iS"}}, {}},
         })
        expect_scenario(s);
}

TEST(flip_flop, reports_setup_hold_and_pulse_widths_with_their_times) {
    const std::string both_edges = flip_flop + "pin /f/CLK edge X high 5 low 7; ";
    for (const scenario& s : {
             scenario{"setup",
                      rising + "pin /f/D setup 5",
                      "c=0@1 d=1@8 c=1@10 c=0@20 d=0@25 c=1@30",
                      {},
                      violation("Setup Time", "/f/CLK", "/f/D", "8.000-->10.000<->:2.000(<5.000)")},
             {"setup on the other edge",
              rising + "pin /f/D setup 5",
              "c=1@1 d=1@8 c=0@10",
              {},
              violation("Setup Time", "/f/CLK", "/f/D", "0.0-->1.000<->:1.000(<5.000)")},
             {"hold",
              rising + "pin /f/D hold 5",
              "c=1@10 d=1@14 d=0@15",
              {},
              violation("Hold Time", "/f/D", "/f/CLK", "10.000-->14.000<->:4.000(<5.000)")},
             {"hold of a falling data edge",
              rising + "pin /f/D edge F hold 5",
              "c=1@10 d=1@12 d=0@13",
              {},
              violation("Hold Time", "/f/D", "/f/CLK", "10.000-->13.000<->:3.000(<5.000)")},
             {"high",
              both_edges,
              "c=0@10 c=1@17 c=0@21",
              {},
              violation("Min Time High", "/f/CLK", nullptr, "17.000-->21.000<->:4.000(<5.000)")},
             {"low",
              both_edges,
              "c=0@10 c=1@16",
              {},
              violation("Min Time Low", "/f/CLK", nullptr, "10.000-->16.000<->:6.000(<7.000)")},
             {"unknown",
              both_edges,
              "c=x@10 c=i@14",
              {},
              violation("Min Time", "/f/CLK", nullptr, "10.000-->14.000<->:4.000(<5.000)")},
             {"a recorded edge only",
              flip_flop + "pin /f/CLK edge R low 7",
              "c=0@4 c=1@6",
              {},
              violation("Min Time Low", "/f/CLK", nullptr, "0.0-->6.000<->:6.000(<7.000)")},
             {"reset against the clock",
              set_reset + "pin /f/RP setup 6 hold 3",
              "r=0@1 c=1@5 r=1@7 r=0@20 c=0@30",
              {},
              both(violation("Setup Time", "/f/CLKP", "/f/RP", "0.0-->5.000<->:5.000(<6.000)"),
                   violation("Hold Time", "/f/RP", "/f/CLKP", "5.000-->7.000<->:2.000(<3.000)"))},
         })
        expect_scenario(s);
}

TEST(flip_flop, set_and_reset_override_the_clock_and_reset_wins) {
    const lines_t overridden = {"# !! Reset Already  ON pin:\"/f/RP\"", "#   That Overide Set pin:\"/f/SN\"",
                                "#  time:30.000"};
    for (const scenario& s : {
             scenario{"reset",
                      set_reset,
                      "s=1@1 r=0@1 d=1@2 c=1@5 r=1@10 c=0@12 c=1@15 r=0@20 c=0@22 c=1@25",
                      {{"q", "5:1S 10:0S 25:1S"}},
                      {}},
             {"set",
              set_reset,
              "s=1@1 r=0@1 d=0@2 c=1@5 s=0@10 c=0@12 c=1@15 s=1@20 c=0@22 c=1@25",
              {{"q", "5:0S 10:1S 25:0S"}},
              {}},
             {"both", set_reset, "s=1@1 r=0@1 r=1@10 s=0@30", {{"q", "10:0S"}}, overridden},
             {"reset over set", set_reset, "s=1@1 r=0@1 s=0@10 r=1@30", {{"q", "10:1S 30:0S"}}, {}},
             {"inverted outputs",
              "dff f QB:q = D:d CLKP:c RX:r; pin /f/D edge x",
              "r=0@1 r=1@10",
              {{"q", "1:1S"}},
              {}},
         })
        expect_scenario(s);
}

TEST(latch, passes_data_while_open_and_holds_behind_the_latching_edge) {
    const std::string by_edge = "latch l Q:q = D:d E:e irise 1 ifall 1; pin /l/D edge X; pin /l/E edge F; ";
    const char* const stimuli = "e=1@1 d=1@5 d=0@10 d=1@15 e=0@20 d=0@25 e=1@30 d=x@35";
    for (const scenario& s : {
             scenario{"edge F", by_edge, stimuli, {{"q", "6:1S 11:0S 16:1S 36:xS"}}, {}},
             {"EP",
              "latch l Q:q = D:d EP:e; pin /l/D edge X",
              stimuli,
              {{"q", "5:1S 10:0S 15:1S 35:xS"}},
              {}},
             {"EN", "latch l Q:q = D:d EN:e; pin /l/D edge X", stimuli, {{"q", "1:iS 25:0S"}}, {}},
             {"EX captures nothing",
              "latch l Q:q = D:d EX:e; pin /l/D edge X",
              "d=1@5 e=1@10 d=0@15 e=0@20 d=x@30",
              {{"q", "5:1S 30:xS"}},
              {}},
             {"setup and hold",
              by_edge + "pin /l/D setup 5 hold 5",
              "e=1@1 d=1@18 e=0@20 d=0@23",
              {{"q", "19:1S"}},
              both(violation("Setup Time", "/l/E", "/l/D", "18.000-->20.000<->:2.000(<5.000)"),
                   violation("Hold Time", "/l/D", "/l/E", "20.000-->23.000<->:3.000(<5.000)"))},
             {"set",
              "latch l Q:q = D:d EP:e SP:s; pin /l/D edge X",
              "e=1@1 s=0@1 d=0@5 s=1@10 d=1@15 d=0@16 s=0@20 d=0@21 d=1@25",
              {{"q", "5:0S 10:1S"}},
              {}},
         })
        expect_scenario(s);
}

TEST(checker, checks_while_its_enable_allows) {
    const std::string checker = "stable t = D:d CLK:c EP:e; pin /t/D edge X setup 3; pin /t/CLK edge R; ";
    const lines_t setup = violation("Setup Time", "/t/CLK", "/t/D", "19.000-->20.000<->:1.000(<3.000)");
    for (const scenario& s : {
             scenario{"enabled at start", checker, "c=0@5 d=1@19 c=1@20", {}, setup},
             {"falling clock", checker, "c=1@5 d=1@19 c=0@20", {}, {}},
             {"disabled", checker, "e=0@6 c=0@7 d=1@19 c=1@20", {}, {}},
             {"enabled again", checker, "e=0@6 e=1@8 c=0@9 d=1@19 c=1@20", {}, setup},
             {"inverted by an unknown", checker, "e=x@6 c=0@7 d=1@19 c=1@20", {}, {}},
             {"pulses in any case",
              "stable t = D:d CLKX:c EN:e; pin /t/D edge X; pin /t/CLKX high 9",
              "e=1@2 c=0@12 c=1@20 c=0@25",
              {},
              violation("Min Time High", "/t/CLKX", nullptr, "20.000-->25.000<->:5.000(<9.000)")},
         })
        expect_scenario(s);
}

TEST(mos_switch, resolves_its_terminals_and_drives_the_ones_that_differ) {
    const std::string terminals = " A:a B:b irise 2 ifall 2; pin /m/A io 4; pin /m/B io 4; ";
    const std::string rising_switch = "smos m = EP:e" + terminals + "and g b = w drive ZZZW";
    for (const scenario& s : {
             scenario{"closing", rising_switch, "e=0@1 a=1S@5 e=1@10", {{"b", "14:1S"}}, {}},
             {"a change while closed",
              rising_switch,
              "a=1R@5 e=1@10 a=0S@20",
              {{"a", "5:1R 20:0S"}, {"b", "14:1R 24:0S"}},
              {}},
             {"open again", rising_switch, "a=1S@5 e=1@10 e=0@20 a=0S@30", {{"b", "14:1S"}}, {}},
             {"conflict",
              rising_switch,
              "a=1W@5 b=0W@5 e=1@10",
              {{"a", "5:1W 14:iW"}, {"b", "5:0W 14:iW"}},
              {}},
             {"equal nets are silent",
              rising_switch,
              "a=1S@5 b=1S@5 e=1@10",
              {{"a", "5:1S"}, {"b", "5:1S"}},
              {}},
             {"EN", "smos m = EN:e" + terminals, "e=1@1 a=1S@5 e=0@10", {{"b", "14:1S"}}, {}},
         })
        expect_scenario(s);
}

TEST(flip_flop, set_up_refuses_with_the_line_of_the_first_fault) {
    struct refusal {
        const char* design;
        const char* line;
        const char* path;
    };
    const refusal refusals[] = {
        {"dff f Q:q = DX:d", "# !!! Error : Invalid Data Name (D) on pin : ", "/f/DX"},
        {"dff f Q:q = CL:c", "# !!! Error : Invalid Clock Name (CLK,CLKN,CLKP,CLKX) on pin : ", "/f/CL"},
        {"dff f Q:q = CLKQ:c", "# !!! Error : INVALID Pin Name(CLKN,CLKP,CLKX)  on pin : ", "/f/CLKQ"},
        {"dff f Q:q = RPX:r", "# !!! Error : Invalid Reset Name (R,RN,RP,RX)  on pin : ", "/f/RPX"},
        {"dff f Q:q = RQ:r", "# !!! Error : INVALID Pin Name(RN,RP,RX)  on pin : ", "/f/RQ"},
        {"dff f Q:q = SPX:s", "# !!! Error : Invalid Set Name (S,SN,SP,SX) on pin : ", "/f/SPX"},
        {"dff f Q:q = SQ:s", "# !!! Error : INVALID Pin Name (SN,SP,SX)  on pin : ", "/f/SQ"},
        {"dff f Q:q = X:x", "# !!! Error : Invalid Pin Type Output  on pin : ", "/f/X"},
        {"dff f Q:q = CLKP:c; pin /f/Q without PIN", "# !!! Error : NO property \"PIN\" on pin : ", "/f/Q"},
        {"dff f Q:q = D:d; pin /f/D without EDGE", "# !!! Error : NO property \"EDGE\" on pin : ", "/f/D"},
        {"dff f Q:q = D:d; pin /f/D edge Q",
         "# !!! Error : INVALID  property \"EDGE\" Value :\"R\"or\"F\"or\"X\") on pin : ", "/f/D"},
        {"dff f Q:q = D:d; pin /f/D edge X type EDGE integer",
         "# !!! Error : INVALID  property \"EDGE\" type(String:R/F/X) on pin : ", "/f/D"},
        {"dff f Q:q = D:d; pin /f/D edge X setup 1 type SETUP_TIME string",
         "# !!! Error : INVALID  property \"SETUP_TIME\" type on pin : ", "/f/D"},
        {"dff f Q:q = D:d; pin /f/Q io 3", "# !!! Error : Invalid Pin Type Output  on pin : ", "/f/Q"},
        {"bus b 4; dff f Q:b = D:d", "# !!! Error : Pin Bus Not Allowed on pin : ", "/f/Q"},
        {"dff f Q1:a Q2:b Q3:c Q4:d Q5:e Q6:f Q7:g Q8:h Q9:i = CLKP:k",
         "# !!! Error : Invalid Pin Type Output  on pin : ", "/f/Q9"},
        {"latch l Q:q = EQ:e", "# !!! Error : INVALID Pin Name(EN,EP,EX)  on pin : ", "/l/EQ"},
        {"latch l Q:q = EPX:e", "# !!! Error : Invalid Enable Name (E,EN,EP,EX) on pin : ", "/l/EPX"},
        {"stable t = D:d Q:q; pin /t/D edge X", "# !!! Error : Invalid Pin :   \"/t/Q\"", "/t/Q"},
        {"stable t = CLKPP:c", "# !!! Error : Invalid Clock Name (CLK,CLKN,CLKP) on pin : ", "/t/CLKPP"},
        {"smos m = EP:e A:a", "# !!! Error : Invalid Pin Type Output  on pin : ", "/m/A"},
    };
    for (const refusal& r : refusals) {
        SCOPED_TRACE(r.design);
        build(r.design);
        const lines_t lines = tst_take_lines();
        const auto line = std::ranges::find(lines, r.line);
        ASSERT_NE(line, lines.end()) << ::testing::PrintToString(lines);
        ASSERT_NE(line + 1, lines.end());
        EXPECT_EQ(line[1], std::string(" !! \"") + r.path + "\"");
        EXPECT_GE(tm_vext.num_errors, 1);
    }
}

TEST(flip_flop, a_limit_that_its_pin_has_no_use_for_is_a_warning) {
    build("dff f Q:q = D:d CLKP:c; pin /f/D edge X high 1 low 0; pin /f/CLKP setup 2 hold 3");
    EXPECT_EQ(tst_take_lines(),
              (lines_t{"# !!! Warning: Minimum Time High Not Checked on pin : ", "    \"/f/D\"",
                       "# !!! Warning: Setup Not Allowed on Clock : ", "    \"/f/CLKP\"",
                       "# !!! Warning: Hold Not Allowed on Clock : ", "    \"/f/CLKP\""}));
    EXPECT_EQ(tm_vext.num_warnings, 3);
}

TEST(flip_flop, a_restart_forgets_what_its_inputs_did) {
    build(set_reset);
    tst_schedule("s=1@1 r=0@1 r=1@10");
    tst_run_until(100);
    kol_ext.start_time = kol_ext.cur_time = 0;
    kol_init_net_state();
    kol_observe_net(&tst_net("q"));
    tst_schedule("d=1@2 c=1@60 r=0@70");
    tst_run_until(200);
    EXPECT_EQ(tst_changes_of("q"), "60:1S");  // reset is not on any more
    EXPECT_EQ(tst_take_lines(), lines_t{});
}

}  // namespace

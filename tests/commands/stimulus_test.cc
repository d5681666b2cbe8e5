// FORCE, CLOCK PERIOD, RUN, BREAK, RESET SIM TIME, HISTORY, REGENERATE and UPDATE: what they leave behind.
// What they refuse stands in the stored transcript of wrong commands.
#include "design_session.h"
#include "kernel/stimuli.h"

namespace {

using stimulus = design_session;

// The forces of a list: "net state@time", behind a stop time "..time".
std::string forces(const std::deque<kol_force_t>& entered) {
    std::string text;
    for (const kol_force_t& force : entered) {
        text += std::string(kol_path(yx_ptrto_net_rec(force.net)->sim_path)) + " " +
                tst_state_text(force.state) + "@" + std::to_string(force.time);
        text += force.stop_time > 0 ? ".." + std::to_string(force.stop_time) + "; " : "; ";
    }
    return text;
}

TEST_F(stimulus, forces_are_kept_in_the_order_of_entry_and_refused_ones_kept_out) {
    kol_ext.cur_time = 100;
    EXPECT_EQ(type("FORCE Abs /a 1 10"), lines{" FORCE Abs /a 1 10 "});
    type("force a b 0z 2.5;force current a Xr 5;force c b iU 5 once;force C b 1w 5 O 20;force a b 1 5 o 20");
    for (const char* typed : {"force a a 2 0", "force a no 1 0", "force a d 1 0", "force a a 1 0 r"})
        type(typed);
    const std::string kept = "/a 1S@10; /b 0Z@3; /a xR@105; /b iU@105; /b 1W@105..120; /b 1S@5..20; ";
    EXPECT_EQ(forces(kol_stimuli.forces), kept);
    kol_ext.cur_time = 2147483000;  // times beyond the largest
    type("force c a 1 648;force c a 1 0 o 648");
    EXPECT_EQ(forces(kol_stimuli.forces), kept);
}

TEST_F(stimulus, repeated_forces_join_the_newest_clock_with_their_offset) {
    kol_ext.cur_time = 7;
    expect_each({{"clo per 50", {" CLOck PERiod 50.000"}}, {"force c a 1 5 r", {" FORCE c a 1 5 r "}}});
    type("clo per -1;clo per 20;force a b 0 6 Repeat 30;force c b 1 8 R 30");
    ASSERT_EQ(kol_stimuli.clocks.size(), 2U);
    const kol_clock_t &first = kol_stimuli.clocks[0], &last = kol_stimuli.clocks[1];
    EXPECT_EQ((numbers{first.period, first.start_time, last.period}), (numbers{50, 7, 20}));
    EXPECT_EQ(forces(first.forces), "/a 1S@5; ");
    EXPECT_EQ(forces(last.forces), "/b 0S@6..30; /b 1S@8..37; ");
}

TEST_F(stimulus, run_advances_the_time) {
    type("run 50;force c a 0 0;run 50 C;run 100 A;run 10 x");
    EXPECT_EQ(type("run 2147483600"), refused("RUN \"2147483600\" ", "# !! Error :  Invalid time  ? "));
    EXPECT_EQ((numbers{seen.redraws, kol_ext.start_time, kol_ext.cur_time}), (numbers{2, 50, 100}));
}

TEST_F(stimulus, a_run_stops_where_a_net_takes_the_state_and_goes_on_from_there) {
    type("force a a 1 10;force a b 1 20;force a d[1] 0z 40");
    const std::string net = "# !! BREAK on net : ", run = "#  RUN -> time_start: ";
    expect_each({{"BREAK /y 1s;break d[1] 0Z", {" BREAK /y 1s ", " BREAK d[1] 0Z "}},
                 {"run 100",
                  {run + "0.0 ->time_end: 100.000", net + "\"/y\" ", "#    Name : \"/y\" ",
                   "#    time: 22.000", " RUN 100 "}},
                 {"run",
                  {run + "22.000 ->time_end: 100.000", net + "\"/d[1]\" ", "#    Name : \"d[1]\" ",
                   "#    time: 40.000", " RUN "}}});
    EXPECT_EQ((numbers{kol_ext.cur_time, kol_ext.time_breaked}), (numbers{40, 1}));
    EXPECT_EQ(type("run"), (lines{run + "40.000 ->time_end: 100.000", " RUN "}));
    EXPECT_EQ((numbers{kol_ext.cur_time, kol_ext.time_breaked}), (numbers{100, 0}));
    build("in a; net y; sub y1 of y; and g1 y1 = a a rise 3 fall 3");
    type("break y1 1;force a a 1 10;run 50");
    EXPECT_EQ(kol_ext.cur_time, 13);
}

TEST_F(stimulus, a_net_keeps_its_newest_remaining_break) {
    type("force a a 1 10;force a a 0 20;force a a x 30;break a x;break /a 0;break A 1");
    numbers stops;
    for (const char* typed : {"", "forget br a", "forget br a", "forget br /a"}) {
        type(typed);
        type("reset sim time;run 100");
        stops.push_back(kol_ext.cur_time);
    }
    EXPECT_EQ(stops, (numbers{10, 20, 20, 100}));
}

TEST_F(stimulus, reset_returns_to_time_zero_and_a_run_replays_the_stimuli) {
    type("list h y;force a a 1 10;force a b 1 20;force a b 0 60;define bus n w y;run 100");
    const std::string before = tst_history_of("y");
    EXPECT_EQ(before, "0:iU 11:iS 22:1S 61:0S");
    EXPECT_EQ(type("reset simulation time"), lines{" RESet SIM TIMe "});
    EXPECT_EQ(tst_history_of("y"), "0:iU");
    EXPECT_EQ(kol_ext.cur_time + kol_ext.start_time + kol_ext.end_time, 0);
    EXPECT_EQ(tst_net("y").UU.U1.cur_state.state, 0);
    EXPECT_EQ(kol_ext.list_signal->history, tst_net("y").UU.U1.history);
    type("run 100");
    EXPECT_EQ(tst_history_of("y"), before);
}

TEST_F(stimulus, regenerate_simulates_again_and_turns_the_trace_to_the_window) {
    const std::string line = "#  REGENerate -> time_start: ";
    expect_each({{"hist 30 Abs", {" HISTory 30 Abs "}}});
    EXPECT_EQ((numbers{kol_ext.history, kol_ext.history_abs}), (numbers{30, 1}));
    expect_each({{"history 30 C", {" HISTory 30 C "}}});
    EXPECT_FALSE(kol_ext.history_abs);
    type("run 20");
    EXPECT_EQ(type("regen all"), (lines{line + "0.0 ->time_end: 20.000", "# REGENerate all ",
                                        "# !! Warning : No FORCE stimuli have been applied to circuit ? "}));
    type("list h a;force a a 1 10;run 80");
    EXPECT_EQ(type("regen x"), (lines{line + "70.000 ->time_end: 100.000", " REGENerate "}));
    EXPECT_EQ(tst_history_of("a"), "0:iU 10:1S");
    EXPECT_EQ((numbers{kol_ext.trace_cur_time, kol_ext.trace_scale, kol_ext.cur_time}),
              (numbers{70, 1, 100}));
}

TEST_F(stimulus, update_simulates_again_for_one_of_the_views) {
    const std::string line = "#  UPDAte -> time_start: 0.0 ->time_end: 50.000";
    type("run 50");
    EXPECT_EQ(type("update l"), (lines{line, "# UPDAte l ",
                                       "# !! Warning : No FORCE stimuli have been applied to circuit ? "}));
    type("force a b 1 10;break b 1;list b b");
    EXPECT_EQ(type("upd t"), (lines{line, "# !! BREAK on net : \"/b\" ", "#    Name : \"b\" ",
                                    "#    time: 10.000", " UPDAte  Trace "}));
    EXPECT_EQ((numbers{kol_ext.list_or_trace, kol_ext.time_breaked}), (numbers{0, 1}));
    EXPECT_EQ(type("forget br b;update List"), (lines{" FORGet br b ", line, " UPDAte  List "}));
    EXPECT_EQ((numbers{kol_ext.list_or_trace, kol_ext.time_breaked}), (numbers{1, 0}));
    EXPECT_EQ(tst_history_of("b"), "0:iU 10:1S");
}

}  // namespace

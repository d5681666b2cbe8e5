// RESET SIM TIME, HISTORY, REGENERATE and UPDATE: what they show, and what the circuit shows after them.
#include "design_session.h"
#include "kernel/state.h"

namespace {

using restart = design_session;
using lines = std::vector<std::string>;

// The history of an observed net: "state@time", separated by blanks.
std::string history(const char* name) {
    std::string text;
    for (const auto* record = tst_net(name).UU.U1.first_state; record != nullptr; record = record->next) {
        char state[2];
        kol_state_to_statechar(record->state, state);
        text += (text.empty() ? "" : " ") + std::string(state, 2) + "@" + std::to_string(record->time);
    }
    return text;
}

TEST_F(restart, reset_returns_to_time_zero_and_a_run_replays_the_stimuli) {
    type("list h y;force a a 1 10;force a b 1 20;force a b 0 60;define bus n w y;run 100");
    const std::string before = history("y");
    EXPECT_EQ(before, "iU@0 iS@11 1S@22 0S@61");
    EXPECT_EQ(type("reset simulation time"), lines{" RESet SIM TIMe "});
    EXPECT_EQ(history("y"), "iU@0");
    EXPECT_EQ(kol_ext.cur_time + kol_ext.start_time + kol_ext.end_time, 0);
    EXPECT_EQ(tst_net("y").UU.U1.cur_state.state, 0);
    EXPECT_EQ(kol_ext.list_signal->list_state_cur, tst_net("y").UU.U1.first_state);
    type("run 100");
    EXPECT_EQ(history("y"), before);
}

TEST_F(restart, history_takes_a_time_and_what_it_counts_from) {
    expect_each({{"history 10 x", refused("HISTory 10 x ",
                                          "# !! Error : 2nd parameter invalid ( should be : \"Abs\" or "
                                          "\"Cur\" ) ")},
                 {"history -1 a", refused("HISTory -1 a ", "# !! Error : Invalid time ")},
                 {"hist 30 Abs", {" HISTory 30 Abs "}}});
    EXPECT_TRUE(kol_ext.history_abs);
    EXPECT_EQ(kol_ext.history, 30);
    EXPECT_EQ(type("HISTORY 25 C"), lines{" HISTory 25 C "});
    EXPECT_FALSE(kol_ext.history_abs);
}

TEST_F(restart, regenerate_simulates_again_and_turns_the_trace_to_the_window) {
    const std::string window = "# !! Error : invalid Start_time  and End_time ? ";
    const std::string nothing = "# !! Warning : No FORCE stimuli have been applied to circuit ? ";
    expect_each(
        {{"regenerate", refused("REGENerate ", "# !! Error : No HISTORY have been defined before ? ")},
         {"history 30", {" HISTory 30 "}},
         {"regen all", {"# REGENerate all ", window, "#  REGENerate -> time_start: 0.0 ->time_end: 0.0"}}});
    type("run 20");
    expect_each(
        {{"regen", {"#  REGENerate -> time_start: 0.0 ->time_end: 20.000", "# REGENerate ", nothing}}});
    type("list h a;force a a 1 10;run 80");
    expect_each({{"regen x", {"#  REGENerate -> time_start: 70.000 ->time_end: 100.000", " REGENerate "}}});
    EXPECT_EQ(history("a"), "iU@0 1S@10");
    EXPECT_EQ(kol_ext.trace_cur_time, 70);
    EXPECT_EQ(kol_ext.trace_scale, 1);
    EXPECT_EQ(kol_ext.cur_time, 100);
    EXPECT_EQ(kol_ext.trace_cur_time, 70);
}

TEST_F(restart, update_simulates_again_for_one_of_the_views) {
    const std::string line = "#  UPDAte -> time_start: 0.0 ->time_end: ";
    expect_each({{"update x", refused("UPDAte x ",
                                      "# !! Error :  2nd parameter incorrect : should be : List or Trace? ")},
                 {"update trace",
                  {"# UPDAte  Trace ", "# !! Error : invalid Start_time  and End_time ? ", line + "0.0"}}});
    type("run 50");
    EXPECT_EQ(type("update l"), (lines{line + "50.000", "# UPDAte l ",
                                       "# !! Warning : No FORCE stimuli have been applied to circuit ? "}));
    type("force a b 1 10;break b 1;list b b");
    expect_each({{"upd t",
                  {line + "50.000", "# !! BREAK on net : \"/b\" ", "#    Name : \"b\" ", "#    time: 10.000",
                   " UPDAte  Trace "}},
                 {"forget br b;update List", {" FORGet br b ", line + "50.000", " UPDAte  List "}}});
    EXPECT_EQ(history("b"), "iU@0 1S@10");
    EXPECT_TRUE(kol_ext.list_or_trace);
    EXPECT_FALSE(kol_ext.time_breaked);
}

}  // namespace

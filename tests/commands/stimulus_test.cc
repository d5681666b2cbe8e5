// FORCE, CLOCK PERIOD and RUN: what they show, and what they leave behind.
#include "design_session.h"
#include "kernel/state.h"

namespace {

using stimulus = design_session;
using lines = std::vector<std::string>;

TEST_F(stimulus, a_wrong_force_is_refused_and_kept_out) {
    const std::string mode = "# !! Error : 2nd parameter invalid ( should be : \"Abs\" or \"Current\" ) ";
    const std::string name = "# !! Error : 3rd parameter invalid ( should begin with letter or \"/\" ) ";
    const std::string state = "# !! Error : state invalid ( 3rd parameter ) ";
    const std::string time = "# !! Error : Invalid time  ( 5th parameter ) ";
    const std::string stop = "# !! Error : Invalid stop_time  ( 7th parameter ) ";
    const std::string repeat = "# !! Error : 6th parameter Invalid ( should be : \"Once\" or \"Repeat\" ) ";
    kol_ext.cur_time = 2147483000;
    expect_each(
        {
            {"force a a 1", refused("FORCE a a 1 ", count_error)},
            {"force x 9 9 9z", refused("FORCE x 9 9 9z ", mode)},
            {"force a 9a 9 9z", refused("FORCE a 9a 9 9z ", name)},
            {"force a a 2 9z", refused("FORCE a a 2 9z ", state)},
            {"force a a 1 9z z 9z", refused("FORCE \"a\" \"a\" \"1\" \"9z\" \"z\" \"9z\" ", time)},
            {"force a a 1 -1", refused("FORCE \"a\" \"a\" \"1\" \"-1\" ", time)},
            {"force c a 1 648", refused("FORCE \"c\" \"a\" \"1\" \"648\" ", time)},
            {"force a a 1 0 z -1", refused("FORCE \"a\" \"a\" \"1\" \"0\" \"z\" \"-1\" ", stop)},
            {"force c a 1 0 o 648", refused("FORCE \"c\" \"a\" \"1\" \"0\" \"o\" \"648\" ", stop)},
            {"force a nosuch 1 0 z", refused("FORCE \"a\" \"nosuch\" \"1\" \"0\" \"z\" ", repeat)},
            {"force a nosuch 1 0 r", refused("FORCE a nosuch 1 0 r ", "# !! Error : NET not found ")},
            {"force a d 1 0", refused("FORCE a d 1 0 ", "# !! Error : NET not found ")},
            {"force a a 1 0 r",
             refused("FORCE a a 1 0 r ", "# !! Error : No Clock Period already defined ? ")},
        },
        type);
    EXPECT_EQ(kol_ext.start_force, nullptr);
}

// The forces of a list: "net state@time", behind a stop time "..time".
std::string forces(const kol_force_rec_t* force) {
    std::string text;
    for (; force != nullptr; force = force->next) {
        char state[2];
        kol_state_to_statechar(force->state, state);
        text += std::string(kol_path(force->net->sim_path)) + " " + std::string(state, 2) + "@" +
                std::to_string(force->time);
        if (force->stop_time > 0) text += ".." + std::to_string(force->stop_time);
        text += "; ";
    }
    return text;
}

TEST_F(stimulus, forces_are_kept_in_the_order_of_entry) {
    kol_ext.cur_time = 100;
    EXPECT_EQ(type("FORCE Abs /a 1 10"), lines{" FORCE Abs /a 1 10 "});
    type("force a b 0z 2.5;force current a Xr 5;force c b iU 5 once;force C b 1w 5 O 20;force a b 1 5 o 20");
    EXPECT_EQ(forces(kol_ext.start_force),
              "/a 1S@10; /b 0Z@3; /a xR@105; /b iU@105; /b 1W@105..120; /b 1S@5..20; ");
}

TEST_F(stimulus, repeated_forces_join_the_newest_clock_with_their_offset) {
    kol_ext.cur_time = 7;
    expect_each({{"clock period 9z", refused("CLOck PERiod 9z ", "# !! Error : Invalid period_time ")},
                 {"clo per -1", refused("CLOck PERiod -1 ", "# !! Error : Invalid period_time ")},
                 {"clo per 50", {" CLOck PERiod 50.000"}},
                 {"force c a 1 5 r", {" FORCE c a 1 5 r "}},
                 {"clo per 20", {" CLOck PERiod 20.000"}},
                 {"force a b 0 6 Repeat 30", {" FORCE a b 0 6 Repeat 30 "}},
                 {"force c b 1 8 R 30", {" FORCE c b 1 8 R 30 "}}},
                type);
    const kol_forceblk_rec_t *first = kol_ext.start_clock_force_blk, *last = kol_ext.last_clock_force_blk;
    ASSERT_EQ(first->next, last);
    EXPECT_EQ(first->clock_period, 50);
    EXPECT_EQ(first->start_time, 7);
    EXPECT_EQ(forces(first->start_force), "/a 1S@5; ");
    EXPECT_EQ(forces(last->start_force), "/b 0S@6..30; /b 1S@8..37; ");
}

TEST_F(stimulus, run_advances_the_time_or_says_why_not) {
    const std::string no_length = "# !! Warning :  end_time <= start_time , so NO action  ? ";
    const std::string time = "# !! Error :  Invalid time  ? ";
    const std::string nothing = "# !! Warning : No new FORCE stimuli have been applied to circuit ? ";
    expect_each(
        {
            {"run", refused("RUN ", "# !! Error : You should define the RUN TIME parameter ? ")},
            {"run 10 x", refused("RUN 10 x ", "# !! Error :  time for force should be Abs or Current ? ")},
            {"run 10ns", refused("RUN \"10ns\" ", time)},
            {"run -1 c", {"# RUN \"-1\" \"c\" ", no_length, "# start_time : 0.0", "# end_time : -1.000"}},
            {"run 50", {"#  RUN -> time_start: 0.0 ->time_end: 50.000", "# RUN 50 ", nothing}},
            {"force c a 0 0", {" FORCE c a 0 0 "}},
            {"run 50 Current", {"#  RUN -> time_start: 50.000 ->time_end: 100.000", " RUN 50 Current "}},
            {"run 100 A",
             {"# RUN \"100\" \"A\" ", no_length, "# start_time : 100.000", "# end_time : 100.000"}},
            {"run 2147483600", refused("RUN \"2147483600\" ", time)},
        },
        type);
    EXPECT_EQ(seen.redraws, 2);
    EXPECT_EQ(kol_ext.start_time, 50);
    EXPECT_EQ(kol_ext.cur_time, 100);
}

TEST_F(stimulus, run_without_a_time_goes_on_to_the_end_that_a_break_cut_short) {
    kol_ext.cur_time = 30;
    kol_ext.end_time = 80;
    kol_ext.time_breaked = true;
    type("force a a 1 40");
    EXPECT_EQ(type("run"), (lines{"#  RUN -> time_start: 30.000 ->time_end: 80.000", " RUN "}));
    EXPECT_EQ(kol_ext.cur_time, 80);
    EXPECT_FALSE(kol_ext.time_breaked);
}

}  // namespace

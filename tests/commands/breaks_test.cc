// BREAK and STATUS BREAK: what they show, and where runs stop.
#include "design_session.h"

namespace {

using breaks = design_session;
using lines = std::vector<std::string>;

TEST_F(breaks, a_wrong_break_is_refused_and_kept_out) {
    const std::string length = "# !! Error : state invalid : char number <> 1,2 ";
    const std::string state = "# !! Error : state invalid ( 3rd parameter ) ";
    const std::string no_net = "# !! Error : NET not found ";
    expect_each(
        {{"break a 1 2", refused("BREAK a 1 2 ", count_error)},
         {"break 9a 999",
          {"# BREAK 9a 999 ", "# !! Error : 2nd parameter invalid ( should begin with letter or \"/\") ",
           "# parameter : \"9a\" "}},
         {"break no 1sx", refused("BREAK no 1sx ", length)},
         {"break no 1q", refused("BREAK no 1q ", state)},
         {"break no 1", refused("BREAK no 1 ", no_net)},
         {"break d 1", refused("BREAK d 1 ", no_net)}});
    EXPECT_EQ(kol_ext.break_signal, nullptr);
}

TEST_F(breaks, a_run_stops_where_a_net_takes_the_state_and_goes_on_from_there) {
    const std::string from_0 = "#  RUN -> time_start: 0.0 ->time_end: 100.000";
    type("force a a 1 10;force a b 1 20;force a d[1] 0z 40");
    expect_each(
        {{"BREAK /y 1s;break d[1] 0Z", {" BREAK /y 1s ", " BREAK d[1] 0Z "}},
         {"run 100",
          {from_0, "# !! BREAK on net : \"/y\" ", "#    Name : \"/y\" ", "#    time: 22.000", " RUN 100 "}},
         {"run",
          {"#  RUN -> time_start: 22.000 ->time_end: 100.000", "# !! BREAK on net : \"/d[1]\" ",
           "#    Name : \"d[1]\" ", "#    time: 40.000", " RUN "}}});
    EXPECT_EQ(kol_ext.cur_time, 40);
    EXPECT_TRUE(kol_ext.time_breaked);
}

TEST_F(breaks, a_break_on_a_sub_net_stops_the_run_when_its_tree_changes) {
    const tm_shell_t recorder = tm_shell;
    tst_build("in a; net y; sub y1 of y; and g1 y1 = a a rise 3 fall 3");
    tm_shell = recorder;
    type("break y1 1;force a a 1 10;run 50");
    EXPECT_EQ(kol_ext.cur_time, 13);
}

TEST_F(breaks, a_net_keeps_its_newest_remaining_break) {
    type("force a a 1 10;force a a 0 20;force a a x 30;break a x;break /a 0;break A 1");
    const auto stops_at = [] {
        type("reset sim time;run 100");
        return kol_ext.cur_time;
    };
    EXPECT_EQ(stops_at(), 10);
    type("forget br a");
    EXPECT_EQ(stops_at(), 20);
    type("forget br a");
    EXPECT_EQ(stops_at(), 20);
    type("forget br /a");
    EXPECT_EQ(stops_at(), 100);
}

TEST_F(breaks, the_report_names_every_break_or_one) {
    const std::string unknown = "# !! Error : BREAK do not Exists ? ";
    const auto entry = [](const std::string& name, const std::string& state) {
        const yx_net_record_t& net = tst_net("a");
        return lines{"# Break          : \"" + name + "\" ",
                     "# Break sim_path : \"/\" ",
                     "# Break state    : \"" + state + "\" ",
                     "# Net index      : \"NI_" + std::to_string(net.self) + "\" ",
                     "# Net sim_path   : \"/a\" ",
                     "# Net id         : \"N_" + std::to_string(net.object_id) + "\" ",
                     "#******************************* "};
    };
    EXPECT_EQ(type("status break a"), refused("STAtus BREak a ", "# !! Error : NO BREAK Exists ? "));
    type("break a 1;break /a iz");
    EXPECT_EQ(type("sta bre b"), refused("STAtus BREak b ", unknown));
    lines both = entry("a", "1S"), one = entry("/a", "iZ");
    both.insert(both.end(), one.begin(), one.end());
    both.push_back(" STAtus BREak ");
    EXPECT_EQ(type("status break"), both);
    one.push_back(" STAtus BREak /A ");
    EXPECT_EQ(type("status break /A"), one);
}

}  // namespace

// TRACE, MOVE SIGNAL, PERIOD, SCALE and SWITCHE: what they show, and how the views stand afterwards.
#include "design_session.h"

namespace {

using view_settings = design_session;
using lines = std::vector<std::string>;

// The names of a view's entries in the order in which it shows them.
std::string names(const yx_signal_rec_t* newest) {
    std::string text;
    for (; newest != nullptr; newest = newest->previous) text.insert(0, std::string(tm_view(newest->name)));
    return text;
}

TEST_F(view_settings, trace_takes_names_one_by_one_until_one_is_wrong) {
    const std::string name = "# !! Error : parameter invalid ( should begin with letter or \"/\") ";
    expect_each(
        {{"trace", refused("TRACe ", "# !! Error :  Invalid window ? ")},
         {"def bus n w y a;trace b w", {" DEFine BUS n w y a ", " TRACe b w "}},
         {"trac y *", {"# TRACe y * ", name, "# parameter : \"*\" "}},
         {"trace no b", {"# TRACe no b ", "# !! Error : Signal NOT FOUND ? ", "# Signal : \"no\" "}}});
    EXPECT_EQ(names(kol_ext.trace_signal), "bwy");
    EXPECT_EQ(kol_ext.list_signal, nullptr);
    tm_vext.numpage = 1;
    EXPECT_EQ(type("TRACE"), refused("TRACe ", "# !! Error :  No sheet in Context window ? "));
}

TEST_F(view_settings, the_trace_never_outgrows_its_rows) {
    const std::string wide = "# !! Error : too many rows in TRACe ( max : 1023 ) ";
    const std::string large = "# !! Error : too many signals in BUS ( max : 1024 ) ";
    const auto times = [](int n, const std::string& name) {
        std::string text;
        while (n-- > 0) text += " " + name;
        return text;
    };
    type("def bus n v" + times(24, "y") + ";def bus c u y y y v y");  // 24 rows, and 1 for the y of u with 24
    type("trace" + times(21, "v") + ";trace" + times(20, "v") + ";trace" + times(15, "b"));  // 999 rows
    EXPECT_EQ(type("trace u"), (lines{"# TRACe u ", wide, "# Signal : \"u\" "}));
    expect_each({{"forget t b", {" FORGet t b "}},
                 {"trace u", {" TRACe u "}},
                 {"trace b", {"# TRACe b ", wide, "# Signal : \"b\" "}},
                 {"def bus a v y", refused("DEFine BUS a v y ", large)},
                 {"def bus a u y", {" DEFine BUS a u y "}}});
}

TEST_F(view_settings, move_signal_exchanges_two_entries) {
    const std::string fourth = "# !! Error : Invalid 4th parameter (should be integer) ? ";
    const std::string fifth = "# !! Error : Invalid 5th parameter (should be integer) ? ";
    const std::string from = "# !! Error : Invalid   from_position  ? ";
    const std::string to = "# !! Error : Invalid   to_position  ? ";
    type("def bus n w a b;list h a b w y;trace y b");
    expect_each({{"move signal l 1", refused("MOVe SIGnal l 1 ", count_error)},
                 {"move signal x 1 z",
                  refused("MOVe SIGnal x 1 z ",
                          "# !! Error : Invalid 3rd parameter (should be \"List\",\"Trace\") ? ")},
                 {"mov sig l -1 z", refused("MOVe SIGnal l -1 z ", fourth)},
                 {"mov sig l 9 z", refused("MOVe SIGnal l 9 z ", fifth)},
                 {"mov sig l 0 5", refused("MOVe SIGnal l 0 5 ", from)},
                 {"mov sig l 4 5", refused("MOVe SIGnal l 4 5 ", to)},
                 {"move signal list 1 3", {"# MOVe SIGnal List 1 3 "}},
                 {"move signal t 2 1", {"# MOVe SIGnal Trace 2 1 "}},
                 {"move signal l 4 4", {"# MOVe SIGnal List 4 4 "}}});
    EXPECT_EQ(names(kol_ext.list_signal), "wbay");
    EXPECT_EQ(names(kol_ext.trace_signal), "by");
    const yx_signal_rec_t& third = *kol_ext.list_signal->previous;
    EXPECT_EQ(third.net, &tst_net("a"));
    EXPECT_EQ(third.bus, nullptr);
    EXPECT_EQ(third.list_state, tst_net("a").UU.U1.first_state);
}

TEST_F(view_settings, move_signal_without_positions_goes_to_the_pointer) {
    type("list h a b y;trace a b y");
    tm_vext.bitmap_size = {100, 200, 1000, 800};
    kol_ext.signal_position = 1;
    tm_vext.pixel_pos = {100 + kol_ext.list_sig1n_x0 + kol_ext.list_steph * 17 - 1, 0};
    EXPECT_EQ(type("move signal l"), lines{"# MOVe SIGnal List 1 2 "});
    tm_vext.pixel_pos = {0, 200 + 50 + 40 * 2 - 21};
    EXPECT_EQ(type("move signal t"), lines{"# MOVe SIGnal Trace 1 2 "});
    tm_vext.pixel_pos.y += 1;
    kol_ext.signal_position = 2;
    EXPECT_EQ(type("move signal t"), lines{"# MOVe SIGnal Trace 2 3 "});
    EXPECT_EQ(names(kol_ext.list_signal), "bay");
    EXPECT_EQ(names(kol_ext.trace_signal), "bya");
}

TEST_F(view_settings, times_and_factors_are_taken_or_refused) {
    const std::string period = "# !! Error : Invalid period_time ", base = "# !! Error : Invalid base_time ";
    const std::string scale = "# !! Error : Invalid time scale ";
    const std::string unit = "# !! Error : Invalid scale user unit time ";
    expect_each({{"period list", refused("PERiod LISt ", count_error)},
                 {"period list -1 z", refused("PERiod LISt -1 z ", period)},
                 {"period list 5 z", refused("PERiod LISt 5 z ", base)},
                 {"period list 50 7", {" PERiod LISt 50.000 7.000"}},
                 {"per lis 25", {" PERiod LISt 25.000"}},
                 {"period trace z", refused("PERiod TRAce z ", period)},
                 {"per tra 9", {" PERiod TRAce 9.000"}},
                 {"scale trace time 0", refused("SCAle TRAce TIMe 0 ", scale)},
                 {"sca tra tim z", refused("SCAle TRAce TIMe z ", scale)},
                 {"sca tra tim 40", {" SCAle TRAce TIMe 40.000"}},
                 {"scale user unit -0.5", refused("SCAle USEr UNIt -0.5 ", unit)},
                 {"sca use uni x", refused("SCAle USEr UNIt x ", unit)},
                 {"sca use uni 2.5", {" SCAle USEr UNIt 2.50"}},
                 {"period list 4", {" PERiod LISt 4.000"}}});
    EXPECT_EQ(kol_ext.list_period, 10);
    EXPECT_EQ(kol_ext.list_base_time, 7);
    EXPECT_EQ(kol_ext.trace_period, 9);
    EXPECT_EQ(kol_ext.trace_scale, 40);
    EXPECT_EQ(kol_ext.scale_user_unit, 2.5F);
}

TEST_F(view_settings, switche_list_changes_the_rows_and_the_values) {
    expect_each(
        {{"switche list x",
          {"# LIST ", "# !! Error : 3rd parameter invalid (should be :\"Cha\",\"Per\",\"Sta\",\"Val\")"}},
         {"switche list period", {" SWItche LISt Period "}},
         {"swi lis v", {" SWItche LISt Value "}}});
    EXPECT_FALSE(kol_ext.list_change_on || kol_ext.list_state_on);
    expect_each({{"swi lis c", {" SWItche LISt Change "}}, {"swi lis s", {" SWItche LISt State "}}});
    EXPECT_TRUE(kol_ext.list_change_on && kol_ext.list_state_on);
    type("swi lis v");
    while (type("list h a a a a a a a a a a").size() == 1) continue;  // more than 341 signals
    EXPECT_EQ(type("swi lis state"),
              refused("SWItche LISt state ", "# !! Error : too many columns in LIST ( max : 1024 ) "));
    EXPECT_FALSE(kol_ext.list_state_on);
}

}  // namespace

// SPIKE, TIMING, PERIOD, SCALE and SWITCHE: what they show, and what holds afterwards.
#include <algorithm>

#include "design_session.h"

namespace {

using settings = design_session;

TEST_F(settings, spike_check_and_model_follow_their_keyword) {
    // clang-format off
    const std::tuple<const char*, std::string, numbers> cases[] = {
        {"spike check off", " SPIke CHEck  OFF ", {0, 2}},     {"SPIKE CHECK On", " SPIke CHEck  ON ", {1, 2}},
        {"spi mod pess", " SPIke MODel Pessimistic ", {1, 3}}, {"spi mod N", " SPIke MODel Nosuppress ", {1, 0}},
        {"spike model Su", " SPIke MODel Suppress ", {1, 1}},  {"spi mod i", " SPIke MODel Indgene ", {1, 2}}};
    // clang-format on
    for (const auto& [typed, shown, on_and_model] : cases) {
        EXPECT_EQ(type(typed), lines{shown});
        EXPECT_EQ((numbers{kol_ext.spike_on, kol_ext.spike_model}), on_and_model) << typed;
    }
}

TEST_F(settings, spike_min_holds_from_the_start_or_from_now_on) {
    yx_sext.time_step = 0.5F;
    type("spike min 2");
    kol_ext.cur_time = 100;
    EXPECT_EQ(type("spike min 3"), lines{" SPIke MIN 3.000"});
    type("spike min -1;spike min 2ns");
    EXPECT_EQ((numbers{kol_ext.spike_min_t0, kol_ext.spike_min_t, kol_ext.tspike_min}), (numbers{4, 6, 100}));
}

TEST_F(settings, a_coefficient_moves_the_delays_from_their_typical_value_and_the_next_run_uses_them) {
    build(
        "in a d c; and g1 y = a rise 5:10:20; and g2 z = a rise 5:10:20; "
        "dff f Q:q = D:d CLKP:c; pin /f/D edge X setup 2:4:8");
    const auto rise_of = [](const char* pin) {
        const auto& rise = tst_pin(pin).rise;
        return numbers{rise[0], rise[1], rise[2]};
    };
    kol_ext.sim_range_type = 3;
    EXPECT_EQ(type("timing coef d 2"), lines{" TIMing COEFicient 2.00 1.00 1.00 1.00 "});
    EXPECT_EQ(rise_of("/g1/O"), (numbers{0, 10, 30}));
    EXPECT_EQ(rise_of("/g2/O"), (numbers{0, 10, 30}));
    EXPECT_EQ(kol_max_delay, 30);
    EXPECT_EQ(type("tim coe S 0.5"), lines{" TIMing COEFicient 2.00 0.50 1.00 1.00 "});
    const lines shown = type("force a a 1 10; force a c 0 1; force a d 1 96; force a c 1 100; run 200");
    EXPECT_EQ(tst_net("y").UU.U1.cur_state.time, 40);
    EXPECT_EQ(std::ranges::count(shown, "#  time:96.000-->100.000<->:4.000(<6.000)"), 1)
        << ::testing::PrintToString(shown);
    for (int twice = 0; twice < 2; ++twice) type("timing coef d 4294967296");
    EXPECT_EQ(rise_of("/g1/O"), (numbers{INT32_MIN, 10, INT32_MAX}));
    type("timing coef d 0");
    EXPECT_EQ(rise_of("/g1/O"), (numbers{10, 10, 10}));
}

TEST_F(settings, an_index_takes_all_its_ranges_or_none) {
    for (const char* typed : {"0 max m", "121 max", "119 MAX MAX MAX"})
        EXPECT_EQ(type(std::string("timing index ") + typed).size(), 2U) << typed;
    EXPECT_EQ(type("timing index 118 min Typical mA"), lines{" TIMing INDex 118 min Typical mA "});
    EXPECT_EQ(kol_ext.timing_ar[0], 0);
    EXPECT_EQ(numbers(kol_ext.timing_ar.end() - 3, kol_ext.timing_ar.end()), (numbers{1, 2, 3}));
}

TEST_F(settings, times_and_factors_are_taken_or_refused) {
    EXPECT_EQ(type("period list 50 7;per lis 25;per tra 9;sca tra tim 40;sca use uni 2.5;period list 4"),
              (lines{" PERiod LISt 50.000 7.000", " PERiod LISt 25.000", " PERiod TRAce 9.000",
                     " SCAle TRAce TIMe 40.000", " SCAle USEr UNIt 2.50", " PERiod LISt 4.000"}));
    type("per lis 5 z;per lis -1;per tra z;sca tra tim 0;sca use uni -1");
    EXPECT_EQ(
        (numbers{kol_ext.list_period, kol_ext.list_base_time, kol_ext.trace_period, kol_ext.trace_scale}),
        (numbers{10, 7, 9, 40}));
    EXPECT_EQ(kol_ext.scale_user_unit, 2.5F);
}

TEST_F(settings, switche_list_changes_the_rows_and_the_values) {
    expect_each(
        {{"switche list period", {" SWItche LISt Period "}}, {"swi lis v", {" SWItche LISt Value "}}});
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

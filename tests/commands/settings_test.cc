// SPIKE CHECK, SPIKE MIN, SPIKE MODEL, TIMING COEFFICIENT and TIMING INDEX.
#include <algorithm>

#include "design_session.h"

namespace {

using settings = design_session;
using lines = std::vector<std::string>;

TEST_F(settings, spike_check_and_model_follow_their_keyword) {
    const std::string check = "# !! Error :  3rd parameter incorrect ? ";
    const std::string model = "# !! Error :  3rd parameter incorrect (should be \"N\",\"S\",\"I\",\"P\") ? ";
    struct {
        const char* typed;
        lines shown;
        bool on;
        std::int16_t model;  // afterwards
    } const cases[] = {
        {"spike check off", {" SPIke CHEck  OFF "}, false, 2},
        {"spi che o", refused("SPIke CHEck o ", check), false, 2},
        {"SPIKE CHECK On", {" SPIke CHEck  ON "}, true, 2},
        {"spike model pess", {" SPIke MODel Pessimistic "}, true, 3},
        {"spi mod x", refused("SPIke MODel x ", model), true, 3},
        {"spi mod N", {" SPIke MODel Nosuppress "}, true, 0},
        {"spi mod Suppress", {" SPIke MODel Suppress "}, true, 1},
        {"spi mod i", {" SPIke MODel Indgene "}, true, 2},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(type(c.typed), c.shown);
        EXPECT_EQ(kol_ext.spike_on, c.on) << c.typed;
        EXPECT_EQ(kol_ext.spike_model, c.model) << c.typed;
    }
}

TEST_F(settings, spike_min_holds_from_the_start_or_from_now_on) {
    yx_sext.time_step = 0.5F;
    type("spike min 2");
    kol_ext.cur_time = 100;
    const std::string wrong = "# !! Error : Invalid time scale ";
    expect_each({{"spike min 3", {" SPIke MIN 3.000"}},
                 {"spike min -1", refused("SPIke MIN \"-1\" ", wrong)},
                 {"spike min 2ns", refused("SPIke MIN \"2ns\" ", wrong)}},
                type);
    EXPECT_EQ(kol_ext.spike_min_t0, 4);
    EXPECT_EQ(kol_ext.spike_min_t, 6);
    EXPECT_EQ(kol_ext.tspike_min, 100);
}

using timing = design_session;

std::vector<std::int32_t> rise_of(const char* pin) {
    const auto& rise = tst_pin(pin).rise;
    return {rise[0], rise[1], rise[2]};
}

TEST_F(timing, a_coefficient_moves_the_delays_from_their_typical_value_and_the_next_run_uses_them) {
    const tm_shell_t recorder = tm_shell;
    tst_build(
        "in a d c; and g1 y = a rise 5:10:20; and g2 z = a rise 5:10:20; "
        "dff f Q:q = D:d CLKP:c; pin /f/D edge X setup 2:4:8");
    tm_shell = recorder;
    kol_ext.sim_range_type = 3;
    EXPECT_EQ(type("timing coef d 2"), std::vector<std::string>{" TIMing COEFicient 2.00 1.00 1.00 1.00 "});
    EXPECT_EQ(rise_of("/g1/O"), (std::vector<std::int32_t>{0, 10, 30}));
    EXPECT_EQ(rise_of("/g2/O"), (std::vector<std::int32_t>{0, 10, 30}));
    EXPECT_EQ(kol_max_delay, 30);
    EXPECT_EQ(type("tim coe S 0.5"), std::vector<std::string>{" TIMing COEFicient 2.00 0.50 1.00 1.00 "});
    const lines shown = type("force a a 1 10; force a c 0 1; force a d 1 96; force a c 1 100; run 200");
    EXPECT_EQ(tst_net("y").UU.U1.cur_state.time, 40);
    EXPECT_EQ(std::ranges::count(shown, "#  time:96.000-->100.000<->:4.000(<6.000)"), 1)
        << ::testing::PrintToString(shown);
    type("timing coef d 0");
    EXPECT_EQ(rise_of("/g1/O"), (std::vector<std::int32_t>{10, 10, 10}));
}

TEST_F(timing, an_index_takes_all_its_ranges_or_none) {
    const std::string start = "# !! Error : Invalid start index ";
    const std::string end = "# !! Error : Invalid final index ";
    expect_each(
        {
            {"timing coef q 1",
             refused("TIMing COEFicient q 1 ",
                     "# !! Error : Invalid 3rd parameter : should be \"D\",\"P\",\"S\",or \"H\" ")},
            {"timing coef d -1", refused("TIMing COEFicient d -1 ", "# !! Error : Invalid 4th parameter ")},
            {"timing coef d", refused("TIMing COEFicient d ", count_error)},
            {"timing index 0 max", refused("TIMing INDex 0 max ", start)},
            {"timing index 121 max", refused("TIMing INDex 121 max ", start)},
            {"timing index x max", refused("TIMing INDex x max ", start)},
            {"timing index 119 MAX MAX MAX", refused("TIMing INDex 119 MAX MAX MAX ", end)},
            {"timing index 1 max m",
             refused("TIMing INDex 1 max m ", "# !! Error : Invalid Timing Type : \"m\" ")},
            {"timing index 118 min Typical mA", {" TIMing INDex 118 min Typical mA "}},
        },
        type);
    EXPECT_EQ(kol_ext.timing_ar[0], 0);
    EXPECT_EQ((std::vector<std::int16_t>(kol_ext.timing_ar.end() - 3, kol_ext.timing_ar.end())),
              (std::vector<std::int16_t>{1, 2, 3}));
}

}  // namespace

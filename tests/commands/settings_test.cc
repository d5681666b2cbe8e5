// SPIKE CHECK, SPIKE MIN and SPIKE MODEL.
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

}  // namespace

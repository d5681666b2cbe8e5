// SPIKE CHECK, SPIKE MIN and SPIKE MODEL.
#include "command_session.h"

namespace {

using settings = command_session;

struct setting_case {
    const char* typed;
    std::vector<std::string> shown;
    std::int32_t value;  // of the setting afterwards
};

TEST_F(settings, spike_check_and_model_follow_their_keyword) {
    const std::string check = "# !! Error :  3rd parameter incorrect ? ";
    const std::string model = "# !! Error :  3rd parameter incorrect (should be \"N\",\"S\",\"I\",\"P\") ? ";
    const setting_case checks[] = {
        {"spike check off", {" SPIke CHEck  OFF "}, false},
        {"spi che o", {"# SPIke CHEck o ", check}, false},
        {"SPIKE CHECK On", {" SPIke CHEck  ON "}, true},
        {"spi che no", {"# SPIke CHEck no ", check}, true},
        {"spi che", {"# SPIke CHEck ", "# !! Error : parameter number invalid ? "}, true},
    };
    const setting_case models[] = {
        {"spike model pess", {" SPIke MODel Pessimistic "}, 3},
        {"spi mod x", {"# SPIke MODel x ", model}, 3},
        {"spi mod N", {" SPIke MODel Nosuppress "}, 0},
        {"spi mod Suppress", {" SPIke MODel Suppress "}, 1},
        {"spi mod i", {" SPIke MODel Indgene "}, 2},
    };
    for (const setting_case& c : checks) {
        EXPECT_EQ(type(c.typed), c.shown);
        EXPECT_EQ(kol_ext.spike_on, c.value != 0) << c.typed;
    }
    for (const setting_case& c : models) {
        EXPECT_EQ(type(c.typed), c.shown);
        EXPECT_EQ(kol_ext.spike_model, c.value) << c.typed;
    }
}

TEST_F(settings, spike_min_holds_from_the_start_or_from_now_on) {
    yx_sext.time_step = 0.5F;
    EXPECT_EQ(type("spike min 2"), std::vector<std::string>{" SPIke MIN 2.000"});
    EXPECT_EQ(kol_ext.spike_min_t0, 4);
    kol_ext.cur_time = 100;
    EXPECT_EQ(type("spike min 3"), std::vector<std::string>{" SPIke MIN 3.000"});
    for (const char* wrong : {"-1", "2ns"})
        EXPECT_EQ(type(std::string("spike min ") + wrong),
                  (std::vector<std::string>{"# SPIke MIN \"" + std::string(wrong) + "\" ",
                                            "# !! Error : Invalid time scale "}));
    EXPECT_EQ(kol_ext.spike_min_t0, 4);
    EXPECT_EQ(kol_ext.spike_min_t, 6);
    EXPECT_EQ(kol_ext.tspike_min, 100);
}

}  // namespace

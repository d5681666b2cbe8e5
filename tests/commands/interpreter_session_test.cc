// The commands of the session itself and the expansion of the entry.
#include "command_session.h"
#include "commands/language/command_table.h"
#include "commands/language/entry_expansion.h"
#include "kernel/stimuli.h"

namespace {

using interpreter_session = command_session;

TEST_F(interpreter_session, turns_display_and_transcript_on_and_off) {
    EXPECT_EQ(type("DISPLAY off;disp ONLY;TRANSCRIPT on;TRANS OF"),
              (lines{" DISplay OFF ", " DISplay ON ", " TRANScript  ON ", " TRANScript  OFF "}));
    EXPECT_EQ(type("TRANS o"), (lines{"# TRANScript o ", std::string(kol_second_invalid.error)}));
    EXPECT_TRUE(tm_vext.display_on && !tm_vext.transcript_state);
    EXPECT_EQ(seen.redraws, 4);
}

TEST_F(interpreter_session, puts_a_text_into_the_command_entry) {
    const std::pair<std::string, const char*> cases[] = {
        {"\"RUN TIME \"", "RUN TIME  "}, {"'a \"b\" c'", "a \"b\" c "},
        {"x\"a\"b\"y", "a\"b "},         {"RUN", "RUN"},
        {"\"RUN 1", "RUN 1 "},           {"''", " "}};
    for (const auto& [keyword, entry] : cases) {
        EXPECT_EQ(type("COMMAND " + keyword), lines{"# COMmand " + keyword + " "});
        EXPECT_EQ(seen.entry, entry) << keyword;
        EXPECT_EQ(tm_view(tm_vext.str_cmd), entry);
    }
}

TEST_F(interpreter_session, shows_help_files) {
    file("kolv/help/list_commands", "RUN\n\tFORCE");
    file("kolv/help/kol_1_RUN", "RUN [time]\n");
    EXPECT_EQ(type("HELP;help RUN"),
              (lines{"# \"RUN\" ", "# \" FORCE\" ", " HELp ", "# \"RUN [time]\" ", " HELp RUN "}));
    EXPECT_EQ(type("HELP run"), (lines{"# \"RUN [time]\" ", " HELp run "}));
    EXPECT_EQ(type("HELP ../list_commands").back(),
              "# !! : \"" + (folder / "kolv/help/kol_1_../list_commands").string());
}

void expect_expansions(std::initializer_list<std::pair<const char*, const char*>> cases) {
    for (const auto& [typed, entry] : cases) {
        seen.entry = "nothing";
        kol_expand_cmd(tm_string(typed));
        EXPECT_EQ(seen.entry, entry) << typed;
    }
}

TEST_F(interpreter_session, expands_the_entry_to_current_values) {
    yx_sext.time_step = 1.0F;
    tm_vext.base_point = {250000, -50000};
    // clang-format off
    expect_expansions({
        {"base?", " BASEpoint Edit 2.50 -0.50 "}, {"CLO PER?", " CLOck PERiod *** "},
        {"grid step ?", " GRId STep 0.0 "}, {"GRI?", " GRId ON "},
        {"scale,trace,time?", " SCAle TRAce TIMe 1000.000 "}, {"SCA USE UNI?", " SCAle USEr UNIt 1.00 "},
        {"SPI MOD?", " SPIke MODel Indgene "}, {"SPI CHE #?", " SPIke CHEck ON"},
        {"RUN 100?", "nothing"}});
    // clang-format on
    EXPECT_EQ(seen.shown,
              (lines{"#  !! Unknown Command or not implemented for expand  ?? ", "# cmd :  \"RUN 100?"}));
    kol_add_clock(40, 0);
    kol_ext.list_period = kol_ext.spike_min_t0 = 5;
    kol_ext.list_base_time = kol_ext.trace_period = -1;
    kol_ext.spike_on = tm_vext.grid_on = false;
    kol_ext.tim_coef_setup = -1;
    // clang-format off
    expect_expansions({
        {"CLO PER?", " CLOck PERiod 40.000 "}, {"PER LIS?", " PERiod LISt 5.000 *** "},
        {"PER TRA?", " PERiod TRAce *** "}, {"SPI MIN?", " SPIke MIN 5.000 "},
        {"SPI CHE?", " SPIke CHEck OFF"}, {"GRI", " GRId ON "},
        {"TIM COE?", " TIMing COEfficient 1.00 *** 1.00 1.00 "}});
    // clang-format on
    kol_clear_stimuli();
    kol_ext.list_period = -1;
    kol_ext.tspike_min = 10;
    expect_expansions({{"PER LIS?", " PERiod LISt *** "}, {"SPI MIN?", " SPIke MIN 0.0 "}});
}

}  // namespace

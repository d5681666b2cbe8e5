// SAVE SESSION and RESTORE SESSION: what follows is the same, whether the program stopped there or not.
#include <random>

#include "design_session.h"
#include "foundation/replacement.h"
#include "support/session.h"

namespace {

struct dice {
    std::mt19937 random;
    int of(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }
    bool one_in(int n) { return of(n) == 0; }
    std::string number(int n) { return std::to_string(of(n)); }
    // "?" stands for any net, "#" for a short time, in a text.
    std::string fill(std::string_view text) {
        std::string filled;
        for (const char c : text) {
            if (c == '?')
                filled += (one_in(2) ? "a" : "n") + number(8);
            else if (c == '#')
                filled += number(7);
            else
                filled += c;
        }
        return filled;
    }
};

// Every model, its pins on any nets.
constexpr std::string_view models =
    "in a0 a1 a2 a3 a4 a5 a6 a7; bus d 2; net n0; sub s of n0; net n7 init 1;"
    "nand g0 n0 = ? ? rise # fall #; xor g1 s = ? ? ? rise # fall # prio 5; or g2 d = ? ? rise # fall #;"
    "dff f QB:n1 Q:n8 = D:? CLKP:? RP:? SP:? rise # fall #; pin /f/D edge X setup # hold #; pin /f/CLKP high "
    "# low #;"
    "dff c Q:n2 = D:? CLKN:? rise # fall #; pin /c/D edge X setup #; latch l Q:n3 = D:? EN:? RP:? rise # "
    "fall #;"
    "dlatch t Q:n4 = D:? EP:? SP:? rise # fall #; pin /t/EP high #; tri b Y:n4 = A:? EP:? rise # fall #;"
    "lut u n5 = ? ? d.1 rise # fall #; inst u table 6a; stable k = D:? CLKP:? EP:?; pin /l/D edge X; pin "
    "/t/D edge X; pin /k/D setup # hold # "
    "edge X;"
    "mem m R0D0:n6 R0D1:d.0 R1D0:n9 R1D1:m = R0A0:? R0A1:? W0A0:? W0A1:? W0D0:? W0D1:? W0E0:? W0CP:? "
    "R1A0:? R1A1:? R1E:? R1CP:? R1R:? rise # fall #; inst m words 0:3;"
    "smos w = A:n7 B:? EP:?; pin /w/A io 4 rise #; pin /w/B io 4 fall #; and g3 n7 = ? ? rise # fall # drive "
    "WWWW";

std::string random_stimuli(dice& d) {
    std::string text = "clock period " + std::to_string(5 + d.of(30));
    for (int k = 0; k < 30; ++k) {
        const bool repeat = d.one_in(6);
        text += ";force a a" + d.number(8) + (d.one_in(8) ? " x " : " " + d.number(2) + " ") +
                d.number(repeat ? 20 : 300) + (repeat ? " r" + std::string(d.one_in(2) ? " 90" : "") : "");
    }
    return text;
}

const std::string observe =
    "def bus c ab a0 n1 n2;def bus n two ab n6;list b n0 n3 n4 s m;list h two;trace n5 n7 d[0];swi lis s;";

class session_file : public command_session {
protected:
    void SetUp() override {
        command_session::SetUp();
        std::filesystem::create_directories(folder);
        tm_flushes_files = false;
    }
    void TearDown() override {
        tm_flushes_files = true;
        command_session::TearDown();
    }
    void begin(std::string_view design) const {
        const tm_shell_t recorder = tm_shell;
        tst_build(design);
        ASSERT_EQ(tm_vext.num_errors, 0) << tst_take_text();
        tm_shell = recorder;
        tm_vext.nb_arg_comline = 2;
        tm_vext.argcomline[1] = tm_string(folder.string());
        type("check table off;dump off");
    }
    std::string bytes_of(const std::string& name) const {
        std::ifstream stream(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    // All that can be seen of what follows.
    lines seen_behind(const std::string& rest) const {
        lines all =
            type(rest + ";write list l;write csv c;write vcd v;sta bus;sta bre;sta mem /m;check table");
        for (const char* const name : {"l", "c", "v", "s"}) all.push_back(bytes_of(name));
        all.push_back(std::to_string(tm_vext.num_errors) + " " + std::to_string(tm_vext.num_warnings));
        return all;
    }
};

TEST_F(session_file, what_follows_is_the_same_wherever_a_run_is_stopped) {
    file("t", "time n0 n3 n4\n40 1 0 1\n150 0 x 1\n260 1 1 0\n");
    std::int64_t shown = 0;
    for (unsigned seed = 0; seed < 1000; ++seed) {
        dice d{std::mt19937(seed)};
        const std::string design = d.fill(models);
        begin(design);
        type(observe + random_stimuli(d));
        if (d.one_in(3)) type("timing coef delay 1.5");
        type("spike mod " + std::string(1, "NSIP"[d.of(4)]) + (d.one_in(3) ? ";spike che off" : ""));
        if (d.one_in(3)) type("break n" + d.number(8) + " " + d.number(2));
        if (d.one_in(3)) type("break bus two B" + d.number(2) + "x1" + d.number(2));
        if (d.one_in(3)) type("check table t");
        for (int runs = d.of(3); runs >= 0; --runs) type("run " + std::to_string(1 + d.of(120)));
        const std::string rest = "run " + std::to_string(1 + d.of(200)) + ";run 300 a;save state s";
        ASSERT_EQ(type("save session here").size(), 1U);
        const lines went_on = seen_behind(rest);
        begin(design);
        if (d.one_in(2)) type("force a a0 1 3;list b n0;break n1 1;run 9");
        ASSERT_EQ(type("restore session here"), lines{" RESTore SESsion here "});
        ASSERT_EQ(seen_behind(rest), went_on) << "seed " << seed << "\n" << design;
        shown += static_cast<std::int64_t>(went_on.size());
    }
    EXPECT_GT(shown, 40000);
}

TEST_F(session_file, a_damaged_file_or_one_of_another_design_changes_nothing) {
    begin("and g y = a b");
    type("force a a 1 0;force a b 1 5;list b y;run 3;save session here;run 10");
    const std::string good = bytes_of("here");
    const auto refusal = [&](const std::string& bytes) {
        file("there", bytes);
        return type("restore session there")[1];
    };
    for (std::size_t at = 0; at < good.size(); at += 1 + good.size() / 300) {
        std::string spoiled = good;
        spoiled[at] = static_cast<char>(spoiled[at] + 1);
        EXPECT_EQ(refusal(spoiled).substr(0, 11), "# !! Error ") << at;
        EXPECT_EQ(refusal(good.substr(0, at)).substr(0, 11), "# !! Error ") << at;
    }
    EXPECT_EQ(kol_ext.cur_time, 13);
    begin("or g y = a b c");
    EXPECT_EQ(refusal(good), "# !! Error : the SESSION is of another design ? ");
}

}  // namespace

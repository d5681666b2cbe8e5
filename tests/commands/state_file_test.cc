// SAVE STATE and RESTORE STATE.
#include <sys/resource.h>

#include <csignal>

#include "design_session.h"

namespace {

// A flip-flop with reset, a gate that spans a bus, an active-low latch behind it.
constexpr std::string_view registers =
    "in clk rst a; bus d 2;"
    "dff f1 Q:q QB:qb = D:qb CLKP:clk RP:rst rise 2 fall 1; pin /f1/D edge X;"
    "and g1 d.0-1 = a q rise 3 fall 2; latch l1 Q:y = D:d.1 EP:a rise 1 fall 1; pin /l1/D edge X";
constexpr std::string_view stimuli =
    "clock period 10;force a clk 0 0 r;force a clk 1 5 r;force a rst 1 0;force a rst 0 12;"
    "force a a 0 0;force a a 1 21;force a rst 1 77;";

class state_file : public command_session {
protected:
    void SetUp() override {
        command_session::SetUp();
        std::filesystem::create_directories(folder);
        begin();
    }
    void begin(std::string_view design = registers) const {
        const tm_shell_t recorder = tm_shell;
        tst_build(design);
        EXPECT_EQ(tm_vext.num_errors, 0);
        tm_shell = recorder;
        tm_vext.nb_arg_comline = 2;
        tm_vext.argcomline[1] = tm_string(folder.string());
    }
    std::string bytes_of(const std::string& name) const {
        std::ifstream stream(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    lines failure(const std::string& words, const std::string& name) const {
        const char* what =
            words.find("read") == 0 ? " !! Impossible to read : " : " !! impossible to open : ";
        return {words.substr(words.find('#')), what, " !! \"" + (folder / name).string() + "\" "};
    }
    std::size_t files() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
    }
    const std::string end_error = "# !! Error : state can be saved only at the end of a run ? ";
};

TEST_F(state_file, a_restored_session_goes_on_like_the_one_that_saved) {
    const auto tail_of = [&](std::string_view save, std::string_view name) {
        type(std::string(stimuli) + "list b clk rst q qb d[0] d[1] y");
        type(save);
        const lines run = type("run 120 a");
        type("write list " + std::string(name) + " 75 120");
        return std::pair(run, bytes_of(std::string(name)));
    };
    const auto whole = tail_of("run 74;save state s", "whole");
    const std::string saved = bytes_of("s");
    begin();
    const auto resumed = tail_of("restore state s", "resumed");
    EXPECT_EQ(resumed, whole);
    EXPECT_GT(whole.second.size(), 500U);
    begin();
    type("restore state s");
    EXPECT_EQ(type("save state again"), lines{" SAVe STAte again "});
    EXPECT_EQ(bytes_of("again"), saved);
    EXPECT_EQ(files(), 4U);
}

TEST_F(state_file, active_reset_and_enable_stay_active) {
    type(std::string(stimuli) + "run 18;run 81 a;save state s");  // reset, and the latch open
    begin();
    type("clock period 10;force a clk 0 0 r;force a clk 1 5 r;restore state s;list b q;run 40");
    type("write list out");
    EXPECT_EQ(bytes_of("out").substr(bytes_of("out").find("0.0")),
              "0.0  iU\n      81.000  0S\n     121.000  0S\n");
}

TEST_F(state_file, holds_header_states_and_filler) {
    begin("in a b; bus d 2; and g1 d.0-1 = a b");
    type("force a a 1r 0;force a b 0 0;force a a xr 6;run 8;save state s");
    std::string expected("##SAVE_STATE_FILE*\1\3\2\4", 22);
    const auto number = [&](int n) { expected += std::string{static_cast<char>(n), 0, 0, 0}; };
    number(yx_sext.max_net_cur);
    number(yx_sext.max_pin_cur);
    number(8);
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        const std::string_view path = kol_path(yx_ptrto_net_rec(i)->sim_path);
        expected += path == "/a" ? "\13\12" : path == "/d" ? std::string(2, '\0') : std::string("\0\21", 2);
    }
    for (std::int32_t i = 1; i <= yx_sext.max_pin_cur; ++i) {
        const std::string_view path = kol_path(yx_ptrto_pin_rec(i)->sim_path);
        expected += path == "/g1/I1" ? '\12' : path == "/g1/I2" ? '\21' : '\0';
    }
    EXPECT_EQ(bytes_of("s"), expected + std::string(20, '\0') + '\n');
    type("restore state s");
    EXPECT_EQ(tst_net("a").UU.U1.cur_state.state, 32);  // a line feed becomes a blank
    EXPECT_EQ(tst_pin("/g1/O").pin_state.bus[1].state, 17);
}

TEST_F(state_file, histories_and_queue_begin_anew) {
    type("force a a 1 0;run 4;save state s;list b a d[0];force a a 0 30;run 50;restore state s");
    EXPECT_EQ(kol_ext.cur_event, nullptr);
    EXPECT_EQ(std::tie(kol_ext.start_time, kol_ext.cur_time, kol_ext.end_time), std::tuple(4, 4, 4));
    type("list b a;force a a 0 4;run 3");  // a state that came from the file is no change at its time
    for (const std::string& line : seen.shown) EXPECT_EQ(line.find("HAZARD"), std::string::npos) << line;
    type("write list out");
    const std::string text = bytes_of("out");
    EXPECT_EQ(text.substr(text.find("0.0")),
              "0.0  iU iU iU\n       4.000  0S iS 0S\n       6.000  0S 0S 0S\n       7.000  0S 0S 0S\n");
}

TEST_F(state_file, a_refused_command_changes_nothing) {
    file("none", "##SAVE");
    file("kept", "old");
    std::filesystem::create_directory(folder / "sub");
    type("save state zero;force a a 1 0;run 9;save state good");
    std::string spoiled = bytes_of("good");
    for (const auto& [name, at] :
         {std::pair("title", 3), {"magic", 19}, {"nets", 22}, {"pins", 26}, {"state", 35}}) {
        spoiled[static_cast<std::size_t>(at)] ^= at == 35 ? 64 : 1;
        file(name, spoiled);
        spoiled = bytes_of("good");
    }
    const std::string before = bytes_of("good"), invalid = " !! ERROR INVALID file state ";
    expect_each({{"save state", {"# SAVe STAte ", count_error}},
                 {"sav sta a b", {"# SAVe STAte a b ", count_error}},
                 {"save state no/file", failure("# SAVe STAte  no/file ", "no/file")},
                 {"save state sub", failure("# SAVe STAte  sub ", "sub")},
                 {"restore state", {"# RESTore STAte ", count_error}},
                 {"restore state no", failure("# RESTore STAte  no ", "no")},
                 {"restore state sub", failure("# RESTore STAte  sub ", "sub")},
                 {"restore state none", failure("read # RESTore STAte  none ", "none")},
                 {"restore state zero", {"# RESTore STAte zero ", invalid}},
                 {"restore state title", {"# RESTore STAte title ", invalid}},
                 {"restore state magic", {"# RESTore STAte magic ", invalid}},
                 {"restore state nets", {"# RESTore STAte nets ", invalid}},
                 {"restore state state", {"# RESTore STAte state ", invalid}},
                 {"res sta pins", {"# RESTore STAte pins ", invalid}}});
    type("save state good");
    EXPECT_EQ(bytes_of("good"), before);
    kol_ext.cur_time = 5;  // stopped at a break
    EXPECT_EQ(type("save state kept"), (lines{"# SAVe STAte kept ", end_error}));
    EXPECT_EQ(bytes_of("kept"), "old");
    EXPECT_EQ(tm_vext.num_errors, 0);
}

TEST_F(state_file, a_cut_file_restores_what_it_holds) {
    type(std::string(stimuli) + "run 60;save state s");
    const std::string whole = bytes_of("s");
    const std::size_t nets = 34, pins = nets + 2 * static_cast<std::size_t>(yx_sext.max_net_cur);
    const auto cut_at = [&](std::size_t size) {
        file("cut", whole.substr(0, size));
        begin();
        return type("restore state cut");
    };
    const std::string echo = "# RESTore STAte cut ";
    EXPECT_EQ(cut_at(nets + 3), (lines{echo, " !! ERROR restore state (net) NOT COMPLETED ? "}));
    EXPECT_EQ(yx_ptrto_net_rec(1)->UU.U1.cur_state.state, whole[nets + 1]);
    EXPECT_EQ(yx_ptrto_net_rec(2)->UU.U1.old_state.state, 0);
    EXPECT_EQ(cut_at(pins + 1), (lines{echo, " !! ERROR restore state (pin) NOT COMPLETED ? "}));
    EXPECT_EQ(yx_ptrto_pin_rec(1)->pin_state.std.state, whole[pins]);
    EXPECT_EQ(kol_ext.cur_time, 60);
    EXPECT_EQ(cut_at(pins + static_cast<std::size_t>(yx_sext.max_pin_cur)), lines{" RESTore STAte cut "});
}

TEST_F(state_file, a_full_disk_leaves_the_older_file_whole) {
    file("s", "old");
    const auto old_action = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{}, full{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    full.rlim_cur = 20;
    full.rlim_max = limit.rlim_max;
    setrlimit(RLIMIT_FSIZE, &full);
    const lines shown = type("save state s");
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, old_action);
    EXPECT_EQ(shown, failure("# SAVe STAte  s ", "s"));
    EXPECT_EQ(tm_vext.num_errors, 1);
    EXPECT_EQ(bytes_of("s"), "old");
    EXPECT_EQ(files(), 1U);
}

}  // namespace

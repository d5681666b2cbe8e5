// Lines of any kind through the interpreter: commands as they should be, spoiled ones, bytes.
#include <algorithm>
#include <cstdlib>
#include <random>

#include "commands/command_session.h"
#include "commands/language/command_table.h"
#include "kernel/clear.h"
#include "support/design_build.h"
#include "support/places/places.h"

namespace {

constexpr int rounds = 100000;
constexpr std::size_t longest = 600;

// Every third line is a sequence of commands with parameters, every third such a one with some bytes changed,
// every third one of any bytes.
class line_maker {
public:
    std::string next(int round) {
        if (round % 3 == 2) return bytes();
        std::string line = commands();
        for (std::size_t n = round % 3 == 1 ? 1 + below(4) : 0; n > 0; --n) spoil(line);
        return line.substr(0, longest);
    }

private:
    std::size_t below(std::size_t bound) { return random_() % bound; }
    std::string bytes() {
        std::string line(1 + below(longest), ' ');
        std::ranges::generate(line, [this] { return static_cast<char>(below(256)); });
        return line;
    }
    void spoil(std::string& line) {
        const std::size_t at = below(line.size() + 1);
        switch (below(3)) {
            case 0:
                line.insert(at, 1, static_cast<char>(below(256)));
                return;
            case 1:
                line.insert(at, line.substr(below(line.size() + 1), below(200)));
                return;
            default:
                line.erase(at, below(8));
        }
    }
    std::string commands() {
        std::string line = command();
        for (std::size_t n = below(8) == 0 ? below(40) : below(3); n > 0; --n) line += ";" + command();
        return line;
    }
    std::string command() {
        // What the commands take, often in the order that makes a valid one.
        static constexpr std::string_view valid[] = {
            "FORCE A a 1 0",
            "FORCE C b 0z 3",
            "FORCE A clk 1 5 R",
            "FORCE A clk 0 0 R 900",
            "CLOCK PERIOD 10",
            "RUN 7",
            "RUN",
            "RUN 40 A",
            "LIST B a q d",
            "LIST H c",
            "TRACE q c",
            "DEF BUS C c a b",
            "DEF BUS A c q",
            "DEF BUS N e c c",
            "BREAK q 1",
            "FORGET L *",
            "FORGET A",
            "FORGET BU c e",
            "MOVE SIGNAL L 1 2",
            "SAVE STATE s",
            "RESTORE STATE s",
            "RESET SIM TIME",
            "UPDATE L",
            "HISTORY 5; REGENERATE",
            "WRITE LIST out",
            "WRITE LIST out 1 9",
            "SWITCHE LIST P",
            "PERIOD LIST 3",
            "SPIKE MODEL P",
            "TIMING COEF D 1.5",
            "TIMING INDEX 1 MAX",
            "ASSIGN $VAR1 $ARG2",
            "READLN $VAR2 p x",
            "SCALE USER UNIT 2",
            "STATUS BUS",
            "DEFINE KEY F5 'RUN 1'",
            "DO session.cmd 1",
            "! echo RUN 1",
            "SYSTEM 'echo'",
            "$CU4",
            "DOBIN statistics",
            "COMMAND \"RUN \" ",
            "POP",
            "VIEW SHEET",
            "VIEW SHEET carry",
            "VIEW SHEET PAGE NEXT",
            "VIEW DOWN U1; VIEW DOWN P1",
            "VIEW UP",
            "VIEW NET C*; STATUS NET; VIEW DOWN",
            "PROBE p 2.1 1.1",
            "MARK 1 1; MARK 3 2; VIEW AREA",
            "MARK RECT 0 0 4 3; SELECT AREA",
            "SELECT PROPERTY *; CHANGE PROPERTY SWITCH NOVISIBLE",
            "SEARCH *1; STATUS OBJECT",
            "UNSELECT ALL; VIEW ALL",
            "CHECK SHEET",
            "$VPTU20",
            "HELP RUN",
            "BYE",
        };
        if (below(2) == 0) return std::string(valid[below(std::size(valid))]);
        std::string text(kol_command_table()[below(kol_command_table().size())].canonical);
        for (std::size_t n = below(6); n > 0; --n) text += (below(4) == 0 ? "," : " ") + parameter();
        return text;
    }
    std::string parameter() {
        static constexpr std::string_view words[] = {
            "a",  "/q",   "d",    "d[1]",  "c",     "NI_1",   "1",    "0",     "x",
            "1S", "A",    "C",    "R",     "L",     "T",      "*",    "ON",    "OFF",
            "-1", "12.5", "3000", "$ARG1", "$VAR2", "$VAR31", "'a b", "\"x\"", "F12C",
        };
        return std::string(words[below(std::size(words))]);
    }

    std::mt19937 random_{20040322};
};

tm_string_record_t line_of(const std::string& text) {
    tm_string_record_t line;
    line.len = static_cast<std::int32_t>(text.size());
    std::copy_n(text.begin(), std::min(text.size(), sizeof line.all), line.all);
    return line;
}

class command_lines : public command_session {
protected:
    void SetUp() override {
        command_session::SetUp();
        std::filesystem::create_directories(sheets);
        std::filesystem::current_path(folder);  // the lines write files
        ASSERT_EQ(std::system((tst_program_dir() + "/example_sheets " + sheets + " > /dev/null").c_str()), 0);
    }
    void TearDown() override {
        std::filesystem::current_path(before);
        command_session::TearDown();
        kol_context_clear();
        yx_store_clear();
    }
    void begin(const std::filesystem::path& directory) const {
        tm_shell.show_other_page = [] {
            tm_vext.numpage = tm_vext.numpage == tm_page::results ? tm_page::context : tm_page::results;
        };
        tm_shell.end_process = [] {
            ++seen.ends;
            tm_vext.init_done = true;  // and it goes on
        };
        const tm_shell_t recorder = tm_shell;
        tst_build(
            "in a b clk; bus d 2; dff f Q:q = D:a CLKP:clk rise 2 fall 1; pin /f/D edge X;"
            "and g d.0-1 = q b rise 3 fall 2");
        tm_shell = recorder;
        tm_vext.nb_arg_comline = 2;
        tm_vext.argcomline[1] = tm_string(directory.string());
        tm_shell_commands_allowed = false;
        tm_vext.init_done = tm_vext.display_on = true;
        tm_vext.bitmap_size = {0, 0, 800, 600};
        tm_vext.pick_aperture = {10, 10};
        kol_ext.dir_path = tm_string(sheets);
    }
    const std::string sheets = (folder / "sheets").string();
    const std::filesystem::path before = std::filesystem::current_path();
};

TEST_F(command_lines, of_any_kind_are_survived) {
    line_maker lines_to_type;
    std::size_t shown = 0, accepted = 0, entered = 0;
    testing::internal::CaptureStdout();
    for (int round = 0; round < rounds; ++round) {
        // A fresh session now and then: clocks collect.  Files, which take time, can be written in some.
        if (round % 250 == 0) begin(round % 5000 == 0 ? folder : folder / "missing");
        const std::string text = lines_to_type.next(round);
        tm_vext.end_flag = false;
        kol_process_command(line_of(text), kol_ext.ext_arg, kol_ext.top_var);
        ASSERT_TRUE(!tm_vext.cmd_executing && tm_vext.do_ind == 0) << text;
        for (const std::string& line : seen.shown) {
            accepted += line.starts_with(" RUN ") ? 1 : 0;
            entered += line.starts_with(" VIEw DOWn ") ? 1 : 0;
        }
        shown += seen.shown.size();
        seen.shown.clear();
    }
    testing::internal::GetCapturedStdout();
    EXPECT_GT(shown, static_cast<std::size_t>(rounds));
    EXPECT_GT(accepted, static_cast<std::size_t>(rounds) / 100);  // the lines do simulate something
    EXPECT_GT(entered, static_cast<std::size_t>(rounds) / 200);
    EXPECT_GT(seen.ends, 100);
}

}  // namespace

// Cells of a Liberty library, and the delays of SDF files, expanded and simulated.
#include "expansion.h"
#include "kernel/history.h"
#include "support/design_build.h"
#include "support/rows.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

constexpr const char* liberty = R"lib(library(small) {
  cell(tie) { pin(Y) { direction : output; function : "1"; } }
  cell(fill) { area : 1; }
  cell(inv) { pin(A) { direction : input; } pin(Y) { direction : output; function : "A'"; } }
  cell(mux) {
    pin(A) { direction : input; } pin(B) { direction : input; } pin(S) { direction : input; }
    pin(Y) { direction : output; function : "!((S A) + (!S*B))"; }
  }
  cell(add) {
    pin(A) { direction : input; } pin(B) { direction : input; }
    pin(Q) { direction : output; function : "A^B"; } pin(C) { direction : output; function : "n"; }
    pin(n) { direction : internal; function : "A & B"; }
  }
  cell(wide) {
    pin(A) { direction : input; } pin(B) { direction : input; } pin(C) { direction : input; }
    pin(D) { direction : input; } pin(E) { direction : input; } pin(F) { direction : input; }
    pin(G) { direction : input; }
    pin(Y) { direction : output; function : "G (A B C + D E F) | !G A^F"; }
  }
  cell(ff) {
    ff(IQ, IQN) { next_state : "(E D) | (E' IQ)"; clocked_on : "CK'"; clear : "R"; preset : "!S";
                  clear_preset_var1 : H; clear_preset_var2 : L; }
    pin(D) { direction : input; } pin(E) { direction : input; } pin(CK) { direction : input; }
    pin(R) { direction : input; } pin(S) { direction : input; }
    pin(Q) { direction : output; function : "IQ"; } pin(QN) { direction : output; function : "IQN"; }
  }
  cell(dff) {
    ff(IQ, IQN) { next_state : "D"; clocked_on : "CK"; }
    pin(D) { direction : input; } pin(CK) { direction : input; }
    pin(Q) { direction : output; function : "IQ"; }
  }
  cell(dffr) {
    ff(IQ, IQN) { next_state : "D"; clocked_on : "CK"; clear : "RN'"; }
    pin(D) { direction : input; } pin(CK) { direction : input; } pin(RN) { direction : input; }
    pin(Q) { direction : output; function : "IQ"; }
  }
  cell(gate) {
    latch(IQ, IQN) { data_in : "E"; enable : "CK'"; }
    pin(E) { direction : input; } pin(CK) { direction : input; }
    pin(Q) { direction : output; function : "CK IQ"; }
  }
  cell(bus) {
    pin(A) { direction : input; } pin(EN) { direction : input; }
    pin(Y) { direction : output; function : "A'"; three_state : "EN'"; }
  }
  cell(blank) { pin(A) { direction : input; } pin(Y) { direction : output; } }
  cell(odd) { pin(A) { direction : input; } pin(Y) { direction : output; function : "A (B"; } }
})lib";

class library : public expansion {
protected:
    std::string expand_cells(const std::string& cells, std::vector<const char*> options = {}) {
        file("small.lib", liberty);
        file("netlist.json", netlist_json(cells));
        std::vector<const char*> arguments = {"netlist.json", "-o", "design", "--liberty", "small.lib"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        xp_options parsed;
        status = {};
        xp_parse_options(arguments, parsed, status);
        xp_expand(parsed, summary, status);
        return xp_ok(status) ? "" : xp_message_text(status);
    }
    std::string annotate(const std::string& cells, const std::string& sdf) {
        file("d.sdf", "(DELAYFILE (SDFVERSION \"3.0\") (DIVIDER /) (TIMESCALE 1ns)\n" + sdf + ")");
        return expand_cells(cells, {"--sdf", "d.sdf"});
    }
    void run(const std::string& stimuli, std::int32_t until = 10'000) {
        load();
        kol_observe_net(&tst_net("q"));
        tst_schedule(stimuli);
        tst_run_until(until);
    }
};

TEST_F(library, cells_do_what_their_functions_say) {
    const char* const inputs = "abcdefg";
    const tst_rows<tst_cstr, bool (*)(const bool*)> cases{
        {"cell inv u A=a Y=q", [](const bool* v) { return !v[0]; }},
        {"cell tie u Y=q", [](const bool*) { return true; }},
        {"cell mux u A=a B=b S=c Y=q", [](const bool* v) { return !(v[2] ? v[0] : v[1]); }},
        {"cell add u A=a B=b C=q", [](const bool* v) { return v[0] && v[1]; }},
        {"cell add u A=a B=b Q=q", [](const bool* v) { return v[0] != v[1]; }},
        {"cell wide u A=a B=b C=c D=d E=e F=f G=g Y=q",
         [](const bool* v) {
             return v[6] ? (v[0] && v[1] && v[2]) || (v[3] && v[4] && v[5]) : v[0] != v[5];
         }},
    };
    for (const auto& [cell, function] : cases) {
        ASSERT_EQ(expand_cells(cell), "") << cell;
        load();
        for (unsigned place = 0; place < 128; ++place) {
            bool values[7];
            std::map<std::string, char> states;
            for (unsigned k = 0; k < 7; ++k) {
                values[k] = (place >> k & 1) != 0;
                const std::string name(1, inputs[k]);
                if (std::string(cell).find("=" + name) != std::string::npos)
                    states[name] = values[k] ? '1' : '0';
            }
            force(states);
            ASSERT_EQ(value("q"), function(values) ? '1' : '0') << cell << " at " << place;
        }
    }
}

TEST_F(library, registers_capture_hold_and_are_set_as_they_are_described) {
    ASSERT_EQ(expand_cells("cell ff u D=d E=e CK=c R=r S=s Q=q QN=n"), "");
    load();
    const tst_rows<std::map<std::string, char>, char> steps{
        {{{"d", '0'}, {"e", '1'}, {"c", '1'}, {"r", '1'}, {"s", '1'}}, '0'},
        {{{"r", '0'}, {"d", '1'}}, '0'},
        {{{"c", '0'}}, '1'},  // captures when the clock falls
        {{{"e", '0'}, {"d", '0'}}, '1'},
        {{{"c", '1'}}, '1'},
        {{{"c", '0'}}, '1'},
        {{{"e", '1'}, {"c", '1'}}, '1'},
        {{{"c", '0'}}, '0'},
        {{{"s", '0'}}, '1'},
        {{{"r", '1'}}, '1'},  // preset wins
        {{{"s", '1'}}, '0'},
        {{{"r", '0'}}, '0'},
    };
    for (const auto& [states, q] : steps) {
        force(states);
        EXPECT_EQ(value("q"), q);
        EXPECT_EQ(value("n"), q == '1' ? '0' : '1');
    }
}

TEST_F(library, gated_clocks_and_buses_follow_their_enable) {
    ASSERT_EQ(expand_cells("cell gate u E=e CK=c Q=q; cell bus b A=a EN=e Y=y; cell bus b2 A=b EN=f Y=y"),
              "");
    load();
    const tst_rows<std::map<std::string, char>, tst_cstr> steps{
        {{{"e", '1'}, {"c", '0'}, {"a", '0'}, {"b", '0'}, {"f", '0'}}, "01"},
        {{{"c", '1'}}, "11"},
        {{{"e", '0'}, {"f", '1'}, {"b", '1'}}, "10"},  // the latch is closed
        {{{"c", '0'}}, "00"},
        {{{"c", '1'}, {"f", '0'}}, "0i"},
    };
    for (const auto& [states, seen] : steps) {
        force(states);
        EXPECT_EQ((std::string{value("q"), value("y")}), seen);
    }
}

TEST_F(library, cells_without_a_model_are_named_with_the_reason) {
    EXPECT_EQ(expand_cells("cell blank u A=a Y=b; cell odd v A=b Y=c; cell odd w A=b Y=d; cell fill f"),
              "cells without a model:\n  blank: 1 cell, /u: output \"Y\" has no function\n"
              "  odd: 2 cells, the first /v: its function \"A (B\": unknown name \"B\"");
    EXPECT_EQ(expand_cells("cell inv u A=a Z=q"), "/u: unknown port: \"Z\"");
    file("bad.lib", "library(x) { cell(a) { pin(b } }");
    EXPECT_EQ(expand_cells("cell inv u A=a Y=q", {"--liberty", "bad.lib"}).substr(0, 21),
              "bad.lib: bad library:");
}

// A nanosecond is 1,000 steps.
TEST_F(library, delays_are_those_of_the_edge_and_the_pin) {
    const tst_rows<tst_cstr, tst_cstr, tst_cstr, tst_cstr> cases{
        {"inv u A=a Y=q", "(IOPATH A Y (1:2:3) (4:5:6))", "a=0@10 a=1@5000", "2010:1S 10000:0S"},
        {"inv u A=a Y=q", "(IOPATH A Y (0.5) (1.0))", "a=0@10 a=1@5000", "510:1S 6000:0S"},
        {"inv u A=a Y=q", "(IOPATH A Y (0.5::0.7) ())", "a=0@10 a=1@5000", "710:1S 5700:0S"},
        {"inv u A=a Y=q", "(IOPATH A Y (0) (0))", "a=0@10 a=1@5000", "11:1S 5001:0S"},
        {"mux u A=a B=b S=0 Y=q", "(IOPATH A Y (9) (9)) (IOPATH B Y (0.1) (0.2)) (IOPATH S Y (9) (9))",
         "a=0@1 b=0@10000 b=1@11000", "10100:1S 11200:0S"},
        // the larger of what the conditions say
        {"inv u A=a Y=q", "(COND B==1'b1 (IOPATH A Y (0.5) (0.6))) (COND (B==0) (IOPATH A Y (0.4) (0.7)))",
         "a=0@10 a=1@5000", "510:1S 5700:0S"},
        {"inv u A=a Y=q", "(IOPATH (posedge A) Y (0.1) (0.2)) (IOPATH (negedge A) Y (0.3) (0.1))",
         "a=0@10 a=1@5000", "310:1S 5200:0S"},
        {"inv u A=a Y=q", "(IOPATH A Y (RETAIN (0.1) (0.1)) (0.5) (0.6))", "a=0@10 a=1@5000",
         "510:1S 5600:0S"},
        {"bus u A=a EN=1 Y=q", "(IOPATH A Y (0.5) (0.6)) (IOPATH EN Y (0.1) (0.1))", "a=0@100 a=1@5000",
         "600:1S 5600:0S"},
    };
    for (const auto& [cell, paths, stimuli, changes] : cases) {
        const std::string sdf =
            "(CELL (CELLTYPE \"inv\") (INSTANCE u) (DELAY (ABSOLUTE " + std::string(paths) + ")))";
        ASSERT_EQ(annotate("cell " + std::string(cell), sdf), "") << paths;
        run(stimuli, 20'000);
        EXPECT_TRUE(tst_changes_of("q").ends_with(changes)) << paths << ": " << tst_changes_of("q");
    }
}

TEST_F(library, wires_add_the_delay_of_their_own_edge) {
    const std::string cells = "cell inv u A=a Y=w; cell inv v A=w Y=q";
    const std::string paths =
        "(CELL (CELLTYPE \"inv\") (INSTANCE *) (DELAY (ABSOLUTE (IOPATH A Y (0.1) (0.1)))))";
    for (const char* wire : {"(INTERCONNECT u/Y v/A (0.02) (0.04))", "(PORT v/A (0.02) (0.04))",
                             "(NETDELAY u/Y (0.02) (0.04))", "(NETDELAY w (0.02) (0.04))"}) {
        ASSERT_EQ(
            annotate(cells, paths + "(CELL (CELLTYPE \"top\") (INSTANCE) (DELAY (ABSOLUTE " + wire + ")))"),
            "");
        run("a=1@1000 a=0@5000");
        EXPECT_EQ(tst_changes_of("q"), "1240:1S 5220:0S") << wire;
    }
}

TEST_F(library, limits_of_registers_are_checked) {
    const std::string cell = "cell dff u D=d CK=c Q=q";
    const std::string sdf =
        "(CELL (CELLTYPE \"dff\") (INSTANCE u)\n(DELAY (ABSOLUTE (IOPATH CK Q (0.3) (0.4))))\n"
        "(TIMINGCHECK (SETUP (posedge D) (posedge CK) (0.08)) (SETUP (negedge D) (posedge CK) (0.1))\n"
        "(HOLD D (COND E (posedge CK)) (0.05)) (WIDTH (posedge CK) (0.2)) (PERIOD CK (1)))\n)";
    ASSERT_EQ(annotate(cell, sdf), "");
    EXPECT_EQ(status.notes,
              (std::vector<std::string>{
                  "d.sdf: 6 of 6 entries annotated, 0 of 1 cells without entries, the larger of "
                  "differing values 1 times"}));
    run("d=0@100 c=0@200 d=1@900 c=1@1000 c=0@1200 d=0@1901 c=1@2000 c=0@2199 d=1@2500 c=1@3000 d=0@3049");
    EXPECT_EQ(tst_changes_of("q"), "1300:1S 2400:0S 3300:1S");
    std::string text;
    for (const std::string& line : tst_take_lines()) text += line + "\n";
    const auto count = [&](const std::string& what) {
        std::size_t times = 0;
        for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; ++at) ++times;
        return times;
    };
    EXPECT_EQ(count("Violation"), 3U) << text;
    EXPECT_EQ(count("1.901-->2.000<->:0.099(<0.100)"), 1U) << text;
    EXPECT_EQ(count("3.000-->3.049<->:0.049(<0.050)"), 1U) << text;
    EXPECT_EQ(count("\"/u/CLKP\""), 3U) << text;
}

TEST_F(library, ends_of_resets_and_both_pulses_of_clocks_are_checked) {
    const std::string release = "(posedge RN) (posedge CK) ", early = "rn=0@100 c=0@100 rn=1@950 c=1@1000",
                      late = "rn=0@100 c=0@100 c=1@1000 rn=1@1100";
    const std::string recovery = "Recovery Time Violation on pin:\"/u/CLKP\"#    From pin:\"/u/RN\"",
                      removal = "Removal Time Violation on pin:\"/u/RN\"#    From pin:\"/u/CLKP\"";
    const tst_rows<std::string, std::string, std::string> cases{
        {"RECOVERY " + release + "(0.1)", early, recovery + "#  time:0.950-->1.000<->:0.050(<0.100)"},
        {"RECREM " + release + "(0.1) (0.2)", early, recovery + "#  time:0.950-->1.000<->:0.050(<0.100)"},
        {"RECREM " + release + "(0.1) (0.2)", late, removal + "#  time:1.000-->1.100<->:0.100(<0.200)"},
        {"REMOVAL " + release + "(0.1)", late, ""},
        {"PERIOD CK (1)", "c=0@100 c=1@1000 c=0@1500 c=1@1900",
         "Min Period Violation on pin:\"/u/CLKP\" #  time:1.000-->1.900<->:0.900(<1.000)"},
        {"WIDTH (negedge CK) (0.2)", "c=1@100 c=0@1000 c=1@1150",
         "Min Time Low Violation on pin:\"/u/CLKP\" #  time:1.000-->1.150<->:0.150(<0.200)"},
        // the gate in front of the clock takes a step
        {"HOLD D (posedge CK) (0.1)", "rn=1@10 e=1@10 c=0@100 c=1@1000 d=1@1080",
         "Hold Time Violation on pin:\"/u/D\"#    From pin:\"/u/CLKP\"#  "
         "time:1.001-->1.080<->:0.079(<0.100)"},
    };
    for (const auto& [check, stimuli, lines] : cases) {
        const std::string cells = std::string("cell dffr u D=d RN=rn Q=q") +
                                  (check.starts_with("HOLD") ? " CK=g; cell add a A=c B=e C=g" : " CK=c");
        ASSERT_EQ(
            annotate(cells, "(CELL (CELLTYPE \"dffr\") (INSTANCE u) (TIMINGCHECK (" + check +
                                ")))\n(CELL (CELLTYPE \"add\") (INSTANCE *) (DELAY (ABSOLUTE (IOPATH A C "
                                "(0)))))"),
            "");
        run(stimuli);
        std::string text;
        for (const std::string& line : tst_take_lines()) text += line;
        EXPECT_EQ(text, lines.empty() ? "" : "# !! " + lines) << check;
    }
}

TEST_F(library, lines_that_find_nothing_are_told_with_the_nearest_names) {
    ASSERT_EQ(annotate("in a 5; cell inv unit_1 A=5 Y=q",
                       "(CELL (CELLTYPE \"inv\")\n(INSTANCE unit_7) (DELAY (ABSOLUTE (IOPATH A Y (1)))))\n"
                       "(CELL (CELLTYPE \"inv\") (INSTANCE unit_1) (DELAY (ABSOLUTE (IOPATH A Z (1)))))"),
              "");
    EXPECT_EQ(status.warnings,
              (std::vector<std::string>{"d.sdf: line 2: no cell \"unit_7\", nearest \"unit_1\"",
                                        "d.sdf: line 4: cell \"inv\" has no pin \"A\" or \"Z\""}));
    const tst_rows<tst_cstr, tst_cstr> faults{
        {"(CELL (INSTANCE u) (DELAY (ABSOLUTE\n(IOPATH A Y (1:2)))))", "d.sdf: bad SDF: line 3"},
        {"(CELL (INSTANCE u) (DELAY (ABSOLUTE (IOPATH A Y (1", "d.sdf: bad SDF: line 2"},
        {"(TIMESCALE 1 fortnight)", "d.sdf: bad SDF: line 2"},
    };
    for (const auto& [sdf, message] : faults) {
        const std::string said = annotate("cell inv u A=a Y=q", sdf);
        EXPECT_NE(said.find(std::string(message).substr(15)), std::string::npos) << said;
        EXPECT_TRUE(said.starts_with("d.sdf: line ")) << said;
    }
}

}  // namespace

// What the program refuses: the message, the exit status, and that no file is left behind or changed.
#include "expansion.h"

namespace {

class refusals : public expansion {
protected:
    static void expect_refusal(const std::string& message, const std::string& arguments = "n.json -o d") {
        file("said", "");
        file("d", "an earlier design");
        const std::vector<std::string> before = names_of_files();
        EXPECT_EQ(run(arguments), 1) << message;
        EXPECT_EQ(text_of("said"), "kolv-expand: " + message + "\n");
        EXPECT_EQ(names_of_files(), before);
        EXPECT_TRUE(text_of("d") == "an earlier design");
    }
};

TEST_F(refusals, name_the_cell_by_its_path) {
    const std::string width = "/u: connection width mismatch: ", top = "; module top top; in a 2; cell m u ";
    const std::pair<std::string, std::string> rows[] = {
        {"cell $_DFF_P_ u D=d C=c R=r Q=q", "/u: unknown port: \"R\""},
        {"cell $dff u D=d:3 CLK=c Q=q:2", width + "port \"D\" has 2 bits, the connection 3"},
        {"cell $adff u ARST_VALUE:1 D=d:2 CLK=c ARST=r Q=q:2",
         width + "the reset value has 1 bits, the output 2"},
        {"module top top; cell a x; module a; cell b y; module b; cell a z",
         "/x/y/z: recursive hierarchy: module \"a\" contains itself"},
        {"cell $not u A=a Y=y A_WIDTH:2", width + "port \"A\" has 2 bits, the connection 1"},
        {"cell $pmux u A=a B=a S=a,a Y=y", width + "the widths of its ports differ"},
        {"module m; in p 2,3" + top + "p=2", width + "port \"p\" has 2 bits, the connection 1"},
        {"module m; in p 2" + top + "q=2", "/u: unknown port: \"q\" of module \"m\""},
        {"module m; in p 2" + top + "P=2", "/u: unknown port: \"P\" of module \"m\", which has \"p\""},
        {"cell $_NOT_ u A=a Y=1", "/u: output drives a constant: port \"Y\""},
        {"module m; out p 1; module top top; in a 2; cell m k p=3; cell $_NOT_ u A=2 Y=3",
         "/u: output drives a constant"},
        {"module m; out p 2; out q 2" + top + "p=0 q=1", "/u: different constants joined"},
        {"in a 2; cell $_NOT_ u A=2 Y=3; cell $_BUF_ v A=2 Y=3",
         "/v: two drivers without drive strengths: /u drives the same net"},
        {"module m; in i 2; out p 3; cell $_NOT_ g A=2 Y=3; module top top; in a 2; cell m k i=2 p=4; cell m "
         "l i=2 p=4",
         "/l/g: two drivers without drive strengths: /k/g drives the same net"},
        {"in a 2; cell $_NOT_ u A=2 Y=3 @drive:SSS; net n 3",
         "/u: bad drive strengths: \"SSS\", expected four letters of U, Z, R, W, S"},
        {"module a; module b", "no top module: choose with --top among \"a\", \"b\""},
        {"module a; cell b u; module b; cell a v", "no top module: every module is contained in another"},
    };
    for (const auto& [netlist, message] : rows)
        file("n.json", netlist_json(netlist)), expect_refusal(message);
}

TEST_F(refusals, list_all_cells_without_a_model_with_the_next_step) {
    const std::pair<std::string, std::string> families[] = {
        {"$_DFF_PX0_", "no gate that is known: map it with techmap"},
        {"$_FF_", "it has no clock: leave clk2fflogic and async2sync away"},
        {"$add", "run techmap or synth"},
        {"$anyseq", "a cell of formal proofs: give the design without it"},
        {"$memrd_v2", "run memory_collect behind proc"},
        {"$paramod\\m\\N=3", "its module is not in the netlist: write_json without -selected"},
        {"LUT4", "it has no contents: read its Verilog before synth, or give its library with --liberty"},
    };
    std::string netlist =
        "module top top; cell m u; cell m v; module m; cell LUT4 $again A=2; module LUT4 blackbox; module m";
    std::string message = "cells without a model:";
    for (const auto& [type, step] : families) {
        netlist += "; cell " + type + " u" + type + " A=2";
        message += "\n  " + type +
                   (type == "LUT4" ? ": 2 cells, the first /u/$again: " : ": 1 cell, /u/u" + type + ": ") +
                   step;
    }
    file("n.json", netlist_json(netlist));
    expect_refusal(message);
}

TEST_F(refusals, name_the_place_in_the_file) {
    const std::string value = ": unexpected value: ",
                      bit = value + "a bit is a number, \"0\", \"1\", \"x\" or \"z\"";
    const std::pair<std::string, std::string> files[] = {
        {"", ": malformed JSON: byte 1, near \"\""},
        {"{\"modules\": {\"top\": ]}", ": malformed JSON: byte 21, near \"\"top\": ]\""},
        {"[]", value + "expected an object"},
        {"{}", ": missing value: no modules"},
    };
    const std::pair<std::string, std::string> modules[] = {
        {R"("ports": {"p": {"bits": [2]}})", "ports/p: missing value: \"direction\" of the port"},
        {R"("ports": {"p": {"direction": "up"}})",
         "ports/p/direction" + value + "expected \"input\", \"output\" or \"inout\""},
        {R"("cells": {"u": {"connections": {}}})", "cells/u: missing value: \"type\" of the cell"},
        {R"("cells": {"u": {"connections": {"A": [-2]}}})", "cells/u/connections/A" + bit},
        {R"("cells": null)", "cells" + value + "expected an object"},
        {R"("netnames": {"n": {"bits": ["2"]}})", "netnames/n/bits" + bit},
        {R"("netnames": {"n": {"bits": 2}})", "netnames/n/bits" + value + "expected an array"},
    };
    for (const auto& [json, message] : files) file("n.json", json), expect_refusal("n.json" + message);
    for (const auto& [json, message] : modules)
        file("n.json", "{\"modules\": {\"t\": {" + json + "}}}"),
            expect_refusal("n.json: modules/t/" + message);
}

TEST_F(refusals, name_the_option_or_the_file) {
    file("n.json", netlist_json("in a 2; cell $_NOT_ u A=2 Y=3"));
    std::filesystem::create_directory("sub");
    const std::pair<const char*, const char*> rows[] = {
        {"", "wrong usage: INPUT is required"},
        {"n.json", "wrong usage: --output is required"},
        {"n.json -o", "wrong usage: --output: 1 required FILE missing"},
        {"n.json n.json -o d", "n.json: wrong usage: one netlist only"},
        {"n.json n.v -o d", "wrong usage: Verilog files and a netlist"},
        {"n.json -o d -I x", "wrong usage: --recipe, -D and -I are for Verilog files (.v, .sv)"},
        {"--fast n.json -o d", "wrong usage: The following argument was not expected: --fast"},
        {"n.json -o d --top m", "--top: missing module: \"m\""},
        {"n.json -o d --time-step 0", "wrong usage: --time-step: \"0\" is no number above 0"},
        {"n.json -o d --time-step 1week", "wrong usage: --time-step: \"1week\" is no number above 0"},
        {"none.json -o d", "none.json: cannot read the file"},
        {"n.json -o d --timing none", "none: cannot read the file"},
        {"n.json -o sub", "sub: cannot write the file: cannot write \"sub\": Is a directory"},
        {"n.json -o no/d", "no/d.buses: cannot write the file: No such file or directory"},
        {"n.json -o d --names no/map", "no/map: cannot write the file: No such file or directory"},
        {"n.json -o d --names .", ".: cannot write the file: Is a directory"},
    };
    for (const auto& [arguments, message] : rows) expect_refusal(message, arguments);
}

// 2^levels instances of module leaf, and the top.
std::string doubled(int levels, const std::string& leaf) {
    std::string text = "module m0\n" + leaf, below = "m0";
    for (int i = 1; i <= levels; ++i) {
        const std::string name = i == levels ? "all top" : "m" + std::to_string(i);
        text += "\nmodule " + name + "; cell " + below + " a; cell " + below + " b";
        below = name;
    }
    return text;
}

TEST_F(refusals, name_the_limit) {
    std::string chain;
    for (int i = 0; i < 502; ++i)
        chain += "module m" + std::to_string(i) + (i == 0 ? " top" : "") + "\ncell m" +
                 std::to_string(i + 1) + " u\n";
    const std::string a_word = "cell $reduce_or g Y=4000 A=2..", fit = "the design does not fit: ";
    const std::string beyond = ": more than 100000000, the limit";
    const std::pair<std::string, std::string> rows[] = {
        {doubled(18, a_word + "500"), fit + "pins" + beyond},
        {"in a 2; cell $reduce_or g A=2..32768 Y=40000",
         "/g: " + fit + "a gate of 32767 inputs, at most 32766"},
    };
    for (const auto& [netlist, message] : rows) EXPECT_EQ(expand(netlist), message);
    EXPECT_TRUE(expand(chain + "module m502\n").ends_with("hierarchy too deep: at most 500 levels"));
    EXPECT_EQ(names_of_files(), std::vector<std::string>{"netlist.json"});
}

TEST_F(refusals, are_none_for_a_sound_netlist_and_every_option) {
    file("n.json",
         netlist_json("module one; in a 2; cell $_NOT_ u A=2 Y=3; net n 3; module two; in b 2; in open 7,8"
                      "; cell $_OR_ v A=2 B=9 Y=4; out y 4"));
    file("t.json", "{}");
    file("d.tsv", "v\t3\t3\n");
    EXPECT_EQ(run("--top two --timing t.json --delays d.tsv --time-step 0.5 --names map n.json -o d"), 0);
    EXPECT_EQ(text_of("said"),
              "kolv-expand: warning: /net: nothing drives this net\nd: 1 instances, 5 nets, 0 macros\n");
    EXPECT_EQ(names_of_files(),
              (std::vector<std::string>{"d", "d.buses", "d.tsv", "map", "n.json", "said", "t.json"}));
    EXPECT_EQ(run("--help"), 0);
    EXPECT_NE(text_of("said").find("Usage: kolv-expand [OPTIONS] INPUT"), std::string::npos);
}

TEST_F(refusals, are_none_for_cells_that_only_check_and_for_ports_that_differ_in_case) {
    file("n.json",
         netlist_json("in en 2; in EN 3; out y 4; cell $_AND_ g A=2 B=3 Y=4; cell $assert a A=2 EN=3"
                      "; cell $assert b A=4 EN=3; cell $print p A=2; cell $scopeinfo s"));
    EXPECT_EQ(run("n.json -o d"), 0);
    EXPECT_EQ(text_of("said"),
              "kolv-expand: note: left out, since they check or print only: 2 $assert, 1 $print\n"
              "kolv-expand: warning: /en: the port differs from \"EN\" in case only and is called \"en_2\"\n"
              "d: 1 instances, 3 nets, 0 macros\n");
}

}  // namespace

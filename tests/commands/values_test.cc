// WRITE VCD and CSV, DUMP, whole buses, tables and VCD files as stimuli.
#include "design_session.h"

namespace {

class values : public design_session {
protected:
    void SetUp() override {
        design_session::SetUp();
        std::filesystem::create_directories(folder);
        tm_vext.nb_arg_comline = 2;
        tm_vext.argcomline[1] = tm_string(folder.string());
        type("dump off;check table off");
    }
    void TearDown() override {
        type("dump off;check table off;forget br *");
        design_session::TearDown();
    }
    std::string text_of(const std::string& name) const {
        std::ifstream stream(folder / name);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static lines behind(std::string_view line, std::size_t first) {
        lines shown = type(line);
        shown.erase(shown.begin(),
                    shown.begin() + static_cast<std::ptrdiff_t>(std::min(first, shown.size())));
        return shown;
    }
};

TEST_F(values, are_written_with_full_names_and_read_back_as_stimuli) {
    type("def bus c ab a b;list b y;list h ab;trace y;force a a 1 0;force a b 0 0;force a b 1 10;run 40");
    EXPECT_EQ(type("wri csv"), lines{" WRIte CSV "});
    EXPECT_EQ(text_of("kolv_list.csv"), "time,/y,/ab\n0.0,iU,2\n1.000,0S,2\n10.000,0S,3\n12.000,1S,3\n");
    type("wri vcd v 1 40;wri vcd s 1 40 S");
    EXPECT_EQ(text_of("v"),
              "$version kolv $end\n$timescale 1ns $end\n$scope module top $end\n$var wire 1 ! y $end\n"
              "$var wire 2 \" ab [1:0] $end\n$upscope $end\n$enddefinitions $end\n"
              "#1\n$dumpvars\n0!\nb10 \"\n$end\n#10\nb11 \"\n#12\n1!\n#40\n");
    EXPECT_NE(text_of("s").find("#10\npHH 00 66 \"\n#12\npH 0 6 !\n"), std::string::npos);
    EXPECT_EQ(behind("wri vcd s 1 40 x", 1)[0].substr(0, 40), "# !! Error : last parameter invalid ( sh");
}

TEST_F(values, a_dump_grows_with_the_runs_and_begins_anew_with_them) {
    type("dump d;force a a 1 0;force a b 0 0;force a b 1 10;force a d[0] 1 3;run 11");
    const std::string first = text_of("d");
    EXPECT_NE(first.find("$var wire 2 # d [1:0] $end"), std::string::npos) << first;
    EXPECT_TRUE(first.ends_with("$end\n0\"\n1!\n#1\n0$\n#3\nbx1 #\n#10\n1\"\n#11\n")) << first;
    type("run 20");
    EXPECT_EQ(text_of("d"), first + "#12\n1$\n#31\n");
    type("update l;dump off");
    EXPECT_EQ(text_of("d"), first.substr(0, first.size() - 4) + "#12\n1$\n#31\n");
    EXPECT_EQ(behind("dump off", 1), lines{"# !! Error : NO DUMP is on ? "});
    EXPECT_EQ(type("dump e /u1").size(), 3U);
}

TEST_F(values, of_whole_buses_are_forced_met_and_shown) {
    type("def bus c ab a b;list d ab");
    for (const auto& [value, bits] :
         {std::pair{"2", "10"}, {"B01", "01"}, {"H3", "11"}, {"x", "xx"}, {"Bz1", "z1"}}) {
        type(std::string("force bus c ab ") + value + " 0;run 1");
        EXPECT_EQ(
            type("status bus ab b"),
            (lines{"#   BUS : \"ab\" ", "#   value : \"" + std::string(bits) + "\" ", " STAtus BUS ab b "}));
    }
    for (const char* const wrong : {"4", "HG", "B", "B111"})
        EXPECT_EQ(behind(std::string("force bus a ab ") + wrong + " 9", 1),
                  lines{"# !! Error : value invalid or too large for the BUS ? "});
    // A value that passes within one time is none.
    type("force bus c ab 1 1;run 2;force bus c ab 2 1;force bus c ab 0 2;break bus ab 3;break bus ab 0");
    EXPECT_EQ(behind("run 100", 1),
              (lines{"# !! BREAK on bus : \"ab\" ", "#    Value : \"0\" ", "#    time: 9.000", " RUN 100 "}));
    EXPECT_EQ(type("forget br ab;forget br ab;sta bre").back(), "# !! Error : NO BREAK Exists ? ");
    EXPECT_EQ(type("break bus 1").size(), 2U);  // a net called bus
}

TEST_F(values, of_tables_are_applied_and_checked) {
    file("in", "time a b d:b  # two nets and a bus\n0 1 0 00\n10, -, 1, 1z\n\n20 0z - -\n");
    file("out", "cycle y d\n0 - x\n1 0 0\n3 1 3\n6 0 -\n");
    EXPECT_EQ(type("apply table in"), (lines{" APPly TABle in ", "#   forces : 8 "}));
    type("check table out period 4 1");
    EXPECT_EQ(behind("run 30", 1),
              (lines{"# !! Error : CHECK : time = 1.000 : \"d\" expected x got 0 ",
                     "# !! Error : CHECK : time = 13.000 : \"d\" expected 3 got x ",
                     "# CHECK TABLE \"out\" : 6 compared, 2 differ, 0 to come ", " RUN 30 "}));
    EXPECT_EQ(tm_vext.num_errors, 2);
    EXPECT_EQ(behind("update l", 1).size(), 4U);
    for (const char* const wrong :
         {"a b c", "time q\n", "time a\n0 2\n", "time a\nx 1", "time a\n1 1 1", ""}) {
        file("wrong", wrong);
        EXPECT_EQ(behind("apply table wrong", 1)[0].substr(0, 13), "# !! Error : ") << wrong;
    }
}

TEST_F(values, of_a_vcd_are_applied_below_a_scope) {
    file("v",
         "$timescale 100 ps $end $scope module tb $end $var reg 1 ! a $end $var wire 1 # other $end\n"
         "$scope module dut $end $var wire 2 \" d [1:0] $end $upscope $end $upscope $end $enddefinitions "
         "$end\n"
         "#0 $dumpvars 0! bz \" 1# $end #50 1! b1 \" #100 x!\n");
    EXPECT_EQ(type("apply vcd v tb"), (lines{" APPly VCD v tb ", "#   forces : 3 ",
                                             "#   no net : \"tb/other\" ", "#   no net : \"tb/dut/d\" "}));
    EXPECT_EQ(type("apply vcd v tb.dut"), (lines{" APPly VCD v tb.dut ", "#   forces : 4 "}));
    type("list b a d[1] d[0];run 20;swi lis v;wri csv");
    EXPECT_EQ(text_of("kolv_list.csv"), "time,/a,/d[1],/d[0]\n0.0,0,x,x\n5.000,1,0,1\n10.000,x,0,1\n");
    EXPECT_EQ(behind("apply vcd v no", 1), lines{"# !! Error : no variable has the name of a net ? "});
}

}  // namespace

// Verilog as the input: what the recipe keeps, and what is said where yosys cannot go on.
#include "commands/language/interpreter.h"
#include "expansion.h"

namespace {

// A counter in a module of its own, written to a memory, a bus whose source is wider than it, and a check.
constexpr std::string_view top_text =
    "`include \"width.vh\"\n"
    "module soc(input clk, rst, en, d, output [`WIDTH-1:0] count, inout bus, output reg [1:0] word);\n"
    "  counter #(.STEP(`STEP)) low(.clk(clk), .rst(rst), .count(count));\n"
    "  reg [1:0] words[0:3];\n"
    "  assign bus = en ? !d + 1 : 1'bz;\n"
    "  always @(posedge clk) begin words[count[1:0]] <= {bus, en}; word <= words[2]; end\n"
    "  always @(posedge clk) assert(!rst || count < 8);\n"
    "endmodule\n";
constexpr std::string_view counter_text =
    "module counter #(parameter STEP = 1) (input logic clk, rst, output logic [2:0] count);\n"
    "  always_ff @(posedge clk) if (rst) count <= 0; else count <= count + STEP;\n"
    "endmodule\n";

class verilog : public expansion {
protected:
    static std::string files() {
        std::filesystem::create_directory("inc");
        file("inc/width.vh", "`define WIDTH 3\n");
        file("it's the; top.sv", top_text);
        file("-counter.sv", counter_text);
        return "--top soc \"it's the; top.sv\" ./-counter.sv -I inc -D STEP=3 -o design ";
    }
    static void clock() {
        force({{"clk", '0'}});
        force({{"clk", '1'}});
    }
};

TEST_F(verilog, becomes_a_design_with_its_hierarchy_memories_and_shared_nets) {
    ASSERT_EQ(run(files() + "--sheets"), 0) << text_of("said");
    EXPECT_NE(text_of("said").find("left out, since they check or print only: 1 $assert"), std::string::npos);
    load();
    EXPECT_EQ(found("/low/count[2]"), "/count[2]");
    force({{"rst", '1'}, {"en", '0'}, {"d", '1'}});
    EXPECT_EQ(value("bus"), 'x') << "nobody drives it";
    clock();
    force({{"rst", '0'}, {"en", '1'}});
    EXPECT_EQ(value("bus"), '1');
    for (const char* const count : {"011", "110", "001", "100"}) {
        clock();
        for (int k = 0; k < 3; ++k)
            EXPECT_EQ(value("count[" + std::to_string(k) + "]"), count[2 - k]) << count << k;
    }
    EXPECT_EQ(value("word[1]"), '1');  // stored at count 6, address 2
    EXPECT_NE(text_of("design.mem").find("words"), std::string::npos);
}

TEST_F(verilog, takes_another_recipe_and_chooses_the_top_itself) {
    file("flat.ys", "synth -flatten");
    files();
    ASSERT_EQ(run("--recipe flat.ys ./-counter.sv -o design"), 0) << text_of("said");
    EXPECT_EQ(text_of("said").find("macros"), text_of("said").find("0 macros") + 2) << text_of("said");
}

TEST_F(verilog, faults_are_told_by_yosys_and_leave_no_file) {
    file("a.v", "module a(input x, output y);\n  assign y = ;\nendmodule\n");
    file("b.v", "module b; c u(); endmodule\n");
    file("n.v", "// nothing\n");
    const std::string failed = "kolv-expand: yosys: failed: exit status 1, see its message above\n";
    const std::pair<std::string, std::string> rows[] = {
        {"a.v -o d", "a.v:2: ERROR: syntax error, unexpected ';'\n" + failed},
        {"b.v -o d",
         "ERROR: Module `\\c' referenced in module `\\b' in cell `\\u' is not part of the design.\n" +
             failed},
        {"--top 'b; c' b.v -o d", "kolv-expand: --top: wrong usage: \"b; c\", only letters, digits and _$\n"},
        {"-I 'a b' b.v -o d", "kolv-expand: -I: wrong usage: \"a b\", only letters, digits and _./+-\n"},
        {"none.v -o d", "kolv-expand: none.v: cannot read the file\n"},
        {"n.v -o d", "kolv-expand: yosys: missing value: no modules\n"},
    };
    file("said", "");
    const std::vector<std::string> before = names_of_files();
    for (const auto& [arguments, said] : rows) {
        EXPECT_EQ(run(arguments), 1) << arguments;
        EXPECT_EQ(text_of("said"), said) << arguments;
        EXPECT_EQ(names_of_files(), before) << arguments;
    }
}

TEST_F(verilog, needs_yosys_and_says_where_it_comes_from) {
    file("b.v", "module b; endmodule\n");
    const std::string path = getenv("PATH");
    setenv("PATH", "/nowhere", 1);
    EXPECT_EQ(run("b.v -o d"), 1);
    setenv("PATH", path.c_str(), 1);
    EXPECT_EQ(text_of("said"),
              "kolv-expand: yosys: cannot start the program: Verilog is read by Debian's package \"yosys\": "
              "apt-get install yosys\n");
}

}  // namespace

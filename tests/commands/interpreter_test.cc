// Lines, commands, keywords, and the row that each command selects.
#include "command_session.h"
#include "commands/language/command_line.h"
#include "commands/language/command_table.h"
#include "commands/language/substitution.h"

namespace {

using interpreter = command_session;

const std::string count_error(kol_count_invalid.error), second_error(kol_second_invalid.error),
    no_sheet("# !! Error :  No sheet in Context window ? ");

lines unknown(const std::string& command) {
    return {"#  !!! Unknown Command  ?? ", "# \"" + command + "\" "};
}

// clang-format off
TEST_F(interpreter, splits_a_line_into_commands_and_keywords) {
    expect_each({
        {"  har 1 ;  har,2  ;", {" HARdcopy 1 ", " HARdcopy 2 "}}, {"  ", {}}, {";har 1;;har 2", {" HARdcopy 1 "}},
        {"har 1; ;har 2", {" HARdcopy 1 "}},               {"har 1;,, ,;har 2", {" HARdcopy 1 "}},
        {"har 1; # har 2 ; har 3", {" HARdcopy 1 "}},      {"har , ,1,, ", {" HARdcopy 1 "}},
        {"har 'a;har 2  ", {" HARdcopy 'a;har 2 "}},       {"har '", {" HARdcopy ' "}},
        {"har \"a;b\";har 'c;\"d'", {" HARdcopy \"a;b\" ", " HARdcopy 'c;\"d' "}},
        {"har a'b;har c'd", {" HARdcopy a'b ", " HARdcopy c'd "}},
        {"har 'a''b'", {"# HARdcopy 'a' 'b' ", count_error}},
    });
    tm_string_record_t raw = tm_string("har 1?har?2?");
    raw.char_[5] = raw.char_[11] = '\n';
    raw.char_[9] = '\t';
    seen.shown.clear();
    kol_process_command(raw, kol_ext.ext_arg, kol_ext.top_var);
    EXPECT_EQ(seen.shown, (lines{" HARdcopy 1 ", " HARdcopy 2 "}));
}

TEST_F(interpreter, selects_commands_by_prefix_and_exact_words) {
    const std::string no_radix = "# !! Error:2nd parameter invalid(should be:\"Hex\",\"Bin\",\"Dec\")";
    for (const char* word : {"FOR A ", "BY", "QUITS", "MARKS", "GRID", "SCALE TRACE", "\"har\" 1", "$CX1", "$CU12",
                             "$VPTU30"})
        EXPECT_EQ(type(word), unknown(word));
    expect_each({
        {"FORC A 1 0", {"# FORCE A 1 0 ", count_error}},   {"forcex,A,1,0", {"# FORCE A 1 0 ", count_error}},
        {"bye 1", {"# BYE 1 ", count_error}},              {"MARK RECTANGLE 1", {"# MARK RECTangle 1 ", count_error}},
        {"list objects", {"# LIST OBJects ", no_sheet}},   {"LIST OBJ X", {"# LIST OBJ X ", no_radix}},
        {"GRID off", {" GRId OFF "}},                      {"GRID offs 5", {"# GRId offs 5 ", count_error}},
        {"$vptl85;$CR4;$cl1", {}}});
    EXPECT_EQ(tm_vext.num_errors, 0);  // a rejected command is not an error of the session
}
// clang-format on

// A line that selects the row.
std::string sample(const kol_command_row_t& row) {
    if (row.when == kol_when::cursor_step) return "$cd1";
    if (row.when == kol_when::viewport_step) return "$vptr20";
    std::string line;
    for (const char* const prefix : row.prefix)
        if (prefix != nullptr) line += prefix + std::string(" ");
    if (row.when == kol_when::four_keywords) line += "a 1";
    return line + (row.when == kol_when::second_is_o ? "off" : "");
}

TEST_F(interpreter, finds_every_row_of_the_table) {
    for (const kol_command_row_t& row : kol_command_table()) {
        EXPECT_EQ(kol_find_command(kol_split_keywords(tm_string(sample(row)))), &row) << sample(row);
    }
}

TEST_F(interpreter, substitutes_parameters_in_the_places_of_the_command_as_it_came) {
    kol_array_param_t values;
    values[0] = tm_string("one");
    values[1] = tm_string("$ARG1");
    values[11] = tm_string("twelve");
    values[29] = tm_string(std::string(190, 'z'));
    const std::string invalid = "# Found invalid $ARG(n) in command line ";
    // The first line is the command afterwards.
    // clang-format off
    for (const typed_case& c : std::vector<typed_case>{
             {"run $arg1,$Arg12 x", {"run one,twelve x"}},  {"run $ARG4x$ARG", {"run x$ARG"}},
             {"$ARG4$ARG1", {"$ARG1"}},         // the next place lies behind the '$'
             {"run $ARG2 a", {"run $ARG1 a"}},  // the same for an inserted reference
             {"$ARG12 $ARG1", {"twelve one"}},  {"$ARG12$ARG12$ARG1", {"twelvetwelveone"}},
             {"$ARG30 $ARG1", {std::string(190, 'z') + " $ARG1"}},  // pushed beyond the last place
             {"a $ARG1 $ARG31 $ARG1", {"a one $ARG31 $ARG1", "# Error on : \"a one $ARG31 $ARG1\" ", invalid}},
             {"$ARG0", {"$ARG0", "# Error on : \"$ARG0\" ", invalid}},
             {"0123456789 $ARG30 tail", {"0123456789 " + std::string(188, 'z')}}}) {
        // clang-format on
        seen.shown.clear();
        tm_string_record_t command = tm_string(c.typed);
        kol_substitute(command, "$ARG", values);
        seen.shown.emplace(seen.shown.begin(), tm_view(command));
        EXPECT_EQ(seen.shown, c.shown) << c.typed;
    }
}

TEST_F(interpreter, assigns_and_reads_variables) {
    expect_each({
        {"ASSIGN $VAR2 abc;har $var2", {" ASSIgn $VAR2 abc ", " HARdcopy abc "}},
        {"assi $var12 'a b';har $VAR12", {" ASSIgn $var12 'a b' ", " HARdcopy 'a b' "}},
        {"ASSIGN $VAR3 $VAR2;har x$VAR3", {" ASSIgn $VAR3 $VAR2 ", " HARdcopy x$VAR2 "}},
        {"ASSIGN $VAR2;har x$VAR2", {" ASSIgn $VAR2 ", " HARdcopy x "}},
        {"ASSIGN;har 1", {"# ASSIgn ", count_error, " HARdcopy 1 "}},
        {"ASSIGN $VARx a;har 1", {"# ASSIgn $VARx a ", second_error}},
        {"ASSIGN $VAR1x a;har 1", {" HARdcopy 1 "}},
        {"READLN $VAR4 time 70;har $VAR4", {" READln $VAR4 time 70 ", " HARdcopy 70 "}},
        {"READLN $VAR31 time 70;har 1", {"# READln $VAR31 time 70 ", second_error, " HARdcopy 1 "}},
        {"READLN $VAR4 'which time'", {}},
    });
    EXPECT_EQ(seen.entry, " READln $VAR4 'which time' ");
    EXPECT_EQ(tm_view(tm_vext.str_cmd), seen.entry);
}

TEST_F(interpreter, ends_the_session_and_the_line) {
    EXPECT_EQ(type("har 1;BYE;har 2"), (lines{" HARdcopy 1 ", " BYE "}));
    EXPECT_TRUE(tm_vext.end_flag && kol_ext.save_to_do && seen.ends == 1);
    tm_vext.end_flag = false;
    EXPECT_EQ(type("QUIT;har 2"), lines{});
    EXPECT_TRUE(tm_vext.end_flag && !kol_ext.save_to_do && seen.ends == 2);
}

TEST_F(interpreter, scrolls_the_list_by_cursor_steps) {
    kol_ext.end_time = 5000;
    const auto time_after = [](const char* typed) { return type(typed), kol_ext.list_cur_time; };
    EXPECT_EQ(time_after("$CD1"), 50);
    EXPECT_EQ(time_after("$cd4"), 250);
    EXPECT_EQ(time_after("$CU1;$CL1;$VPTD5"), 200);
    tm_vext.numpage = tm_page::context;
    EXPECT_EQ(time_after("$CD1"), 200);
}

}  // namespace

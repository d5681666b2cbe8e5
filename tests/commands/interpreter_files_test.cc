// Command files, programs outside, procedures by name.
#include "command_session.h"

namespace {

using interpreter_files = command_session;

TEST_F(interpreter_files, runs_a_command_file_with_parameters_and_variables_of_its_own) {
    const std::string name =
        file("outer", "har $ARG1\n\nhar x$VAR2,\nASSIGN $VAR2 inner\nhar $VAR2\nhar $ARG3");
    type("ASSIGN $VAR2 mine");
    EXPECT_EQ(type("DO " + name + " 7 b;har $VAR2"),
              (lines{"# DO " + name + " 7 b ", " HARdcopy 7 ", " HARdcopy x ", " ASSIgn $VAR2 inner ",
                     " HARdcopy inner ", " HARdcopy ", "# End of DO ", " HARdcopy mine "}));
    EXPECT_EQ(tm_vext.do_ind + tm_vext.num_errors, 0);
}

TEST_F(interpreter_files, nests_command_files_ten_deep) {
    const std::string self = file("self", "DO " + (folder / "self").string() + "\n");
    const lines shown = type("DO " + self);
    ASSERT_EQ(shown.size(), 22U);  // ten begin, one is refused, ten end
    EXPECT_EQ(shown[11], "# !!! Error : too many level of DO FILE : \"" + self + "\" ");
    for (int i = 0; i < 12; ++i) EXPECT_EQ(type("DO none")[1], "# !!! Error : file not found : \"none\" ");
    EXPECT_EQ(tm_vext.num_errors, 13);
    tm_vext.do_ind = -3;
    const std::string directory = folder.string();
    EXPECT_EQ(type("DO " + directory),
              (lines{"# DO " + directory + " ", "# !!! Error : file not found : \"" + directory + "\" "}));
    EXPECT_EQ(tm_vext.do_ind, 0);
}

TEST_F(interpreter_files, reads_long_and_awkward_lines_of_a_command_file) {
    const std::string longest = "har " + std::string(194, 'a'), shown = " HARdcopy " + std::string(88, 'a');
    const std::string name = file("long", longest + "\n" + longest + "b;har lost\nhar\t1\r\nhar 2");
    EXPECT_EQ(type("DO " + name),
              (lines{"# DO " + name + " ", shown, "# !! Warning : line longer than 198 characters is cut ",
                     shown, " HARdcopy 1 ", " HARdcopy 2 ", "# End of DO "}));
}

TEST_F(interpreter_files, stops_a_command_file_at_control_a_and_behind_the_end) {
    const std::string name = file("three", "har 1\nhar 2\nhar 3\n");
    seen.keys_before_control_a = 2;
    EXPECT_EQ(type("DO " + name),
              (lines{"# DO " + name + " ", " HARdcopy 1 ", " HARdcopy 2 ", "# End of DO "}));
    const std::string last = file("last", "har 1\nBYE\nhar 2\n");
    const std::string caller = file("caller", "DO " + last + "\nhar 3\n");
    EXPECT_EQ(type("DO " + caller), (lines{"# DO " + caller + " ", "# DO " + last + " ", " HARdcopy 1 ",
                                           " BYE ", "# End of DO ", "# End of DO "}));
}

TEST_F(interpreter_files, interprets_what_a_program_prints) {
    type("ASSIGN $VAR1 mine");
    tm_vext.base_point = {7, 9};
    const std::string call =
        "printf 'har x$VAR1\\n\\n   Pause\\ncontinue\\nASSIGN $VAR1 his\\nhar\\t$VAR1  \\nFOO'";
    EXPECT_EQ(type("! " + call + ";har $VAR1"),
              (lines{"# " + call + " ", " HARdcopy x ", " ASSIgn $VAR1 his ", " HARdcopy his ",
                     "#  !!! Unknown Command  ?? ", "# \"FOO\" ", "# End of Exec ", " HARdcopy mine "}));
    EXPECT_EQ((numbers{seen.flushes, tm_vext.obj_pos.x}), (numbers{3, 7}));
    seen.keys_before_control_a = 1;
    EXPECT_EQ(type("!printf 'har 1\\nhar 2\\nhar 3\\n'")[2], " HARdcopy 3 ");
    std::filesystem::permissions(file("run", "#!/bin/sh\necho har $1"), std::filesystem::perms::owner_all);
    EXPECT_EQ(type("!  $QUILLARN/run a"),
              (lines{"# " + folder.string() + "/run a ", " HARdcopy a ", "# End of Exec "}));
}

TEST_F(interpreter_files, says_where_a_command_file_cannot_be_read_on) {
    const std::string name = "/proc/self/mem";  // opens, and has nothing at its begin
    EXPECT_EQ(type("DO " + name),
              (lines{"# DO " + name + " ", "# !!! Error : file can not be read : \"" + name + "\" ",
                     "# !!! line 1 : Input/output error ", "# End of DO "}));
    EXPECT_EQ(tm_vext.num_errors, 1);
}

TEST_F(interpreter_files, notices_programs_that_are_not_there_and_lines_that_do_not_end) {
    const std::string none = folder.string() + "/none 2>&-", kept = file("kept", "no program");
    for (const std::string& program : {none, kept + " 2>&-"})
        EXPECT_EQ(type("! " + program), (lines{"# !!! Error :  Command not found or not executable ?? ",
                                               "# !!!  \"" + program + "\" ",
                                               "!! Warning : Invalid command to exec ....", program}));
    EXPECT_EQ(tm_vext.num_errors, 2);
    EXPECT_EQ(type("! exit 3"), (lines{"# exit 3 ", "# End of Exec "}));
    EXPECT_EQ(type("! cat /dev/zero"),
              (lines{"# cat /dev/zero ", "# !!! Error : line without end ", "# End of Exec "}));
}

TEST_F(interpreter_files, refuses_programs_that_cannot_run) {
    const std::string invalid = "!! Warning : Invalid command to exec ....", long_text(509, 'x');
    EXPECT_EQ(type("har 1;!;har 2"), (lines{" HARdcopy 1 ", invalid, "", " HARdcopy 2 "}));
    ::testing::internal::CaptureStdout();
    kol_exec_cmd(long_text.c_str());
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "# !!! Error :  Invalid Command ??  len:509 '" + long_text + "'\n");
    const std::string mark = file("mark", ""), remove = "SYSTEM 'rm " + mark + "'";
    tm_shell_commands_allowed = false;
    const std::string no_shell =
        "# !! Error : programs are not started here ( --no-shell or KOLV_NO_SHELL ) ";
    EXPECT_EQ(type("! echo har"), lines{no_shell});
    EXPECT_EQ(tm_vext.num_errors, 1);
    EXPECT_EQ(type(remove), (lines{"# SYSTem 'rm " + mark + "' ", no_shell}));
    EXPECT_TRUE(std::filesystem::exists(mark));
    tm_shell_commands_allowed = true;
    type(remove);
    EXPECT_FALSE(std::filesystem::exists(mark));
}

}  // namespace

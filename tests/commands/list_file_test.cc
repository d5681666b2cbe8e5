// WRITE LIST.
#include "design_session.h"

namespace {

class write_list : public design_session {
protected:
    void SetUp() override {
        design_session::SetUp();
        std::filesystem::create_directories(folder);
        tm_vext.nb_arg_comline = 2;
        tm_vext.argcomline[1] = tm_string(folder.string());
    }
    std::string text_of(const std::string& name) const {
        std::ifstream stream(folder / name);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
};

TEST_F(write_list, writes_what_a_run_left_in_the_histories) {
    type("def bus c ab a b;list b y ab;force a a 1 0;force a b 0 0;force a b 1 10;run 40");
    const std::string header =
        "               y \n                  ab \n               \n               \n\n\n";
    EXPECT_EQ(type("write list"), lines{" WRIte LISt "});
    EXPECT_EQ(text_of("kolv_list_result"), header +
                                               "         0.0  iU 1S0S\n"
                                               "       1.000  0S 1S0S\n"
                                               "      10.000  0S 1S1S\n"
                                               "      12.000  1S 1S1S\n"
                                               "      40.000  1S 1S1S\n");
    EXPECT_EQ(type("wri lis out.txt 20 39"), lines{" WRIte LISt out.txt 20 39 "});
    EXPECT_EQ(text_of("out.txt"), header + "      20.000  1S 1S1S\n");
    type("wri lis out.txt 10 5");
    EXPECT_EQ(text_of("out.txt"), header);
}

TEST_F(write_list, a_rejected_command_leaves_the_file_alone_and_a_full_disk_is_reported) {
    file("kept", "old");
    type("wri lis kept 1;wri lis kept -1 x;wri lis kept 1 2x");
    EXPECT_EQ(text_of("kept"), "old");
    EXPECT_EQ(type("wri lis kept"), lines{" WRIte LISt kept "});
    EXPECT_EQ(text_of("kept"), "");  // nothing is listed
    if (::access("/dev/full", W_OK) != 0) GTEST_SKIP();
    std::filesystem::create_symlink("/dev/full", folder / "full");
    type("list h a");
    EXPECT_EQ(type("wri lis full"), (lines{"# WRIte LISt  full ", " !! impossible to open : ",
                                           " !! \"" + (folder / "full").string() + "\" "}));
}

}  // namespace

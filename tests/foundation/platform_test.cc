#include "foundation/platform.h"

#include <unistd.h>

#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/procedures.h"
#include "foundation/shell.h"
#include "records.h"

namespace {

TEST(Platform, modifiers_reduce_to_one) {
    // clang-format off
    const std::pair<unsigned, unsigned> rows[] = {
        {0, 0}, {1, 1}, {2, 1}, {16, 1}, {4, 4}, {5, 4}, {8, 8}, {32, 8}, {64, 0}, {9, 1}, {255, 4}};
    // clang-format on
    for (const auto& [state, modifier] : rows) EXPECT_EQ(x_reduce_modifiers(state), modifier) << state;
    for (std::uint32_t key = 65460; key < 65490; ++key)
        EXPECT_EQ(x_is_function_key(key), key >= 65470 && key <= 65481);
}

TEST(Platform, delays_and_texts_are_bounded) {
    for (auto* delay : {xdelayms, xdelayms2})
        EXPECT_END(delay(30001), testing::ExitedWithCode(1),
                   "^ !! Error in xdelayms : TOO long : delayms = 30001    \n$");
    testing::internal::CaptureStdout();
    EXPECT_EQ(xstrlen(many('V', 99).c_str()) + xstrlen(many('V', 100).c_str()), 2 * 99);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              " !!! Error in xstrlen(c) : len= 99  '" + many('V', 100) + "'  \n");
}

TEST(Platform, procedures_are_called_by_their_exact_name) {
    x_register_procedure("kolp_swap",
                         [](std::int16_t* count, x_arg_array& args) { std::swap(args[0], args[--*count]); });
    for (const char* other : {"kolp_swa", "KOLP_SWAP"})
        EXPECT_EQ(xm_get_extid_offset("kolv", other), nullptr);
    x_arg_array args{tm_string("a"), tm_string("b")};
    xprocargexe(xm_get_extid_offset("kolv", "kolp_swap"), 2, args);
    EXPECT_EQ(text_of(args[0]) + text_of(args[1]), "ba");
}

std::vector<std::string> seen;

TEST(Shell, lines_reach_the_window_and_the_transcript) {
    const std::string path = testing::TempDir() + "kolv_transcript_" + std::to_string(getpid()),
                      l98 = many('l', 98), c100 = many('c', 100);
    const tm_stream transcript(std::fopen(path.c_str(), "w"));
    tm_vext.cursessfile = transcript.get();
    tm_shell.append_session = [](std::string_view line) { seen.push_back("line:" + std::string(line)); };
    tm_shell.set_command_entry = [](std::string_view text) { seen.push_back("entry:" + std::string(text)); };
    tm_display_list(tm_string(l98 + "x"));
    tm_display("a\tb\xff" + c100);
    tm_display_list(tm_string(""));
    tm_display_cmd(tm_string(""));
    tm_display_cmd(tm_string(c100 + "x"));
    const std::string odd = "a b " + many('c', 94);
    EXPECT_EQ(seen, (std::vector<std::string>{"line:" + l98, "line:" + odd, "line:", "entry:" + c100}));
    EXPECT_EQ(content_of(path), l98 + "\n" + odd + "\n\n" + c100 + "\n");
    tm_vext.cursessfile = nullptr;
    tm_shell = tm_default_shell;
}

TEST(Shell, the_orderly_end_keeps_its_order) {
    seen.clear();
    tm_shell.finalize = [] { seen.push_back("finalize"); };
    tm_shell.abandon_display = [] { seen.push_back("abandon"); };
    tm_shell.end_process = [] { seen.push_back("end"); };
    motif_main_quit();
    tm_vext.init_done = true;
    motif_main_quit();
    EXPECT_EQ(seen, (std::vector<std::string>{"finalize", "end", "finalize", "abandon", "end"}));
    tm_shell = tm_default_shell;
    EXPECT_EXIT((setsid(), motif_main_quit()), testing::KilledBySignal(SIGKILL), "");
}

}  // namespace

#include "foundation/status.h"

#include <unistd.h>

#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/shell.h"
#include "records.h"

namespace {

const std::string trace_path = testing::TempDir() + "kolv_fatal_trace_" + std::to_string(getpid());

void end_fatally(const std::string& directory, bool started) {
    tm_shell_commands_allowed = false;
    tm_vext.all_init_done = started;
    tm_vext.init_done = true;
    tm_vext.nb_arg_comline = 2;
    tm_vext.argcomline[1] = tm_string(directory);
    tm_vext.debugfile = std::fopen(trace_path.c_str(), "w");
    tm_shell.abandon_display = [] {
        std::puts(tm_vext.debugfile == nullptr ? "closed" : "open");
        tm_fatal(20);
    };
    tm_trace("ends: %d", 7);
    tm_fatal(file_data_invalid);
}

TEST(Status, fatal_end_prints_saves_and_closes_once) {
    const std::string first = "ends: 7\n",
                      hook = first + " !! cmd_system : \"/users/quillarn/bin/save_context ";
    const std::string printed =
        "^ .. error in tm_package  code : 19\n .. error  :              file_data_invalid\nclosed\n"
        " .. error in tm_package  code : 20\n .. error  :                       eof_file\n$";
    // clang-format off
    const std::tuple<std::string, bool, std::string> rows[] = {
        {"/d", false, first}, {"/d", true, hook + "/d\"\n"}, {"", true, first}, {many('d', 164), true, first},
        {many('d', 163), true, hook + many('d', 163) + "\"\n"}};
    // clang-format on
    for (const auto& [directory, started, trace] : rows) {
        EXPECT_FATAL(end_fatally(directory, started), printed);
        EXPECT_EQ(content_of(trace_path), trace);
    }
    EXPECT_EXIT(_OutMem(), testing::ExitedWithCode(1),
                "^ \n!!  Error: _OutMem\\(tm_mod0\\) : Malloc Out of memory .\n$");
}

TEST(Context, arguments_are_cut_at_control_bytes_and_dropped_when_too_long) {
    std::string texts[] = {"kolv", "ab\x01z", "caf\xc3\xa9", many('p', 198), many('q', 199)};
    char* argv[41];
    for (int i = 0; i < 41; ++i) argv[i] = texts[i < 5 ? i : 0].data();
    tm_store_arg(41, argv);
    const std::tuple<int, std::string, int> rows[] = {{1, "kolv", 0},   {2, "ab", 0}, {3, "caf", 0},
                                                      {4, texts[3], 0}, {5, "", 0},   {40, "kolv", 0},
                                                      {0, "", -1},      {41, "", -1}};
    for (const auto& [position, text, expected_status] : rows) {
        tm_string_record_t s = tm_string("left over");
        STATUS_T status;
        tm_get_arg(position, s, status);
        EXPECT_EQ(std::pair(text_of(s), status.all), std::pair(text, expected_status)) << position;
    }
}

}  // namespace

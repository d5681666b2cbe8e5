#include "foundation/files.h"

#include <cstdlib>
#include <filesystem>

#include "foundation/platform.h"
#include "records.h"

namespace {

namespace fs = std::filesystem;

class Files : public testing::Test {
protected:
    std::string dir = testing::TempDir() + "kolv_files_XXXXXX";
    void SetUp() override { ASSERT_NE(mkdtemp(dir.data()), nullptr); }
    void TearDown() override { fs::remove_all(dir), unsetenv("QUILLARN"); }
};

TEST_F(Files, installation_root_replaces_its_name_in_front) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {nullptr, "$quillarn/x", "/users/quillarn/x"},
        {"", "$QUILLARN/x", "/users/quillarn/x"},
        {"/a/long/base", "$QuillarN/a", "/a/long/base/a"},
        {"/opt/q", "/$QUILLARN/a", "/$QUILLARN/a"}};
    for (const auto& [root, path, resolved] : rows) {
        root == nullptr ? unsetenv("QUILLARN") : setenv("QUILLARN", root, 1);
        EXPECT_EQ(tm_resolve_path(tm_string(path)), resolved);
    }
    EXPECT_EQ(tm_resolve_path(tm_string(many('p', 199))), many('p', 192));
}

TEST_F(Files, streams_and_descriptors_open_by_mode) {
    setenv("QUILLARN", dir.c_str(), 1);
    const tm_string_record_t path = tm_string("$QUILLARN/new");
    std::FILE* file = nullptr;
    bool ok = true;
    tm_popen_file(path, 'R', true, file, ok);
    EXPECT_TRUE(!ok && !fs::exists(dir + "/new"));
    tm_popen_file(path, 'w', false, file, ok);
    ASSERT_TRUE(ok);
    std::fputs("text", file), std::fclose(file);
    EXPECT_EQ(fs::status(dir + "/new").permissions() & fs::perms(0117), fs::perms::none);
    tm_popen_file(path, 'r', true, file, ok);
    EXPECT_EQ(std::getc(tm_stream(file).get()), 't');
    EXPECT_FATAL(tm_popen_file(path, 'A', true, file, ok), "code : 19\n");
    tm_popen_file(tm_string(dir), 'R', true, file, ok);
    EXPECT_FALSE(ok) << "a directory is no file";
    // A running program can be read, but not written.
    EXPECT_END(tm_popen_file(tm_string("/proc/self/exe"), 'W', true, file, ok), testing::ExitedWithCode(0),
               "^\\?\\? tm_popen_file : impossible to open file_name :'/proc/self/exe' \\(for W\\) \n$");
    int fd = -1;
    tm_popen_filei(path, 'W', true, fd, ok);
    EXPECT_EQ(xfwrite(fd, "x", 1) + xfclose(fd), -1) << "read-only";
    tm_popen_filei(path, 'R', false, fd, ok);
    EXPECT_EQ(fs::file_size(dir + "/new") + static_cast<unsigned>(xfclose(fd)), 0U);
    tm_popen_filei(tm_string(dir + "/none/x"), 'W', false, fd, ok);
    EXPECT_FALSE(ok);
}

TEST_F(Files, system_drops_enclosing_quotes_and_refuses_long_commands) {
    const std::string target = dir + "/made", command = "echo done > " + target;
    const auto makes_file = [&](std::string text, std::size_t length) {
        text.resize(length, ' ');
        tm_system(tm_string(text));
        return fs::remove(target);
    };
    for (const std::string& text : {command, "'" + command + "'", "\"" + command + "\""})
        EXPECT_TRUE(makes_file(text, text.size())) << text;
    EXPECT_TRUE(!makes_file("'", 1) && makes_file(command, 198) && !makes_file(command, 199));
    tm_shell_commands_allowed = false;
    EXPECT_FALSE(makes_file(command, command.size()));
    tm_shell_commands_allowed = true;
}

std::vector<std::string> lines_of(const std::string& path) {
    const tm_stream in(std::fopen(path.c_str(), "r"));
    std::vector<std::string> lines;
    for (bool cut = false; !tm_no_more_lines(in.get());) {
        tm_string_record_t line = tm_string("left over");
        std::int32_t pos = 99;
        tm_read_one_line(in.get(), line, pos, cut);
        lines.push_back((cut ? ">" : "") + text_of(line) + (pos == 1 ? "" : "!"));
    }
    return lines;
}

TEST_F(Files, lines_are_read_cleaned_and_cut) {
    const std::string l198 = many('l', 198);
    // clang-format off
    const std::pair<std::string, std::vector<std::string>> rows[] = {
        {"a\n\nb\n", {"a", "", "b"}}, {"a\nb", {"a", "b"}}, {"\n", {""}}, {"", {""}}, {l198, {l198}},
        {{"t\tb\r\n\xc3(\x7f\0z\n", 11}, {"t b ", " (  z"}}, {l198 + "\nb\n", {l198, "b"}},
        {l198 + "x\nb", {">" + l198, "b"}}, {l198 + l198 + l198, {">" + l198}}};
    // clang-format on
    for (const auto& [text, lines] : rows) {
        std::ofstream(dir + "/lines") << text;
        EXPECT_EQ(lines_of(dir + "/lines"), lines) << text;
    }
    EXPECT_EQ(lines_of(dir), (std::vector<std::string>{""})) << "a directory is not read for ever";
}

TEST(Dates, calendar_in_utc) {
    // clang-format off
    const std::pair<std::int64_t, std::vector<int>> rows[] = {
        {0, {1970, 1, 1, 0, 0}},        {63071999, {1971, 12, 31, 23, 59}}, {63072000, {1972, 1, 1, 0, 0}},
        {94694400, {1973, 1, 1, 0, 0}}, {94694399, {1972, 12, 31, 23, 59}}, {1740787200, {2025, 3, 1, 0, 0}},
        {1709214300, {2024, 2, 29, 13, 45}}, {4107542400, {2100, 2, 29, 0, 0}}};
    // clang-format on
    for (const auto& [seconds, date] : rows) {
        std::int16_t day = 0, month = 0, year = 0, hour = 0, minute = 0;
        tm_date_of(seconds, day, month, year, hour, minute);
        EXPECT_EQ((std::vector<int>{year, month, day, hour, minute}), date) << seconds;
    }
}

}  // namespace

// Files that are written: whole or not there, by nobody else, through no link.
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cerrno>
#include <filesystem>

#include "foundation/context.h"
#include "foundation/ends.h"
#include "foundation/growing_file.h"
#include "foundation/replacement.h"
#include "foundation/shell.h"
#include "foundation/transcript.h"
#include "records.h"

namespace {

namespace fs = std::filesystem;

class written_files : public testing::Test {
protected:
    written_files() {
        EXPECT_NE(mkdtemp(dir.data()), nullptr);
        umask(022);
    }
    ~written_files() override { fs::remove_all(dir); }
    std::string path(const std::string& name) const { return dir + "/" + name; }
    std::string put(const std::string& name, const std::string& text) const {
        std::ofstream(path(name)) << text;
        return path(name);
    }
    std::size_t count() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(dir), {}));
    }
    static int mode_of(const std::string& file) {
        struct stat found {};
        return ::stat(file.c_str(), &found) == 0 ? static_cast<int>(found.st_mode & 07777) : -1;
    }
    // A program that writes a file and is killed once the parent has looked at it.
    template <typename Look>
    void while_another_writes(const std::string& file, Look look) const {
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        if (child == 0) {
            tm_replacement written(file);
            std::fputs("half", written.stream());
            std::fflush(written.stream());
            [[maybe_unused]] const auto told = ::write(ready[1], "x", 1);
            pause();
        }
        char told = 0;
        ASSERT_EQ(::read(ready[0], &told, 1), 1);
        look();
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        for (const int end : ready) close(end);
    }

    std::string dir = testing::TempDir() + "kolv_written_XXXXXX";
};

TEST_F(written_files, take_the_place_and_the_mode_of_what_was_there) {
    const std::string old = put("old", "before");
    for (const int mode : {0644, 0600, 0755, 04711}) {
        chmod(old.c_str(), static_cast<mode_t>(mode));
        EXPECT_TRUE(tm_replacement(old).write(std::to_string(mode)));
        EXPECT_EQ(std::pair(content_of(old), mode_of(old)), std::pair(std::to_string(mode), mode & 0777));
    }
    EXPECT_TRUE(tm_replacement(path("fresh")).write("") && tm_replacement(path("mine"), 0606).write(""));
    EXPECT_EQ(std::pair(mode_of(path("fresh")), mode_of(path("mine"))), std::pair(0644, 0604));
    fs::create_symlink(old, path("link"));
    EXPECT_TRUE(tm_replacement(path("link")).write("through"));
    EXPECT_EQ(content_of(old), "through");
    EXPECT_TRUE(fs::is_symlink(path("link")));
    const std::string long_name(255, 'n');
    EXPECT_TRUE(tm_replacement(path(long_name)).write("long"));
    EXPECT_EQ(content_of(path(long_name)), "long");
    EXPECT_EQ(count(), 5U);
}

TEST_F(written_files, refuse_what_is_no_file) {
    fs::create_directory(path("directory"));
    ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
    fs::create_symlink("/dev/null", path("device"));
    const std::pair<const char*, int> rows[] = {{"directory", EISDIR},
                                                {"fifo", ENXIO},
                                                {"device", ENXIO},
                                                {"none/file", ENOENT},
                                                {"fifo/x", ENOTDIR}};
    for (const auto& [name, error] : rows) {
        tm_replacement file(path(name));
        EXPECT_TRUE(!file.is_open() && !file.write("x")) << name;
        EXPECT_EQ(file.error(), error) << name;
    }
    EXPECT_EQ(count(), 3U);
}

TEST_F(written_files, leave_the_old_file_until_they_are_whole) {
    const std::string old = put("old", "before");
    std::fputs("after", tm_replacement(old).stream());
    EXPECT_EQ(content_of(old), "before");
    const auto with_little_room = [&] {
        tm_begin_process();
        const rlimit room{20, 20};
        setrlimit(RLIMIT_FSIZE, &room);
        const auto error_of = [&](std::size_t size) {
            tm_replacement file(old);
            return file.write(many('x', size)) ? 0 : file.error();
        };
        std::exit(error_of(30000) == EFBIG && error_of(100) == EFBIG ? 0 : 1);
    };
    EXPECT_EXIT(with_little_room(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(content_of(old), "before");
    EXPECT_EQ(count(), 1U);
}

TEST_F(written_files, that_a_killed_program_left_go_with_the_next_of_that_name) {
    const std::string file = put("file", "before");
    const auto beside = [&] { return count() - 1; };
    while_another_writes(file, [&] {
        EXPECT_EQ(beside(), 1U);
        EXPECT_TRUE(tm_replacement(file).write("first"));
        EXPECT_EQ(beside(), 1U) << "the other one is still writing";
    });
    EXPECT_EQ(std::pair(content_of(file), beside()), std::pair(std::string("first"), std::size_t{1}));
    put("file.new-kept", ""), put("file2.new-0123456789abcdef", "");
    EXPECT_TRUE(tm_replacement(file).write("second"));
    EXPECT_EQ(std::pair(content_of(file), beside()), std::pair(std::string("second"), std::size_t{2}));
}

TEST_F(written_files, that_grow_follow_no_link_and_know_their_owner) {
    const std::string victim = put("victim", "precious");
    fs::create_symlink(victim, path("log"));
    tm_stream log = tm_create_log(path("log"), true);
    ASSERT_NE(log, nullptr);
    std::fputs("line\n", log.get()), std::fflush(log.get());
    EXPECT_EQ(std::pair(content_of(victim), content_of(path("log"))),
              std::pair(std::string("precious"), std::string("line\n")));
    EXPECT_EQ(std::pair(tm_create_log(path("log"), true), errno), std::pair(tm_stream(), EWOULDBLOCK));
    EXPECT_EQ(content_of(path("log")), "line\n");
    log.reset();
    EXPECT_NE(tm_create_log(path("log"), true), nullptr);
    EXPECT_EQ(content_of(path("log")), "");
    ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
    for (const std::string& name : {path("fifo"), dir, path("none/log"), std::string("/dev/null")})
        EXPECT_EQ(tm_create_log(name), nullptr) << name;
}

TEST_F(written_files, each_program_has_a_transcript_of_its_own) {
    std::string names;
    std::vector<tm_stream> open;
    const auto open_one = [&] {
        EXPECT_TRUE(tm_open_transcript(tm_string(dir)));
        open.emplace_back(std::exchange(tm_vext.cursessfile, nullptr));
        names += text_of(tm_vext.cursessname).substr(dir.size()) + " ";
    };
    open_one(), open_one(), open_one();
    open[1].reset();
    open_one();
    EXPECT_EQ(names, "/current_session /current_session_2 /current_session_3 /current_session_2 ");
    EXPECT_FALSE(tm_open_transcript(tm_string(dir + "/none")));
}

TEST_F(written_files, a_transcript_that_fails_is_one_error_and_no_end) {
    static int said = 0;
    tm_vext.cursessfile = std::fopen("/dev/full", "w");
    tm_vext.num_errors = 0;
    tm_shell.append_session = [](std::string_view line) { said += line.find("transcript") != line.npos; };
    testing::internal::CaptureStderr();
    for (int line = 0; line < 3; ++line) tm_display("a line");
    const std::string on_terminal = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::tuple(said, tm_vext.num_errors, std::count(on_terminal.begin(), on_terminal.end(), '\n')),
              std::tuple(1, 1, 1));
    std::fclose(std::exchange(tm_vext.cursessfile, nullptr));
    tm_shell = tm_default_shell;
}

TEST_F(written_files, names_reach_no_shell) {
    tm_run_program("/usr/bin/touch", path("a;touch b"));
    EXPECT_TRUE(fs::exists(path("a;touch b")));
    EXPECT_EQ(count(), 1U);
}

#ifndef KOLV_SANITIZE  // which refuse the size
TEST(memory, that_cannot_be_had_ends_the_program_with_one_line) {
    const auto take_all = [] {
        tm_begin_process();
        volatile std::size_t size = PTRDIFF_MAX;
        std::exit(::operator new(size) == nullptr ? 2 : 3);
    };
    EXPECT_EXIT(take_all(), testing::ExitedWithCode(1), "^ \n!!  Error: [^\n]* Out of memory .\n$");
}
#endif

}  // namespace

// Starting a program, and how it ended.
#include "expand/programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "foundation/files.h"

extern char** environ;

namespace {

void redirect(posix_spawn_file_actions_t& actions, int from, const std::string& file) {
    if (file.empty())
        posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, from);
    else
        posix_spawn_file_actions_addopen(&actions, from, file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
}

// The exit status as wait gives it, or -1.
int spawn(const xp_program& program) {
    std::vector<char*> argv;
    for (const std::string& argument : program.arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    redirect(actions, STDOUT_FILENO, program.output);
    redirect(actions, STDERR_FILENO, program.errors);
    pid_t child = 0;
    const int fault = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    errno = fault;
    if (fault != 0) return -1;
    int status = -1;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return -1;
    return status;
}

// What the program said, on one line.
std::string complaint(const std::string& file) {
    std::string text;
    tm_stream stream(std::fopen(file.c_str(), "rb"));
    for (int c = 0; stream && text.size() < 200 && (c = std::fgetc(stream.get())) != EOF;)
        if (c != '\n' || !text.empty()) text += c == '\n' ? ' ' : static_cast<char>(c);
    while (text.ends_with(' ')) text.pop_back();
    return text;
}

}  // namespace

xp_exchange_folder::xp_exchange_folder(xp_status& status) {
    std::error_code error;
    std::string name = std::filesystem::temp_directory_path(error) / "kolv-expand-XXXXXX";
    if (!error && mkdtemp(name.data()) != nullptr)
        path_ = name;
    else
        xp_fail(status, xp_fault::cannot_write, name, std::strerror(errno));
}

xp_exchange_folder::~xp_exchange_folder() {
    std::error_code ignored;
    if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
}

std::string xp_exchange_folder::write(const char* name, std::string_view text, xp_status& status) const {
    const std::string path = file(name);
    tm_stream stream(std::fopen(path.c_str(), "wb"));
    const bool is_written = stream && std::fwrite(text.data(), 1, text.size(), stream.get()) == text.size();
    if (!is_written || std::fclose(stream.release()) != 0)
        xp_fail(status, xp_fault::cannot_write, path, std::strerror(errno));
    return path;
}

std::string xp_plain_path(const std::string& path) {
    return std::string_view("-~+<\"").find(path[0]) == std::string_view::npos ? path : "./" + path;
}

void xp_run_program(const xp_program& program, xp_status& status) {
    if (!xp_ok(status)) return;
    const std::string& name = program.arguments[0];
    const int ended = spawn(program);
    if (ended == -1 && errno == ENOENT)
        return xp_fail(status, xp_fault::no_yosys, name,
                       program.purpose + " Debian's package \"yosys\": apt-get install yosys");
    if (ended == -1) return xp_fail(status, xp_fault::no_yosys, name, std::strerror(errno));
    if (WIFSIGNALED(ended))
        return xp_fail(status, xp_fault::yosys_failed, name,
                       "ended by signal " + std::to_string(WTERMSIG(ended)));
    if (WEXITSTATUS(ended) != 0)
        xp_fail(status, xp_fault::yosys_failed, name,
                program.errors.empty()
                    ? "exit status " + std::to_string(WEXITSTATUS(ended)) + ", see its message above"
                    : complaint(program.errors) + complaint(program.output));
}

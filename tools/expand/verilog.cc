// One run of yosys: scripts, arguments, and how it ended.
#include "expand/verilog.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

#include "foundation/files.h"

extern char** environ;

namespace {

constexpr const char* program = "yosys";

// Between the choice of the top module and the netlist.  Tri-state buffers are found before anything takes
// their "z" for a value that does not matter.
constexpr std::string_view recipe =
    "proc\n"
    "tribuf\n"
    "synth -run coarse:\n";

// ---- what passes between the programs

class exchange_folder {
public:
    explicit exchange_folder(xp_status& status) {
        std::error_code error;
        std::string name = std::filesystem::temp_directory_path(error) / "kolv-expand-XXXXXX";
        if (!error && mkdtemp(name.data()) != nullptr)
            path_ = name;
        else
            xp_fail(status, xp_fault::cannot_write, name, std::strerror(errno));
    }
    exchange_folder(const exchange_folder&) = delete;
    exchange_folder& operator=(const exchange_folder&) = delete;
    ~exchange_folder() {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }

    std::string file(const char* name) const { return path_ / name; }
    std::string write(const char* name, std::string_view text, xp_status& status) const {
        const std::string path = file(name);
        tm_stream stream(std::fopen(path.c_str(), "wb"));
        const bool is_written =
            stream && std::fwrite(text.data(), 1, text.size(), stream.get()) == text.size();
        if (!is_written || std::fclose(stream.release()) != 0)
            xp_fail(status, xp_fault::cannot_write, path, std::strerror(errno));
        return path;
    }

private:
    std::filesystem::path path_;
};

// ---- scripts

void check_words(const char* option, const std::vector<std::string>& words, std::string_view allowed,
                 xp_status& status) {
    for (const std::string& word : words)
        for (const char c : word)
            if (std::isalnum(static_cast<unsigned char>(c)) == 0 && allowed.find(c) == std::string_view::npos)
                return xp_fail(status, xp_fault::bad_usage, option,
                               xp_quoted(word) + ", only letters, digits and " + std::string(allowed));
}

std::string defaults_script(const xp_options& options, xp_status& status) {
    check_words("-D", options.defines, "_$='.+-", status);
    check_words("-I", options.include_folders, "_./+-", status);
    std::string text;
    for (const std::string& define : options.defines) text += "verilog_defaults -add -D" + define + "\n";
    for (const std::string& folder : options.include_folders)
        text += "verilog_defaults -add -I" + folder + "\n";
    return text;
}

std::string top_script(const xp_options& options, xp_status& status) {
    check_words("--top", {options.top}, "_$", status);
    if (!options.top.empty()) return "hierarchy -check -top " + options.top + "\n";
    return options.recipe.empty() ? "hierarchy -check -auto-top\n" : "";
}

// ---- the program

// A name that begins as an option or as one of the signs that yosys replaces would not be taken as it stands.
std::string plain_path(const std::string& path) {
    return std::string_view("-~+<\"").find(path[0]) == std::string_view::npos ? path : "./" + path;
}

std::vector<std::string> arguments_of(const xp_options& options, const exchange_folder& folder,
                                      xp_status& status) {
    std::vector<std::string> arguments = {program, "-q", "-b", "json", "-o", folder.file("netlist.json"),
                                          "-s"};
    arguments.push_back(options.recipe.empty() ? folder.write("recipe.ys", recipe, status) : options.recipe);
    arguments.push_back(folder.write("defaults.ys", defaults_script(options, status), status));
    for (const std::string& input : options.inputs) arguments.push_back(plain_path(input));
    arguments.push_back(folder.write("top.ys", top_script(options, status), status));
    return arguments;
}

// What the program prints goes to standard error.  The result is its exit status as wait gives it, or -1.
int run(const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
    pid_t child = 0;
    const int fault = posix_spawnp(&child, program, &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    errno = fault;
    if (fault != 0) return -1;
    int status = -1;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return -1;
    return status;
}

void run_yosys(const std::vector<std::string>& arguments, xp_status& status) {
    if (!xp_ok(status)) return;
    const int ended = run(arguments);
    if (ended == -1 && errno == ENOENT)
        return xp_fail(status, xp_fault::no_yosys, program,
                       "Verilog is read by Debian's package \"yosys\": apt-get install yosys");
    if (ended == -1) return xp_fail(status, xp_fault::no_yosys, program, std::strerror(errno));
    if (WIFSIGNALED(ended))
        return xp_fail(status, xp_fault::yosys_failed, program,
                       "ended by signal " + std::to_string(WTERMSIG(ended)));
    if (WEXITSTATUS(ended) != 0)
        xp_fail(status, xp_fault::yosys_failed, program,
                "exit status " + std::to_string(WEXITSTATUS(ended)) + ", see its message above");
}

}  // namespace

void xp_read_verilog(const xp_options& options, xp_netlist& netlist, xp_status& status) {
    if (!xp_ok(status)) return;
    for (const std::string& input : options.inputs)
        if (access(input.c_str(), R_OK) != 0) return xp_fail(status, xp_fault::cannot_read, input);
    const exchange_folder folder(status);
    if (!xp_ok(status)) return;
    run_yosys(arguments_of(options, folder, status), status);
    std::string text;
    xp_read_file(folder.file("netlist.json"), text, status);
    xp_parse_netlist(program, text, netlist, status);
}

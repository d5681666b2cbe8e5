// One run of yosys: scripts, arguments, and how it ended.
#include "expand/verilog.h"

#include <cctype>
#include <vector>

#include "expand/programs.h"

namespace {

constexpr const char* program = "yosys";

// Between the choice of the top module and the netlist.  Tri-state buffers are found before anything takes
// their "z" for a value that does not matter, and in words of their own width, else a sum (32 bits) hides
// them; behind "coarse" synth would make registers of memories.
constexpr std::string_view recipe =
    "proc\n"
    "wreduce\n"
    "tribuf\n"
    "synth -run coarse:fine\n"
    "opt -fast -full\n"
    "opt -undriven -fine\n"
    "techmap\n"
    "opt -fast\n"
    "abc -fast\n"
    "opt -fast\n";

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

std::vector<std::string> arguments_of(const xp_options& options, const xp_library& library,
                                      const xp_exchange_folder& folder, xp_status& status) {
    std::vector<std::string> arguments = {program, "-q", "-b", "json", "-o", folder.file("netlist.json"),
                                          "-s"};
    arguments.push_back(options.recipe.empty() ? folder.write("recipe.ys", recipe, status) : options.recipe);
    arguments.push_back(folder.write("defaults.ys", defaults_script(options, status), status));
    if (!library.cells.empty())
        arguments.push_back(folder.write("library.v", xp_library_stubs(library), status));
    for (const std::string& input : options.inputs) arguments.push_back(xp_plain_path(input));
    arguments.push_back(folder.write("top.ys", top_script(options, status), status));
    return arguments;
}

}  // namespace

void xp_read_verilog(const xp_options& options, const xp_library& library, xp_netlist& netlist,
                     xp_status& status) {
    for (const std::string& input : options.inputs) xp_check_input(input, status);
    if (!xp_ok(status)) return;
    const xp_exchange_folder folder(status);
    if (!xp_ok(status)) return;
    xp_run_program({arguments_of(options, library, folder, status), "Verilog is read by", {}, {}}, status);
    std::string text;
    xp_read_file(folder.file("netlist.json"), text, status);
    xp_parse_netlist(program, text, netlist, status);
}

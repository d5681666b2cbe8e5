// The options of kolv-expand, and which of them belong together.
#include "expand/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "expand/sdf_read.h"

namespace {

constexpr double base_unit = 1e-9;

// A number, or one with a unit, which is turned into nanoseconds.
std::string check_time_step(std::string& text) {
    if (const double seconds = xp_seconds_of(text); seconds > 0) {
        std::array<char, 32> digits{};
        const auto [end, error] =
            std::to_chars(digits.begin(), digits.end(), static_cast<float>(seconds / base_unit));
        text.assign(digits.begin(), end);
    }
    float value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool is_whole = error == std::errc{} && end == text.data() + text.size();
    return is_whole && std::isfinite(value) && value > 0 ? "" : xp_quoted(text) + " is no number above 0";
}

void describe(CLI::App& app, xp_options& options) {
    const auto file = [&](const char* name, std::string& value, const char* help) {
        app.add_option(name, value, help)->type_name("FILE");
    };
    app.add_option("INPUT", options.inputs, "the netlist, or Verilog files (.v, .sv)")->required();
    app.add_option("-o,--output", options.output, "the design file to write; FILE.buses is written beside it")
        ->type_name("FILE")
        ->required();
    app.add_option("--top", options.top, "the top module, where none is marked as top")->type_name("NAME");
    app.add_flag("--sheets", options.sheets,
                 "draw the sheets of the modules into the folder of the design file");
    app.add_option("--liberty", options.libraries, "a library whose cells the netlist has")
        ->type_name("FILE")
        ->take_all()
        ->allow_extra_args(false);
    file("--timing", options.timing, "delay rules of cell types, JSON");
    file("--delays", options.delays, "delays of single cells: cell, rise, fall between tabs");
    file("--sdf", options.sdf, "delays and limits of the library's cells");
    app.add_option("--time-step", options.time_step,
                   "duration of one time step, default 1.0, with --sdf 1ps; a number, or one with a unit")
        ->type_name("S")
        ->transform(CLI::Validator(check_time_step, ""));
    file("--names", options.names, "write a map of the names that differ from the netlist");
    file("--recipe", options.recipe, "of Verilog: the commands of yosys in place of the usual ones");
    app.add_option("-D", options.defines, "of Verilog: a macro, with =VALUE if it has one")
        ->type_name("NAME")
        ->take_all()
        ->allow_extra_args(false);
    app.add_option("-I", options.include_folders, "of Verilog: a folder of included files")
        ->type_name("DIR")
        ->take_all()
        ->allow_extra_args(false);
}

bool is_verilog(std::string_view path) { return path.ends_with(".v") || path.ends_with(".sv"); }

void check_inputs(xp_options& options, xp_status& status) {
    if (!options.sdf.empty() && options.libraries.empty())
        return xp_fail(status, xp_fault::bad_usage, options.sdf, "--sdf goes with --liberty");
    const auto count = std::count_if(options.inputs.begin(), options.inputs.end(), is_verilog);
    options.is_verilog = count > 0;
    if (options.is_verilog && count != static_cast<std::ptrdiff_t>(options.inputs.size()))
        return xp_fail(status, xp_fault::bad_usage, "", "Verilog files and a netlist");
    if (options.is_verilog) return;
    if (options.inputs.size() > 1)
        return xp_fail(status, xp_fault::bad_usage, options.inputs[1], "one netlist only");
    if (!options.recipe.empty() || !options.defines.empty() || !options.include_folders.empty())
        xp_fail(status, xp_fault::bad_usage, "", "--recipe, -D and -I are for Verilog files (.v, .sv)");
}

}  // namespace

void xp_parse_options(std::span<const char* const> arguments, xp_options& options, xp_status& status) {
    CLI::App app("Expands a netlist in Yosys' JSON format, or Verilog, into a design file of the simulator.",
                 "kolv-expand");
    describe(app, options);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        if (!options.sdf.empty() && app.count("--time-step") == 0) options.time_step = 0.001F;
        check_inputs(options, status);
    } catch (const CLI::CallForHelp&) {
        options.help = app.help();
    } catch (const CLI::ParseError& error) {
        xp_fail(status, xp_fault::bad_usage, "", error.what());
    }
}

#include "expand/options.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace {

struct option_row {
    std::string_view name, argument;
    std::string xp_options::*value;
    std::string_view help;
};

// clang-format off
constexpr option_row option_rows[] = {
    {"-o",          "FILE", &xp_options::output,         "the design file to write; FILE.buses is written beside it"},
    {"--top",       "NAME", &xp_options::top,            "the top module, where none is marked as top"},
    {"--timing",    "FILE", &xp_options::timing,         "delay rules of cell types, JSON"},
    {"--delays",    "FILE", &xp_options::delays,         "delays of single cells: cell, rise, fall between tabs"},
    {"--time-step", "S",    &xp_options::time_step_text, "duration of one time step, default 1.0"},
    {"--names",     "FILE", &xp_options::names,          "write a map of the names that were changed or shortened"},
};
// clang-format on

const option_row* find_option(std::string_view name) {
    for (const option_row& row : option_rows)
        if (row.name == name) return &row;
    return nullptr;
}

void read_time_step(xp_options& options, xp_status& status) {
    const std::string& text = options.time_step_text;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), options.time_step);
    if (error != std::errc{} || end != text.data() + text.size() || !std::isfinite(options.time_step) ||
        options.time_step <= 0)
        xp_fail(status, xp_fault::bad_usage, "--time-step", xp_quoted(text) + " is no number above 0");
}

}  // namespace

void xp_parse_options(std::span<const char* const> arguments, xp_options& options, xp_status& status) {
    for (std::size_t i = 0; i < arguments.size() && xp_ok(status); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help" || argument == "-h") {
            options.help = true;
            return;
        }
        if (argument == "--sheets") {
            options.sheets = true;
            continue;
        }
        if (const option_row* row = find_option(argument); row != nullptr) {
            if (++i == arguments.size())
                return xp_fail(status, xp_fault::bad_usage, argument,
                               "expects " + std::string(row->argument));
            options.*row->value = arguments[i];
        } else if (argument.starts_with('-') || argument.empty()) {
            xp_fail(status, xp_fault::bad_usage, argument, "unknown option");
        } else if (!options.netlist.empty()) {
            xp_fail(status, xp_fault::bad_usage, argument, "one netlist only");
        } else {
            options.netlist = argument;
        }
    }
    if (options.netlist.empty()) xp_fail(status, xp_fault::bad_usage, "", "no netlist given");
    if (options.output.empty()) xp_fail(status, xp_fault::bad_usage, "", "no design file given with -o");
    read_time_step(options, status);
}

std::string xp_usage() {
    std::string text =
        "usage: kolv-expand [options] NETLIST.json -o DESIGNFILE\n\n"
        "Expands a netlist in Yosys' JSON format into a design file of the simulator.\n\n";
    for (const option_row& row : option_rows) {
        std::string head = "  " + std::string(row.name) + " " + std::string(row.argument);
        head.resize(19, ' ');
        text += head + std::string(row.help) + "\n";
    }
    text += "  --sheets         draw the sheets of the modules into the folder of the design file\n";
    return text;
}

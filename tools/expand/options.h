// xp_options: the command line of kolv-expand.  The input is one netlist, or any number of Verilog files.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "expand/message.h"

struct xp_options {
    std::vector<std::string> inputs;
    std::string output;
    std::string top, timing, delays, names;  // empty: not given
    std::vector<std::string> libraries;
    std::string sdf;         // empty: not given
    float time_step = 1.0F;  // in the design's base unit, nanoseconds where a unit was given
    bool sheets = false;
    std::string help;  // what --help prints, where the command line asks for it
    // Of Verilog.
    bool is_verilog = false;  // by the names of the inputs, ".v" or ".sv"
    std::string recipe;       // empty: the program's own
    std::vector<std::string> defines, include_folders;
};

void xp_parse_options(std::span<const char* const> arguments, xp_options& options, xp_status& status);

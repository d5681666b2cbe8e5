// xp_options: the command line of kolv-expand.
#pragma once

#include <span>
#include <string>

#include "expand/message.h"

struct xp_options {
    std::string netlist, output;
    std::string top, timing, delays, names;  // empty: not given
    std::string time_step_text = "1.0";
    float time_step = 1.0F;
    bool sheets = false;
    bool help = false;
};

void xp_parse_options(std::span<const char* const> arguments, xp_options& options, xp_status& status);
std::string xp_usage();

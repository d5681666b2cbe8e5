// xp_hierarchy: the modules that a design is made of.  Owns the choice of the top module and one body for
// every module that the top reaches.  A module that contains itself, a missing or black box module and an
// unknown cell are refused with the path of the instance that was met first.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "expand/body.h"
#include "expand/liberty.h"

inline constexpr std::size_t xp_depth_max = 500;  // levels of module instances

struct xp_hierarchy {
    std::uint32_t top = 0;
    std::vector<xp_body> bodies;  // by module
    const xp_library* library = nullptr;
    bool draws_sheets = false;  // vectors that the netlist made up are buses, too
};

// The module named, or the one marked as top, or the only one that no other module contains.
void xp_choose_top(const xp_netlist& netlist, const std::string& wanted, xp_hierarchy& hierarchy,
                   xp_status& status);
void xp_map_modules(xp_netlist& netlist, xp_hierarchy& hierarchy, xp_status& status);

// xp_sheets: the sheets of a design.  Owns their way into the folder of the design file: the top module's
// sheet in the folder itself, every other module's sheet and symbol in a folder below it, the symbols of
// primitives below "symbols", further pages of a module in "page_2", "page_3" ... beside its first.  Written
// into a folder aside first; installing them is the last step.
//
// A module that needs more than tm_max_objects objects in a file, or that lies more than 28 levels deep, has
// no sheet; a warning says so.
#pragma once

#include "expand/flatten.h"

class xp_sheets {
public:
    explicit xp_sheets(std::string folder);  // of the design file
    xp_sheets(const xp_sheets&) = delete;
    xp_sheets& operator=(const xp_sheets&) = delete;
    ~xp_sheets();  // removes what was not installed

    // Draws the sheets and puts their object ids into the flattened design.
    void draw(xp_netlist& netlist, xp_hierarchy& hierarchy, xp_flat& flat, xp_status& status);
    // Puts the sheets into the folder, in the place of older ones.
    void install(xp_status& status);

    std::size_t pages = 0;

private:
    std::string folder_, aside_;
};

// xp_library: the cells of Liberty files.  Owns their pins, the functions of outputs and the registers that
// they hold.  The text is taken apart by yosys-filterlib of Debian's package "yosys"; pins of timing, power
// and area are skipped.  A cell whose description is not enough for a model is kept with the reason, since
// only a design that has it is refused.  Cells of a later file replace those of an earlier one.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "expand/library_cell.h"
#include "expand/message.h"

struct xp_library {
    std::unordered_map<std::string_view, std::size_t> index;  // by name
    std::vector<std::unique_ptr<xp_library_cell>> cells;
};

void xp_read_library(const std::string& path, xp_library& library, xp_status& status);
// The same from what yosys-filterlib made of the file; the result is the number of cells.
std::size_t xp_parse_library(std::string_view text, xp_library& library);
// Null for one that is not there.
const xp_library_cell* xp_find_library_cell(const xp_library* library, std::string_view name);
// The cells as modules of Verilog without contents.
std::string xp_library_stubs(const xp_library& library);

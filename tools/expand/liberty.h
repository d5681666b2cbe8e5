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

#include "expand/liberty_function.h"
#include "expand/library_plan.h"
#include "expand/message.h"
#include "expand/netlist_json.h"

// Functions number the pins of the cell from 0 and its registers from here on.
inline constexpr std::int32_t xp_first_state = 10'000;

struct xp_library_pin {
    std::string name;
    xp_direction direction = xp_direction::none;
    bool has_function = false, is_tristate = false;
    xp_function function, enable;  // of an output; the enable of one with three states
};

struct xp_library_register {
    std::string name;  // of its state
    bool is_latch = false, has_data = true, has_clear = false, has_preset = false;
    bool is_set_dominant = false;              // 1 when both clear and preset are active
    xp_function data, control, clear, preset;  // control: the rising clock, or the enable
};

struct xp_library_cell {
    std::string name;
    std::vector<xp_library_pin> pins;
    std::vector<xp_library_register> registers;
    std::vector<xp_plan_part> parts;
    std::string fault;  // why there is no model of it
};

struct xp_library {
    std::unordered_map<std::string_view, std::size_t> index;  // by name
    std::vector<std::unique_ptr<xp_library_cell>> cells;
};

inline bool xp_is_output(const xp_library_pin& pin) {
    return pin.has_function && pin.direction != xp_direction::input;
}
inline bool xp_is_input(const xp_library_pin& pin) {
    return pin.direction == xp_direction::input || pin.direction == xp_direction::inout;
}

void xp_read_library(const std::string& path, xp_library& library, xp_status& status);
// The same from what yosys-filterlib made of the file; the result is the number of cells.
std::size_t xp_parse_library(std::string_view text, xp_library& library);
// Fills in the parts of a cell.
void xp_plan_library_cell(xp_library_cell& cell);
// Null for one that is not there.
const xp_library_cell* xp_find_library_cell(const xp_library* library, std::string_view name);
// The cells as modules of Verilog without contents.
std::string xp_library_stubs(const xp_library& library);

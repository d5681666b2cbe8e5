// xp_library_cell: a cell of a library as its description says: pins, functions of outputs, registers; and
// the plan of what it becomes.
#pragma once

#include <string>
#include <vector>

#include "expand/liberty_function.h"
#include "expand/library_plan.h"
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

inline bool xp_is_output(const xp_library_pin& pin) {
    return pin.has_function && pin.direction != xp_direction::input;
}
inline bool xp_is_input(const xp_library_pin& pin) {
    return pin.direction == xp_direction::input || pin.direction == xp_direction::inout;
}

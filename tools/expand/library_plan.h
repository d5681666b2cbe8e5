// xp_library_plan: what a library cell becomes.  A cell is planned once; every instance is made, and its
// delays are found, by walking the plan.  A part drives one output pin, or a net inside the cell that holds
// the state of a register; its last gate drives, those before it stand in front of single pins of it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "expand/cell_table.h"

struct xp_plan_source {
    enum class kind : std::uint8_t { port, state, gate, constant } kind;
    std::int32_t index = 0;  // of the cell's pin, of its register, of the part's gate, or the value
};

struct xp_plan_pin {
    std::string name;
    xp_plan_source source;
    int sense = 0;  // 1: the gate's output follows the pin, -1: it opposes it, 0: as the others say
};

struct xp_plan_gate {
    xp_model model = nullptr;
    std::string table;  // of a LUT
    std::vector<xp_plan_pin> pins;
};

struct xp_plan_part {
    std::int32_t pin = -1;    // output pin of the cell; -1: a net inside
    std::int32_t state = -1;  // register whose state the part's net is
    std::string suffix;       // of the names of its gates, behind the cell's name
    std::string output;       // name of the output pin
    bool is_checked = true;   // a register that another part repeats is checked there
    std::vector<xp_plan_gate> gates;
};

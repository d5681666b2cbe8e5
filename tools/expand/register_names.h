// xp_register_names: what registers are called whose own names the netlist made up: by what they store.
#pragma once

#include <string>
#include <vector>

#include "expand/body.h"

// By cell: "count_reg" of a register of the whole vector count, "count_reg[3]" of its bit 3, "busy_reg";
// empty for cells with a name of their own, for other cells, and where what is stored has no name.
std::vector<std::string> xp_register_names(const xp_mapping& m);

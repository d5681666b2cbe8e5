// xp_library_planner: makes the plan of a library cell from its description.
#pragma once

#include "expand/library_cell.h"

// Fills in the parts of a cell.
void xp_plan_library_cell(xp_library_cell& cell);

// xp_sheet_planner: makes the plan of a module's sheets from its body.
#pragma once

#include <string_view>

#include "expand/sheet_plan.h"

// "alu" of the module that yosys calls "$paramod\alu\W=...".
std::string_view xp_readable_name(std::string_view module);
// constant_names: of 0, 1, x and z in this module.
void xp_plan_sheet(const xp_flat& flat, std::uint32_t module, const std::string constant_names[xp_constants],
                   xp_sheet_plan& plan);

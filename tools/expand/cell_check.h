// xp_check_cells: whether every cell below the top has a meaning.  Owns what a user is told about those
// without one: all of them at once, by type, with their number, the path of the first, and the next step for
// the family that the type belongs to.  Cells that check or print are left out of the design, with one note.
#pragma once

#include <cstdint>

#include "expand/liberty.h"
#include "expand/netlist_json.h"

void xp_check_cells(const xp_netlist& netlist, std::uint32_t top, const xp_library* library,
                    xp_status& status);

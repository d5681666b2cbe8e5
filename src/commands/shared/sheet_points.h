// kol: the points of the sheet that a user types or points at.  Coordinates are model units; a user types
// them as decimal numbers, 1.0 being 100000 units.
#pragma once

#include <string>

#include "commands/language/command.h"
#include "foundation/context.h"

inline constexpr kol_rejection_t kol_outside_page{"# !! Error : Invalid point (outside of page ...)  ? "};
inline constexpr kol_rejection_t kol_window_invalid{"# !! Error :  Invalid window ? "};

// Why nothing can be pointed at: the page shown is not the Context page, or it has no sheet.
kol_rejection_t kol_check_context_sheet();
// A point given by keywords k and k + 1; without them the cursor, for which the Context page must be shown.
// The rejection says what is wrong.  Points are not snapped.
kol_rejection_t kol_read_point(std::int16_t k, const kol_line_t& line, tm_point_t& point);
// The same, moved to the grid while SNAP is on.
kol_rejection_t kol_read_snapped_point(std::int16_t k, const kol_line_t& line, tm_point_t& point);
// Moves a point to the grid of the pins; why it does not lie on the page of the sheet in the window.
kol_rejection_t kol_snap_into_page(bool is_typed, tm_point_t& point);
// "12.50000 -3.00000 " as the echo of a point.
std::string kol_point_text(const tm_point_t& point);

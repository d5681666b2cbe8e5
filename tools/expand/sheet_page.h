// xp_sheet_page: the drawing of one page of a module's sheets.  Owns which nets are wires and which are named
// tags, and where tags stand.
//
// A net is drawn as wires between its pins on the page, except: constants; clocks, sets and resets with more
// than two pins; nets with more than xp_wired_most pins; and nets of which the page has no driver and at most
// xp_tagged_most readers.  These have a tag with their name at each pin.  A page that would be too large to
// be read when it is seen whole has more of them.  A tag FROM_PAGE stands where the driver is on another page
// or joined by name, TO_PAGE where readers are.
#pragma once

#include "expand/sheet_plan.h"
#include "sheets/drawing.h"

inline constexpr std::size_t xp_wired_most = 9, xp_tagged_most = 2;

// symbol_paths: by cell of the plan.  What a file has no room for is not drawn to its end.
void xp_draw_page(const xp_sheet_plan& plan, std::int32_t page, const std::vector<std::string>& symbol_paths,
                  sg_drawing& drawing);

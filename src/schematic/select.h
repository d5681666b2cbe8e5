// tm: selection by area.  Selects the objects of a family that lie wholly inside an area of a sheet: an
// instance by the box of its shape and pins, a frame or tag by its box, a property by the box of its text, a
// vertex or pin by its place; a net counts when one of its segments lies inside.  all stands for instances,
// nets, vertices, frames and tags, and while SMASH is on (tm_vext.smash_on) for properties too; first for the
// first of these found in the order property (while SMASH is on), instance, net, vertex, frame, tag, and
// within each in the order of the sheet.  Deleted and unvisible objects are passed over.
#pragma once

#include "schematic/things.h"

// Selects (on) or unselects; count tells how many changed their state.  Unselecting, first means the first
// that is selected.  Corners of the area in any order.
void tm_select_area(tm_file_index_t file_index, tm_family family, const tm_bounds_t& area, bool on,
                    std::int32_t& count);
void tm_unselect_all(tm_file_index_t file_index, std::int32_t& count);

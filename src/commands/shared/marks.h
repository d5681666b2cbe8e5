// kol: marks.  Owns the area that the user marks for VIEW AREA, SELECT AREA and UNSELECT AREA.  MARK
// RECTANGLE begins it where the pointer stands and the pointer draws its other corner along; MARK sets its
// corners one by one; a command file gives all four coordinates.  Coordinates are those of the page on which
// the area is marked: pixels of the drawing area on the Results page, model units on the Context page.
#pragma once

#include "commands/language/command.h"
#include "foundation/context.h"

inline constexpr kol_rejection_t kol_no_area_marked{"# !! Error : No area marked ( MARK RECTANGLE ) ? "};

// The pointer in the coordinates of the page that is shown.
tm_point_t kol_pointer();
// The first corner, the pointer drawing the other along.
void kol_mark_at_pointer();
// One corner: the first of a new area, or the second of the area that has one.
void kol_mark_corner(tm_point_t corner);
// The whole area.
void kol_mark_area(tm_point_t first, tm_point_t second);
// Takes the marked area of the page that is shown, its second corner being the pointer when only one is
// marked; marking is over then, also when it is refused: nothing marked, or on the other page.
kol_rejection_t kol_marked_area(tm_bounds_t& area);
// Gives up what is marked.
void kol_forget_marks();
// While the pointer draws a corner along (tm_vext.mark_rectangle_on): the page, and the fixed corner in
// pixels of its drawing area.
bool kol_mark_band(tm_page page, tm_point_t& corner);

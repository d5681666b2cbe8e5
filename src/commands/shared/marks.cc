// The area that the user marks.
#include "commands/shared/marks.h"

#include <algorithm>

namespace {

struct mark_state {
    tm_page page = tm_page::results;
    int corners = 0;  // set
    tm_point_t corner[2];
    tm_point_t pixel;  // of the first corner, where the pointer set it
};
mark_state marks;

}  // namespace

void kol_forget_marks() {
    marks = {};
    tm_vext.mark_rectangle_on = false;
}

tm_point_t kol_pointer() { return tm_vext.numpage == tm_page::results ? tm_vext.pixel_pos : tm_vext.obj_pos; }

void kol_mark_at_pointer() {
    marks = {tm_vext.numpage, 1, {kol_pointer(), {}}, tm_vext.pixel_pos};
    tm_vext.mark_rectangle_on = true;
}

void kol_mark_corner(tm_point_t corner) {
    if (marks.corners == 1 && marks.page == tm_vext.numpage) return kol_mark_area(marks.corner[0], corner);
    kol_forget_marks();
    marks.page = tm_vext.numpage;
    marks.corners = 1;
    marks.corner[0] = corner;
}

void kol_mark_area(tm_point_t first, tm_point_t second) {
    kol_forget_marks();
    marks = {tm_vext.numpage, 2, {first, second}, {}};
}

kol_rejection_t kol_marked_area(tm_bounds_t& area) {
    const mark_state taken = marks;
    kol_forget_marks();
    if (taken.corners == 0 || taken.page != tm_vext.numpage) return kol_no_area_marked;
    const tm_point_t a = taken.corner[0], b = taken.corners == 2 ? taken.corner[1] : kol_pointer();
    area = {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
    return {};
}

bool kol_mark_band(tm_page page, tm_point_t& corner) {
    corner = marks.pixel;
    return tm_vext.mark_rectangle_on && marks.page == page;
}

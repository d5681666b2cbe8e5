// MARK RECTANGLE and the area that it marks.
#include "commands/marks.h"

#include <algorithm>

#include "commands/handlers.h"
#include "foundation/numbers.h"
#include "foundation/shell.h"

namespace {

constexpr kol_rejection_t corner_invalid{"# !! Error : Invalid corner of rectangle ? "};

constexpr std::int16_t first_coordinate = 3, with_coordinates = 6;

struct mark_state {
    tm_page page = tm_page::results;
    int corners = 0;  // set
    tm_point_t corner[2];
    tm_point_t pixel;  // of the first corner, where the pointer set it
};
mark_state marks;

void begin_at_pointer() {
    marks = {tm_vext.numpage, 1, {kol_pointer(), {}}, tm_vext.pixel_pos};
    tm_vext.mark_rectangle_on = true;
}

// Pixels are whole numbers, model units decimal ones.
bool read_coordinate(const tm_string_record_t& keyword, std::int32_t& coordinate) {
    bool error_found = false;
    if (tm_vext.numpage == tm_page::results)
        tm_string_to_int32(keyword, coordinate, error_found);
    else
        tm_string_to_real(keyword, coordinate, error_found);
    return !error_found;
}

bool read_corner(std::int16_t k, const kol_line_t& line, tm_point_t& corner) {
    return read_coordinate(line[k], corner.x) &&
           read_coordinate(line[static_cast<std::int16_t>(k + 1)], corner.y);
}

kol_rejection_t mark_rectangle(const kol_line_t& line) {
    if (line.nkeyword < first_coordinate) {
        begin_at_pointer();
        return {};
    }
    tm_point_t first, second;
    if (line.nkeyword != with_coordinates) return kol_count_invalid;
    if (!read_corner(first_coordinate, line, first) || !read_corner(first_coordinate + 2, line, second))
        return corner_invalid;
    kol_mark_area(first, second);
    return {};
}

}  // namespace

void kol_forget_marks() {
    marks = {};
    tm_vext.mark_rectangle_on = false;
}

tm_point_t kol_pointer() { return tm_vext.numpage == tm_page::results ? tm_vext.pixel_pos : tm_vext.obj_pos; }

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

kol_result_t kol_mark_rectangle_cmd(const kol_line_t& line) { return mark_rectangle(line); }

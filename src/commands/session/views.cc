// POP, VIEW ALL, VIEW AREA, VIEW TIME and VIEW WINDOW: what the pages show.
#include <algorithm>
#include <cstdlib>

#include "commands/session/handlers.h"
#include "commands/session/kept_views.h"
#include "commands/shared/marks.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "commands/sheets/page_tags.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "results/entries/geometry.h"
#include "results/list/view.h"
#include "results/trace/view.h"
#include "schematic/viewport.h"

namespace {

constexpr kol_rejection_t time_invalid{"# !! Error : Invalid view time "};

constexpr kol_rejection_t area_too_narrow{"# !! Error : Marked area too narrow ( at least 3 pixels ) ? "};

constexpr std::int32_t least_area_width = 3;  // a click on the page is none

// The marked times fill the window of the trace.
kol_rejection_t zoom_trace(const tm_bounds_t& area) {
    const std::int32_t width = tm_vext.bitmap_size.xmax;
    const std::int32_t left = std::max(area.xmin, kol_ext.trace_left_x);
    const std::int32_t right = std::min(area.xmax, width - kol_ext.trace_right_x);
    if (right - left < least_area_width) return area_too_narrow;
    kol_keep_view();
    const std::int32_t begin = kol_trace_time_at(left, width), end = kol_trace_time_at(right, width);
    kol_ext.trace_cur_time = begin;
    kol_ext.trace_scale = std::max((end - begin + kol_trace_divisions - 1) / kol_trace_divisions, 1);
    return {};
}

// The row at the top of the area becomes the first.
kol_rejection_t view_area() {
    tm_bounds_t area;
    if (const kol_rejection_t wrong = kol_marked_area(area)) return wrong;
    if (!kol_ext.list_or_trace) return zoom_trace(area);
    if (area.xmax - area.xmin < least_area_width) return area_too_narrow;
    kol_keep_view();
    kol_ext.list_cur_time = kol_list_time_at(area.ymin);
    return {};
}

kol_result_t view_all_of_sheet() {
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    kol_keep_view();
    tm_view_all(file);
    tm_shell.redraw_context();
    return {};
}

// A click, which marks nothing.
bool is_click(tm_file_index_t file, const tm_bounds_t& area) {
    const double pixel = tm_viewport(file).units;
    return std::abs(area.xmax - area.xmin) < pixel * tm_vext.pick_aperture.x &&
           std::abs(area.ymax - area.ymin) < pixel * tm_vext.pick_aperture.y;
}

kol_result_t view_area_of_sheet() {
    tm_bounds_t area;
    const kol_rejection_t unmarked = kol_marked_area(area);  // marking is over, however this ends
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    if (unmarked) return unmarked;
    if (is_click(file, area) && kol_follow_tag({area.xmin, area.ymin})) return {};
    kol_keep_view();
    tm_view_area(file, area);
    tm_shell.redraw_context();
    return {};
}

}  // namespace

kol_result_t kol_pop_cmd(const kol_line_t& /*line*/) {
    tm_shell.show_other_page();
    return {};
}

// Fits the simulated time into the trace, of a run that was broken off the time reached; the list begins at
// its first row.
kol_result_t kol_view_all_cmd(const kol_line_t& /*line*/) {
    if (tm_vext.numpage != tm_page::results) return view_all_of_sheet();
    kol_keep_view();
    if (kol_ext.list_or_trace) {
        kol_ext.list_cur_time = 0;
    } else {
        kol_ext.trace_cur_time = 0;
        const std::int32_t reached = kol_ext.time_breaked ? kol_ext.cur_time : kol_ext.end_time;
        kol_ext.trace_scale = std::max(reached / kol_trace_divisions, 1);
    }
    tm_shell.redraw_results();
    return {};
}

kol_result_t kol_view_area_cmd(const kol_line_t& /*line*/) {
    if (tm_vext.numpage != tm_page::results) return view_area_of_sheet();
    if (const kol_rejection_t wrong = view_area()) return wrong;
    tm_shell.redraw_results();
    return {};
}

kol_result_t kol_view_time_cmd(const kol_line_t& line) {
    const tm_string_record_t& view = line[3];
    if (!kol_begins_with_one_of(view, "LT")) return kol_view_invalid;
    std::int32_t time = 0;
    if (!kol_read_positive_time(line[4], time)) return time_invalid;
    kol_keep_view();
    (kol_begins_with_one_of(view, "L") ? kol_ext.list_cur_time : kol_ext.trace_cur_time) = time;
    tm_shell.redraw_results();
    return {};
}

kol_result_t kol_view_window_cmd(const kol_line_t& line) {
    const tm_string_record_t& view = line[3];
    if (!kol_begins_with_one_of(view, "LT")) return kol_view_invalid;
    kol_ext.list_or_trace = kol_begins_with_one_of(view, "L");
    tm_shell.redraw_results();
    if (tm_vext.numpage != tm_page::results) tm_shell.show_other_page();
    return {};
}

// ZOOM: both pages closer, farther, back, and fitted.
#include <algorithm>
#include <limits>

#include "commands/session/handlers.h"
#include "commands/session/kept_views.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "results/entries/geometry.h"
#include "results/trace/view.h"
#include "schematic/viewport.h"

namespace {

constexpr kol_rejection_t way_invalid{
    "# !! Error : 2nd parameter invalid ( should be : \"In\",\"Out\",\"Back\" or \"Fit\" ) "};
constexpr kol_rejection_t pointer_invalid{"# !! Error : 3rd parameter invalid ( should be : \"Pointer\" ) "};
constexpr kol_rejection_t nothing_kept{"# !! Warning : no view to go BACK to "};
constexpr kol_rejection_t list_not_zoomed{"# !! Warning : the LIST is not zoomed "};

constexpr std::int32_t factor = 2;
constexpr std::int32_t most_scale = std::numeric_limits<std::int32_t>::max() / (2 * kol_trace_divisions);

// The time that stays in its place.
std::int32_t fixed_time(bool at_pointer) {
    const std::int32_t width = tm_vext.bitmap_size.xmax;
    const std::int32_t middle = (width - kol_ext.trace_right_x + kol_ext.trace_left_x) / 2;
    return kol_trace_time_at(at_pointer ? tm_vext.pixel_pos.x : middle, width);
}

void zoom_trace(bool in, bool at_pointer) {
    const std::int64_t fixed = fixed_time(at_pointer), before = kol_ext.trace_scale;
    const std::int64_t scale =
        std::clamp<std::int64_t>(in ? before / factor : before * factor, 1, most_scale);
    const std::int64_t first =
        fixed - (fixed - kol_ext.trace_cur_time) * scale / std::max<std::int64_t>(before, 1);
    kol_ext.trace_scale = static_cast<std::int32_t>(scale);
    kol_ext.trace_cur_time = static_cast<std::int32_t>(
        std::clamp<std::int64_t>(first, 0, std::numeric_limits<std::int32_t>::max()));
}

std::int32_t about(double fixed, double edge, double share) {
    return static_cast<std::int32_t>(std::clamp<double>(fixed + (edge - fixed) * share,
                                                        std::numeric_limits<std::int32_t>::min(),
                                                        std::numeric_limits<std::int32_t>::max()));
}

void zoom_sheet(tm_file_index_t file, bool in, bool at_pointer) {
    const tm_bounds_t seen = tm_seen(tm_viewport(file));
    const double share = in ? 1.0 / factor : factor;
    const double x = at_pointer ? tm_vext.obj_pos.x : (double{1} * seen.xmin + seen.xmax) / 2;
    const double y = at_pointer ? tm_vext.obj_pos.y : (double{1} * seen.ymin + seen.ymax) / 2;
    tm_view_area(file, {about(x, seen.xmin, share), about(y, seen.ymin, share), about(x, seen.xmax, share),
                        about(y, seen.ymax, share)});
}

kol_rejection_t zoom(bool in, bool at_pointer) {
    const bool is_results = tm_vext.numpage == tm_page::results;
    if (is_results && kol_ext.list_or_trace) return list_not_zoomed;
    if (!is_results && kol_context_file() == 0) return kol_no_sheet;
    kol_keep_view();
    if (is_results)
        zoom_trace(in, at_pointer);
    else
        zoom_sheet(kol_context_file(), in, at_pointer);
    return {};
}

void redraw() {
    if (tm_vext.numpage == tm_page::results)
        tm_shell.redraw_results();
    else
        tm_shell.redraw_context();
}

}  // namespace

kol_result_t kol_zoom_cmd(const kol_line_t& line) {
    const bool at_pointer = line.nkeyword == 3;
    if (!kol_begins_with_one_of(line[2], "IOBF")) return way_invalid;
    if (at_pointer && !kol_begins_with_one_of(line[3], "P")) return pointer_invalid;
    if (kol_begins_with_one_of(line[2], "F")) return kol_view_all_cmd(line);
    if (kol_begins_with_one_of(line[2], "B")) {
        if (!kol_return_to_kept_view()) return nothing_kept;
    } else if (const kol_rejection_t wrong = zoom(kol_begins_with_one_of(line[2], "I"), at_pointer)) {
        return wrong;
    }
    redraw();
    return {};
}

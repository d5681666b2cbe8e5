// Views, the newest last.
#include "commands/session/kept_views.h"

#include <algorithm>
#include <deque>

#include "commands/shared/sheet_levels.h"
#include "foundation/context.h"
#include "kernel/context.h"
#include "schematic/viewport.h"

namespace {

struct view_t {
    bool is_of_results = true, is_list = true;
    std::int32_t list_time = 0, trace_time = 0, trace_scale = 1;
    std::int16_t list_column = 1, trace_row = 1;
    tm_file_index_t file = 0;
    tm_bounds_t area;

    bool is_of_same_page(const view_t& other) const {
        return is_of_results == other.is_of_results && is_list == other.is_list && file == other.file;
    }
    bool shows_same(const view_t& other) const {
        return list_time == other.list_time && trace_time == other.trace_time &&
               trace_scale == other.trace_scale && list_column == other.list_column &&
               trace_row == other.trace_row && area.xmin == other.area.xmin && area.ymin == other.area.ymin &&
               area.xmax == other.area.xmax && area.ymax == other.area.ymax;
    }
};
std::deque<view_t> kept;

view_t shown() {
    view_t view;
    view.is_of_results = tm_vext.numpage == tm_page::results;
    if (!view.is_of_results) {
        view.is_list = false;
        view.file = kol_context_file();
        if (view.file != 0) view.area = tm_seen(tm_viewport(view.file));
        return view;
    }
    view.is_list = kol_ext.list_or_trace;
    view.list_time = kol_ext.list_cur_time;
    view.list_column = kol_ext.list_cur_column;
    view.trace_time = kol_ext.trace_cur_time;
    view.trace_scale = kol_ext.trace_scale;
    view.trace_row = kol_ext.trace_cur_row;
    return view;
}

void show(const view_t& view) {
    if (!view.is_of_results) return tm_view_area(view.file, view.area);
    kol_ext.list_cur_time = view.list_time;
    kol_ext.list_cur_column = view.list_column;
    kol_ext.trace_cur_time = view.trace_time;
    kol_ext.trace_scale = view.trace_scale;
    kol_ext.trace_cur_row = view.trace_row;
}

}  // namespace

void kol_keep_view() {
    const view_t now = shown();
    if (!now.is_of_results && now.file == 0) return;
    if (!kept.empty() && kept.back().is_of_same_page(now) && kept.back().shows_same(now)) return;
    kept.push_back(now);
    if (kept.size() > kol_most_kept_views) kept.pop_front();
}

bool kol_return_to_kept_view() {
    const view_t now = shown();
    const auto found = std::find_if(kept.rbegin(), kept.rend(), [&](const view_t& view) {
        return view.is_of_same_page(now) && !view.shows_same(now);
    });
    if (found == kept.rend()) return false;
    show(*found);
    kept.erase(std::next(found).base());
    return true;
}

// Scrolling of the list and the trace.
#include "results/scroll.h"

#include <algorithm>
#include <limits>

#include "foundation/context.h"
#include "foundation/shell.h"
#include "kernel/context.h"
#include "results/entries/cursors.h"
#include "results/entries/geometry.h"
#include "results/entries/time_cursor.h"
#include "results/list/layout.h"
#include "results/trace/rows.h"

namespace {

constexpr std::int32_t page_parts = 80;

std::int32_t scroll_step() {
    const std::int32_t step = kol_ext.end_time / 100;
    for (const std::int32_t round : {1'000'000, 100'000, 10'000, 1'000})
        if (step > round) return round;
    return step;
}

void scroll_forward(std::int32_t& time) {
    const std::int32_t step = scroll_step();
    if (std::int64_t{time} + step >= kol_ext.end_time) return;
    time += step;
    tm_shell.redraw_results();
}

void scroll_back(std::int32_t& time) {
    const std::int32_t step = scroll_step();
    if (time - step < 0) return;
    time -= step;
    tm_shell.redraw_results();
}

// The list runs down, the trace to the right.
std::int32_t& first_time() { return kol_ext.list_or_trace ? kol_ext.list_cur_time : kol_ext.trace_cur_time; }
std::int16_t& first_across() {
    return kol_ext.list_or_trace ? kol_ext.list_cur_column : kol_ext.trace_cur_row;
}
bool is_time(bool is_vertical) { return is_vertical == kol_ext.list_or_trace; }

std::int32_t columns_in_use() {
    kol_update_column_list(nullptr, tm_vext.bitmap_size.xmax);
    return kol_ext.list_signal == nullptr ? 1 : std::max<std::int32_t>(kol_ext.list_work_column, 1);
}

rs_extent_t extent_across() {
    if (!kol_ext.list_or_trace)
        return {kol_ext.trace_cur_row, rs_trace_rows(tm_vext.bitmap_size.ymax),
                std::max(rs_trace_row_count(), 1) + 1};
    const std::int32_t end = columns_in_use();
    return {kol_ext.list_cur_column, std::max<std::int32_t>(kol_ext.list_last_column, 1), end};
}

std::int32_t list_rows() { return std::max(rs_list_rows(tm_vext.bitmap_size.ymax), 1); }

// From the time of the first row to that of the last.
std::int32_t list_span() {
    std::int32_t time = kol_ext.list_cur_time, next = time;
    for (std::int32_t row = 1; row < list_rows() && kol_list_next_row_time(next) && next <= kol_ext.cur_time;
         ++row)
        time = next;
    return std::max(time - kol_ext.list_cur_time, 1);
}

rs_extent_t extent_in_time() {
    const std::int64_t span = kol_ext.list_or_trace ? std::int64_t{list_span()}
                                                    : std::int64_t{kol_trace_divisions} * kol_ext.trace_scale;
    constexpr std::int64_t latest = std::numeric_limits<std::int32_t>::max();
    return {first_time(), static_cast<std::int32_t>(std::min(span, latest)), kol_ext.end_time};
}

bool previous_row_time(std::int32_t& time) {
    if (!kol_ext.list_change_on) {
        if (kol_ext.list_period < 1 || time - kol_ext.list_period < 0) return false;
        time -= kol_ext.list_period;
        return true;
    }
    const std::int32_t from = time;
    std::int32_t latest = 0;
    kol_for_each_entry(
        kol_list_first_entry(),
        [&](yx_signal_rec_t* signal) { latest = std::max(latest, rs_change_before(*signal, from)); },
        [&](yx_bus_rec_t* bus) { latest = std::max(latest, rs_change_before(*bus, from)); });
    if (from < 1) return false;
    time = latest;
    return true;
}

void scroll_list_rows(std::int32_t rows) {
    std::int32_t time = kol_ext.list_cur_time;
    for (; rows < 0 && previous_row_time(time); ++rows) {
    }
    for (std::int32_t next = time; rows > 0 && kol_list_next_row_time(next) && next <= kol_ext.cur_time;
         --rows)
        time = next;
    rs_scroll_to(true, time);
}

void scroll_by(bool is_vertical, std::int64_t distance) {
    rs_scroll_to(is_vertical,
                 static_cast<std::int32_t>(std::clamp<std::int64_t>(
                     rs_extent(is_vertical).first + distance, 0, std::numeric_limits<std::int32_t>::max())));
}

bool is_shown(bool list) { return kol_ext.list_or_trace == list && tm_vext.numpage == tm_page::results; }

}  // namespace

void kol_cursor_down_1st() {
    if (is_shown(true)) scroll_forward(kol_ext.list_cur_time);
    if (is_shown(false)) scroll_by(true, 1);
}
void kol_cursor_up_1st() {
    if (is_shown(true)) scroll_back(kol_ext.list_cur_time);
    if (is_shown(false)) scroll_by(true, -1);
}
void kol_cursor_right_1st() {
    if (is_shown(false)) scroll_forward(kol_ext.trace_cur_time);
    if (is_shown(true)) scroll_by(false, 1);
}
void kol_cursor_left_1st() {
    if (is_shown(false)) scroll_back(kol_ext.trace_cur_time);
    if (is_shown(true)) scroll_by(false, -1);
}

void rs_scroll_page(char direction, std::int32_t eightieths) {
    if (tm_vext.numpage != tm_page::results) return;
    const bool is_vertical = direction == 'U' || direction == 'D';
    const std::int32_t way = direction == 'U' || direction == 'L' ? -1 : 1;
    if (kol_ext.list_or_trace && is_vertical)
        return scroll_list_rows(way * std::max(list_rows() * eightieths / page_parts, 1));
    const std::int64_t shown = rs_extent(is_vertical).shown;
    scroll_by(is_vertical, way * std::max<std::int64_t>(shown * eightieths / page_parts, 1));
}

rs_extent_t rs_extent(bool is_vertical) { return is_time(is_vertical) ? extent_in_time() : extent_across(); }

// Rows and columns end with the last; the time goes on to the last step.
void rs_scroll_to(bool is_vertical, std::int32_t first) {
    if (is_time(is_vertical)) {
        first = std::clamp(first, 0, std::max(kol_ext.end_time, 1) - 1);
        if (first == first_time()) return;
        first_time() = first;
    } else {
        const rs_extent_t extent = extent_across();
        const std::int32_t last = std::max(extent.end - extent.shown, 1);
        first = std::clamp(first, 1, std::max<std::int32_t>(last, 1));
        if (first == first_across()) return;
        first_across() = static_cast<std::int16_t>(first);
    }
    tm_shell.redraw_results();
}

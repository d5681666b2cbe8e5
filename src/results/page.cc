// The Results page: one of the two views on a canvas.
#include "results/page.h"

#include "foundation/context.h"
#include "kernel/context.h"
#include "results/entries/geometry.h"
#include "results/entries/options.h"
#include "results/entries/time_cursor.h"
#include "results/list/layout.h"
#include "results/list/view.h"
#include "results/trace/layout.h"
#include "results/trace/rows.h"
#include "results/trace/view.h"

namespace {

constexpr tm_pixel small_page_at = {12, 0};
constexpr std::string_view small_page_text = "Page too small for one row";

constexpr tm_pixel corner_at = {24, 0};
constexpr std::string_view list_hints[] = {
    "Nothing is listed yet.",
    "LIST B name ...   lists signals; Tab completes names",
    "F10               lists the wire under the pointer (Context page)",
    "RUN time          simulates; HELP shows the commands",
};
constexpr std::string_view trace_hints[] = {
    "Nothing is traced yet.",
    "TRACE name ...    traces signals; Tab completes names",
    "F11               traces the wire under the pointer (Context page)",
    "RUN time          simulates; HELP shows the commands",
};

void write(tm_canvas& canvas, tm_pixel at, std::string_view text, tm_colour colour) {
    if (!text.empty())
        canvas.text(at, text, {colour, rs_list_geometry.column_step, rs_list_geometry.row_step});
}

// What the cursors say, or what to do on an empty page.
void draw_corner(tm_canvas& canvas, bool list) {
    const bool is_empty = (list ? kol_ext.list_signal : kol_ext.trace_signal) == nullptr;
    if (!is_empty) return write(canvas, corner_at, rs_cursor_text(), tm_colour::green);
    if (!rs_options.hints) return;
    tm_pixel at = {2 * rs_list_geometry.column_step, 2 * rs_list_geometry.row_step};
    for (const std::string_view hint : list ? list_hints : trace_hints) {
        write(canvas, at, hint, tm_colour::white);
        at.y += rs_list_geometry.row_pitch;
    }
}

}  // namespace

void kol_set_list_geometry(std::int32_t bitmap_height) {
    kol_set_list_places(bitmap_height);
    kol_set_trace_geometry(bitmap_height);
}

void kol_put_names_beside_rows() {
    kol_ext.trace_sig1n_y0 = kol_ext.trace_sig1r_y0 - kol_ext.trace_height / 2;
}

void kol_update_darea_edit(tm_canvas& canvas) {
    if (tm_vext.display_on) kol_draw_results(canvas, kol_ext.list_or_trace);
}

void kol_draw_results(tm_canvas& canvas, bool list) {
    canvas.clear();
    if (list) {
        kol_update_column_list(nullptr, canvas.width());
        if (rs_cursors.first.is_set || rs_cursors.second.is_set) rs_draw_list_cursors(canvas);
        kol_list_write_sigresult(canvas);
        kol_list_write_signame(canvas);
    } else {
        kol_update_row_trace(nullptr);
        if (rs_options.mark_unrecorded) rs_draw_unrecorded(canvas);
        kol_trace_write_signame(canvas);
        kol_trace_plot_sigresult(canvas);
        if (rs_options.bus_values) rs_draw_bus_values(canvas);
        rs_draw_trace_cursors(canvas);
    }
    draw_corner(canvas, list);
    const std::int32_t rows =
        list ? rs_list_rows(canvas.height())
             : canvas.height() / rs_trace_geometry.row_pitch - rs_trace_geometry.rows_below;
    if (rows < 1) write(canvas, small_page_at, small_page_text, tm_colour::white);
}

// The Results page: one of the two views on a canvas.
#include "results/page.h"

#include "foundation/context.h"
#include "kernel/context.h"
#include "results/entries/geometry.h"
#include "results/list/layout.h"
#include "results/list/view.h"
#include "results/trace/layout.h"
#include "results/trace/view.h"

namespace {

constexpr tm_pixel small_page_at = {12, 0};
constexpr std::string_view small_page_text = "Page too small for one row";

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
        kol_list_write_sigresult(canvas);
        kol_list_write_signame(canvas);
    } else {
        kol_update_row_trace(nullptr);
        kol_trace_write_signame(canvas);
        kol_trace_plot_sigresult(canvas);
    }
    const std::int32_t rows =
        list ? rs_list_rows(canvas.height())
             : canvas.height() / rs_trace_geometry.row_pitch - rs_trace_geometry.rows_below;
    if (rows < 1) canvas.text(small_page_at, small_page_text, {tm_colour::white, 12, 20});
}

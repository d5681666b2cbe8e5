// PLOT SHEET, and the picture of the Context page for HARDCOPY.
#include <algorithm>

#include "commands/handlers.h"
#include "commands/plot.h"
#include "commands/sheet.h"
#include "schematic/page_area.h"
#include "schematic/sheet_draw.h"

namespace {

constexpr double longer_side = 3200;  // pixels of the plot

// The whole page of the sheet, in its own proportions.
tm_plot_t whole_sheet(tm_file_index_t file) {
    const tm_bounds_t page = tm_page_area(file);
    const tm_box_t box = tm_box(page);
    const double width = box.xmax - box.xmin, height = box.ymax - box.ymin;
    const double scale = longer_side / std::max({width, height, 1.0});
    const auto pixels = [scale](double side) {
        return std::clamp(static_cast<std::int32_t>(side * scale), std::int32_t{100}, tm_plot_largest);
    };
    return {pixels(width), pixels(height), [file, page](tm_canvas& canvas) {
                tm_draw_sheet(file, tm_fit(page, canvas.width(), canvas.height()), canvas);
            }};
}

constexpr std::int32_t usual_width = 1000, usual_height = 560;  // where there is no window

}  // namespace

tm_plot_t kol_sheet_plot(tm_file_index_t file) {
    const tm_bounds_t& page = tm_vext.bitmap_size;
    const bool has_size = page.xmax > 0 && page.ymax > 0;
    const tm_viewport_t viewport =
        has_size ? tm_viewport(file) : tm_fit(tm_page_area(file), usual_width, usual_height);
    return {viewport.width, viewport.height,
            [file, viewport](tm_canvas& canvas) { tm_draw_sheet(file, viewport, canvas); }};
}

kol_result_t kol_plot_sheet_cmd(const kol_line_t& line) {
    const tm_file_index_t file = kol_context_file();
    return file == 0 ? kol_result_t(kol_no_sheet) : kol_plot(line, whole_sheet(file));
}

// PLOT TRACE, PLOT SHEET and HARDCOPY: a picture goes into the file that the parameter names, below the
// schematic directory unless the name begins with "/" or "$"; without a name it is printed.
#include <algorithm>
#include <string>

#include "canvas/plot.h"
#include "commands/files/file_path.h"
#include "commands/files/handlers.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "foundation/context.h"
#include "results/page.h"
#include "schematic/page_area.h"
#include "schematic/sheet_draw.h"

namespace {

constexpr std::int32_t usual_width = 1000, usual_height = 560;  // where there is no window

tm_string_record_t plot_path(const tm_string_record_t& name) {
    if (name.char_[0] == '/' || name.char_[0] == '$') return name;
    return kol_file_path(tm_view(name));
}

tm_plot_t results_plot(bool list) {
    const tm_bounds_t& page = tm_vext.bitmap_size;
    const bool has_size = page.xmax > 0 && page.ymax > 0;
    return {has_size ? page.xmax : usual_width, has_size ? page.ymax : usual_height,
            [list](tm_canvas& canvas) { kol_draw_results(canvas, list); }};
}

kol_result_t plot(const kol_line_t& line, const tm_plot_t& plot) {
    std::string error;
    const std::int16_t first = line.first_parameter();
    if (line.nkeyword < first)
        tm_plot_and_print(plot, error);
    else
        tm_plot_to_file(plot, plot_path(line[first]), error);
    return error.empty() ? kol_result_t() : kol_rejected({"# !! Error : ", error, " "});
}

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

tm_plot_t sheet_plot(tm_file_index_t file) {
    const tm_bounds_t& page = tm_vext.bitmap_size;
    const bool has_size = page.xmax > 0 && page.ymax > 0;
    const tm_viewport_t viewport =
        has_size ? tm_viewport(file) : tm_fit(tm_page_area(file), usual_width, usual_height);
    return {viewport.width, viewport.height,
            [file, viewport](tm_canvas& canvas) { tm_draw_sheet(file, viewport, canvas); }};
}

}  // namespace

kol_result_t kol_plot_trace_cmd(const kol_line_t& line) { return plot(line, results_plot(false)); }

kol_result_t kol_hardcopy_cmd(const kol_line_t& line) {
    if (tm_vext.numpage == tm_page::results) return plot(line, results_plot(kol_ext.list_or_trace));
    const tm_file_index_t file = kol_context_file();
    return file == 0 ? kol_result_t(kol_no_sheet) : plot(line, sheet_plot(file));
}

kol_result_t kol_plot_sheet_cmd(const kol_line_t& line) {
    const tm_file_index_t file = kol_context_file();
    return file == 0 ? kol_result_t(kol_no_sheet) : plot(line, whole_sheet(file));
}

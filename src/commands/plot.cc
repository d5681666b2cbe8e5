// PLOT TRACE and HARDCOPY.
#include "commands/plot.h"

#include <string>

#include "commands/handlers.h"
#include "commands/sheet.h"
#include "foundation/context.h"
#include "results/page.h"

namespace {

constexpr std::int32_t schematic_directory = 2;                 // position of the stored argument
constexpr std::int32_t usual_width = 1000, usual_height = 560;  // where there is no window

tm_string_record_t plot_path(const tm_string_record_t& name) {
    if (name.char_[0] == '/' || name.char_[0] == '$') return name;
    tm_string_record_t path;
    STATUS_T status;
    tm_get_arg(schematic_directory, path, status);
    tm_append("/", path);
    tm_append(tm_view(name), path);
    return path;
}

}  // namespace

tm_plot_t kol_results_plot(bool list) {
    const tm_bounds_t& page = tm_vext.bitmap_size;
    const bool has_size = page.xmax > 0 && page.ymax > 0;
    return {has_size ? page.xmax : usual_width, has_size ? page.ymax : usual_height,
            [list](tm_canvas& canvas) { kol_draw_results(canvas, list); }};
}

kol_result_t kol_plot(const kol_line_t& line, const tm_plot_t& plot) {
    std::string error;
    const std::int16_t first = line.first_parameter();
    if (line.nkeyword < first)
        tm_plot_and_print(plot, error);
    else
        tm_plot_to_file(plot, plot_path(line[first]), error);
    return error.empty() ? kol_result_t() : kol_rejected({"# !! Error : ", error, " "});
}

kol_result_t kol_plot_trace_cmd(const kol_line_t& line) { return kol_plot(line, kol_results_plot(false)); }

kol_result_t kol_hardcopy_cmd(const kol_line_t& line) {
    if (tm_vext.numpage == tm_page::results) return kol_plot(line, kol_results_plot(kol_ext.list_or_trace));
    const tm_file_index_t file = kol_context_file();
    return file == 0 ? kol_result_t(kol_no_sheet) : kol_plot(line, kol_sheet_plot(file));
}

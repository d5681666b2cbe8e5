// PLOT TRACE and HARDCOPY.
#include "commands/plot.h"

#include <string>

#include "commands/handlers.h"
#include "commands/sheet.h"
#include "foundation/context.h"
#include "results/page.h"

namespace {

constexpr std::string_view trace_words = " PLOt TRAce ";
constexpr std::string_view hardcopy_words = " HARdcopy ";

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

void kol_plot(std::string_view words, std::int16_t first, std::int16_t nkeyword, kol_array_keyword_t& keyword,
              const tm_plot_t& plot) {
    std::string error;
    if (nkeyword < first)
        tm_plot_and_print(plot, error);
    else
        tm_plot_to_file(plot, plot_path(kol_kw(keyword, first)), error);
    if (error.empty()) return kol_echo(words, first, nkeyword, keyword);
    kol_reject(words, first, nkeyword, keyword, kol_rejection_t{error = "# !! Error : " + error + " "});
}

void kol_plot_trace_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    kol_plot(trace_words, 3, nkeyword, keyword, kol_results_plot(false));
}

void kol_hardcopy_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (tm_vext.numpage == tm_page::results)
        return kol_plot(hardcopy_words, 2, nkeyword, keyword, kol_results_plot(kol_ext.list_or_trace));
    const tm_file_index_t file = kol_sheet_or_reject(hardcopy_words, 2, nkeyword, keyword);
    if (file != 0) kol_plot(hardcopy_words, 2, nkeyword, keyword, kol_sheet_plot(file));
}

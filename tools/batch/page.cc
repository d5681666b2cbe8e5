// Pages that nobody sees: what is drawn is dropped, what drawing computes for later commands is not.
#include "batch/page.h"

#include "commands/language/bindings.h"
#include "commands/shared/net_looks.h"
#include "commands/shared/picking.h"
#include "foundation/shell.h"
#include "results/entries/options.h"
#include "results/page.h"

namespace {

constexpr tm_bounds_t page_size = {0, 0, 995, 504};

struct no_canvas final : tm_canvas {
    std::int32_t width() const override { return page_size.xmax; }
    std::int32_t height() const override { return page_size.ymax; }
    void clear() override {}
    void polyline(std::span<const tm_pixel>, const tm_pen&) override {}
    void fill(std::span<const tm_pixel>, tm_colour) override {}
    void dots(tm_pixel, tm_pixel, tm_pixel, tm_colour) override {}
    void text(tm_pixel, std::string_view, const tm_lettering&) override {}
};

void redraw_results() {
    no_canvas canvas;
    kol_set_list_geometry(page_size.ymax);
    kol_put_names_beside_rows();
    kol_update_darea_edit(canvas);
}

void show_other_page() {
    tm_vext.numpage = tm_vext.numpage == tm_page::results ? tm_page::context : tm_page::results;
}

// What a window is made with when its user has chosen nothing.
void take_usual_options() {
    rs_options = {true, true, true};
    kol_picked_by_path = true;
    kol_show_states_on_sheets(true);
    tm_bind_wheel();
}

}  // namespace

tm_bounds_t bt_open_pages() {
    take_usual_options();
    tm_shell.redraw_results = tm_shell.redraw_states = redraw_results;
    tm_shell.show_other_page = show_other_page;
    tm_vext.bitmap_size = page_size;
    tm_vext.init_done = true;
    return page_size;
}

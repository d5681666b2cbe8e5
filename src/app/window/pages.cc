// The drawing pages.
#include "app/window/pages.h"

#include <Xm/DrawingA.h>
#include <Xm/TabStack.h>

#include <algorithm>
#include <string>

#include "app/window/mark_band.h"
#include "app/window/options.h"
#include "app/window/pauses.h"
#include "app/window/scroll_bars.h"
#include "app/window/status_line.h"
#include "app/window/x_canvas.h"
#include "foundation/platform.h"
#include "foundation/shell.h"
#include "kernel/context.h"
#include "results/page.h"
#include "schematic/object.h"
#include "schematic/sheet_draw.h"

namespace {

struct page_row {
    const char* label;
    const char* label_when_current;
};
constexpr std::array<page_row, tm_pages> pages = {{
    {"     EDIT            ", " ((((( EDIT )))))    "},
    {"     CONTEXT         ", " ((((( CONTEXT ))))) "},
}};

bool redraw_waits = false;

std::size_t index_of(tm_page page) { return static_cast<std::size_t>(page); }
std::size_t current_page() { return index_of(tm_vext.numpage); }

bool on_a_page(Widget area) { return area != nullptr && area == tm_window.curdrawarea && XtIsRealized(area); }

// The sheet on the Context page, 0 when there is none.
tm_file_index_t sheet_shown() {
    const std::int32_t file = tm_vext.file_id_context;
    if (file < 1 || file > static_cast<std::int32_t>(tm_max_open_files)) return 0;
    const auto index = static_cast<tm_file_index_t>(file);
    return tm_is_file_open(index) ? index : tm_file_index_t{0};
}

// obj_pos from pixel_pos; a position that the pixel already shows is kept, for it may be finer than a pixel.
// Without a sheet a pixel is a unit.
void set_object_position() {
    const tm_file_index_t file = tm_vext.numpage == tm_page::context ? sheet_shown() : tm_file_index_t{0};
    const tm_pixel pixel = {tm_vext.pixel_pos.x, tm_vext.pixel_pos.y};
    if (file == 0) {
        tm_vext.obj_pos = tm_vext.pixel_pos;
        return;
    }
    const tm_viewport_t seen = tm_viewport(file);
    const tm_pixel kept = tm_model_to_pixel(seen, tm_vext.obj_pos);
    if (kept.x != pixel.x || kept.y != pixel.y) tm_vext.obj_pos = tm_pixel_to_model(seen, pixel);
}

tm_bounds_t size_of(Widget area) {
    Dimension width = 0, height = 0;
    XtVaGetValues(area, XmNwidth, &width, XmNheight, &height, nullptr);
    return {0, 0, std::max<std::int32_t>(width, 1), std::max<std::int32_t>(height, 1)};
}

Pixmap black_pixmap(const tm_bounds_t& size) {
    const int screen = DefaultScreen(tm_window.dpy);
    const auto width = static_cast<unsigned>(size.xmax), height = static_cast<unsigned>(size.ymax);
    const Pixmap made = XCreatePixmap(tm_window.dpy, DefaultRootWindow(tm_window.dpy), width, height,
                                      static_cast<unsigned>(DefaultDepth(tm_window.dpy, screen)));
    XSetForeground(tm_window.dpy, tm_window.our_gc, x_canvas_pixel(tm_colour::black));
    XFillRectangle(tm_window.dpy, made, tm_window.our_gc, 0, 0, width, height);
    return made;
}

void redraw_current_page() {
    redraw_waits = false;
    tm_window.picture_changed = true;
    if (tm_vext.numpage == tm_page::results)
        pages_redraw_results();
    else
        pages_redraw_context();
}

void late_redraw_cb(XtPointer, XtIntervalId*) {
    if (redraw_waits) redraw_current_page();
}

// Now, or when the running command is over.
void redraw_soon() {
    if (!tm_vext.cmd_executing) return redraw_current_page();
    pages_show_picture();
    if (redraw_waits) return;
    redraw_waits = true;
    XtAppAddTimeOut(tm_window.app, 0, late_redraw_cb, nullptr);
}

// The directory of the sheet that is shown, or else the schematic directory.
std::string_view directory_shown() {
    const tm_file_index_t file = tm_vext.numpage == tm_page::context ? sheet_shown() : tm_file_index_t{0};
    return tm_view(file == 0 ? kol_ext.dir_path : tm_vext.filear[static_cast<std::size_t>(file - 1)].dirname);
}

void set_title() { status_name_window(" Logic Simulator Kolv  " + std::string(directory_shown())); }

// Without a sheet there is nothing but what to do.
void hint_at_sheets(tm_canvas& canvas) {
    constexpr std::string_view hints[] = {
        "No sheet is shown yet.",
        "VIEW SHEET directory   shows a sheet; the menu File chooses one",
        "VIEW NET, VIEW PIN, VIEW INSTANCE and a name   show where something is",
    };
    const double scale = canvas.scale();
    const auto cell = static_cast<std::int32_t>(10 * scale), line = static_cast<std::int32_t>(24 * scale);
    tm_pixel at = {2 * cell, line};
    for (const std::string_view hint : hints) {
        canvas.text(at, hint, {tm_colour::white, cell, line * 3 / 4});
        at.y += line;
    }
}

void draw_context() {
    x_canvas canvas(tm_page::context);
    canvas.clear();
    if (const tm_file_index_t file = sheet_shown(); file != 0)
        tm_draw_sheet(file, tm_viewport(file), canvas);
    else if (window_options().hints)
        hint_at_sheets(canvas);
}

void discard_exposures(Widget area) {
    XEvent event;
    while (XCheckTypedWindowEvent(tm_window.dpy, XtWindow(area), Expose, &event)) {
    }
}

// The tab stack draws all its labels over those that were not covered, which makes them bolder: after an
// exposure the whole strip is cleared and drawn once more.
void tabs_exposed(Widget tabs, XtPointer, XEvent* event, Boolean*) {
    static unsigned long own_request = 0;
    if (event->type != Expose || event->xexpose.count > 0 || event->xexpose.serial == own_request) return;
    own_request = NextRequest(tm_window.dpy);
    XClearArea(tm_window.dpy, XtWindow(tabs), 0, 0, 0, 0, True);
}

void select_page(std::size_t page) {
    tm_vext.numpage = static_cast<tm_page>(page);
    tm_window.curdrawarea = tm_window.drawarea[page];
    tm_window.curdrareapixmap = tm_window.drareapixmap[page];
    pages_set_labels();
}

}  // namespace

void pages_set_labels() {
    for (std::size_t i = 0; i < tm_pages; ++i) {
        const tm_xm_string label(i == current_page() ? pages[i].label_when_current : pages[i].label);
        XtVaSetValues(tm_window.page_form[i], XmNtabLabelString, label.get(), nullptr);
    }
}

void pages_watch_tabs() {
    Widget const strip = XtNameToWidget(tm_window.tabStack, "tabBox");  // the toolkit's own children
    WidgetList parts = nullptr;
    Cardinal count = 0;
    if (strip != nullptr) XtVaGetValues(strip, XmNchildren, &parts, XmNnumChildren, &count, nullptr);
    for (Cardinal i = 0; i < count; ++i)
        XtAddEventHandler(parts[i], ExposureMask, False, tabs_exposed, nullptr);
}

void pages_create_pixmaps() {
    x_canvas_flush();
    const tm_bounds_t size = size_of(tm_window.curdrawarea);
    for (Pixmap& pixmap : tm_window.drareapixmap) {
        if (pixmap != 0) XFreePixmap(tm_window.dpy, pixmap);
        pixmap = black_pixmap(size);
    }
    tm_window.curdrareapixmap = tm_window.drareapixmap[current_page()];
    tm_window.curdarea_pixel_bounds = size;
    tm_vext.bitmap_size = size;
}

void pages_redraw_results() {
    x_canvas canvas(tm_page::results);
    if (window_options().results_follow_window) kol_set_list_geometry(canvas.height());
    if (window_options().names_beside_rows) kol_put_names_beside_rows();
    kol_update_darea_edit(canvas);
    scroll_bars_follow();
    status_soon();
    if (tm_vext.numpage == tm_page::results) pages_copy_to_window();
}

// The page is drawn when it is to be seen; an expose event draws it when it comes to the front.
void pages_redraw_context() {
    if (tm_vext.numpage != tm_page::context || tm_window.curdrareapixmap == 0) return;
    if (tm_vext.display_on) draw_context();
    status_soon();
    set_title();
    pages_copy_to_window();
}

void pages_redraw_states() {
    pages_redraw_results();
    if (kol_ext.start_probe_signal != nullptr || window_options().sheet_shows_states) pages_redraw_context();
}

void pages_show_other() { XmTabStackSelectTab(tm_window.page_form[1 - current_page()], True); }

void pages_copy_to_window() {
    if (tm_window.picture_changed || band_is_left()) pages_show_picture();
}

void pages_show_picture() {
    if (!on_a_page(tm_window.curdrawarea) || tm_window.curdrareapixmap == 0) return;
    tm_window.picture_changed = false;
    x_canvas_flush();
    const tm_bounds_t& size = tm_vext.bitmap_size;
    XCopyArea(tm_window.dpy, tm_window.curdrareapixmap, XtWindow(tm_window.curdrawarea), tm_window.our_gc, 0,
              0, static_cast<unsigned>(size.xmax), static_cast<unsigned>(size.ymax), 0, 0);
    band_renew();
}

void pages_pointer_position() {
    if (!on_a_page(tm_window.curdrawarea)) return;
    Window root = 0, child = 0;
    int root_x = 0, root_y = 0, x = 0, y = 0;
    unsigned buttons = 0;
    XQueryPointer(tm_window.dpy, XtWindow(tm_window.curdrawarea), &root, &child, &root_x, &root_y, &x, &y,
                  &buttons);
    const tm_bounds_t& size = tm_vext.bitmap_size;
    tm_vext.pixel_pos = {std::clamp(x, 0, size.xmax), std::clamp(y, 0, size.ymax)};
    set_object_position();
}

void pages_move_pointer(std::int32_t x, std::int32_t y) {
    if (!on_a_page(tm_window.curdrawarea)) return;
    XWarpPointer(tm_window.dpy, 0, XtWindow(tm_window.curdrawarea), 0, 0, 0, 0, x, y);
}

void kol_drawing_area_callback_expose(Widget area, XtPointer, XtPointer) {
    if (!on_a_page(area)) return;
    tm_window.exposed = true;
    discard_exposures(area);
    redraw_soon();
}

void kol_drawing_area_callback_resize(Widget area, XtPointer, XtPointer) {
    if (!on_a_page(area) || tm_window.curdrareapixmap == 0) return;
    const tm_bounds_t size = size_of(area);
    if (size.xmax != tm_vext.bitmap_size.xmax || size.ymax != tm_vext.bitmap_size.ymax) {
        pages_create_pixmaps();
        redraw_soon();
    }
    pages_pointer_position();
}

void cb_tabstack_page_change(Widget, XtPointer, XtPointer call_data) {
    const auto* change = static_cast<XmTabStackCallbackStruct*>(call_data);
    for (std::size_t page = 0; page < tm_pages; ++page) {
        if (change->selected_child != tm_window.page_form[page] || page == current_page()) continue;
        select_page(page);
        set_title();
        XFlush(tm_window.dpy);
        xdelayms(pause_after_page);
    }
}

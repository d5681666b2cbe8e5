// The rubber band.
#include "app/window/mark_band.h"

#include <algorithm>
#include <cstdlib>

#include "app/window/window_record.h"
#include "app/window/x_canvas.h"
#include "commands/shared/marks.h"

namespace {

struct frame {
    int x = 0, y = 0;
    unsigned width = 0, height = 0;
};
frame shown;
bool is_shown = false;

bool marked_frame(frame& marked) {
    tm_point_t corner;
    if (!kol_mark_band(tm_vext.numpage, corner)) return false;
    const tm_point_t& pointer = tm_vext.pixel_pos;
    marked = {std::min(corner.x, pointer.x), std::min(corner.y, pointer.y),
              static_cast<unsigned>(std::abs(corner.x - pointer.x)),
              static_cast<unsigned>(std::abs(corner.y - pointer.y))};
    return true;
}

void copy_from_picture(int x, int y, unsigned width, unsigned height) {
    XCopyArea(tm_window.dpy, tm_window.curdrareapixmap, XtWindow(tm_window.curdrawarea), tm_window.our_gc, x,
              y, width, height, x, y);
}

void erase() {
    if (!is_shown) return;
    const auto& [x, y, width, height] = shown;
    copy_from_picture(x, y, width + 1, 1);
    copy_from_picture(x, y + static_cast<int>(height), width + 1, 1);
    copy_from_picture(x, y, 1, height + 1);
    copy_from_picture(x + static_cast<int>(width), y, 1, height + 1);
    is_shown = false;
}

void draw() {
    if (!marked_frame(shown)) return;
    XSetForeground(tm_window.dpy, tm_window.our_gc, x_canvas_pixel(tm_colour::white));
    XDrawRectangle(tm_window.dpy, XtWindow(tm_window.curdrawarea), tm_window.our_gc, shown.x, shown.y,
                   shown.width, shown.height);
    is_shown = true;
}

}  // namespace

void band_follow() {
    erase();
    draw();
}

void band_renew() {
    is_shown = false;
    draw();
}

bool band_is_left() {
    frame marked;
    return is_shown && !marked_frame(marked);
}

// What the floors below ask of the window.
#include "app/window/shell_hooks.h"

#include <X11/cursorfont.h>
#include <X11/keysym.h>

#include <array>
#include <chrono>

#include "app/window/entry.h"
#include "app/window/pages.h"
#include "app/window/session_text.h"
#include "app/window/status_line.h"
#include "app/window/window.h"
#include "app/window/window_record.h"
#include "foundation/shell.h"

namespace {

using steady = std::chrono::steady_clock;
// A run asks for its keys at every event; the connection is read only this often.
constexpr std::chrono::milliseconds key_interval{20};

// The pointer stays busy through a command file: the normal shape returns with the event loop.
bool busy_shown = false, busy_wanted = false, restore_waits = false;

void show_pointer() {
    static const Cursor watch = XCreateFontCursor(tm_window.dpy, XC_watch);
    if (busy_shown == busy_wanted) return;
    busy_shown = busy_wanted;
    if (busy_shown)
        XDefineCursor(tm_window.dpy, XtWindow(tm_window.top_window), watch);
    else
        XUndefineCursor(tm_window.dpy, XtWindow(tm_window.top_window));
}

void idle_pointer_cb(XtPointer, XtIntervalId*) {
    restore_waits = false;
    show_pointer();
}

void show_busy(bool on) {
    busy_wanted = on;
    if (on) return show_pointer();
    if (!busy_shown || restore_waits) return;
    restore_waits = true;
    XtAppAddTimeOut(tm_window.app, 0, idle_pointer_cb, nullptr);
}

Bool is_control_key(Display*, XEvent* event, XPointer letter) {
    if (event->type != KeyPress || (event->xkey.state & ControlMask) == 0) return False;
    const KeySym wanted = static_cast<KeySym>(static_cast<unsigned char>(*letter));
    KeySym lower = 0, upper = 0;
    XConvertCase(XLookupKeysym(&event->xkey, 0), &lower, &upper);
    return lower == wanted;
}

Bool is_exposure(Display*, XEvent* event, XPointer) { return event->type == Expose; }

// Keeps the window readable during a long command; input waits.
void repaint_exposed() {
    XEvent event;
    while (XCheckIfEvent(tm_window.dpy, &event, is_exposure, nullptr)) XtDispatchEvent(&event);
}

bool take_control_key(char letter) {
    static std::array<steady::time_point, 26> last_look;
    if (letter < 'a' || letter > 'z') return false;
    const auto now = steady::now();
    steady::time_point& last = last_look[static_cast<std::size_t>(letter - 'a')];
    if (now - last < key_interval) return false;
    last = now;
    session_show_due();
    status_show_run();
    repaint_exposed();
    XEvent event;
    return XCheckIfEvent(tm_window.dpy, &event, is_control_key, &letter) != 0;
}

}  // namespace

void tm_use_window() {
    tm_shell.append_session = session_append;
    tm_shell.set_command_entry = entry_set_text;
    tm_shell.redraw_results = pages_redraw_results;
    tm_shell.redraw_context = pages_redraw_context;
    tm_shell.redraw_states = pages_redraw_states;
    tm_shell.show_other_page = pages_show_other;
    tm_shell.copy_to_window = pages_copy_to_window;
    tm_shell.busy = show_busy;
    tm_shell.move_pointer = pages_move_pointer;
    tm_shell.take_control_key = take_control_key;
    tm_shell.flush = tm_win_flush;
    tm_shell.abandon_display = tm_win_close;
}

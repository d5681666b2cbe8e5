#include "app/input.h"

#include <X11/keysym.h>
#include <Xm/DrawingA.h>

#include <algorithm>
#include <iterator>

#include "app/entry.h"
#include "app/mark_band.h"
#include "app/pages.h"
#include "commands/interpreter.h"
#include "commands/marks.h"
#include "foundation/platform.h"
#include "foundation/shell.h"

namespace {

// Modifier bits that count; Caps Lock and Num Lock do not.
constexpr unsigned modifier_mask = ShiftMask | ControlMask | Mod1Mask | Mod5Mask;

using action_12 = tm_actions_12 tm_defref_var_rec_t::*;
using action_4 = tm_actions_4 tm_defref_var_rec_t::*;

struct modifier_row {
    unsigned state;  // exactly this
    action_12 pressed, released;
    action_4 arrow;
};
using ctx = tm_defref_var_rec_t;
constexpr modifier_row modifiers[] = {
    // state       function key pressed, released            arrow
    {0, &ctx::action_f, &ctx::action_fup, &ctx::action_a},
    {ShiftMask, &ctx::action_fs, &ctx::action_fsup, &ctx::action_as},
    {ControlMask, &ctx::action_fc, &ctx::action_fcup, &ctx::action_ac},
    {Mod1Mask, &ctx::action_fa, &ctx::action_faup, &ctx::action_aa},
    {Mod5Mask, &ctx::action_fa, &ctx::action_faup, &ctx::action_aa},
};

constexpr KeySym arrows[] = {XK_Up, XK_Left, XK_Down, XK_Right};  // in the order of the tables

const modifier_row* find_modifier(unsigned state) {
    for (const modifier_row& row : modifiers)
        if (row.state == state) return &row;
    return nullptr;
}

void run_text(const tm_string_record_t& bound) {
    if (bound.len > 0) kol_send_command(tm_view(bound));
}

bool is_function_key(KeySym keysym) { return x_is_function_key(static_cast<std::uint32_t>(keysym)); }

void run_function_key(KeySym keysym, action_12 modifier_row::*table) {
    const modifier_row* row = find_modifier(tm_vext.state);
    if (row != nullptr) run_text((tm_vext.*(row->*table))[keysym - XK_F1]);
}

// Arrow keys run on the press and again on the release.
bool run_arrow(KeySym keysym) {
    const auto* found = std::find(std::begin(arrows), std::end(arrows), keysym);
    if (found == std::end(arrows)) return false;
    const modifier_row* row = find_modifier(tm_vext.state);
    if (row != nullptr) run_text((tm_vext.*(row->arrow))[static_cast<std::size_t>(found - arrows)]);
    return true;
}

// The letter of Control+letter in lower case, 0 for any other key.
char control_letter(KeySym keysym) {
    if (tm_vext.state != ControlMask || keysym > 127) return 0;
    const char upper = tm_upper_case(static_cast<char>(keysym));
    return upper >= 'A' && upper <= 'Z' ? static_cast<char>(upper - 'A' + 'a') : '\0';
}

bool run_control_key(char letter) {
    if (letter == 'c') {
        kol_send_command(" BYE ");
    } else if (letter == 'd') {
        kol_send_command(" QUIT ");
    } else if (letter >= 'n' && letter <= 'z') {
        run_text(tm_vext.action_ck[static_cast<std::size_t>(letter - 'n')]);
    } else {
        return false;
    }
    return true;
}

bool has_control_action(char letter) {
    return letter == 'c' || letter == 'd' || (letter >= 'n' && letter <= 'z');
}

bool is_page_key(KeySym keysym) { return keysym == XK_Prior || keysym == XK_Next || keysym == XK_Escape; }

void run_page_key(KeySym keysym) {
    if (keysym == XK_Prior) kol_exec_cmd("kolvMenuDB");
    if (keysym == XK_Next) kol_exec_cmd("kolvKeysDB");
    if (keysym != XK_Escape) return;
    kol_forget_marks();  // a rectangle that nobody wants any more
    band_follow();
}

// A repeating key sends a release and a press together; the press is taken away and the release not counted.
bool is_repeat(XKeyEvent& key) {
    const auto same_key = [](Display*, XEvent* next, XPointer wanted) -> Bool {
        const auto* released = reinterpret_cast<const XKeyEvent*>(wanted);
        return next->type == KeyPress && next->xkey.keycode == released->keycode &&
               next->xkey.time == released->time;
    };
    XEvent press;
    return XCheckIfEvent(tm_window.dpy, &press, same_key, reinterpret_cast<XPointer>(&key)) != 0;
}

// Each result tells whether the key was one of ours; any other key is typing.
bool key_pressed(KeySym keysym) {
    const char letter = control_letter(keysym);
    if (run_arrow(keysym)) return true;
    if (!is_function_key(keysym) && !is_page_key(keysym) && !has_control_action(letter)) return false;
    xdelayms(80);
    if (is_function_key(keysym))
        run_function_key(keysym, &modifier_row::pressed);
    else if (!run_control_key(letter))
        run_page_key(keysym);
    return true;
}

bool key_released(XKeyEvent& key, KeySym keysym) {
    if (run_arrow(keysym)) return true;
    if (!is_function_key(keysym)) return false;
    xdelayms(5);
    if (!is_repeat(key)) run_function_key(keysym, &modifier_row::released);
    return true;
}

// Positions in action_but: b1, b1u, b2, b2u, b3, b3u.  A button beyond the third acts as b3 both ways.
std::size_t button_action(unsigned button, bool released) {
    if (button > Button3) return 4;
    return (button - Button1) * 2 + (released ? 1 : 0);
}

// A wheel draws no rectangle: what its text begins to mark is given up.
void run_button(const XButtonEvent& button) {
    const bool was_marking = tm_vext.mark_rectangle_on;
    run_text(tm_vext.action_but[button_action(button.button, button.type == ButtonRelease)]);
    if (button.button <= Button3 || was_marking) return;
    kol_forget_marks();
    band_follow();
}

// Only the newest of waiting motions counts: the server tells where the pointer is.
void discard_motions(Widget area) {
    XEvent event;
    while (XCheckTypedWindowEvent(tm_window.dpy, XtWindow(area), MotionNotify, &event)) {
    }
}

// Key events of the window come to the widget with the keyboard focus, wherever the pointer stands.
void key_handler(Widget, XtPointer, XEvent* event, Boolean* go_on) {
    XKeyEvent& key = event->xkey;
    const KeySym keysym = XLookupKeysym(&key, 0);
    const bool in_area = key.window == XtWindow(tm_window.curdrawarea);
    if (!in_area && !is_function_key(keysym)) return;
    tm_vext.keysym = static_cast<std::uint32_t>(keysym);
    tm_vext.state = key.state & modifier_mask;
    pages_pointer_position();
    if (key.type == KeyPress ? key_pressed(keysym) : key_released(key, keysym)) *go_on = False;
}

}  // namespace

void kol_drawing_area_callback_input(Widget area, XtPointer, XtPointer call_data) {
    XEvent* event = static_cast<XmDrawingAreaCallbackStruct*>(call_data)->event;
    if (area != tm_window.curdrawarea || event == nullptr) return;
    const tm_point_t before = tm_vext.pixel_pos;
    if (event->type == MotionNotify) discard_motions(area);
    pages_pointer_position();
    const bool moved = tm_vext.pixel_pos.x != before.x || tm_vext.pixel_pos.y != before.y;
    if (event->type == MotionNotify && moved) band_follow();
    if (event->type == ButtonPress || event->type == ButtonRelease) run_button(event->xbutton);
}

void input_watch_keys(Widget widget) {
    XtInsertEventHandler(widget, KeyPressMask | KeyReleaseMask, False, key_handler, nullptr, XtListHead);
}

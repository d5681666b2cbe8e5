// Keys and mouse buttons.
#include "app/window/input.h"

#include <X11/keysym.h>
#include <Xm/DrawingA.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>

#include "app/window/command_line.h"
#include "app/window/entry.h"
#include "app/window/leaving.h"
#include "app/window/mark_band.h"
#include "app/window/pages.h"
#include "app/window/pauses.h"
#include "app/window/status_line.h"
#include "commands/language/bindings.h"
#include "commands/language/interpreter.h"
#include "commands/shared/marks.h"
#include "foundation/platform.h"
#include "foundation/shell.h"
#include "results/entries/time_cursor.h"

namespace {

// Modifier bits that count; Caps Lock and Num Lock do not.
constexpr unsigned modifier_mask = ShiftMask | ControlMask | Mod1Mask | Mod5Mask;

// One modifier of those that are held: Control before Shift before Alt, which is Mod1 or Mod5; 0 none.
unsigned held_modifier(unsigned state) {
    if ((state & Mod5Mask) != 0) state |= Mod1Mask;
    return x_reduce_modifiers(state & modifier_mask);
}

using action_12 = tm_actions_12 tm_defref_var_rec_t::*;
using action_4 = tm_actions_4 tm_defref_var_rec_t::*;

struct modifier_row {
    unsigned state;
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
};

const modifier_row& modifier() {
    return *std::find_if(std::begin(modifiers), std::end(modifiers) - 1,
                         [](const modifier_row& row) { return row.state == tm_vext.state; });
}

// Default texts that are no commands: those of button 2, pressed and released, which the window keeps for
// itself, and that of Shift-F3.
constexpr std::string_view own_press = "$DM1 ", own_release = "$XIM ";
constexpr std::string_view no_command = "CHANGE PROPERTY POSITION ";

// Button 2 puts a cursor at the time under the pointer, with Shift the second one.
void put_cursor() {
    if (tm_vext.numpage != tm_page::results) return;
    kol_send_command(tm_vext.state == ShiftMask ? " CURSOR SECOND " : " CURSOR ");
}

void run_text(const tm_string_record_t& bound) {
    const std::string text(tm_view(bound));
    if (text.empty() || text == own_release) return;
    if (text == own_press) return put_cursor();
    if (text == no_command)
        return tm_display("# !! Error : texts of sheets are not moved here ( CHANGE PROPERTY POSITION ) ");
    if (!leaving_is_meant(text)) return kol_send_command(text);
    leaving_ask([text] { kol_send_command(text); });
}

// A rectangle was given up while its key or button was held: the release means nothing then.
bool release_is_void = false;
// The modifier with which each function key was pressed; it counts at the release, too.
std::array<const modifier_row*, 12> pressed_with{};

// What keys do; the argument is the key's position in its table.
void press_function(std::size_t key) {
    release_is_void = false;
    pressed_with[key] = &modifier();
    run_text((tm_vext.*pressed_with[key]->pressed)[key]);
}
void release_function(std::size_t key) {
    const modifier_row* const held = std::exchange(pressed_with[key], nullptr);
    if (std::exchange(release_is_void, false)) return;
    run_text((tm_vext.*(held != nullptr ? *held : modifier()).released)[key]);
}
void run_arrow(std::size_t key) { run_text((tm_vext.*modifier().arrow)[key]); }
// While there is a cursor, Control-n and Control-p take it to the changes of the signal under the pointer.
void run_control(std::size_t key) {
    constexpr std::size_t n = 0, p = 2;
    if ((key != n && key != p) || !rs_cursors.first.is_set || tm_vext.numpage != tm_page::results)
        return run_text(tm_vext.action_ck[key]);
    kol_send_command(key == n ? " CURSOR NEXT " : " CURSOR PREVIOUS ");
}
void show_menus(std::size_t) { kol_exec_cmd("kolvMenuDB"); }
void show_keys(std::size_t) { kol_exec_cmd("kolvKeysDB"); }
// A rectangle that nobody wants any more.
void give_up_marks(std::size_t) {
    release_is_void = tm_vext.mark_rectangle_on;
    kol_forget_marks();
    band_follow();
}

using key_action = void (*)(std::size_t key);

// Keys from first to last; the first has a position in its table.  Presses wait for pause_before_press and
// repeat, unless the key is quick; releases of a repeating key are not counted.
struct key_row {
    KeySym first, last;
    std::size_t position;
    bool with_control;   // only with Control, else with any modifier
    bool is_everywhere;  // acts wherever the pointer stands
    bool is_quick;
    key_action pressed, released;  // released may be null
};
constexpr key_row keys[] = {
    // keys          position control everywhere quick  pressed         released
    {XK_F1, XK_F12, 0, false, true, false, press_function, release_function},
    {XK_Up, XK_Up, 0, false, false, true, run_arrow, run_arrow},
    {XK_Left, XK_Left, 1, false, false, true, run_arrow, run_arrow},
    {XK_Down, XK_Down, 2, false, false, true, run_arrow, run_arrow},
    {XK_Right, XK_Right, 3, false, false, true, run_arrow, run_arrow},
    {XK_n, XK_z, 0, true, false, false, run_control, nullptr},
    {XK_c, XK_c, 0, true, false, false, [](std::size_t) { run_text(tm_string(" BYE ")); }, nullptr},
    {XK_d, XK_d, 0, true, false, false, [](std::size_t) { run_text(tm_string(" QUIT ")); }, nullptr},
    {XK_Prior, XK_Prior, 0, false, false, false, show_menus, nullptr},
    {XK_Next, XK_Next, 0, false, false, false, show_keys, nullptr},
    {XK_Escape, XK_Escape, 0, false, false, false, give_up_marks, nullptr},
};

const key_row* find_key(KeySym keysym, unsigned state) {
    for (const key_row& row : keys)
        if (keysym >= row.first && keysym <= row.last && (!row.with_control || state == ControlMask))
            return &row;
    return nullptr;
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

void run_key(const key_row& row, KeySym keysym, XKeyEvent& key) {
    const std::size_t position = row.position + (keysym - row.first);
    const bool is_press = key.type == KeyPress;
    if (!row.is_quick) xdelayms(is_press ? pause_before_press : pause_before_release);
    if (is_press)
        row.pressed(position);
    else if (row.is_quick || !is_repeat(key))
        row.released(position);
}

// Positions in action_but: b1, b1u, b2, b2u, b3, b3u.  A button beyond the third acts as b3 both ways.
std::size_t button_action(unsigned button, bool released) {
    if (button > Button3) return 4;
    return (button - Button1) * 2 + (released ? 1 : 0);
}

// The text that the wheel has by its key name, if any.
tm_string_record_t wheel_text(unsigned button) {
    constexpr char directions[] = {'U', 'D', 'L', 'R'};
    std::string name = {'W', directions[(button - Button4) % std::size(directions)]};
    if (tm_vext.state != 0)
        name += tm_vext.state == ShiftMask ? 'S' : tm_vext.state == ControlMask ? 'C' : 'A';
    tm_string_record_t text;
    bool known = false;
    tm_get_key_action(tm_string(name), text, known);
    return text;
}

// Whether the wheel is a key of its own; it has no release then.
bool run_wheel(const XButtonEvent& button) {
    if (button.button <= Button3) return false;
    const tm_string_record_t text = wheel_text(button.button);
    if (text.len == 0) return false;
    if (button.type == ButtonPress) run_text(text);
    return true;
}

// A wheel draws no rectangle: what its text begins to mark is given up.
void run_button(const XButtonEvent& button) {
    tm_vext.state = held_modifier(button.state);
    if (run_wheel(button)) return;
    const bool was_void = std::exchange(release_is_void, false);
    if (was_void && button.type == ButtonRelease) return;
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

// While the entry holds a text, the keys that edit it are its own, wherever the pointer rests.
bool edits_entry(KeySym keysym, unsigned state) {
    if (!entry_has_text()) return false;
    if (state == ControlMask)
        return keysym == XK_u || keysym == XK_k || keysym == XK_w || keysym == XK_e || keysym == XK_v;
    return state == 0 && keysym >= XK_Left && keysym <= XK_Down;
}

// Key events of the window come to the widget with the keyboard focus, wherever the pointer stands.  A key
// that is not ours is typing.
void key_handler(Widget, XtPointer, XEvent* event, Boolean* go_on) {
    XKeyEvent& key = event->xkey;
    KeySym keysym = 0, upper = 0;
    XConvertCase(XLookupKeysym(&key, 0), &keysym, &upper);
    const unsigned state = held_modifier(key.state);
    const key_row* const row = find_key(keysym, state);
    const bool in_area = key.window == XtWindow(tm_window.curdrawarea);
    if (!in_area && (row == nullptr || !row->is_everywhere)) return;
    if (edits_entry(keysym, state)) return;
    tm_vext.keysym = static_cast<std::uint32_t>(keysym);
    tm_vext.state = state;
    pages_pointer_position();
    if (row == nullptr || (key.type == KeyRelease && row->released == nullptr)) return;
    *go_on = False;
    run_key(*row, keysym, key);
}

}  // namespace

void kol_drawing_area_callback_input(Widget area, XtPointer, XtPointer call_data) {
    XEvent* event = static_cast<XmDrawingAreaCallbackStruct*>(call_data)->event;
    if (area != tm_window.curdrawarea || event == nullptr) return;
    const tm_point_t before = tm_vext.pixel_pos;
    if (event->type == MotionNotify) discard_motions(area);
    pages_pointer_position();
    const bool moved = tm_vext.pixel_pos.x != before.x || tm_vext.pixel_pos.y != before.y;
    if (moved) status_soon();
    if (event->type == MotionNotify && moved) band_follow();
    if (event->type == ButtonPress || event->type == ButtonRelease) run_button(event->xbutton);
}

void input_use_wheel() { tm_bind_wheel(); }

void input_watch_keys(Widget widget) {
    XtInsertEventHandler(widget, KeyPressMask | KeyReleaseMask, False, key_handler, nullptr, XtListHead);
}

// Messages and prompts.
#include "app/window/dialogs.h"

#include <Xm/MessageB.h>
#include <Xm/TextF.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "app/window/command_line.h"
#include "app/window/window_record.h"

namespace {

constexpr std::size_t prompt_characters = 92;

struct prompt_row {
    const char* name;
    const char* label;
    const char* before;  // the command around the value
    const char* after;
    Widget dialog = nullptr, value = nullptr;
    bool untouched = true;  // the value that stands there since the dialog was opened
};
std::array<prompt_row, 3> prompts = {{
    {"Run Extra Simulation Time", "Give the New Extra Simulation Time \n", " RUN ", " "},
    {"View Time List Time", "Give the New Time \n", " View Time List  ", ""},
    {"View Time Trace Time", "Give the New Time \n", " View Time Trace  ", ""},
}};

Widget information_dialog(const char* name, const char* text) {
    const tm_xm_string message(text);
    const tm_xm_string title(name);
    Arg args[] = {{const_cast<char*>(XmNmessageString), reinterpret_cast<XtArgVal>(message.get())},
                  {const_cast<char*>(XmNdialogTitle), reinterpret_cast<XtArgVal>(title.get())}};
    Widget dialog =
        XmCreateInformationDialog(tm_window.top_window, const_cast<char*>(name), args, XtNumber(args));
    XtUnmanageChild(XmMessageBoxGetChild(dialog, XmDIALOG_HELP_BUTTON));
    return dialog;
}

void prompt_ok_cb(Widget, XtPointer client_data, XtPointer) {
    const auto& row = *static_cast<const prompt_row*>(client_data);
    char* typed = XmTextFieldGetString(row.value);
    const std::string text = std::string(typed).substr(0, prompt_characters);
    XtFree(typed);
    if (text.empty()) return kol_set_quick_message("  !! Error : Invalid Time Value ??\n");
    kol_send_command(row.before + text + row.after);
}

// Where no window manager gives the keyboard to a new window, the dialog takes it.
void take_keyboard_cb(Widget dialog, XtPointer, XtPointer) {
    const Window window = XtWindow(XtParent(dialog));
    XWindowAttributes now;
    if (XGetWindowAttributes(tm_window.dpy, window, &now) != 0 && now.map_state == IsViewable)
        XSetInputFocus(tm_window.dpy, window, RevertToParent, CurrentTime);
}

// The first key that changes the value replaces it, unless the cursor was moved before.
void modify_value_cb(Widget value, XtPointer client_data, XtPointer call_data) {
    auto* change = static_cast<XmTextVerifyCallbackStruct*>(call_data);
    bool& untouched = static_cast<prompt_row*>(client_data)->untouched;
    const bool is_change = change->reason == XmCR_MODIFYING_TEXT_VALUE;
    if (change->event == nullptr || (!is_change && change->event->type != KeyPress)) return;
    if (!std::exchange(untouched, false) || !is_change) return;
    change->startPos = 0;
    change->endPos = XmTextFieldGetLastPosition(value);
}

void create_prompt(prompt_row& row) {
    row.dialog = information_dialog(row.name, row.label);
    row.value = XtVaCreateManagedWidget(" Time ", xmTextFieldWidgetClass, row.dialog, XmNmaxLength,
                                        static_cast<int>(prompt_characters), nullptr);
    XtAddCallback(row.dialog, XmNokCallback, prompt_ok_cb, &row);
    XtVaSetValues(row.dialog, XmNinitialFocus, row.value, XmNdialogStyle, XmDIALOG_PRIMARY_APPLICATION_MODAL,
                  nullptr);
    XtAddCallback(row.dialog, XmNmapCallback, take_keyboard_cb, nullptr);
    XtAddCallback(row.value, XmNmodifyVerifyCallback, modify_value_cb, &row);
    XtAddCallback(row.value, XmNmotionVerifyCallback, modify_value_cb, &row);
}

}  // namespace

void kol_set_quick_message(const char* text) {
    static Widget dialog = nullptr;
    if (dialog == nullptr) {
        dialog = information_dialog("Quick_Message", text);
        XtUnmanageChild(XmMessageBoxGetChild(dialog, XmDIALOG_CANCEL_BUTTON));
    }
    const tm_xm_string message(text);
    XtVaSetValues(dialog, XmNmessageString, message.get(), nullptr);
    XtManageChild(dialog);
}

void dialog_prompt(prompt_dialog which) {
    prompt_row& row = prompts[static_cast<std::size_t>(which)];
    if (row.dialog == nullptr) create_prompt(row);
    XmTextFieldSetString(row.value, const_cast<char*>("1000"));
    XtManageChild(row.dialog);
    row.untouched = true;
    XmTextFieldSetSelection(row.value, 0, XmTextFieldGetLastPosition(row.value),
                            XtLastTimestampProcessed(tm_window.dpy));
}

// The command entry.
#include "app/window/entry.h"

#include <Xm/Form.h>
#include <Xm/Label.h>
#include <Xm/TextF.h>

#include <algorithm>
#include <string>

#include "app/pauses.h"
#include "app/window/command_line.h"
#include "app/window/entry_history.h"
#include "foundation/platform.h"

namespace {

constexpr int entry_characters = 197;
constexpr const char* first_text = "# type here your Command ...";

// The first text makes room for what is typed or pasted.
void modify_cb(Widget entry, XtPointer, XtPointer call_data) {
    auto* change = static_cast<XmTextVerifyCallbackStruct*>(call_data);
    if (!tm_window.placeholder_shown || change->event == nullptr) return;
    tm_window.placeholder_shown = false;
    change->startPos = 0;
    change->endPos = XmTextFieldGetLastPosition(entry);
}

std::string typed_text() {
    char* raw = XmTextFieldGetString(tm_window.entrycmd);
    std::string text(raw);
    XtFree(raw);
    text.resize(std::min<std::size_t>(text.size(), entry_characters));
    return printable_text(text);
}

void history_action(Widget, XEvent*, String* way, Cardinal*) {
    std::string line;
    const std::string now = tm_window.placeholder_shown ? std::string() : typed_text();
    if (history_step(**way == '-' ? -1 : 1, now, line)) entry_set_text(line);
}

void use_history_keys() {
    static char name[] = "entry-history";
    static XtActionsRec actions[] = {{name, history_action}};
    XtAppAddActions(tm_window.app, actions, XtNumber(actions));
    XtOverrideTranslations(tm_window.entrycmd, XtParseTranslationTable("<Key>osfUp: entry-history(-)\n"
                                                                       "<Key>osfDown: entry-history(+)\n"));
}

}  // namespace

void entry_create(Widget parent) {
    const tm_xm_string label("Command Entry:");
    tm_window.label_entry = XtVaCreateManagedWidget(
        "label_entry", xmLabelWidgetClass, parent, XmNlabelString, label.get(), XmNleftAttachment,
        XmATTACH_FORM, XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM, nullptr);
    tm_window.entrycmd = XtVaCreateManagedWidget(
        "Command Entry", xmTextFieldWidgetClass, parent, XmNmaxLength, entry_characters, XmNleftAttachment,
        XmATTACH_WIDGET, XmNleftWidget, tm_window.label_entry, XmNrightAttachment, XmATTACH_FORM,
        XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM, nullptr);
    XmTextFieldSetString(tm_window.entrycmd, const_cast<char*>(first_text));
    tm_window.placeholder_shown = true;
    XtAddCallback(tm_window.entrycmd, XmNactivateCallback, kol_cmd_activate_cb, nullptr);
    XtAddCallback(tm_window.entrycmd, XmNmodifyVerifyCallback, modify_cb, nullptr);
    use_history_keys();
}

void entry_set_text(std::string_view text) {
    tm_window.placeholder_shown = false;
    XmTextFieldSetString(tm_window.entrycmd, std::string(text).data());
    XmTextFieldSetInsertionPosition(tm_window.entrycmd, XmTextFieldGetLastPosition(tm_window.entrycmd));
}

// The entry is emptied before the command runs, so that a command may leave a text to be completed there.
void entry_send() {
    const std::string text = typed_text();
    if (!tm_window.placeholder_shown) history_add(text);
    if (!text.empty() && text.back() == '?') {
        kol_send_question(text);
    } else {
        entry_set_text("");
        kol_send_command(text);
    }
    entry_focus();
    XFlush(tm_window.dpy);
    xdelayms(pause_after_entry);
}

void entry_focus() { XmProcessTraversal(tm_window.entrycmd, XmTRAVERSE_CURRENT); }

void kol_cmd_activate_cb(Widget, XtPointer, XtPointer) { entry_send(); }

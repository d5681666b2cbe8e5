// The command entry.
#include "app/window/entry.h"

#include <Xm/Form.h>
#include <Xm/Label.h>
#include <Xm/Text.h>
#include <Xm/TextF.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/window/command_line.h"
#include "app/window/entry_history.h"
#include "app/window/pauses.h"
#include "app/window/session_text.h"
#include "commands/language/completion.h"
#include "foundation/platform.h"

namespace {

constexpr int entry_characters = 197;
constexpr const char* first_text = "# type here your Command ...";

// Control characters stay out; the first text makes room for what is typed or pasted.
void modify_cb(Widget entry, XtPointer, XtPointer call_data) {
    auto* change = static_cast<XmTextVerifyCallbackStruct*>(call_data);
    if (change->text != nullptr && change->text->ptr != nullptr && change->text->length > 0) {
        char* const text = change->text->ptr;
        char* const end = std::remove_if(text, text + change->text->length, [](char c) {
            return static_cast<unsigned char>(c) < 32 || c == 127;
        });
        change->text->length = static_cast<int>(end - text);
        *end = '\0';
        if (change->text->length == 0) change->doit = False;
        if (!change->doit) return;
    }
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

// Every line of a pasted text but the last is a command; the last one stays to be completed.
void paste(std::string_view pasted) {
    if (pasted.find('\n') == std::string_view::npos) {
        const XmTextPosition at = XmTextFieldGetInsertionPosition(tm_window.entrycmd);
        if (tm_window.placeholder_shown) return entry_set_text(printable_text(pasted));
        return XmTextFieldInsert(tm_window.entrycmd, at, printable_text(pasted).data());
    }
    std::string all = (tm_window.placeholder_shown ? std::string() : typed_text()) + std::string(pasted);
    for (std::size_t end = all.find('\n'); end != std::string::npos; end = all.find('\n')) {
        entry_set_text(all.substr(0, end));
        entry_send();
        all.erase(0, end + 1);
    }
    entry_set_text(printable_text(all));
}

void paste_cb(Widget, XtPointer, Atom*, Atom*, XtPointer value, unsigned long* length, int* format) {
    if (value != nullptr && *format == 8) paste({static_cast<const char*>(value), *length});
    if (value != nullptr) XtFree(static_cast<char*>(value));
}

void paste_action(Widget entry, XEvent* event, String* selection, Cardinal*) {
    const auto atom = [](const char* name) { return XInternAtom(tm_window.dpy, name, False); };
    const bool is_button = event->type == ButtonPress || event->type == ButtonRelease;
    XtGetSelectionValue(entry, atom(*selection), atom("UTF8_STRING"), paste_cb, nullptr,
                        is_button ? event->xbutton.time : event->xkey.time);
}

// What is selected in the entry, or else in the session area.
void copy_action(Widget entry, XEvent* event, String*, Cardinal*) {
    char* const selected = XmTextFieldGetSelection(entry);
    if (selected != nullptr)
        XmTextFieldCopy(entry, event->xkey.time);
    else
        XmTextCopy(tm_window.textsession, event->xkey.time);
    XtFree(selected);
}

// What may stand behind what is typed, on the session area.
void list_choices(const std::vector<std::string>& choices) {
    constexpr std::size_t line_length = 98;
    std::string line = "#";
    for (const std::string& choice : choices) {
        if (line.size() + choice.size() + 1 > line_length && line.size() > 1) {
            session_append(line);
            line = "#";
        }
        line += " " + choice;
    }
    session_append(line);
    if (choices.size() >= kol_most_choices) session_append("# ...");
    session_show_end();
}

// Completes the word in front of the cursor; a second time, when nothing more is common, lists the choices.
void complete_action(Widget entry, XEvent*, String*, Cardinal*) {
    if (tm_window.placeholder_shown) entry_set_text("");
    const auto at = static_cast<std::size_t>(XmTextFieldGetInsertionPosition(entry));
    const std::string text = typed_text();
    const std::string before = text.substr(0, at);
    const kol_completion_t completion = kol_complete(before);
    if (completion.text != before) {
        entry_set_text(completion.text + text.substr(before.size()));
        XmTextFieldSetInsertionPosition(entry, static_cast<XmTextPosition>(completion.text.size()));
    } else if (!completion.choices.empty()) {
        list_choices(completion.choices);
    }
}

void use_own_keys() {
    static char history[] = "entry-history", paste_name[] = "entry-paste", copy[] = "entry-copy",
                complete[] = "entry-complete";
    static XtActionsRec actions[] = {{history, history_action},
                                     {paste_name, paste_action},
                                     {copy, copy_action},
                                     {complete, complete_action}};
    XtAppAddActions(tm_window.app, actions, XtNumber(actions));
    XtOverrideTranslations(tm_window.entrycmd,
                           XtParseTranslationTable("<Key>osfUp: entry-history(-)\n"
                                                   "<Key>osfDown: entry-history(+)\n"
                                                   "Ctrl<Key>v: entry-paste(CLIPBOARD)\n"
                                                   "Shift<Key>osfInsert: entry-paste(CLIPBOARD)\n"
                                                   "Ctrl<Key>c: entry-copy()\n"
                                                   "~Shift ~Meta ~Alt<Key>Tab: entry-complete()\n"
                                                   "Ctrl<Key>a: beginning-of-line()\n"
                                                   "Ctrl<Key>e: end-of-line()\n"
                                                   "Ctrl<Key>u: delete-to-start-of-line()\n"
                                                   "Ctrl<Key>k: delete-to-end-of-line()\n"
                                                   "Ctrl<Key>w: delete-previous-word()\n"
                                                   "<Btn2Down>: entry-paste(PRIMARY)\n"
                                                   "<Btn2Up>: \n"));
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
    use_own_keys();
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

bool entry_has_text() {
    return !tm_window.placeholder_shown && XmTextFieldGetLastPosition(tm_window.entrycmd) > 0;
}

void entry_focus() { XmProcessTraversal(tm_window.entrycmd, XmTRAVERSE_CURRENT); }

void kol_cmd_activate_cb(Widget, XtPointer, XtPointer) { entry_send(); }

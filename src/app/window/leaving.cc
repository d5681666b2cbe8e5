// The question before leaving.
#include "app/window/leaving.h"

#include <Xm/MessageB.h>

#include <string>
#include <utility>

#include "app/window/options.h"
#include "app/window/window_record.h"
#include "foundation/strings.h"
#include "kernel/context.h"
#include "kernel/stimuli.h"

namespace {

std::size_t saved = 0;

template <typename Record>
std::size_t length(const Record* record, Record* Record::*link) {
    std::size_t count = 0;
    for (; record != nullptr; record = record->*link) ++count;
    return count;
}

// What the user has defined.
std::size_t defined() {
    return length(kol_ext.list_signal, &yx_signal_rec_t::previous) +
           length(kol_ext.trace_signal, &yx_signal_rec_t::previous) +
           length(kol_ext.start_probe_signal, &kol_probe_signal_rec_t::next) +
           length(kol_ext.start_sim_bus, &yx_bus_rec_t::next) + kol_stimuli.forces.size();
}

std::function<void()> asked;

void yes_cb(Widget, XtPointer, XtPointer) { asked(); }

Widget create_question() {
    const tm_xm_string text("Signals, probes or forces were defined since the last save.\nGive them up ?"),
        title("Kolv");
    Arg args[] = {{const_cast<char*>(XmNmessageString), reinterpret_cast<XtArgVal>(text.get())},
                  {const_cast<char*>(XmNdialogTitle), reinterpret_cast<XtArgVal>(title.get())},
                  {const_cast<char*>(XmNdialogStyle), XmDIALOG_PRIMARY_APPLICATION_MODAL}};
    Widget question =
        XmCreateQuestionDialog(tm_window.top_window, const_cast<char*>("confirmLoss"), args, XtNumber(args));
    XtUnmanageChild(XmMessageBoxGetChild(question, XmDIALOG_HELP_BUTTON));
    XtAddCallback(question, XmNokCallback, yes_cb, nullptr);
    return question;
}

}  // namespace

void leaving_mark_saved() { saved = defined(); }

void leaving_watch_saves() {
    static std::int32_t saves = 0;
    if (std::exchange(saves, kol_ext.saves) != kol_ext.saves) leaving_mark_saved();
}

void leaving_ask(std::function<void()> act) {
    if (!window_options().confirm_loss || defined() <= saved) return act();
    static Widget const question = create_question();
    asked = std::move(act);
    XtManageChild(question);
}

bool leaving_is_meant(std::string_view text) {
    while (text.starts_with(' ')) text.remove_prefix(1);
    std::string word(text.substr(0, 3));
    for (char& c : word) c = tm_upper_case(c);
    return word == "QUI" || word == "BYE" || word == "RES";
}

// The session text area.
#include "app/window/session_text.h"

#include <Xm/ScrollBar.h>
#include <Xm/Text.h>

#include <algorithm>
#include <chrono>
#include <string>

namespace {

using steady = std::chrono::steady_clock;
constexpr std::chrono::milliseconds show_interval{50};
constexpr std::size_t slack_lines = session_kept_lines / 4;  // the widget is cut only this often

struct session_record {
    std::string pending;
    std::size_t pending_lines = 0;
    std::size_t shown_lines = 0;
    steady::time_point last_show;
    bool timer_set = false;
};
session_record session;

// The position behind the first n line ends of the text.
std::size_t behind_lines(std::string_view text, std::size_t n) {
    std::size_t at = 0;
    for (; n > 0; --n) at = text.find('\n', at) + 1;
    return at;
}

// True while the user has not scrolled away from the newest line.
bool at_end(Widget text) {
    Widget bar = nullptr;
    XtVaGetValues(XtParent(text), XmNverticalScrollBar, &bar, nullptr);
    if (bar == nullptr) return true;
    int value = 0, slider = 0, maximum = 0;
    XtVaGetValues(bar, XmNvalue, &value, XmNsliderSize, &slider, XmNmaximum, &maximum, nullptr);
    return value + slider >= maximum;
}

void drop_oldest_pending() {
    if (session.pending_lines <= session_kept_lines) return;
    session.pending.erase(0, behind_lines(session.pending, session.pending_lines - session_kept_lines));
    session.pending_lines = session_kept_lines;
}

void cut_oldest_shown(Widget text) {
    if (session.shown_lines <= session_kept_lines + slack_lines) return;
    char* all = XmTextGetString(text);
    const std::size_t cut = behind_lines(all, session.shown_lines - session_kept_lines);
    XtFree(all);
    XmTextReplace(text, 0, static_cast<XmTextPosition>(cut), const_cast<char*>(""));
    session.shown_lines = session_kept_lines;
}

void timer_cb(XtPointer, XtIntervalId*) {
    session.timer_set = false;
    session_show();
}

}  // namespace

void session_append(std::string_view line) {
    session.pending.append(line).push_back('\n');
    ++session.pending_lines;
    if (session.pending_lines > session_kept_lines + slack_lines) drop_oldest_pending();
    if (session.timer_set || tm_window.app == nullptr) return;
    session.timer_set = true;
    XtAppAddTimeOut(tm_window.app, static_cast<unsigned long>(show_interval.count()), timer_cb, nullptr);
}

void session_show_due() {
    if (steady::now() - session.last_show >= show_interval) session_show();
}

void session_show_end() {
    session_show();
    Widget text = tm_window.textsession;
    if (text != nullptr && !at_end(text)) XmTextShowPosition(text, XmTextGetLastPosition(text));
}

void session_show() {
    Widget text = tm_window.textsession;
    if (text == nullptr || session.pending_lines == 0) return;
    const bool follow = at_end(text);
    drop_oldest_pending();
    XmTextDisableRedisplay(text);
    XmTextInsert(text, XmTextGetLastPosition(text), session.pending.data());
    session.shown_lines += session.pending_lines;
    cut_oldest_shown(text);
    if (follow) XmTextShowPosition(text, XmTextGetLastPosition(text));
    XmTextEnableRedisplay(text);
    session.pending.clear();
    session.pending_lines = 0;
    session.last_show = steady::now();
}

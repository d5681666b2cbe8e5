// Clicks on paths in the session area.
#include <Xm/Text.h>

#include <algorithm>
#include <string>

#include "app/window/command_line.h"
#include "app/window/session_text.h"
#include "commands/shared/sheet_levels.h"
#include "kernel/lookup.h"
#include "kernel/name_index.h"

namespace {

bool is_of_path(char c) {
    return c > ' ' && c != '"' && c != '\'' && c != ',' && c != ';' && c != '(' && c != ')';
}

// The path in the text at a place; empty when there is none.
std::string path_at(std::string_view text, std::size_t at) {
    if (at >= text.size() || !is_of_path(text[at])) return {};
    std::size_t begin = at, end = at;
    while (begin > 0 && is_of_path(text[begin - 1])) --begin;
    while (end < text.size() && is_of_path(text[end])) ++end;
    std::string path(text.substr(begin, end - begin));
    while (!path.empty() && (path.back() == ':' || path.back() == '.')) path.pop_back();
    return path.size() > 1 && path[0] == '/' ? path : std::string();
}

// The line around a place, and the place in it.
std::string line_around(Widget text, XmTextPosition at, std::size_t& column) {
    constexpr XmTextPosition reach = 200;
    const XmTextPosition from = std::max<XmTextPosition>(at - reach, 0);
    char bytes[8 * reach];
    if (XmTextGetSubstring(text, from,
                           static_cast<int>(std::min(2 * reach, XmTextGetLastPosition(text) - from)),
                           sizeof bytes, bytes) == XmCOPY_FAILED)
        return {};
    column = static_cast<std::size_t>(at - from);
    return bytes;
}

// The command that shows what has the path; null: nothing of the design has it.
const char* command_for(const std::string& path) {
    const tm_string_record_t name = tm_string(path);
    yx_net_record_t* net = nullptr;
    if (kol_find_named(name).pin != 0) return " VIEW PIN ";
    if (kol_find_net(name, net) != 0) return " VIEW NET ";
    return kol_names_beginning(path + "/", 1).empty() ? nullptr : " VIEW INSTANCE ";
}

void click_handler(Widget text, XtPointer, XEvent* event, Boolean*) {
    const XButtonEvent& button = event->xbutton;
    static XButtonEvent press;
    if (button.button != Button1) return;
    if (button.type == ButtonPress) {
        press = button;
        return;
    }
    constexpr int still = 4;  // pixels: else something was selected
    if (std::abs(button.x - press.x) > still || std::abs(button.y - press.y) > still) return;
    std::size_t column = 0;
    const std::string line = line_around(
        text, XmTextXYToPos(text, static_cast<Position>(button.x), static_cast<Position>(button.y)), column);
    const std::string path = path_at(line, column);
    const char* const command = path.empty() || kol_context_file() == 0 ? nullptr : command_for(path);
    if (command == nullptr) return;
    if (tm_vext.numpage != tm_page::context) kol_send_command(" POP ");
    kol_send_command(command + path + " ");
}

}  // namespace

void session_watch_clicks() {
    XtAddEventHandler(tm_window.textsession, ButtonPressMask | ButtonReleaseMask, False, click_handler,
                      nullptr);
}

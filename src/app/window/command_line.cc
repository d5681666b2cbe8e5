// The user's texts as command lines.
#include "app/window/command_line.h"

#include <algorithm>

#include "app/window/session_text.h"
#include "commands/language/entry_expansion.h"
#include "commands/language/interpreter.h"

std::string printable_text(std::string_view text) {
    std::string clean(text);
    std::replace_if(
        clean.begin(), clean.end(), [](char c) { return c < 32 || c > 126; }, ' ');
    return clean;
}

void kol_send_command(std::string_view text) {
    kol_process_command(tm_string(printable_text(text)), kol_ext.ext_arg, kol_ext.top_var);
    session_show_end();
}

void kol_send_question(std::string_view text) { kol_expand_cmd(tm_string(printable_text(text))); }

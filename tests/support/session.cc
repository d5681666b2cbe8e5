#include "support/session.h"

#include <utility>

#include "foundation/shell.h"

tst_session_t tst_session;

namespace {

void keep_line(std::string_view line) { tst_session.lines.emplace_back(line); }

bool take_key(char letter) {
    const std::size_t at = tst_session.keys.find(letter);
    if (at == std::string::npos) return false;
    tst_session.keys.erase(at, 1);
    return true;
}

}  // namespace

void tst_record_session() {
    tst_session = {};
    tm_shell = tm_default_shell;
    tm_shell.append_session = keep_line;
    tm_shell.take_control_key = take_key;
}

std::vector<std::string> tst_take_lines() { return std::exchange(tst_session.lines, {}); }

std::string tst_take_text() {
    std::string text;
    for (const std::string& line : tst_take_lines()) text += line + '\n';
    return text;
}

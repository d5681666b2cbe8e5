// The lines that were sent.
#include "app/window/entry_history.h"

#include <deque>

namespace {

struct history_record {
    std::deque<std::string> lines;
    std::size_t at = 0;  // lines.size(): the line that is being typed
    std::string typed;
};
history_record history;

}  // namespace

void history_add(const std::string& line) {
    const bool is_text = line.find_first_not_of(' ') != std::string::npos;
    if (is_text && (history.lines.empty() || history.lines.back() != line)) history.lines.push_back(line);
    if (history.lines.size() > entry_kept_lines) history.lines.pop_front();
    history.at = history.lines.size();
}

bool history_step(int way, const std::string& now, std::string& line) {
    const std::size_t newest = history.lines.size();
    if (way < 0 ? history.at == 0 : history.at == newest) return false;
    if (history.at == newest) history.typed = now;
    way < 0 ? --history.at : ++history.at;
    line = history.at == newest ? history.typed : history.lines[history.at];
    return true;
}

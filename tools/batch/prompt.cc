// Lines of a user, by GNU Readline.
#include "batch/prompt.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include <readline/history.h>
#include <readline/readline.h>

#include "batch/interrupt.h"
#include "commands/language/interpreter.h"
#include "foundation/context.h"
#include "foundation/printable.h"
#include "foundation/shell.h"

namespace {

struct text_freer {
    void operator()(char* text) const { std::free(text); }
};

std::string prefilled;

int insert_prefilled() {
    rl_insert_text(prefilled.c_str());
    prefilled.clear();
    return 0;
}

void run(std::string line) {
    std::ranges::replace_if(
        line, [](char c) { return !tm_is_printable(c); }, ' ');
    if (line.size() >= static_cast<std::size_t>(tm_string_max)) tm_display(kol_line_is_cut);
    kol_process_command(tm_string(line), kol_ext.ext_arg, kol_ext.top_var);
}

}  // namespace

bool bt_is_at_terminal() { return ::isatty(STDIN_FILENO) == 1; }

void bt_prefill_prompt(std::string_view text) { prefilled = text; }

void bt_serve_prompt() {
    rl_readline_name = "kolv";
    rl_startup_hook = insert_prefilled;
    while (!tm_vext.end_flag) {
        bt_forget_interrupt();
        const std::unique_ptr<char, text_freer> line(readline("kolv> "));
        if (line == nullptr) return;
        if (line.get()[0] != '\0') add_history(line.get());
        run(line.get());
    }
}

// The prompt of a session whose command file is a terminal: line editing and history.
#pragma once

#include <string_view>

// Whether standard input is a terminal.
bool bt_is_at_terminal();
// Reads commands and runs them, until QUIT, BYE or the end of the input.
void bt_serve_prompt();
// The next line begins with a text that the user completes.
void bt_prefill_prompt(std::string_view text);

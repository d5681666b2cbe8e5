// tm: the way of the user's texts to the interpreter.  Whatever comes from a widget, a key, a menu or a file
// box becomes a command line here.  Toolkit texts hold any bytes; each byte that is not printable becomes a
// blank, so that no text of a user can be more than a wrong command.
#pragma once

#include <string>
#include <string_view>

std::string printable_text(std::string_view text);
// Executes a command line at top level.
void kol_send_command(std::string_view text);
// Expands what was typed in front of a question mark.
void kol_send_question(std::string_view text);

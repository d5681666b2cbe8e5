// tm: the command entry.  Owns the text field in which commands are typed: its first text, which yields to
// the first key, sending what was typed, expansion.
#pragma once

#include <string_view>

#include "app/window/window_record.h"

void entry_create(Widget parent);            // label_entry and entrycmd
void entry_set_text(std::string_view text);  // replaces the text, ready to be edited
void entry_send();                           // executes the text, or expands it behind a "?"
void entry_focus();
bool entry_has_text();  // something is being typed
void kol_cmd_activate_cb(Widget, XtPointer, XtPointer);

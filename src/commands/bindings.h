// tm: texts bound to keys and buttons.  Key names are case-insensitive; ok false: unknown name.
#pragma once

#include "foundation/strings.h"

void tm_set_key_action(const tm_string_record_t& key, const tm_string_record_t& text, bool& ok);
void tm_get_key_action(const tm_string_record_t& key, tm_string_record_t& text, bool& ok);
void tm_status_key_all();
// Sets the start values and default bindings, then runs the installation's key file when there is one.
void kol_init_menu_action();

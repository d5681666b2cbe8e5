// tm: texts bound to keys and buttons, held in tm_vext.  A key name is a button ("B1", "B1U" released), a
// function key ("F7", with "S", "C" or "A" for a modifier and "U" for released behind it: "F3UA"), an arrow
// ("AU", "AL", "AD", "AR", with a modifier: "ALS") a control key ("CNTL_N" .. "CNTL_Z"), or the wheel
// ("WU", "WL", "WD", "WR", with a modifier: "WUC"), in either case.
// An empty text: unbound.
#pragma once

#include "foundation/strings.h"

// ok false: unknown name, nothing is changed; text is then empty.
void tm_set_key_action(const tm_string_record_t& key, const tm_string_record_t& text, bool& ok);
void tm_get_key_action(const tm_string_record_t& key, tm_string_record_t& text, bool& ok);
// Lists the bindings of buttons, function keys and control keys on the session area.
void tm_status_key_all();
// Binds the wheel: it scrolls, with Shift sideways, with Control it zooms.
void tm_bind_wheel();
// Sets the start values of the shell and the default bindings, then runs the
// installation's key file when there is one.
void kol_init_menu_action();

// tm: keys and mouse buttons of the drawing pages.  Reduces each event to a key and one modifier, finds the
// command text bound to it and executes it.  The keyboard focus stays with the command entry: keys pressed
// while the pointer is in a drawing page act as bound, all that are not bound by nature are typing.  Function
// keys act wherever the pointer stands.
#pragma once

#include "app/window/window_record.h"

void kol_drawing_area_callback_input(Widget area, XtPointer, XtPointer call_data);
// Binds the wheel: it scrolls, with Shift sideways, with Control it zooms.
void input_use_wheel();
// Handles the keys that arrive at the widget with the keyboard focus.
void input_watch_keys(Widget widget);

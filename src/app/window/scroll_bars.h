// tm: the scroll bars of the Results page, one for the time and one across it: rows of the trace, columns of
// the list.
#pragma once

#include "app/window/window_record.h"

// Beside and below a drawing area of its form; which then ends at them.
void scroll_bars_create(Widget form, Widget area);
// As what is shown; does nothing without bars.
void scroll_bars_follow();

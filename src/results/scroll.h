// kol: scrolling of the Results page.  Moves the view that is shown in time by one step, about a hundredth of
// end_time: the list up and down, the trace left and right; elsewhere nothing happens.
#pragma once

void kol_cursor_down_1st();
void kol_cursor_up_1st();
void kol_cursor_left_1st();
void kol_cursor_right_1st();

// kol: scrolling of the Results page.  In time the view that is shown moves by one step, about a hundredth of
// end_time, the list up and down, the trace left and right; across it the trace moves by rows and the list by
// columns.  On the Context page nothing happens.
#pragma once

#include <cstdint>

void kol_cursor_down_1st();
void kol_cursor_up_1st();
void kol_cursor_left_1st();
void kol_cursor_right_1st();

// Moves the view by eightieths of the page, up, down, left or right ('U', 'D', 'L', 'R'), at least by one
// row, column or time step.
void rs_scroll_page(char direction, std::int32_t eightieths);

// How far the view reaches in a direction: time steps, or rows or columns from 1.
struct rs_extent_t {
    std::int32_t first = 0, shown = 1, end = 1;
};
rs_extent_t rs_extent(bool is_vertical);
// Draws the page beginning there.
void rs_scroll_to(bool is_vertical, std::int32_t first);

// Scrolling of the list and the trace by one time step of about a hundredth of the simulated time.
#include "results/scroll.h"

#include "foundation/context.h"
#include "foundation/shell.h"
#include "kernel/context.h"

namespace {

std::int32_t scroll_step() {
    const std::int32_t step = kol_ext.end_time / 100;
    for (const std::int32_t round : {1'000'000, 100'000, 10'000, 1'000})
        if (step > round) return round;
    return step;
}

void scroll_forward(bool is_shown, std::int32_t& time) {
    const std::int32_t step = scroll_step();
    if (!is_shown || tm_vext.numpage != tm_page::results || std::int64_t{time} + step >= kol_ext.end_time)
        return;
    time += step;
    tm_shell.redraw_results();
}

void scroll_back(bool is_shown, std::int32_t& time) {
    const std::int32_t step = scroll_step();
    if (!is_shown || tm_vext.numpage != tm_page::results || time - step < 0) return;
    time -= step;
    tm_shell.redraw_results();
}

}  // namespace

void kol_cursor_down_1st() { scroll_forward(kol_ext.list_or_trace, kol_ext.list_cur_time); }
void kol_cursor_up_1st() { scroll_back(kol_ext.list_or_trace, kol_ext.list_cur_time); }
void kol_cursor_right_1st() { scroll_forward(!kol_ext.list_or_trace, kol_ext.trace_cur_time); }
void kol_cursor_left_1st() { scroll_back(!kol_ext.list_or_trace, kol_ext.trace_cur_time); }

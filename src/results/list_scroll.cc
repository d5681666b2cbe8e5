// Scrolling of the list by one time step of about a hundredth of the simulated time.
#include "foundation/context.h"
#include "foundation/shell.h"
#include "results/list_view.h"

namespace {

constexpr std::int16_t results_page = 0;

std::int32_t scroll_step() {
    const std::int32_t step = kol_ext.end_time / 100;
    for (const std::int32_t round : {1'000'000, 100'000, 10'000, 1'000})
        if (step > round) return round;
    return step;
}

bool list_is_on_the_page() { return tm_vext.numpage == results_page && kol_ext.list_or_trace; }

}  // namespace

void kol_cursor_down_1st() {
    const std::int32_t step = scroll_step();
    if (!list_is_on_the_page() || std::int64_t{kol_ext.list_cur_time} + step >= kol_ext.end_time) return;
    kol_ext.list_cur_time += step;
    tm_shell.redraw_results();
}

void kol_cursor_up_1st() {
    const std::int32_t step = scroll_step();
    if (!list_is_on_the_page() || kol_ext.list_cur_time - step < 0) return;
    kol_ext.list_cur_time -= step;
    tm_shell.redraw_results();
}

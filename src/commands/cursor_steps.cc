// The built-in steps "$CU1" .. "$VPTR80" that the arrow keys are bound to.
#include "commands/handlers.h"
#include "results/list_view.h"
#include "results/trace_view.h"

namespace {

struct cursor_scroll {
    char direction;
    void (*scroll)();
};
constexpr cursor_scroll scrolls[] = {{'U', kol_cursor_up_1st},
                                     {'D', kol_cursor_down_1st},
                                     {'L', kol_cursor_left_1st},
                                     {'R', kol_cursor_right_1st}};

}  // namespace

// On the Results page a step scrolls the view in time, the list up and down, the trace left and right;
// elsewhere it does nothing.
void kol_cursor_step_cmd(std::int16_t /*nkeyword*/, kol_array_keyword_t& keyword) {
    const char direction = tm_upper_case(keyword[0].char_[2]);
    const int steps = keyword[0].char_[3] - '0';
    for (const cursor_scroll& row : scrolls)
        if (row.direction == direction)
            for (int i = 0; i < steps; ++i) row.scroll();
}

// The Results page has no viewport to move.
void kol_viewport_step_cmd(std::int16_t /*nkeyword*/, kol_array_keyword_t& /*keyword*/) {}

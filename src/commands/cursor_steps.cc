// The built-in steps "$CU1" .. "$VPTR80" that the arrow keys are bound to.
#include "commands/handlers.h"
#include "foundation/context.h"
#include "results/list_view.h"

namespace {

constexpr std::int16_t results_page = 0;

struct cursor_scroll {
    char direction;
    void (*scroll_list)();
};
constexpr cursor_scroll scrolls[] = {{'U', kol_cursor_up_1st}, {'D', kol_cursor_down_1st}};

}  // namespace

// On the Results page a step scrolls the list; elsewhere it does nothing.
void kol_cursor_step_cmd(std::int16_t /*nkeyword*/, kol_array_keyword_t& keyword) {
    if (tm_vext.numpage != results_page || !kol_ext.list_or_trace) return;
    const char direction = tm_upper_case(keyword[0].char_[2]);
    const int steps = keyword[0].char_[3] - '0';
    for (const cursor_scroll& row : scrolls)
        if (row.direction == direction)
            for (int i = 0; i < steps; ++i) row.scroll_list();
}

// The Results page has no viewport to move.
void kol_viewport_step_cmd(std::int16_t /*nkeyword*/, kol_array_keyword_t& /*keyword*/) {}

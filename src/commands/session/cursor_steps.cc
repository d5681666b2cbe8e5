// The built-in steps "$CU1" .. "$VPTR80" that the arrow keys are bound to.
#include "commands/session/handlers.h"
#include "commands/shared/sheet_levels.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "results/scroll.h"
#include "schematic/viewport.h"

namespace {

struct cursor_scroll {
    char direction;
    void (*scroll)();
};
constexpr cursor_scroll scrolls[] = {{'U', kol_cursor_up_1st},
                                     {'D', kol_cursor_down_1st},
                                     {'L', kol_cursor_left_1st},
                                     {'R', kol_cursor_right_1st}};

void scroll_results(char direction, int steps) {
    for (const cursor_scroll& row : scrolls)
        if (row.direction == direction)
            for (int i = 0; i < steps; ++i) row.scroll();
}

bool is_on_sheet() { return tm_vext.numpage == tm_page::context && kol_context_file() != 0; }

}  // namespace

// On the Results page a step scrolls the view, in time and across it; on the
// Context page it moves the graphic cursor.
kol_result_t kol_cursor_step_cmd(const kol_line_t& line) {
    const char direction = tm_upper_case(line[1].char_[2]);
    const int steps = line[1].char_[3] - '0';
    if (is_on_sheet())
        tm_cursor_step(kol_context_file(), direction, steps);
    else
        scroll_results(direction, steps);
    return {};
}

// Moves what the page shows.
kol_result_t kol_viewport_step_cmd(const kol_line_t& line) {
    const char first = line[1].char_[5];
    const int steps = first == '5' ? 5 : first == '2' ? 20 : 80;  // what stands behind does not count
    if (!is_on_sheet()) {
        rs_scroll_page(tm_upper_case(line[1].char_[4]), steps);
        return {};
    }
    tm_view_step(kol_context_file(), tm_upper_case(line[1].char_[4]), steps);
    tm_shell.redraw_context();
    return {};
}

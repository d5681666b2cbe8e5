// BASEPOINT, GRID, SNAP and SMASH.
#include <algorithm>
#include <limits>

#include "commands/language/entry_expansion.h"
#include "commands/shared/context_sheet.h"
#include "commands/shared/parameters.h"
#include "commands/shared/sheet_points.h"
#include "commands/sheets/handlers.h"
#include "foundation/context.h"
#include "foundation/numbers.h"
#include "foundation/shell.h"

namespace {

constexpr kol_rejection_t step_invalid{"# !! Error : Invalid grid step ( should be above 0 ) "};
constexpr kol_rejection_t no_grid{"# !! Error : No grid on this sheet ? "};

bool read_switch(const tm_string_record_t& keyword, bool& on) {
    on = tm_const_equal_string("ON", keyword);
    return on || tm_const_equal_string("OF", keyword);
}

kol_result_t turn(bool& state, const kol_line_t& line) {
    bool on = false;
    if (!read_switch(line[2], on)) return kol_second_invalid;
    state = on;
    return kol_accepted(on ? "ON " : "OFF ");
}

}  // namespace

void kol_add_base_point(tm_string_record_t& entry) {
    kol_add_real(tm_vext.base_point.x, entry);
    kol_add_real(tm_vext.base_point.y, entry);
}

void kol_add_grid_step(tm_string_record_t& entry) {
    const tm_object_grid_rec_t* const grid = kol_sheet_grid();
    kol_add_real(grid != nullptr ? grid->step_point : 0, entry);
}

void kol_add_grid_state(tm_string_record_t& entry) {
    const tm_object_grid_rec_t* const grid = kol_sheet_grid();
    kol_add_text(grid == nullptr || (tm_vext.grid_on && grid->grid_on) ? "ON" : "OFF", entry);
}

// The command entry offers it with the word Edit before the coordinates.
kol_result_t kol_base_point_cmd(const kol_line_t& line) {
    const bool with_word = line.nkeyword > 1 && kol_begins_with_letter(line[2]);
    tm_point_t point;
    const kol_rejection_t wrong = kol_read_snapped_point(with_word ? 3 : 2, line, point);
    if (wrong) return wrong;
    tm_vext.base_point = point;
    return kol_accepted(kol_point_text(point));
}

kol_result_t kol_grid_state_cmd(const kol_line_t& line) {
    kol_result_t result = turn(tm_vext.grid_on, line);
    if (result) return result;
    if (tm_object_grid_rec_t* const grid = kol_sheet_grid()) grid->grid_on = tm_vext.grid_on;
    tm_shell.redraw_context();
    return result;
}

kol_result_t kol_grid_step_cmd(const kol_line_t& line) {
    std::int32_t step = 0;
    bool error_found = false;
    tm_string_to_real(line[3], step, error_found);
    if (error_found || step <= 0) return step_invalid;
    tm_object_grid_rec_t* const grid = kol_sheet_grid();
    if (grid == nullptr) return no_grid;
    grid->step_point = step;
    tm_shell.redraw_context();
    tm_string_record_t text;
    tm_real_to_string(step, text);
    return kol_accepted(std::string(tm_view(text)) + " ");
}

kol_result_t kol_snap_cmd(const kol_line_t& line) { return turn(tm_vext.snap_on, line); }

kol_result_t kol_smash_cmd(const kol_line_t& line) { return turn(tm_vext.smash_on, line); }

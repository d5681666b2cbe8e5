// MOVE SIGNAL.
#include "commands/observation/move_signal.h"

#include <algorithm>
#include <string>
#include <utility>

#include "commands/observation/handlers.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "foundation/context.h"
#include "foundation/numbers.h"
#include "foundation/shell.h"
#include "results/entries/geometry.h"
#include "results/list/layout.h"

namespace {

constexpr kol_rejection_t from_no_integer{"# !! Error : Invalid 4th parameter (should be integer) ? "};
constexpr kol_rejection_t to_no_integer{"# !! Error : Invalid 5th parameter (should be integer) ? "};
constexpr kol_rejection_t from_invalid{"# !! Error : Invalid   from_position  ? "};
constexpr kol_rejection_t to_invalid{"# !! Error : Invalid   to_position  ? "};

struct move_t {
    bool in_list = true;
    std::int32_t from = 0, to = 0;  // from 1, in the order in which the view shows its entries
    yx_signal_rec_t *first = nullptr, *second = nullptr;
};

bool read_position(const tm_string_record_t& keyword, std::int32_t& position) {
    bool error_found = false;
    tm_string_to_int32(keyword, position, error_found);
    return !error_found && position >= 0;
}

std::int32_t held(std::int32_t value, std::int32_t lowest, std::int32_t highest) {
    return std::max(lowest, std::min(value, highest));
}

std::int32_t column_under_pointer() {
    const tm_bounds_t& area = tm_vext.bitmap_size;
    const std::int32_t x = tm_vext.pixel_pos.x - area.xmin - kol_ext.list_sig1n_x0;
    return held(x / kol_ext.list_steph - 14, 1, (area.xmax - area.xmin) / rs_list_geometry.column_pitch) +
           kol_ext.list_cur_column - 1;
}

std::int32_t row_under_pointer() {
    const tm_bounds_t& area = tm_vext.bitmap_size;
    const std::int32_t y = kol_ext.trace_stepv / 2 + tm_vext.pixel_pos.y - area.ymin - kol_ext.trace_sig1r_y0;
    return held(y / kol_ext.trace_stepv, 0,
                (area.ymax - area.ymin) / rs_trace_geometry.row_pitch - rs_trace_geometry.rows_below) +
           kol_ext.trace_cur_row;
}

yx_signal_rec_t* entry_at(yx_signal_rec_t* newest, std::int32_t position) {
    yx_signal_rec_t* entry = newest;
    while (entry != nullptr && entry->previous != nullptr) entry = entry->previous;
    for (std::int32_t at = 1; entry != nullptr && at < position; ++at) entry = entry->next;
    return position < 1 ? nullptr : entry;
}

kol_rejection_t read_positions(const kol_line_t& line, move_t& move) {
    if (line.nkeyword == 3) {
        move.from = kol_ext.signal_position;
        move.to = move.in_list ? column_under_pointer() : row_under_pointer();
        return {};
    }
    if (!read_position(line[4], move.from)) return from_no_integer;
    if (!read_position(line[5], move.to)) return to_no_integer;
    return {};
}

// Everything but the places in the chain.
void exchange(yx_signal_rec_t& first, yx_signal_rec_t& second) {
    if (&first == &second) return;
    std::swap(first, second);
    std::swap(first.previous, second.previous);
    std::swap(first.next, second.next);
}

kol_rejection_t read_move(const kol_line_t& line, move_t& move) {
    if (line.nkeyword == 4) return kol_count_invalid;
    if (!kol_begins_with_one_of(line[3], "LT")) return kol_view_invalid;
    move.in_list = kol_begins_with_one_of(line[3], "L");
    if (const kol_rejection_t wrong = read_positions(line, move)) return wrong;
    yx_signal_rec_t* const newest = move.in_list ? kol_ext.list_signal : kol_ext.trace_signal;
    move.first = entry_at(newest, move.from);
    move.second = entry_at(newest, move.to);
    if (move.first == nullptr) return from_invalid;
    if (move.second == nullptr) return to_invalid;
    return {};
}

// The blanks behind packed values depend on the order.
bool exchange_in_view(const move_t& move) {
    exchange(*move.first, *move.second);
    if (!move.in_list || kol_list_fits()) return true;
    exchange(*move.first, *move.second);
    return false;
}

}  // namespace

void kol_mark_signal() {
    kol_ext.signal_position = kol_ext.list_or_trace ? column_under_pointer() : row_under_pointer();
}

kol_result_t kol_move_signal_cmd(const kol_line_t& line) {
    move_t move;
    if (const kol_rejection_t wrong = read_move(line, move)) return wrong;
    if (!exchange_in_view(move)) return kol_list_too_wide;
    tm_shell.redraw_results();
    return kol_accepted((move.in_list ? "List " : "Trace ") + std::to_string(move.from) + " " +
                        std::to_string(move.to) + " ");
}

// Values, cursors and grounds of the rows.
#include "results/trace/rows.h"

#include <algorithm>

#include "results/entries/geometry.h"
#include "results/trace/layout.h"
#include "results/trace/view.h"

namespace {

constexpr std::size_t most_value = 20;  // characters beside a name
constexpr tm_pen first_pen = {tm_colour::green, tm_dash::solid},
                 second_pen = {tm_colour::cyan, tm_dash::dashed};

void visit_bus(yx_bus_rec_t& bus, std::int32_t page_height, const rs_on_row_t& on_row) {
    bool is_named = false;
    for (yx_signal_rec_t* member = bus.signal; member != nullptr; member = member->next) {
        if (member->sig_bus) {
            if (member->bus == nullptr) continue;
            kol_trace_place_members(*member);
            visit_bus(*member->bus, page_height, on_row);
        } else if (!(bus.combine && is_named)) {
            is_named = true;
            if (!kol_trace_row_shown(*member, page_height)) continue;
            if (bus.combine)
                on_row({nullptr, &bus}, tm_view(bus.name), member->row);
            else
                on_row({member, nullptr}, tm_view(member->name), member->row);
        }
    }
}

std::int32_t cell_width() { return kol_ext.trace_steph / 2; }

void fill(tm_canvas& canvas, tm_pixel from, tm_pixel to, tm_colour colour) {
    const tm_pixel corners[] = {from, {to.x, from.y}, to, {from.x, to.y}};
    canvas.fill(corners, colour);
}

// A value between two places of its row; nothing where not even the sign of a cut fits.
void draw_value(tm_canvas& canvas, std::string text, std::int32_t from, std::int32_t to,
                std::int32_t middle) {
    const std::int32_t margin = cell_width() / 6;
    const std::int32_t room = (to - from - 2 * margin) / cell_width();
    if (text.empty() || room < 1) return;
    if (static_cast<std::int32_t>(text.size()) > room) {
        text = text.substr(0, static_cast<std::size_t>(room - 1)) + "+";
    }
    const std::int32_t half = std::min(kol_ext.trace_height, kol_ext.trace_stepv / 3 * 2 - 2) / 2;
    const tm_pixel at{from + margin, middle - half};
    fill(canvas, at, {at.x + static_cast<std::int32_t>(text.size()) * cell_width(), middle + half},
         tm_colour::black);
    canvas.text(at, text, {tm_colour::white, cell_width(), 2 * half});
}

void draw_bus(tm_canvas& canvas, const rs_entry_t& entry, std::int16_t row) {
    const std::int32_t width = canvas.width(), end = kol_trace_plot_end(), middle = kol_trace_row_y(row);
    std::int32_t time = std::max(kol_ext.trace_cur_time, rs_recorded_from(entry));
    while (time < end) {
        std::int32_t next = 0;
        if (!rs_next_change(entry, time, next) || next > end) next = end;
        const std::int32_t from = kol_trace_x_of(time, width), to = kol_trace_x_of(next, width);
        draw_value(canvas, to - from < cell_width() ? std::string() : rs_value_at(entry, time), from, to,
                   middle);
        // Changes too close to be told apart are passed over together.
        time = std::max({next, kol_trace_time_at(from + cell_width() / 2, width), time + 1});
    }
}

void draw_cursor(tm_canvas& canvas, const rs_time_cursor_t& cursor, const tm_pen& pen) {
    const std::int64_t end = kol_ext.trace_cur_time + std::int64_t{kol_trace_divisions} * kol_ext.trace_scale;
    if (!cursor.is_set || cursor.time < kol_ext.trace_cur_time || cursor.time > end) return;
    const std::int32_t x = kol_trace_x_of(cursor.time, canvas.width());
    canvas.segment({x, kol_ext.trace_sig1r_y0 - kol_ext.trace_stepv / 2}, {x, kol_ext.trace_sig1t_y0}, pen);
}

// Below the name where a row is high enough, else over the end of it.
void draw_value_beside(tm_canvas& canvas, const rs_entry_t& entry, std::int16_t row) {
    const std::string text = rs_value_at(entry, rs_cursors.first.time).substr(0, most_value);
    const std::int32_t name_y = kol_trace_row_y(row) + kol_ext.trace_sig1n_y0 - kol_ext.trace_sig1r_y0;
    const bool is_below = kol_ext.trace_stepv >= 2 * kol_ext.trace_height;
    const auto width = static_cast<std::int32_t>(text.size()) * cell_width();
    tm_pixel at{canvas.width() - kol_ext.trace_sig1n_x0, name_y + kol_ext.trace_height};
    if (!is_below) {
        at = {canvas.width() - width - cell_width(), name_y};
        fill(canvas, {at.x - cell_width(), at.y}, {canvas.width(), at.y + kol_ext.trace_height},
             tm_colour::black);
    }
    canvas.text(at, text, {tm_colour::green, cell_width(), kol_ext.trace_height});
}

}  // namespace

void rs_for_trace_rows(std::int32_t page_height, const rs_on_row_t& on_row) {
    kol_update_row_trace(nullptr);
    for (yx_signal_rec_t* entry = kol_trace_first_entry(); entry != nullptr; entry = entry->next) {
        if (!entry->sig_bus) {
            if (kol_trace_row_shown(*entry, page_height))
                on_row({entry, nullptr}, tm_view(entry->name), entry->row);
        } else if (entry->bus != nullptr) {
            kol_trace_place_members(*entry);
            visit_bus(*entry->bus, page_height, on_row);
        }
    }
}

std::int32_t rs_trace_row_count() {
    if (kol_trace_first_entry() == nullptr) return 0;
    kol_update_row_trace(nullptr);
    return kol_ext.list_work_row;
}

void rs_draw_unrecorded(tm_canvas& canvas) {
    rs_for_trace_rows(canvas.height(), [&](const rs_entry_t& entry, std::string_view, std::int16_t row) {
        const std::int32_t from = rs_recorded_from(entry);
        if (from <= kol_ext.trace_cur_time) return;
        const std::int32_t middle = kol_trace_row_y(row), half = kol_ext.trace_stepv / 3;
        fill(canvas, {kol_ext.trace_left_x, middle - half},
             {kol_trace_x_of(std::min(from, kol_trace_plot_end()), canvas.width()), middle + half},
             tm_colour::grey);
    });
}

void rs_draw_bus_values(tm_canvas& canvas) {
    if (kol_ext.trace_cur_time < 0 || kol_ext.trace_scale < 1) return;
    rs_for_trace_rows(canvas.height(), [&](const rs_entry_t& entry, std::string_view, std::int16_t row) {
        if (entry.bus != nullptr) draw_bus(canvas, entry, row);
    });
}

void rs_draw_trace_cursors(tm_canvas& canvas) {
    draw_cursor(canvas, rs_cursors.first, first_pen);
    draw_cursor(canvas, rs_cursors.second, second_pen);
    if (!rs_cursors.first.is_set) return;
    rs_for_trace_rows(canvas.height(), [&](const rs_entry_t& entry, std::string_view, std::int16_t row) {
        draw_value_beside(canvas, entry, row);
    });
}

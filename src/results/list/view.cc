// Drawing of the list.
#include "results/list/view.h"

#include "kernel/history.h"
#include "results/entries/cursors.h"
#include "results/entries/geometry.h"
#include "results/entries/options.h"
#include "results/entries/time_cursor.h"
#include "results/list/layout.h"
#include "results/list/rows.h"

namespace {

void draw_text(tm_canvas& canvas, tm_pixel at, std::string_view text) {
    canvas.text(at, text, {tm_colour::white, kol_ext.list_steph, kol_ext.list_height});
}

std::int32_t column_offset(const yx_signal_rec_t& signal) {
    return kol_ext.list_steph * (signal.column - kol_ext.list_cur_column);
}

std::int32_t row_offset(std::int32_t row) { return kol_ext.list_stepv * (row - 1); }

void draw_name(tm_canvas& canvas, const yx_signal_rec_t& place, std::string_view name) {
    std::string padded(name);
    padded.resize(kol_list_name_width(), ' ');
    draw_text(canvas,
              {column_offset(place) + kol_ext.list_sig1n_x0, row_offset(place.row) + kol_ext.list_sig1n_y0},
              padded);
}

// A long name of an entry shows its end, where names of one path differ.
std::string_view name_tail(const tm_string_record_t& name) {
    std::string_view tail = tm_view(name);
    if (tail.size() > kol_list_name_width()) tail.remove_prefix(tail.size() - kol_list_name_width());
    return tail;
}

void draw_time(tm_canvas& canvas, std::int32_t row, std::int32_t time) {
    const std::string text = kol_list_time_text(time);
    const auto blanks = static_cast<std::int32_t>(kol_list_time_width + 1 - text.size());
    draw_text(canvas,
              {kol_ext.list_steph * blanks + kol_ext.list_sig1t_x0, row_offset(row) + kol_ext.list_sig1t_y0},
              text);
}

// Whether the state under the signal's cursor was seen to be so.
bool is_recorded(const yx_signal_rec_t& signal) {
    return !rs_options.mark_unrecorded || signal.net == nullptr ||
           (*signal.history)[signal.cursor].time >= kol_recorded_from(*signal.net);
}

void draw_value(tm_canvas& canvas, std::int32_t row, const yx_signal_rec_t& signal) {
    const std::string text = kol_list_value_text(signal);
    if (text.empty() || !kol_list_column_shown(signal)) return;
    const tm_pixel at{column_offset(signal) + kol_ext.list_sig1r_x0, row_offset(row) + kol_ext.list_sig1r_y0};
    if (is_recorded(signal)) return draw_text(canvas, at, text);
    const std::int32_t right = at.x + static_cast<std::int32_t>(text.size()) * kol_ext.list_steph;
    const tm_pixel corners[] = {
        at, {right, at.y}, {right, at.y + kol_ext.list_stepv}, {at.x, at.y + kol_ext.list_stepv}};
    canvas.fill(corners, tm_colour::grey);
}

void draw_members(tm_canvas& canvas, std::int32_t row, const yx_bus_rec_t& bus) {
    for (const yx_signal_rec_t* member = bus.signal; member != nullptr; member = member->next) {
        if (!member->sig_bus) {
            draw_value(canvas, row, *member);
        } else if (member->bus != nullptr) {
            kol_list_place_members(*member);
            draw_members(canvas, row, *member->bus);
        }
    }
}

void draw_row(tm_canvas& canvas, std::int32_t row, yx_signal_rec_t* entry, std::int32_t time) {
    draw_time(canvas, row, time);
    for (; entry != nullptr; entry = entry->next) {
        if (!entry->sig_bus) {
            kol_list_get_sigresult(entry, time);
            draw_value(canvas, row, *entry);
        } else if (entry->bus != nullptr) {
            kol_list_place_members(*entry);
            kol_list_writebusresult(canvas, row, entry->bus, time);
        }
    }
}

}  // namespace

void kol_list_bus_write_signame(tm_canvas& canvas, yx_bus_rec_t* bus) {
    bool bus_named = false;
    for (yx_signal_rec_t* member = bus->signal; member != nullptr; member = member->next) {
        if (member->sig_bus) {
            if (member->bus == nullptr) continue;
            kol_list_place_members(*member);
            kol_list_bus_write_signame(canvas, member->bus);
        } else if (kol_list_column_shown(*member) && !(bus->combine && bus_named)) {
            draw_name(canvas, *member, kol_list_name_head(bus->combine ? bus->name : member->name));
            bus_named = true;
        }
    }
}

// Values of a page that has grown stay behind the header.
void kol_list_write_signame(tm_canvas& canvas) {
    if (kol_list_first_entry() != nullptr)
        rs_clear_band(canvas, canvas.width(), kol_ext.list_sig1n_y0,
                      kol_list_header_lines * kol_ext.list_stepv);
    for (yx_signal_rec_t* entry = kol_list_first_entry(); entry != nullptr; entry = entry->next) {
        if (!entry->sig_bus) {
            if (kol_list_column_shown(*entry)) draw_name(canvas, *entry, name_tail(entry->name));
        } else if (entry->bus != nullptr) {
            kol_list_place_members(*entry);
            kol_list_bus_write_signame(canvas, entry->bus);
        }
    }
}

void kol_list_writebusresult(tm_canvas& canvas, std::int32_t row, yx_bus_rec_t* bus, std::int32_t cur_time) {
    kol_list_get_busresult(bus, cur_time);
    draw_members(canvas, row, *bus);
}

void kol_list_write_sigresult(tm_canvas& canvas) {
    yx_signal_rec_t* first = kol_list_first_entry();
    std::int32_t time = kol_ext.list_cur_time;
    if (first == nullptr || time < 0) {
        kol_trace(" LIST : nothing to draw : time : %d", time);
        return;
    }
    const std::int32_t rows = rs_list_rows(canvas.height());
    for (std::int32_t row = 1; row <= rows; ++row) {
        draw_row(canvas, row, first, time);
        if (!kol_list_next_row_time(time) || time > kol_ext.cur_time) return;
    }
}

void rs_draw_list_cursors(tm_canvas& canvas) {
    struct line_t {
        const rs_time_cursor_t& cursor;
        tm_pen pen;
    };
    const line_t lines[] = {{rs_cursors.first, {tm_colour::green}},
                            {rs_cursors.second, {tm_colour::cyan, tm_dash::dashed}}};
    const std::int32_t rows = rs_list_rows(canvas.height());
    std::int32_t time = kol_ext.list_cur_time;
    for (std::int32_t row = 1; row <= rows && kol_list_first_entry() != nullptr; ++row) {
        std::int32_t next = time;
        const bool is_last = !kol_list_next_row_time(next) || next > kol_ext.cur_time;
        for (const auto& [cursor, pen] : lines) {
            if (!cursor.is_set || cursor.time < time || (cursor.time >= next && !is_last)) continue;
            const std::int32_t y = row_offset(row) + kol_ext.list_sig1r_y0;
            for (const std::int32_t edge : {y, y + kol_ext.list_stepv - 1})
                canvas.segment({0, edge}, {canvas.width() - 1, edge}, pen);
        }
        if (is_last) return;
        time = next;
    }
}

std::int32_t kol_list_time_at(std::int32_t y) {
    std::int32_t time = kol_ext.list_cur_time;
    if (kol_list_first_entry() == nullptr) return time;
    std::int32_t next = time;
    for (std::int32_t row = 2; row <= y / kol_ext.list_stepv; ++row) {
        if (!kol_list_next_row_time(next) || next > kol_ext.cur_time) break;
        time = next;
    }
    return time;
}

void kol_set_list_places(std::int32_t bitmap_height) {
    const rs_list_geometry_t& page = rs_list_geometry;
    kol_ext.list_height = kol_ext.list_stepv = page.row_step;
    kol_ext.list_steph = page.column_step;
    kol_ext.list_sig1n_x0 = page.first_name_column * page.column_step;
    kol_ext.list_sig1n_y0 = page.row_step * (bitmap_height / page.row_pitch - page.rows_below_header);
    kol_ext.list_sig1r_x0 = page.first_value_column * page.column_step;
    kol_ext.list_sig1r_y0 = page.row_step;
    kol_ext.list_sig1t_x0 = page.time_column * page.column_step;
    kol_ext.list_sig1t_y0 = page.row_step;
}

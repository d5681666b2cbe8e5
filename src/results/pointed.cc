// From a place of the page to an entry and a time.
#include "results/pointed.h"

#include "results/entries/entry.h"
#include "results/list/layout.h"
#include "results/list/view.h"
#include "results/trace/layout.h"
#include "results/trace/rows.h"
#include "results/trace/view.h"

namespace {

void point_into_trace(tm_pixel at, std::int32_t page_width, std::int32_t page_height, rs_pointed_t& found) {
    found.time = kol_trace_time_at(at.x, page_width);
    rs_for_trace_rows(page_height, [&](const rs_entry_t& entry, std::string_view name, std::int16_t row) {
        const std::int32_t above = at.y - kol_trace_row_y(row) + kol_ext.trace_stepv / 2;
        if (above < 0 || above >= kol_ext.trace_stepv) return;
        found.entry = entry;
        found.name = name;
    });
}

// The last signal that begins at the column or left of it, one after the other in their order.
void look_at(yx_signal_rec_t* entry, yx_bus_rec_t* holder, std::int32_t column, rs_pointed_t& found) {
    for (; entry != nullptr; entry = entry->next) {
        if (entry->sig_bus) {
            if (entry->bus == nullptr) continue;
            kol_list_place_members(*entry);
            look_at(entry->bus->signal, entry->bus, column, found);
        } else if (entry->column <= column &&
                   column < entry->column + 2 * static_cast<int>(kol_list_value_width())) {
            const bool is_packed = holder != nullptr && holder->combine;
            found.entry = is_packed ? rs_entry_t{nullptr, holder} : rs_entry_t{entry, nullptr};
            found.name = tm_view(is_packed ? holder->name : entry->name);
        }
    }
}

}  // namespace

rs_pointed_t rs_pointed(tm_pixel at, std::int32_t page_width, std::int32_t page_height) {
    rs_pointed_t found;
    if (!kol_ext.list_or_trace) {
        point_into_trace(at, page_width, page_height, found);
        return found;
    }
    found.time = kol_list_time_at(at.y);
    kol_update_column_list(nullptr, page_width);
    const std::int32_t along = at.x - kol_ext.list_sig1r_x0;
    if (along >= 0)
        look_at(kol_list_first_entry(), nullptr, along / kol_ext.list_steph + kol_ext.list_cur_column, found);
    return found;
}

// Row assignment of the trace.
#include "results/trace/layout.h"

#include "foundation/status.h"
#include "results/entries/geometry.h"

namespace {

void check_row(const yx_signal_rec_t& entry) {
    if (entry.row >= 1 && entry.row <= kol_trace_max_row) return;
    kol_trace(" TRACE : row invalid : \"%.*s\"  row : %d", entry.name.len, entry.name.char_, entry.row);
    tm_fatal(file_data_invalid);
}

void take_row(yx_signal_rec_t& entry, std::int16_t row) {
    entry.column = 1;
    entry.row = row;
    check_row(entry);
}

std::int16_t next_row() { return static_cast<std::int16_t>(kol_ext.list_work_row + 1); }

// A bus stands on its first member's row.
void place_bus(yx_signal_rec_t& entry) {
    take_row(entry, next_row());
    kol_update_row_trace_bus(entry.bus);
}

}  // namespace

void kol_update_row_trace_bus(yx_bus_rec_t* bus) {
    if (bus == nullptr) return;
    std::int16_t shared_row = 0;  // of a combined bus, once its first signal has it
    for (yx_signal_rec_t* member = bus->signal; member != nullptr; member = member->next) {
        if (member->sig_bus) {
            place_bus(*member);
            continue;
        }
        if (shared_row == 0) kol_ext.list_work_row = next_row();
        take_row(*member, shared_row == 0 ? kol_ext.list_work_row : shared_row);
        if (bus->combine) shared_row = member->row;
    }
}

void kol_update_row_trace(yx_bus_rec_t* bus) {
    yx_signal_rec_t* entry = kol_trace_first_entry();
    if (entry == nullptr) return;
    kol_ext.list_work_row = 0;
    for (; entry != nullptr; entry = entry->next) {
        if (entry->sig_bus) {
            place_bus(*entry);
            if (bus != nullptr && entry->bus == bus) return;
        } else {
            take_row(*entry, next_row());
            kol_ext.list_work_row = entry->row;
        }
    }
}

void kol_trace_place_members(const yx_signal_rec_t& entry) {
    kol_ext.list_work_row = static_cast<std::int16_t>(entry.row - 1);
    kol_update_row_trace_bus(entry.bus);
}

bool kol_trace_row_shown(const yx_signal_rec_t& entry, std::int32_t page_height) {
    check_row(entry);
    return entry.row >= kol_ext.trace_cur_row &&
           entry.row < kol_ext.trace_cur_row + rs_trace_rows(page_height);
}

std::int32_t kol_trace_row_y(std::int16_t row) {
    return (row - kol_ext.trace_cur_row) * kol_ext.trace_stepv + kol_ext.trace_sig1r_y0;
}

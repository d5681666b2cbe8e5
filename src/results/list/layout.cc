// Column assignment of the list.
#include "results/list/layout.h"

#include "foundation/status.h"
#include "results/entries/geometry.h"

namespace {

std::int16_t following_row(std::int16_t row) {
    return static_cast<std::int16_t>(row >= kol_list_header_lines ? 1 : row + 1);
}

// Stays where it is beyond the last column, so that no number of entries overflows the counter.
void advance_column(int columns) {
    if (kol_ext.list_work_column <= kol_list_max_column)
        kol_ext.list_work_column = static_cast<std::int16_t>(kol_ext.list_work_column + columns);
}

void take_place(yx_signal_rec_t& entry) {
    entry.row = following_row(kol_ext.list_work_row);
    entry.column = kol_ext.list_work_column;
}

// separate: a blank follows the value.
void place_signal(yx_signal_rec_t& signal, bool separate) {
    take_place(signal);
    kol_ext.list_work_row = signal.row;
    advance_column(static_cast<int>(kol_list_value_width()) + (separate ? 1 : 0));
}

bool is_combined_bus(const yx_signal_rec_t& entry) {
    return entry.sig_bus && entry.bus != nullptr && entry.bus->combine;
}

// The blank that closes a packed value, unless it is the last or another packed value follows.
void close_packed_value(const yx_signal_rec_t& entry) {
    if (is_combined_bus(entry) && entry.next != nullptr && !is_combined_bus(*entry.next)) advance_column(1);
}

void set_last_column(std::int32_t page_width) {
    kol_ext.list_last_column = static_cast<std::int16_t>(rs_list_columns(page_width, kol_ext.list_state_on));
}

bool column_is_valid(std::int16_t column) { return column >= 1 && column <= kol_list_max_column; }

const yx_signal_rec_t* last_leaf(const yx_signal_rec_t* entry) {
    while (entry != nullptr && entry->sig_bus) {
        entry = entry->bus == nullptr ? nullptr : entry->bus->signal;
        while (entry != nullptr && entry->next != nullptr) entry = entry->next;
    }
    return entry;
}

}  // namespace

void kol_update_col_list_bus(yx_bus_rec_t* bus) {
    if (bus == nullptr) return;
    for (yx_signal_rec_t* member = bus->signal; member != nullptr; member = member->next) {
        if (!member->sig_bus) {
            place_signal(*member, !bus->combine);
            continue;
        }
        take_place(*member);
        kol_update_col_list_bus(member->bus);
        close_packed_value(*member);
    }
}

void kol_update_column_list(yx_bus_rec_t* bus, std::int32_t page_width) {
    yx_signal_rec_t* entry = kol_list_first_entry();
    if (entry == nullptr) return;
    kol_ext.list_work_row = 0;
    kol_ext.list_work_column = 1;
    set_last_column(page_width);
    for (; entry != nullptr; entry = entry->next) {
        if (!entry->sig_bus) {
            place_signal(*entry, true);
            continue;
        }
        take_place(*entry);
        kol_update_col_list_bus(entry->bus);
        if (bus != nullptr && entry->bus == bus) return;
        close_packed_value(*entry);
    }
}

void kol_list_place_members(const yx_signal_rec_t& entry) {
    kol_ext.list_work_row = static_cast<std::int16_t>(entry.row - 1);
    kol_ext.list_work_column = entry.column;
    kol_update_col_list_bus(entry.bus);
}

bool kol_list_fits() {
    kol_update_column_list(nullptr);
    const yx_signal_rec_t* last = last_leaf(kol_ext.list_signal);
    return last == nullptr || last->column <= kol_list_max_column;
}

void kol_list_check_column(const yx_signal_rec_t& entry) {
    if (column_is_valid(entry.column) && column_is_valid(kol_ext.list_cur_column)) return;
    kol_trace(" LIST : column invalid : \"%.*s\"  column : %d  first column : %d", entry.name.len,
              entry.name.char_, entry.column, kol_ext.list_cur_column);
    tm_fatal(file_data_invalid);
}

bool kol_list_column_shown(const yx_signal_rec_t& entry) {
    kol_list_check_column(entry);
    return entry.column >= kol_ext.list_cur_column &&
           entry.column < kol_ext.list_cur_column + kol_ext.list_last_column;
}

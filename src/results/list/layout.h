// kol: the places of the list entries, shared by the list view and the list file.  A bus has one set of
// members however often it stands in the table, so the members take the places of one entry at a time:
// whoever visits a bus entry calls kol_list_place_members before looking at a member's column or row.
#pragma once

#include <cstddef>

#include "results/entries/entry.h"

inline constexpr std::int16_t kol_list_max_column = 1024;
inline constexpr std::int16_t kol_list_header_lines = 4;

// Column and row of every entry; with a bus, stops after that bus.  The page's width says how many columns
// are shown, 0 none.
void kol_update_column_list(yx_bus_rec_t* bus, std::int32_t page_width = 0);
void kol_update_col_list_bus(yx_bus_rec_t* bus);
// Assigns the columns; false when they do not end within kol_list_max_column, which drawing and writing
// require.
bool kol_list_fits();
// Gives the members of a bus entry, or of a bus inside a bus, the places that belong to this entry.
void kol_list_place_members(const yx_signal_rec_t& entry);
// Fatal (file_data_invalid) when the entry's column or list_cur_column lies outside 1..1024.
void kol_list_check_column(const yx_signal_rec_t& entry);
bool kol_list_column_shown(const yx_signal_rec_t& entry);

// Characters of a name in the header, and of a value in a row.
inline std::size_t kol_list_name_width() { return kol_ext.list_state_on ? 12 : 8; }
inline std::size_t kol_list_value_width() { return kol_ext.list_state_on ? 2 : 1; }

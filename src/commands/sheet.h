// kol: what the commands of the sheets share: the sheet on the Context page, the sheets open by level, how a
// sheet comes onto the page, and the points that a user types or points at.  Coordinates are model units; a
// user types them as decimal numbers, 1.0 being 100000 units.
#pragma once

#include <string>

#include "commands/keyword.h"
#include "schematic/object.h"

inline constexpr kol_rejection_t kol_no_sheet{"# !! Error :  No sheet in Context window ? "};
inline constexpr kol_rejection_t kol_outside_page{"# !! Error : Invalid point (outside of page ...)  ? "};

// Whether a number is that of a sheet file of the database.
constexpr bool kol_is_file(std::int32_t file) { return file >= 1 && file <= 32; }
// The file on the Context page; 0: none.
tm_file_index_t kol_context_file();
// The grid of that sheet; null: none.
tm_object_grid_rec_t* kol_sheet_grid();

// The entry of a level, 1..28.
kol_file_record_t& kol_level(std::int16_t level);
constexpr bool kol_is_level(std::int32_t level) { return level >= 1 && level <= 28; }
// The file of the current level; 0: there is no level or no sheet at it.
tm_file_index_t kol_level_file();
// The sheet that "N_n" names are of is the current level's.
void kol_use_level_sheets();

// Reads the sheet of a directory: into the file when it is one, else into a new one.  Without success
// everything is as it was.
enum class kol_sheet_found : std::uint8_t { yes, no_link, invalid, empty };
kol_sheet_found kol_read_sheet(const tm_string_record_t& directory, tm_file_index_t& file);
// A relative directory is looked for below the schematic directory, and when there is none, as it stands.
tm_string_record_t kol_sheet_directory(std::string_view directory);

// Puts a file on the Context page: hides the properties that are not to be seen, hangs up the probes and
// draws the sheet.
void kol_show_sheet(tm_file_index_t file);

// Why nothing can be pointed at: the page shown is not the Context page, or it has no sheet.
kol_rejection_t kol_check_context_sheet();
// A point given by keywords k and k + 1; without them the cursor, for which the Context page must be shown.
// The rejection says what is wrong.  Points are not snapped.
kol_rejection_t kol_read_point(std::int16_t k, const kol_line_t& line, tm_point_t& point);
// Moves a point to the grid of the pins; why it does not lie on the page of the sheet in the window.
kol_rejection_t kol_snap_into_page(bool is_typed, tm_point_t& point);
// "12.50000 -3.00000 " as the echo of a point.
std::string kol_point_text(const tm_point_t& point);
// The keyword without its enclosing quotes.
tm_string_record_t kol_keyword_text(const tm_string_record_t& keyword);
// The keyword as a whole number in 1..highest, at most 30000; false for anything else.
bool kol_read_number(const tm_string_record_t& keyword, std::int32_t highest, std::int16_t& number);

// kol: how a sheet comes onto the Context page.
#pragma once

#include <string_view>

#include "foundation/strings.h"
#include "schematic/object.h"

// The grid of the sheet on the page; null: none.
tm_object_grid_rec_t* kol_sheet_grid();

// Reads the sheet of a directory: into the file when it is one, else into a new one.  Without success
// everything is as it was.
enum class kol_sheet_found : std::uint8_t { yes, no_link, invalid, empty };
kol_sheet_found kol_read_sheet(const tm_string_record_t& directory, tm_file_index_t& file);
// A relative directory is looked for below the schematic directory, and when there is none, as it stands.
tm_string_record_t kol_sheet_directory(std::string_view directory);

// Puts a file on the Context page: hides the properties that are not to be seen, hangs up the probes and
// draws the sheet.
void kol_show_sheet(tm_file_index_t file);

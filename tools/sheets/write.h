// sg_write: drawings as files of the schematic database.  Builds the tree of a sheet or symbol file with the
// database's own operations and lets it save; needs no display.  The ids of nets are the drawing's.
#pragma once

#include "sheets/drawing.h"

// Objects that the page's or the symbol's file holds.
std::size_t sg_count_objects(const sg_drawing& drawing);
std::size_t sg_count_objects(const sg_drawn_symbol& symbol);
// Writes DIRECTORY/sheet.tm, which exists, with at most tm_max_objects objects.  instance_ids: by instance.
// False, and why, when the file cannot be written.
bool sg_write_sheet(const sg_drawing& drawing, const std::string& directory,
                    std::vector<std::int16_t>& instance_ids, std::string& why);
// DIRECTORY/symbol.tm, with at most tm_max_objects objects.
bool sg_write_symbol(const sg_drawn_symbol& symbol, const std::string& directory, std::string& why);

// kol: the pages of a large sheet.  Page 1 is the sheet of a directory, page n that of its folder "page_n";
// nets have the same ids on every page.
#pragma once

#include <string>

#include "commands/shared/context_sheet.h"

struct kol_page_t {
    std::string directory;  // of page 1
    std::int16_t number = 1;
};
// Which page an open file is.
kol_page_t kol_page_of(tm_file_index_t file);
std::string kol_page_directory(const kol_page_t& page);
bool kol_page_exists(const kol_page_t& page);
// Replaces the current level's sheet by another page of it, at the same level and path, and shows it.
kol_sheet_found kol_turn_page(const kol_page_t& page);

// kol: which sheets are open: the one on the Context page, and those of the levels of the hierarchy, 1 the
// top.
#pragma once

#include "kernel/context.h"
#include "schematic/object.h"

// Whether a number is that of a sheet file of the database.
constexpr bool kol_is_file(std::int32_t file) {
    return file >= 1 && file <= static_cast<std::int32_t>(tm_max_open_files);
}
// The file on the Context page; 0: none.
tm_file_index_t kol_context_file();

constexpr bool kol_is_level(std::int32_t level) {
    return level >= 1 && level <= static_cast<std::int32_t>(kol_max_levels);
}
// The entry of a level.
const kol_file_record_t& kol_level(std::int16_t level);
// A level has the sheet of this file from now on.
void kol_set_level(std::int16_t level, tm_file_index_t file);
// The file of the current level; 0: there is no level or no sheet at it.
tm_file_index_t kol_level_file();

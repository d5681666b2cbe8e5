// tm: the rectangle of a sheet, model units.
#pragma once

#include "foundation/context.h"

// That of its page, of its grid, or of everything on it, the first that is not empty;
// 0 0 1000000 1000000 when none is.
tm_bounds_t tm_page_area(tm_file_index_t file_index);
tm_bounds_t tm_whole_page(tm_file_index_t file_index);  // the same with a margin of a fiftieth
bool tm_inside_page(tm_file_index_t file_index, const tm_point_t& at);

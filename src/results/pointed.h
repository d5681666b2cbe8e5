// rs: what stands at a place of the Results page.
#pragma once

#include "canvas/canvas.h"
#include "results/entries/time_cursor.h"

struct rs_pointed_t {
    rs_entry_t entry;  // none beside rows and columns
    std::string name;  // of the entry
    std::int32_t time = 0;
};
// The view that is shown, on a page of that size.
rs_pointed_t rs_pointed(tm_pixel at, std::int32_t page_width, std::int32_t page_height);

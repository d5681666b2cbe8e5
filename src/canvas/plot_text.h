// tm: text on plots.  The stroke font in fractions of a pixel, which plots are fine enough for.
#pragma once

#include <string_view>
#include <vector>

#include "canvas/canvas.h"

struct tm_fine_point {
    double x = 0, y = 0;  // pixels, y downward
};

// Lines that the pen draws without being lifted.
using tm_fine_path = std::vector<tm_fine_point>;
std::vector<tm_fine_path> tm_text_paths(tm_pixel at, std::string_view text, const tm_lettering& how);

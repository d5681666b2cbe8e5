// What texts in binary files are made of.
#include "foundation/layout.h"

#include <algorithm>

#include "foundation/printable.h"

bool lay_is_text(std::string_view bytes) { return std::ranges::all_of(bytes, tm_is_printable); }

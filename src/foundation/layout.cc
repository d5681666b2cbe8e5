// What texts in binary files are made of.
#include "foundation/layout.h"

#include <algorithm>

bool lay_is_text(std::string_view bytes) {
    return std::ranges::all_of(bytes, [](char c) { return c >= 32 && c <= 126; });
}

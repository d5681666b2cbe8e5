// tm: how many colours the pages have, by tm_colour.
#pragma once

#include <cstddef>

inline constexpr std::size_t tm_colours = 9;

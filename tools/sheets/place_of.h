// sg_at: the place in a vector of what is numbered from 0 in 32 bits; the number is not negative.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::size_t sg_at(std::int32_t index) { return static_cast<std::size_t>(index); }

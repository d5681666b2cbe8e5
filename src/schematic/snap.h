// tm: the snap grid on which points are set.
#pragma once

#include "foundation/context.h"

inline constexpr std::int32_t tm_snap_step = 5000;

// To the nearest multiple of 5000, halves towards zero; outermost coordinates to the last that fits.
tm_point_t tm_snapped(const tm_point_t& at);

// Points on the snap grid.
#include "schematic/snap.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace {

constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();

std::int32_t snapped(std::int32_t value) {
    const std::int64_t size = std::abs(std::int64_t{value});
    const std::int64_t steps = (size + (tm_snap_step - 1) / 2) / tm_snap_step;
    const std::int64_t fitting = std::min<std::int64_t>(steps, most / tm_snap_step) * tm_snap_step;
    return static_cast<std::int32_t>(value < 0 ? -fitting : fitting);
}

}  // namespace

tm_point_t tm_snapped(const tm_point_t& at) { return {snapped(at.x), snapped(at.y)}; }

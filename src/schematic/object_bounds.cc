// Bounds of objects and of their fathers.
#include "schematic/object_bounds.h"

#include <algorithm>

namespace {

std::int32_t saturated(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}

std::int32_t sum(std::int32_t a, std::int32_t b) { return saturated(std::int64_t{a} + b); }
std::int32_t difference(std::int32_t a, std::int32_t b) { return saturated(std::int64_t{a} - b); }

void enclose(tm_bounds_t& bounds, const tm_bounds_t& other) {
    if (bounds.xmin > bounds.xmax) {
        bounds = other;
        return;
    }
    bounds.xmin = std::min(bounds.xmin, other.xmin);
    bounds.ymin = std::min(bounds.ymin, other.ymin);
    bounds.xmax = std::max(bounds.xmax, other.xmax);
    bounds.ymax = std::max(bounds.ymax, other.ymax);
}

}  // namespace

tm_point_t tm_offset(tm_point_t point, tm_point_t origin) {
    return {difference(point.x, origin.x), difference(point.y, origin.y)};
}

tm_bounds_t tm_box_of(std::span<const tm_point_t> points) {
    tm_bounds_t box = tm_empty_bounds;
    for (const tm_point_t& point : points) enclose(box, {point.x, point.y, point.x, point.y});
    return box;
}

tm_bounds_t tm_moved(const tm_bounds_t& bounds, tm_point_t by) {
    return {sum(bounds.xmin, by.x), sum(bounds.ymin, by.y), sum(bounds.xmax, by.x), sum(bounds.ymax, by.y)};
}

void tm_enclose_in_ancestors(tm_file_gene_recf_t& file, const tm_object_gene_rec_t& object) {
    const tm_bounds_t box = tm_moved(object.bounds, object.origin);
    for (std::int16_t id = object.father; id != 0;) {
        tm_object_gene_rec_t& ancestor = *file.ar_objindex[static_cast<std::size_t>(id - 1)];
        enclose(ancestor.bounds, tm_moved(box, tm_offset({}, ancestor.origin)));
        id = ancestor.father;
    }
}

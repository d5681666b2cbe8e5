// The circle through three points.
#include "schematic/arc.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double largest_radius = 1e9;

bool same(tm_point_t a, tm_point_t b) { return a.x == b.x && a.y == b.y; }

tm_arc_circle circle_on(tm_point_t far_end) {
    const tm_point_t center = {far_end.x / 2, far_end.y / 2};
    const double distance = std::hypot(double{1} * center.x, double{1} * center.y);
    return {center, static_cast<std::int32_t>(std::lround(distance)), 0, tm_full_circle};
}

std::int32_t angle_of(double x, double y) {
    const long turned = std::lround(std::atan2(y, x) * (180 * 64 / std::numbers::pi));
    return static_cast<std::int32_t>((turned + tm_full_circle) % tm_full_circle);
}

}  // namespace

tm_arc_circle tm_circle_through(tm_point_t pt2, tm_point_t pt3) {
    if (same(pt3, {}) || same(pt3, pt2)) return circle_on(pt2);
    if (same(pt2, {})) return circle_on(pt3);
    const double ax = pt2.x, ay = pt2.y, bx = pt3.x, by = pt3.y;
    const double turn = ax * by - ay * bx;  // positive: counter-clockwise
    if (turn == 0) return {};
    const double a2 = ax * ax + ay * ay, b2 = bx * bx + by * by;
    const double x = (by * a2 - ay * b2) / (2 * turn), y = (ax * b2 - bx * a2) / (2 * turn);
    const double distance = std::hypot(x, y);
    if (distance > largest_radius) return {};
    const std::int32_t from = angle_of(-x, -y);
    const std::int32_t ccw = (angle_of(bx - x, by - y) - from + tm_full_circle) % tm_full_circle;
    return {{static_cast<std::int32_t>(std::lround(x)), static_cast<std::int32_t>(std::lround(y))},
            static_cast<std::int32_t>(std::lround(distance)),
            from,
            turn > 0 ? ccw : ccw - tm_full_circle};
}

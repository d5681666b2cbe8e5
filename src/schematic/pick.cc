// Picking of the nearest thing.
#include "schematic/pick.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// What is picked first of several within the aperture: the small before the large.
constexpr tm_family pick_order[] = {tm_family::vertex,   tm_family::pin, tm_family::net,
                                    tm_family::property, tm_family::tag, tm_family::instance,
                                    tm_family::frame};

int rank_of(tm_family family) {
    return static_cast<int>(std::find(std::begin(pick_order), std::end(pick_order), family) -
                            std::begin(pick_order));
}

// The point of a thing that is nearest to a point.
tm_spot_t nearest_point(const tm_thing_t& thing, const tm_spot_t& at) {
    if (!thing.is_segment)
        return {std::clamp(at.x, thing.from.x, thing.to.x), std::clamp(at.y, thing.from.y, thing.to.y)};
    const double dx = thing.to.x - thing.from.x, dy = thing.to.y - thing.from.y;
    const double square = dx * dx + dy * dy;
    if (square == 0) return thing.from;
    const double share =
        std::clamp(((at.x - thing.from.x) * dx + (at.y - thing.from.y) * dy) / square, 0.0, 1.0);
    return {thing.from.x + share * dx, thing.from.y + share * dy};
}

struct nearest_t {
    tm_spot_t at;
    double reach_x, reach_y;
    std::int16_t id = 0, object = 0;
    int rank = std::numeric_limits<int>::max();
    double distance = 0;

    nearest_t(const tm_viewport_t& viewport, const tm_point_t& point)
        : at(tm_spot(point)),
          reach_x(viewport.units * tm_vext.pick_aperture.x / 2),
          reach_y(viewport.units * tm_vext.pick_aperture.y / 2) {}

    void consider(const tm_thing_t& thing) {
        const tm_spot_t nearest = nearest_point(thing, at);
        const double x = std::abs(nearest.x - at.x), y = std::abs(nearest.y - at.y);
        const int own_rank = rank_of(thing.family);
        if (x > reach_x || y > reach_y || own_rank > rank) return;
        const double own_distance = std::hypot(x, y);
        if (own_rank == rank && own_distance >= distance) return;
        id = thing.id;
        object = thing.object->object_id;
        rank = own_rank;
        distance = own_distance;
    }
};

nearest_t find_nearest(tm_file_index_t file_index, tm_family family, const tm_viewport_t& viewport,
                       const tm_point_t& at) {
    nearest_t best(viewport, at);
    tm_for_things(tm_reader_t(file_index), [&](const tm_thing_t& thing) {
        if (tm_family_holds(family, thing.family)) best.consider(thing);
    });
    return best;
}

}  // namespace

std::int16_t tm_vertex_at(tm_file_index_t file_index, const tm_point_t& at) {
    std::int16_t found = 0;
    int found_rank = std::numeric_limits<int>::max();
    tm_for_things(tm_reader_t(file_index), [&](const tm_thing_t& thing) {
        const bool is_vertex = thing.family == tm_family::vertex;
        if (!is_vertex && thing.family != tm_family::pin) return;
        if (thing.object->origin.x != at.x || thing.object->origin.y != at.y) return;
        const int rank = (tm_net_of(file_index, thing.id) == 0 ? 2 : 0) + (is_vertex ? 0 : 1);
        if (rank >= found_rank) return;
        found = thing.id;
        found_rank = rank;
    });
    return found;
}

std::int16_t tm_net_of(tm_file_index_t file_index, std::int16_t object_id) {
    const tm_reader_t reader(file_index);
    if (const auto* vertex = reader.record<tm_type_vertex_2d>(object_id)) return vertex->net;
    if (const auto* pin = reader.record<tm_type_pinpropfam>(object_id)) return pin->net;
    const tm_object_gene_rec_t* object = reader.record<tm_type_segment>(object_id);
    for (int depth = 0; object != nullptr && depth < tm_max_object_levels; ++depth) {
        if (object->object_type == tm_type_net) return object->object_id;
        object = reader.object(object->father);
    }
    return 0;
}

std::int16_t tm_nearest(tm_file_index_t file_index, tm_family family, const tm_viewport_t& viewport,
                        const tm_point_t& at) {
    return find_nearest(file_index, family, viewport, at).id;
}

std::int16_t tm_nearest_segment(tm_file_index_t file_index, const tm_viewport_t& viewport,
                                const tm_point_t& at) {
    return find_nearest(file_index, tm_family::net, viewport, at).object;
}

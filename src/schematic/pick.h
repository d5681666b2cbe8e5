// tm: picking.  What lies at a point of a sheet, in model units.  Deleted and unvisible objects are not
// found.
#pragma once

#include "schematic/things.h"
#include "schematic/viewport.h"

// The vertex or pin property family exactly at a point, 0 when there is none: one with a net before one
// without, a vertex before a pin, then the first of the sheet.
std::int16_t tm_vertex_at(tm_file_index_t file_index, const tm_point_t& at);
// The net of a vertex, a pin property family, or a segment; 0 when it has none.
std::int16_t tm_net_of(tm_file_index_t file_index, std::int16_t object_id);

// The object of a family nearest to a point within the pick aperture (tm_vext.pick_aperture, pixels of the
// viewport, the point in its middle), 0 when there is none.  A net is as near as its nearest segment, an
// instance, frame, tag or property as its box.  all and first look at every family but pins, at properties
// only while SMASH is on, and take the first of vertex, net, property, tag, instance, frame that the aperture
// meets; of several of a family the nearest, of equally near ones the first of the sheet.
std::int16_t tm_nearest(tm_file_index_t file_index, tm_family family, const tm_viewport_t& viewport,
                        const tm_point_t& at);
// The segment nearest to a point within the aperture, 0 when there is none.
std::int16_t tm_nearest_segment(tm_file_index_t file_index, const tm_viewport_t& viewport,
                                const tm_point_t& at);

// tm: parts of a sheet's picture that have a size in pixels: the page border and the grid's dots, junction
// dots, probes.
#pragma once

#include "schematic/sheet_draw_list.h"

inline constexpr std::int32_t tm_least_grid = 8;        // pixels between grid dots; a finer grid is thinned
inline constexpr std::int32_t tm_junction_size = 1500;  // radius, model units; at least 2 pixels
inline constexpr std::int32_t tm_probe_height = 16;     // of a probe's text, pixels at the usual resolution

// The page border, and the dots of the sheet's grid while it and tm_vext.grid_on are on.
void tm_draw_page(tm_file_index_t file_index, const tm_viewport_t& viewport, tm_canvas& canvas,
                  tm_colour colour);
void tm_add_junction(tm_drawing_t& drawing, const tm_spot_t& at, tm_colour colour);
// The probes that hang on a net, each to the right of and above its place; one whose box would lie over a box
// that is drawn already stands above it, or below where there is no room.
using tm_probe_boxes_t = std::vector<tm_bounds_t>;  // drawn already, pixels
void tm_draw_probes(const tm_reader_t& reader, const tm_object_net_rec_t& net, const tm_viewport_t& viewport,
                    tm_canvas& canvas, tm_probe_boxes_t& drawn);

// tm: the viewports.  Which area of a sheet the Context page shows, for each open file, and where model units
// fall on the canvas.  Model units grow to the right and upward, pixels to the right and downward; a pixel
// stands for a square.  The area seen always lies within 32-bit model units, and a pixel is never less than
// tm_least_units.  A file whose sheet is replaced by another starts at the whole page.
#pragma once

#include <cstdint>

#include "canvas/canvas.h"
#include "schematic/spot.h"

inline constexpr double tm_least_units = 10;  // model units per pixel when nearest
inline constexpr std::int32_t tm_viewport_steps =
    100;  // steps to the width and to the height of what is seen

struct tm_viewport_t {
    double left = 0, top = 0;            // the canvas's upper left corner, model units
    double units = 1;                    // model units per pixel
    std::int32_t width = 1, height = 1;  // of the canvas, pixels
};

// The viewport that shows an area whole and as large as it can, in the middle of a canvas.
tm_viewport_t tm_fit(const tm_bounds_t& area, std::int32_t width, std::int32_t height);
// Pixels of a place, fractions kept: whole numbers are the upper left corners of pixels.
inline tm_spot_t tm_pixels(const tm_viewport_t& viewport, const tm_spot_t& at) {
    return {(at.x - viewport.left) / viewport.units, (viewport.top - at.y) / viewport.units};
}
tm_pixel tm_model_to_pixel(const tm_viewport_t& viewport, const tm_point_t& at);
tm_point_t tm_pixel_to_model(const tm_viewport_t& viewport, tm_pixel at);  // of the pixel's middle
tm_bounds_t tm_seen(const tm_viewport_t& viewport);                        // the area on the canvas

// The viewport of an open file's sheet on the drawing area (tm_vext.bitmap_size), or on another canvas.
tm_viewport_t tm_viewport(tm_file_index_t file_index);
tm_viewport_t tm_viewport_sized(tm_file_index_t file_index, std::int32_t width, std::int32_t height);

// The viewing commands; each sets the viewport of the file and draws nothing.
void tm_view_all(tm_file_index_t file_index);
// Corners in any order.  An area smaller than the pick aperture comes into the middle and is not magnified.
void tm_view_area(tm_file_index_t file_index, const tm_bounds_t& area);
// A box (or, with xmin = xmax and ymin = ymax, a point) comes into the middle; what is seen is as large as
// before, unless the box, taken at least 20000 units large, is less than a tenth of it, or more than nine
// tenths: then it becomes a quarter.
void tm_view_centre(tm_file_index_t file_index, const tm_bounds_t& box);
// Moves what is seen up, down, left or right ('U', 'D', 'L', 'R'); its middle stays on the page.
void tm_view_step(tm_file_index_t file_index, char direction, std::int32_t steps);

// Moves the graphic cursor (obj_pos and pixel_pos of tm_vext, and the pointer) from where it is on the grid
// by so many steps of tm_snap_step, or of the smallest multiple of it that is a pixel; it stays on the
// canvas.
void tm_cursor_step(tm_file_index_t file_index, char direction, std::int32_t steps);

// rs: the geometry of the Results page.  What the page has room for follows its present size; the places of
// header, labels and grid are set once (kol_set_list_geometry, kol_set_trace_geometry) and stand in kol_ext.
// Lengths are pixels.  Rows and columns are counted with pitches that leave some room to what they take.  On
// a finer screen all lengths are larger (rs_scale_geometry).
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "canvas/canvas.h"

struct rs_list_geometry_t {
    std::int32_t row_step = 20, column_step = 12;    // what a row and a character take
    std::int32_t row_pitch = 22, column_pitch = 14;  // what they are counted with
    std::int32_t rows_below = 12;                    // rows of the page that hold no values
    std::int32_t rows_below_header = 10;  // rows of the page below the place of the first header line
    std::int32_t columns_beside_states = 29, columns_beside_values = 25;  // with two characters, with one
    std::int32_t first_value_column = 16, first_name_column = 17, time_column = 1;
};

struct rs_trace_geometry_t {
    std::int32_t row_step = 40, row_pitch = 42;
    std::int32_t rows_below = 5;  // rows of the page that hold no waveforms
    std::int32_t least_rows = 1;  // a lower page is drawn as if it held these
    std::int32_t text_height = 20, left = 24, top = 50, names_width = 252, label_drop = 12;
};

inline rs_list_geometry_t rs_list_geometry;
inline rs_trace_geometry_t rs_trace_geometry;

// Lengths for a screen with so many pixels to one of the usual size; a row of the trace takes row_step pixels
// of the usual size, held within what a name and a screen need.
inline void rs_scale_geometry(double scale, std::int32_t row_step) {
    const auto scaled = [scale](std::int32_t length) {
        return static_cast<std::int32_t>(std::lround(length * scale));
    };
    const rs_list_geometry_t list;
    const rs_trace_geometry_t trace;
    rs_list_geometry = list;
    rs_list_geometry.row_step = scaled(list.row_step);
    rs_list_geometry.column_step = scaled(list.column_step);
    rs_list_geometry.row_pitch = scaled(list.row_pitch);
    rs_list_geometry.column_pitch = scaled(list.column_pitch);
    rs_trace_geometry = trace;
    const std::int32_t below = scaled(trace.rows_below * trace.row_pitch);
    rs_trace_geometry.row_step = scaled(std::clamp(row_step, trace.text_height, 10 * trace.row_step));
    rs_trace_geometry.row_pitch = rs_trace_geometry.row_step + scaled(trace.row_pitch - trace.row_step);
    rs_trace_geometry.rows_below = (below + rs_trace_geometry.row_pitch - 1) / rs_trace_geometry.row_pitch;
    rs_trace_geometry.text_height = scaled(trace.text_height);
    rs_trace_geometry.left = scaled(trace.left);
    rs_trace_geometry.top = scaled(trace.top);
    rs_trace_geometry.names_width = scaled(trace.names_width);
    rs_trace_geometry.label_drop = scaled(trace.label_drop);
}

// An opaque ground for texts.
inline void rs_clear_band(tm_canvas& canvas, std::int32_t right, std::int32_t top, std::int32_t height) {
    const tm_pixel corners[] = {{0, top}, {right, top}, {right, top + height}, {0, top + height}};
    canvas.fill(corners, tm_colour::black);
}

// The window of the trace.
inline constexpr std::int32_t kol_trace_divisions = 20;

inline std::int32_t rs_list_rows(std::int32_t page_height) {
    return page_height / rs_list_geometry.row_pitch - rs_list_geometry.rows_below;
}
inline std::int32_t rs_list_columns(std::int32_t page_width, bool states_shown) {
    return page_width / rs_list_geometry.column_pitch -
           (states_shown ? rs_list_geometry.columns_beside_states : rs_list_geometry.columns_beside_values);
}
// Rows of waveforms.
inline std::int32_t rs_trace_rows(std::int32_t page_height) {
    return std::max(page_height / rs_trace_geometry.row_pitch - rs_trace_geometry.rows_below,
                    rs_trace_geometry.least_rows);
}

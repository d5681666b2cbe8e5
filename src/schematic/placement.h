// tm: where the things of a sheet lie.  Places and boxes in model units on the sheet, kept as doubles, in
// which every whole number of 32 bits and the sum of any two are exact, so that nothing here can overflow.  A
// symbol's frame is placed by mirroring x -> -x when the instance is flipped, then by quarter turns
// counter-clockwise, then by moving its origin to the instance's.
#pragma once

#include <array>
#include <cstdint>
#include <limits>

#include "schematic/object_reader.h"

inline constexpr double tm_text_aspect = 0.6;  // width of a character to its height
inline constexpr std::int32_t tm_tag_text = 8500;

struct tm_spot_t {
    double x = 0, y = 0;
};

inline tm_spot_t tm_spot(const tm_point_t& at) {
    return {static_cast<double>(at.x), static_cast<double>(at.y)};
}

// The nearest coordinate of 32 bits.
std::int32_t tm_coordinate(double value);

struct tm_box_t {  // encloses nothing as it is made
    double xmin = std::numeric_limits<double>::infinity(), ymin = xmin;
    double xmax = -xmin, ymax = -xmin;
    bool is_empty() const { return xmin > xmax || ymin > ymax; }
};

void tm_enclose(tm_box_t& box, const tm_spot_t& at);
void tm_enclose(tm_box_t& box, const tm_box_t& other);
bool tm_lies_inside(const tm_box_t& inner, const tm_box_t& outer);  // an empty box lies nowhere
// Corners in any order.
tm_box_t tm_box(const tm_bounds_t& bounds);

struct tm_placement_t {  // of a frame on the sheet; as it is made, the sheet's own
    tm_spot_t origin;
    std::int32_t quarter_turns = 0;
    bool mirrored = false;
};

tm_placement_t tm_placement(const tm_object_instance_rec_t& instance);
tm_spot_t tm_place(const tm_placement_t& placement, const tm_spot_t& at);
tm_box_t tm_place(const tm_placement_t& placement, const tm_box_t& box);

// A text as it is read on the sheet: from left to right or upward, in the place that the turned and mirrored
// text takes.  When that leads it against its own direction, the text ends where it would begin.
struct tm_sheet_text_t {
    tm_box_t box;
    double height = 0;
    std::int32_t quarter_turns = 0;  // 0 or 1
    bool ends_at_origin = false;
};

tm_sheet_text_t tm_place_text(const tm_placement_t& placement, const tm_spot_t& origin, std::int32_t rotate,
                              double height, std::size_t length);
tm_sheet_text_t tm_place_property(const tm_placement_t& placement, const tm_object_property_rec_t& property);

// The pennant of a tag: its corners, the way round and not closed, and its text.
struct tm_pennant_t {
    std::array<tm_spot_t, 6> corners;
    tm_sheet_text_t text;
};
tm_pennant_t tm_place_tag(const tm_object_tag_rec_t& tag);

// The ends of a segment; false when one of its vertices is none.
bool tm_place_segment(const tm_reader_t& reader, const tm_object_segment_rec_t& segment, tm_spot_t& from,
                      tm_spot_t& to);

// The box of a symbol's shape and pins in its own frame.
tm_box_t tm_symbol_box(const tm_reader_t& reader, std::int16_t symbol, bool with_texts = false);
// The box that an object takes on its sheet, with what it contains: instances without any texts, nets without
// theirs; empty when it takes none.
tm_box_t tm_object_box(const tm_reader_t& reader, std::int16_t object_id);

// tm: where the things of a sheet lie.  Places and boxes are model units on the sheet.  A symbol's frame is
// placed by mirroring x -> -x when the instance is flipped, then by quarter turns counter-clockwise, then by
// moving its origin to the instance's.
#pragma once

#include <array>
#include <cstdint>

#include "schematic/object_reader.h"
#include "schematic/spot.h"

inline constexpr double tm_text_aspect = 0.6;  // width of a character to its height
inline constexpr std::int32_t tm_tag_text = 8500;

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

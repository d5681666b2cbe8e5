// Where instances, texts, tags and wires lie.
#include "schematic/placement.h"

#include <algorithm>

namespace {

// A pennant: half its height, the length of its points, the room before and behind its text.
constexpr double tag_half = 5000, tag_tip = 4000, tag_gap = 1500;

struct tag_kind {
    const char* name;
    bool to_left;          // it stands at the left of its origin, its right point there
    bool left_is_pointed;  // its right end always is
};
constexpr tag_kind tag_kinds[] = {
    {"INPUT", true, false},    {"FROM_PAGE", true, false}, {"OUTPUT", false, false},
    {"TO_PAGE", false, false}, {"INOUT", false, true},
};

tag_kind kind_of(const tm_name_record_t& name) {
    for (const tag_kind& kind : tag_kinds)
        if (tm_const_iden_name(kind.name, name)) return kind;
    return {"", false, true};
}

tm_spot_t turned(tm_spot_t at, std::int32_t quarter_turns) {
    for (int k = quarter_turns & 3; k > 0; --k) at = {-at.y, at.x};
    return at;
}

// The placed direction alone.
tm_spot_t direct(const tm_placement_t& placement, const tm_spot_t& direction) {
    return turned({placement.mirrored ? -direction.x : direction.x, direction.y}, placement.quarter_turns);
}

std::size_t length_of(const tm_value_record_t& text) { return tm_view(text).size(); }

}  // namespace

tm_placement_t tm_placement(const tm_object_instance_rec_t& instance) {
    return {tm_spot(instance.origin), instance.rotate & 3, instance.fliph};
}

tm_spot_t tm_place(const tm_placement_t& placement, const tm_spot_t& at) {
    const tm_spot_t offset = direct(placement, at);
    return {placement.origin.x + offset.x, placement.origin.y + offset.y};
}

tm_box_t tm_place(const tm_placement_t& placement, const tm_box_t& box) {
    tm_box_t placed;
    if (box.is_empty()) return placed;
    tm_enclose(placed, tm_place(placement, tm_spot_t{box.xmin, box.ymin}));
    tm_enclose(placed, tm_place(placement, tm_spot_t{box.xmax, box.ymax}));
    return placed;
}

tm_sheet_text_t tm_place_text(const tm_placement_t& placement, const tm_spot_t& origin, std::int32_t rotate,
                              double height, std::size_t length) {
    const tm_spot_t along = turned({1, 0}, rotate), up = turned({0, 1}, rotate);
    const double width = height * tm_text_aspect * static_cast<double>(length);
    const tm_spot_t end = {origin.x + along.x * width + up.x * height,
                           origin.y + along.y * width + up.y * height};
    const tm_spot_t reads = direct(placement, along);
    tm_sheet_text_t text;
    tm_enclose(text.box, tm_place(placement, origin));
    tm_enclose(text.box, tm_place(placement, end));
    text.height = height;
    text.quarter_turns = reads.y != 0 ? 1 : 0;
    text.ends_at_origin = reads.x + reads.y < 0;
    return text;
}

tm_sheet_text_t tm_place_property(const tm_placement_t& placement, const tm_object_property_rec_t& property) {
    return tm_place_text(placement, tm_spot(property.origin), property.rotate,
                         std::max<double>(property.height, 0), length_of(property.nvalue));
}

tm_pennant_t tm_place_tag(const tm_object_tag_rec_t& tag) {
    const tag_kind kind = kind_of(tag.name);
    const tm_spot_t at = tm_spot(tag.origin);
    const double text_width = tm_tag_text * tm_text_aspect * static_cast<double>(length_of(tag.nvalue));
    const double left_tip = kind.left_is_pointed ? tag_tip : 0;
    const double left = kind.to_left ? at.x - text_width - 2 * tag_gap - tag_tip : at.x;
    const double begin = left + left_tip, end = begin + text_width + 2 * tag_gap, right = end + tag_tip;
    const double low = at.y - tag_half, high = at.y + tag_half;
    tm_pennant_t made;
    made.corners = {{{left, at.y}, {begin, low}, {end, low}, {right, at.y}, {end, high}, {begin, high}}};
    made.text =
        tm_place_text({}, {begin + tag_gap, at.y - tm_tag_text / 2.0}, 0, tm_tag_text, length_of(tag.nvalue));
    return made;
}

bool tm_place_segment(const tm_reader_t& reader, const tm_object_segment_rec_t& segment, tm_spot_t& from,
                      tm_spot_t& to) {
    const tm_object_gene_rec_t *first = reader.object(segment.vertex1),
                               *last = reader.object(segment.vertex2);
    if (first == nullptr || last == nullptr) return false;
    from = tm_spot(first->origin);
    to = tm_spot(last->origin);
    return true;
}

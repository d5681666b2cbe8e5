#include "schematic/placement.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "schematic/object_reader.h"
#include "schematic/outline.h"

namespace {

constexpr double box_tolerance = 100;  // of curves, model units
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

struct box_of_tree {
    const tm_reader_t& reader;
    tm_box_t& box;
    bool with_texts = true;
    bool with_instances = true;  // not within symbols, so that none can hold itself
    tm_outline_t outline{};

    bool operator()(const tm_object_gene_rec_t& object);

private:
    void enclose_all(std::span<const tm_spot_t> places) {
        for (const tm_spot_t& at : places) tm_enclose(box, at);
    }
    void enclose_segment(const tm_object_segment_rec_t& segment) {
        tm_spot_t from, to;
        if (!tm_place_segment(reader, segment, from, to)) return;
        tm_enclose(box, from);
        tm_enclose(box, to);
    }
};

// Instances and nets take the place of their shapes and wires; their texts do not count.
bool box_of_tree::operator()(const tm_object_gene_rec_t& object) {
    switch (object.object_type) {
        case tm_type_instance: {
            if (!with_instances) return false;
            const auto& instance = static_cast<const tm_object_instance_rec_t&>(object);
            tm_enclose(box, tm_place(tm_placement(instance), tm_symbol_box(reader, instance.symbol)));
            return false;
        }
        case tm_type_net:
            with_texts = false;
            return true;
        case tm_type_segment:
            enclose_segment(static_cast<const tm_object_segment_rec_t&>(object));
            return false;
        case tm_type_tag:
            enclose_all(tm_place_tag(static_cast<const tm_object_tag_rec_t&>(object)).corners);
            return false;
        case tm_type_property_2d:
            if (with_texts)
                tm_enclose(box,
                           tm_place_property({}, static_cast<const tm_object_property_rec_t&>(object)).box);
            return false;
        case tm_type_vertex_2d:
        case tm_type_pinpropfam:
        case tm_type_pin:
            tm_enclose(box, tm_spot(object.origin));
            return false;
        case tm_type_symbol_family:
            return false;
        default:
            if (tm_outline(object, box_tolerance, outline)) enclose_all(outline.points);
            return true;
    }
}

}  // namespace

std::int32_t tm_coordinate(double value) {
    using limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<double>(std::round(value), limits::min(), limits::max()));
}

void tm_enclose(tm_box_t& box, const tm_spot_t& at) {
    box.xmin = std::min(box.xmin, at.x);
    box.ymin = std::min(box.ymin, at.y);
    box.xmax = std::max(box.xmax, at.x);
    box.ymax = std::max(box.ymax, at.y);
}

void tm_enclose(tm_box_t& box, const tm_box_t& other) {
    if (other.is_empty()) return;
    tm_enclose(box, tm_spot_t{other.xmin, other.ymin});
    tm_enclose(box, tm_spot_t{other.xmax, other.ymax});
}

bool tm_lies_inside(const tm_box_t& inner, const tm_box_t& outer) {
    return !inner.is_empty() && inner.xmin >= outer.xmin && inner.xmax <= outer.xmax &&
           inner.ymin >= outer.ymin && inner.ymax <= outer.ymax;
}

tm_box_t tm_box(const tm_bounds_t& bounds) {
    tm_box_t box;
    tm_enclose(box, tm_spot({bounds.xmin, bounds.ymin}));
    tm_enclose(box, tm_spot({bounds.xmax, bounds.ymax}));
    return box;
}

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

tm_box_t tm_symbol_box(const tm_reader_t& reader, std::int16_t symbol, bool with_texts) {
    tm_box_t box;
    const tm_object_gene_rec_t* const top = reader.record<tm_type_symbol>(symbol);
    if (top == nullptr) return box;
    box_of_tree visit{reader, box, with_texts, false};
    tm_for_shown_tree(reader, *top, visit);
    return box;
}

tm_box_t tm_object_box(const tm_reader_t& reader, std::int16_t object_id) {
    tm_box_t box;
    const tm_object_gene_rec_t* const top = reader.object(object_id);
    if (top == nullptr) return box;
    box_of_tree visit{reader, box};
    tm_for_shown_tree(reader, *top, visit);
    return box;
}

// The boxes of objects, from what they contain.
#include "schematic/object_box.h"

#include <span>

#include "schematic/outline.h"
#include "schematic/placement.h"

namespace {

constexpr double box_tolerance = 100;  // of curves, model units

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

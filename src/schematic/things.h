// tm: the things of a sheet that can be picked and selected, each with the family it belongs to and the place
// it takes.
#pragma once

#include "schematic/object_box.h"
#include "schematic/placement.h"

// The families of the selecting commands.
enum class tm_family : std::uint8_t { all, first, instance, vertex, frame, property, net, pin, tag };

struct tm_thing_t {
    tm_family family = tm_family::instance;
    std::int16_t id = 0;  // of the object to pick; of the net for a segment
    const tm_object_gene_rec_t* object = nullptr;
    tm_spot_t from, to;  // the ends of a segment, else the opposite corners of the box
    bool is_segment = false;
};

// Whether a family of the selecting commands holds what is of another family; all and first hold everything
// but pins, and properties only while SMASH is on.
bool tm_family_holds(tm_family family, tm_family member);

// The types that are things by themselves; nets are found by their segments.
struct tm_thing_type_t {
    std::int16_t type;
    tm_family family;
};
inline constexpr tm_thing_type_t tm_thing_types[] = {
    {tm_type_instance, tm_family::instance}, {tm_type_vertex_2d, tm_family::vertex},
    {tm_type_frame, tm_family::frame},       {tm_type_property_2d, tm_family::property},
    {tm_type_pinpropfam, tm_family::pin},    {tm_type_tag, tm_family::tag},
};

// Calls visit(thing) for each thing shown on a sheet, in the order of the tree; a net once for each segment.
template <typename Visit>
class tm_thing_visitor {
public:
    tm_thing_visitor(const tm_reader_t& reader, Visit& visit) : reader_(reader), visit_(visit) {}

    bool operator()(const tm_object_gene_rec_t& object) {
        if (object.object_type == tm_type_symbol_family) return false;
        if (object.object_type == tm_type_net) net_ = object.object_id;
        if (object.object_type == tm_type_segment)
            show_segment(static_cast<const tm_object_segment_rec_t&>(object));
        for (const tm_thing_type_t& row : tm_thing_types)
            if (row.type == object.object_type) show(row.family, object);
        return true;
    }

private:
    void show(tm_family family, const tm_object_gene_rec_t& object) {
        const tm_box_t box = tm_object_box(reader_, object.object_id);
        if (!box.is_empty())
            visit_({family, object.object_id, &object, {box.xmin, box.ymin}, {box.xmax, box.ymax}, false});
    }
    void show_segment(const tm_object_segment_rec_t& segment) {
        tm_thing_t thing{tm_family::net, net_, &segment, {}, {}, true};
        if (tm_place_segment(reader_, segment, thing.from, thing.to)) visit_(thing);
    }
    const tm_reader_t& reader_;
    Visit& visit_;
    std::int16_t net_ = 0;
};

template <typename Visit>
void tm_for_things(const tm_reader_t& reader, Visit visit) {
    if (reader.file == nullptr) return;
    const tm_object_gene_rec_t* const main = reader.object(reader.file->primary_object);
    tm_thing_visitor<Visit> visitor(reader, visit);
    if (main != nullptr) tm_for_shown_tree(reader, *main, visitor);
}

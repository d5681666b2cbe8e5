// A page as it stands in an open sheet file, taken apart by place: nothing here believes an object about what
// it is connected to.
#pragma once

#include "commands/sheets/found_objects.h"
#include "schematic/net_number.h"
#include "schematic/object_box.h"
#include "schematic/object_walk.h"
#include "schematic/placement.h"
#include "wire_rules.h"

struct placed_text {
    sg_point at;
    std::string text;
    std::string of;  // what it belongs to
};

struct drawn_net {
    std::string name, port;  // port: a further name
    bool is_bus = false;
    std::int32_t start = 0, end = 0;
    std::int32_t number = 0;
};

struct drawn_tap {  // a part of a thick wire, where it comes to the wire
    std::int32_t bus = 0, part = 0;
    std::string bits;
};

struct drawn_page {
    std::vector<net_wire> wires;
    std::map<std::int32_t, drawn_net> nets;                // by object id, those with a name
    std::set<std::pair<std::int32_t, sg_point>> vertices;  // of nets
    std::vector<drawn_tap> taps;
    std::vector<placed_text> pins;  // text: PIN; of: INST
    std::vector<placed_text> tags;  // text: nvalue; of: kind
    std::vector<sg_rectangle> bodies;
    std::vector<std::pair<std::string, sg_rectangle>> texts;  // that are seen
    std::map<std::string, std::string> cells;                 // symbol path by INST
    std::map<std::string, sg_point> origins;                  // by INST
};

inline sg_point place_of(tm_file_index_t file, std::int16_t id) {
    const tm_point_t& at = tm_object(file, id).origin;
    return {at.x, at.y};
}

inline sg_rectangle rectangle_of(const tm_box_t& box) {
    return {static_cast<std::int32_t>(box.xmin), static_cast<std::int32_t>(box.ymin),
            static_cast<std::int32_t>(box.xmax), static_cast<std::int32_t>(box.ymax)};
}

inline void read_texts(tm_file_index_t file, std::int16_t holder, const tm_placement_t& placement,
                       drawn_page& page) {
    for (const std::int16_t id : tm_properties(file, holder)) {
        const auto& property = tm_object_as<tm_type_property_2d>(file, id);
        if (property.visible)
            page.texts.emplace_back(tm_view(property.nvalue),
                                    rectangle_of(tm_place_property(placement, property).box));
    }
}

inline void read_instance(tm_file_index_t file, std::int16_t id, drawn_page& page) {
    const std::string name = kol_name_of(file, id);
    const auto& instance = tm_object_as<tm_type_instance>(file, id);
    EXPECT_TRUE(
        page.cells.emplace(name, tm_view(tm_object_as<tm_type_symbol>(file, instance.symbol).path)).second)
        << name << " twice";
    page.origins[name] = place_of(file, id);
    sg_rectangle body{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN};
    for (const kol_placed_pin_t& pin : kol_pins_of(file, id)) {
        page.pins.push_back({place_of(file, pin.placed), kol_pin_name(file, pin), name});
        read_texts(file, pin.pin, tm_placement(instance), page);
    }
    const tm_reader_t reader{file};
    body = rectangle_of(tm_place(tm_placement(instance), tm_symbol_box(reader, instance.symbol)));
    page.bodies.push_back(body);
    read_texts(file, id, {}, page);
    read_texts(file, instance.symbol, tm_placement(instance), page);
}

// The part is the net whose wire ends on the bus below the text that says which bits it is.
inline void read_taps(tm_file_index_t file, drawn_page& page) {
    for (const std::int16_t id : tm_nets(file))
        for (const std::int16_t property : tm_properties(file, id)) {
            const auto& text = tm_object_as<tm_type_property_2d>(file, property);
            if (tm_view(text.name) != "BITS") continue;
            const std::size_t before = page.taps.size();
            for (const net_wire& w : page.wires) {
                const bool is_below = w.wire.from.y == w.wire.to.y && w.wire.from.y < text.origin.y &&
                                      w.wire.from.y + sg_pitch > text.origin.y &&
                                      w.wire.from.x <= text.origin.x && w.wire.to.x >= text.origin.x;
                const bool is_on_bus =
                    page.vertices.contains({id, w.wire.from}) || page.vertices.contains({id, w.wire.to});
                if (w.net != id && is_below && is_on_bus)
                    page.taps.push_back({id, w.net, std::string(tm_view(text.nvalue))});
            }
            EXPECT_EQ(page.taps.size(), before + 1)
                << tm_view(text.nvalue) << " of " << kol_name_of(file, id);
        }
}

inline drawn_page read_page(tm_file_index_t file) {
    drawn_page page;
    for (const std::int16_t id : tm_instances(file)) read_instance(file, id, page);
    for (const std::int16_t id : tm_nets(file)) {
        const auto& net = tm_object_as<tm_type_net>(file, id);
        const std::string name = kol_name_of(file, id);
        if (!name.empty())
            page.nets[id] = {name,        kol_property_of(file, id, "PORT"),
                             net.is_bus,  net.bus_start,
                             net.bus_end, tm_net_number(file, id)};
        for (const std::int16_t segment : tm_segments(file, id)) {
            const auto& s = tm_object_as<tm_type_segment>(file, segment);
            page.wires.push_back({{place_of(file, s.vertex1), place_of(file, s.vertex2)}, id, net.is_bus});
        }
        for (const std::int16_t vertex : tm_vertices(file, id))
            page.vertices.emplace(id, place_of(file, vertex));
        read_texts(file, id, {}, page);
    }
    for (const std::int16_t id : tm_tags(file)) {
        const auto& tag = tm_object_as<tm_type_tag>(file, id);
        page.tags.push_back(
            {place_of(file, id), std::string(tm_view(tag.nvalue)), std::string(tm_view(tag.name))});
        page.texts.emplace_back(tm_view(tag.nvalue), rectangle_of(tm_place_tag(tag).text.box));
    }
    read_taps(file, page);
    return page;
}

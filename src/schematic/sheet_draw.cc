// The picture of a sheet.
#include "schematic/sheet_draw.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "schematic/object_box.h"
#include "schematic/outline.h"
#include "schematic/sheet_draw_list.h"
#include "schematic/sheet_draw_parts.h"
#include "schematic/wire_look.h"

namespace {

constexpr tm_colour page_colour = tm_colour::blue, tag_colour = tm_colour::cyan;
constexpr tm_colour selected_colour = tm_colour::white, unconnected_colour = tm_colour::red;
constexpr tm_colour usual_wire_colour = tm_colour::green;
constexpr std::int32_t selected_width = 2;  // more than usual, pixels

constexpr tm_pixel open_square[] = {{-2, -2}, {2, -2}, {2, 2}, {-2, 2}, {-2, -2}};
constexpr tm_pixel selected_square[] = {{-4, -4}, {4, -4}, {4, 4}, {-4, 4}, {-4, -4}};

using property_list = std::vector<const tm_object_property_rec_t*>;

// What is drawn where, and how far down the tree.
struct sheet_t {
    tm_file_index_t file;
    tm_reader_t reader;
    tm_drawing_t drawing;
    tm_outline_t outline{};                                     // scratch
    std::unordered_map<std::int16_t, tm_box_t> symbol_boxes{};  // texts included, in the symbol's frame
    std::vector<const tm_object_net_rec_t*> probed{};
};

struct holder_t {  // of the objects being drawn
    tm_placement_t placement;
    bool is_selected = false;
    const property_list* hidden = nullptr;  // the names of properties that are not drawn
};

void draw_tree(sheet_t& sheet, const tm_object_gene_rec_t& object, const holder_t& holder, int depth);

void draw_children(sheet_t& sheet, const tm_object_gene_rec_t& father, holder_t holder, int depth) {
    if (depth >= tm_max_object_levels) return;
    holder.is_selected = holder.is_selected || tm_is_selected(father);
    tm_for_shown_children(sheet.reader, father, [&](const tm_object_gene_rec_t& child) {
        draw_tree(sheet, child, holder, depth + 1);
    });
}

tm_layer layer_of(tm_layer usual, bool is_selected) { return is_selected ? tm_layer::selected : usual; }

tm_pen pen_of(tm_pen usual, bool is_selected) {
    if (!is_selected) return usual;
    return {selected_colour, usual.dash, usual.width + selected_width};
}

void draw_outline(sheet_t& sheet, const holder_t& holder, bool is_selected) {
    tm_outline_t& outline = sheet.outline;
    for (tm_spot_t& at : outline.points) at = tm_place(holder.placement, at);
    if (outline.filled) tm_add_filling(sheet.drawing, outline.points, outline.fill_colour, tm_layer::filling);
    tm_add_line(sheet.drawing, outline.points, pen_of(outline.pen, is_selected),
                layer_of(tm_layer::shape, is_selected));
}

void draw_text(sheet_t& sheet, const tm_sheet_text_t& place, std::string_view text, tm_colour colour,
               bool is_selected) {
    tm_add_text(sheet.drawing, place, text, is_selected ? selected_colour : colour,
                is_selected ? tm_layer::selected_text : tm_layer::text);
}

bool is_hidden(const tm_object_property_rec_t& property, const property_list* hidden) {
    return hidden != nullptr &&
           std::any_of(hidden->begin(), hidden->end(), [&](const tm_object_property_rec_t* own) {
               return tm_name_iden_name(own->name, property.name);
           });
}

void draw_property(sheet_t& sheet, const tm_object_property_rec_t& property, const holder_t& holder) {
    if (is_hidden(property, holder.hidden)) return;
    const tm_sheet_text_t place = tm_place_property(holder.placement, property);
    const bool is_selected = holder.is_selected || tm_is_selected(property);
    draw_text(sheet, place, tm_view(property.nvalue), tm_palette_colour(property.line_color), is_selected);
    if (!tm_is_selected(property)) return;
    const tm_box_t& box = place.box;
    const tm_spot_t frame[] = {{box.xmin, box.ymin},
                               {box.xmax, box.ymin},
                               {box.xmax, box.ymax},
                               {box.xmin, box.ymax},
                               {box.xmin, box.ymin}};
    tm_add_line(sheet.drawing, frame, {selected_colour}, tm_layer::selected);
}

void draw_tag(sheet_t& sheet, const tm_object_tag_rec_t& tag, bool is_selected) {
    const tm_pennant_t pennant = tm_place_tag(tag);
    std::vector<tm_spot_t> path(pennant.corners.begin(), pennant.corners.end());
    path.push_back(path.front());
    tm_add_line(sheet.drawing, path, pen_of({tag_colour}, is_selected),
                layer_of(tm_layer::shape, is_selected));
    draw_text(sheet, pennant.text, tm_view(tag.nvalue), tag_colour, is_selected);
}

// Wires.

const tm_object_segment_rec_t* first_segment(const tm_reader_t& reader, const tm_object_net_rec_t& net) {
    for (const auto* part = reader.first_child(net); part != nullptr; part = reader.next(*part)) {
        if (part->object_type != tm_type_graphics || !tm_is_shown(*part)) continue;
        for (const auto* child = reader.first_child(*part); child != nullptr; child = reader.next(*child))
            if (child->object_type == tm_type_segment && tm_is_shown(*child))
                return static_cast<const tm_object_segment_rec_t*>(child);
    }
    return nullptr;
}

bool look_of(const sheet_t& sheet, std::int16_t net_id, tm_wire_look_t& look) {
    return tm_wire_look_of != nullptr && net_id != 0 && tm_wire_look_of(sheet.file, net_id, look);
}

tm_colour colour_of_net(const sheet_t& sheet, std::int16_t net_id) {
    if (tm_wire_look_t look; look_of(sheet, net_id, look)) return look.colour;
    const tm_reader_t& reader = sheet.reader;
    const auto* net = reader.record<tm_type_net>(net_id);
    const auto* segment = net != nullptr ? first_segment(reader, *net) : nullptr;
    return segment != nullptr ? tm_palette_colour(segment->line_color) : usual_wire_colour;
}

void draw_segment(sheet_t& sheet, const tm_object_segment_rec_t& segment, const tm_wire_look_t* look,
                  bool is_bus, bool is_selected) {
    tm_spot_t ends[2];
    if (!tm_place_segment(sheet.reader, segment, ends[0], ends[1])) return;
    tm_pen pen = tm_pen_of(segment.line_color, segment.line_style, segment.line_width);
    if (is_bus) pen.width = std::max(pen.width, tm_bus_width);
    if (look != nullptr) pen = {look->colour, look->dash, pen.width};
    tm_add_line(sheet.drawing, ends, pen_of(pen, is_selected), layer_of(tm_layer::wire, is_selected));
}

struct net_parts {
    sheet_t& sheet;
    tm_colour colour;
    const tm_wire_look_t* look;
    bool is_bus, is_selected;

    bool operator()(const tm_object_gene_rec_t& object) const {
        const bool selected = is_selected || tm_is_selected(object);
        if (object.object_type == tm_type_segment)
            draw_segment(sheet, static_cast<const tm_object_segment_rec_t&>(object), look, is_bus, selected);
        if (object.object_type == tm_type_property_2d)
            draw_property(sheet, static_cast<const tm_object_property_rec_t&>(object), {{}, is_selected});
        if (object.object_type == tm_type_vertex_2d) {
            if (static_cast<const tm_object_vertex_rec_t&>(object).dotted)
                tm_add_junction(sheet.drawing, tm_spot(object.origin),
                                is_selected ? selected_colour : colour);
            if (tm_is_selected(object))
                tm_add_mark(sheet.drawing, tm_spot(object.origin), selected_square, {selected_colour},
                            tm_layer::selected);
        }
        return true;
    }
};

void draw_net(sheet_t& sheet, const tm_object_net_rec_t& net) {
    tm_wire_look_t look;
    const bool has_look = look_of(sheet, net.object_id, look);
    net_parts parts{sheet, colour_of_net(sheet, net.object_id), has_look ? &look : nullptr, net.is_bus,
                    tm_is_selected(net)};
    tm_for_shown_tree(sheet.reader, net, parts);
    if (net.ptrto_probe != nullptr) sheet.probed.push_back(&net);
}

// Instances.

void draw_pin_place(sheet_t& sheet, const tm_object_pinpropfam_rec_t& pin, bool is_selected) {
    const tm_spot_t at = tm_spot(pin.origin);
    const tm_colour colour = is_selected ? selected_colour : unconnected_colour;
    if (pin.net == 0) tm_add_mark(sheet.drawing, at, open_square, {colour}, tm_layer::shape);
    if (pin.dotted) tm_add_junction(sheet.drawing, at, colour_of_net(sheet, pin.net));
    if (tm_is_selected(pin))
        tm_add_mark(sheet.drawing, at, selected_square, {selected_colour}, tm_layer::selected);
}

void gather_properties(const tm_reader_t& reader, const tm_object_gene_rec_t& father, property_list& all) {
    for (const auto* child = reader.first_child(father); child != nullptr; child = reader.next(*child))
        if (child->object_type == tm_type_property_2d && (child->status & tm_object_is_deleted) == 0)
            all.push_back(static_cast<const tm_object_property_rec_t*>(child));
}

// The instance's pins in their order, and its own properties.
struct instance_parts {
    property_list own;
    std::vector<const tm_object_gene_rec_t*> pins;
};

instance_parts parts_of(const tm_reader_t& reader, const tm_object_instance_rec_t& instance) {
    instance_parts parts;
    for (const auto* child = reader.first_child(instance); child != nullptr; child = reader.next(*child)) {
        if (child->object_type == tm_type_bodpropfam) gather_properties(reader, *child, parts.own);
        if (child->object_type == tm_type_pinpropfam) parts.pins.push_back(child);
    }
    return parts;
}

// A symbol through its placement; the k-th pin goes with the instance's k-th.
struct symbol_parts {
    sheet_t& sheet;
    holder_t holder;
    const instance_parts& instance;
    std::size_t pin = 0;

    bool operator()(const tm_object_gene_rec_t& object) {
        if (object.object_type == tm_type_pin) {
            draw_pin_properties(object);
            return false;
        }
        if (object.object_type == tm_type_property_2d)
            draw_property(sheet, static_cast<const tm_object_property_rec_t&>(object), holder);
        else if (tm_outline(object, sheet.drawing.viewport.units, sheet.outline))
            draw_outline(sheet, holder, holder.is_selected);
        return true;
    }

private:
    void draw_pin_properties(const tm_object_gene_rec_t& object) {
        property_list own;
        if (pin < instance.pins.size()) gather_properties(sheet.reader, *instance.pins[pin], own);
        ++pin;
        const holder_t pin_holder{holder.placement, holder.is_selected, &own};
        tm_for_shown_children(sheet.reader, object, [&](const tm_object_gene_rec_t& child) {
            if (child.object_type == tm_type_property_2d)
                draw_property(sheet, static_cast<const tm_object_property_rec_t&>(child), pin_holder);
        });
    }
};

bool is_symbol_seen(sheet_t& sheet, std::int16_t symbol, const tm_placement_t& placement) {
    const auto [entry, is_new] = sheet.symbol_boxes.try_emplace(symbol);
    if (is_new) entry->second = tm_symbol_box(sheet.reader, symbol, true);
    constexpr double border = tm_most_width;
    return tm_is_seen(sheet.drawing.viewport, tm_place(placement, entry->second), border);
}

void draw_symbol(sheet_t& sheet, const tm_object_instance_rec_t& instance, const holder_t& holder) {
    const auto* symbol = sheet.reader.record<tm_type_symbol>(instance.symbol);
    if (symbol == nullptr || (symbol->status & tm_object_is_deleted) != 0) return;
    const tm_placement_t placement = tm_placement(instance);
    if (!is_symbol_seen(sheet, instance.symbol, placement)) return;
    const instance_parts own = parts_of(sheet.reader, instance);
    symbol_parts parts{sheet, {placement, holder.is_selected, &own.own}, own};
    tm_for_shown_tree(sheet.reader, *symbol, parts);
}

void draw_instance(sheet_t& sheet, const tm_object_instance_rec_t& instance, holder_t holder, int depth) {
    holder.is_selected = holder.is_selected || tm_is_selected(instance);
    draw_symbol(sheet, instance, holder);
    draw_children(sheet, instance, holder, depth);
}

void draw_tree(sheet_t& sheet, const tm_object_gene_rec_t& object, const holder_t& holder, int depth) {
    switch (object.object_type) {
        case tm_type_symbol_family:
            return;
        case tm_type_instance:
            return draw_instance(sheet, static_cast<const tm_object_instance_rec_t&>(object), holder, depth);
        case tm_type_net:
            return draw_net(sheet, static_cast<const tm_object_net_rec_t&>(object));
        case tm_type_tag:
            return draw_tag(sheet, static_cast<const tm_object_tag_rec_t&>(object),
                            holder.is_selected || tm_is_selected(object));
        case tm_type_property_2d:
            return draw_property(sheet, static_cast<const tm_object_property_rec_t&>(object), holder);
        case tm_type_pinpropfam:
            draw_pin_place(sheet, static_cast<const tm_object_pinpropfam_rec_t&>(object), holder.is_selected);
            break;
        default:
            if (tm_outline(object, sheet.drawing.viewport.units, sheet.outline))
                draw_outline(sheet, holder, holder.is_selected || tm_is_selected(object));
    }
    draw_children(sheet, object, holder, depth);
}

}  // namespace

void tm_draw_sheet(tm_file_index_t file_index, const tm_viewport_t& viewport, tm_canvas& canvas) {
    sheet_t sheet{file_index, tm_reader_t(file_index), tm_drawing_t(viewport)};
    if (sheet.reader.file == nullptr) return;
    const auto* main = sheet.reader.object(sheet.reader.file->primary_object);
    if (main == nullptr || !tm_is_shown(*main)) return;
    tm_draw_page(file_index, viewport, canvas, page_colour);
    draw_tree(sheet, *main, {}, 0);
    tm_draw_list(sheet.drawing, canvas);
    tm_probe_boxes_t boxes;
    for (const tm_object_net_rec_t* net : sheet.probed)
        tm_draw_probes(sheet.reader, *net, viewport, canvas, boxes);
}

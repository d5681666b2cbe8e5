// Drawings written by way of the schematic database.
#include "sheets/write.h"

#include <algorithm>
#include <cstdlib>
#include <map>

#include "schematic/object_make.h"
#include "schematic/placement.h"
#include "schematic/sheet_file.h"

namespace {

static_assert(sg_tag_text == tm_tag_text);

enum colours : std::int8_t { red = 1, green = 2, blue = 3, cyan = 4, yellow = 5, magenta = 6, white = 7 };
constexpr std::int8_t shape_colour = yellow, wire_colour = green, bus_width = 3;
constexpr std::int32_t title_height = 8000, title_inset = 5000;

struct author {
    tm_file_index_t file = 0;
    STATUS_T status{};
};

tm_point_t point(const sg_point& at) { return {at.x, at.y}; }

// An object with what make gives it and fill puts below it.
template <typename Make, typename Fill>
std::int16_t add(author& a, std::int16_t type, sg_point at, Make make, Fill fill) {
    std::int16_t id = 0;
    tm_object_create(a.file, type, at.x, at.y, id, a.status);
    make();
    fill();
    tm_object_close(a.file, id, a.status);
    return id;
}

template <typename Fill>
std::int16_t add_plain(author& a, std::int16_t type, sg_point at, Fill fill) {
    return add(
        a, type, at, [&] { tm_make_plain(type); }, fill);
}

template <typename Make>
std::int16_t add_leaf(author& a, std::int16_t type, sg_point at, Make make) {
    return add(a, type, at, make, [] {});
}

tm_name_record_t name_record(std::string_view text) {
    tm_name_record_t record;
    tm_copy_name(tm_string(text.substr(0, tm_name_max - 1)), record);
    return record;
}

tm_value_record_t value_record(std::string_view text) {
    tm_value_record_t record;
    tm_copy_value(tm_string(text.substr(0, tm_value_max - 1)), record);
    return record;
}

void add_property(author& a, std::string_view name, std::string_view value, const sg_words& words,
                  sg_point origin, std::int8_t colour) {
    const sg_point at{origin.x + words.at.x, origin.y + words.at.y};
    tm_bounds_t bounds;
    add_leaf(a, tm_type_property_2d, at, [&] {
        tm_property_2dreal(name_record(name), value_record(value), false, words.is_visible, colour, 0,
                           words.height, point(at), bounds);
    });
}

// ---- symbols

void add_shapes(author& a, const sg_symbol& shape) {
    tm_bounds_t bounds;
    for (const sg_line& line : shape.lines)
        add_leaf(a, tm_type_line_2d, line.from, [&] {
            tm_line_2dreal(0, shape_colour, line.is_bus ? bus_width : std::int8_t{1}, point(line.from),
                           point(line.to), bounds);
        });
    for (const sg_arc& arc : shape.arcs)
        add_leaf(a, tm_type_arc3p_2d, arc.from, [&] {
            tm_arc3p_2dreal(0, shape_colour, point(arc.from), point(arc.over), point(arc.to), bounds);
        });
    for (const sg_circle& circle : shape.circles)
        add_leaf(a, tm_type_circle_2d, circle.centre, [&] {
            tm_circle_real(0, shape_colour, false, 0, point(circle.centre), circle.radius, bounds);
        });
}

void add_pins(author& a, const sg_drawn_symbol& symbol) {
    for (std::size_t pin = 0; pin < symbol.kind.pins.size(); ++pin)
        add_plain(a, tm_type_pin, symbol.shape.pin_at[pin], [&] {
            add_property(a, "PIN", symbol.kind.pins[pin].name, symbol.shape.pin_name[pin], {}, cyan);
        });
}

std::int16_t add_symbol(author& a, const sg_drawn_symbol& symbol) {
    return add(
        a, tm_type_symbol, {}, [&] { tm_symbol(tm_string(symbol.path)); },
        [&] {
            add_plain(a, tm_type_body, {}, [&] {
                add_plain(a, tm_type_graphics, {}, [&] {
                    add_plain(a, tm_type_property_family, {}, [&] {
                        add_property(a, "MODEL", symbol.kind.model, symbol.shape.model, {}, shape_colour);
                        if (!symbol.kind.type.empty())
                            add_property(a, "TYPE", symbol.kind.type, symbol.shape.type, {}, shape_colour);
                        if (!symbol.kind.module.empty())
                            add_property(a, "MODULE", symbol.kind.module,
                                         {symbol.shape.model.at, symbol.shape.model.height, false}, {},
                                         shape_colour);
                    });
                    add_shapes(a, symbol.shape);
                });
            });
            add_plain(a, tm_type_pin_family, {}, [&] { add_pins(a, symbol); });
        });
}

// ---- the sheet

struct scribe : author {
    const sg_drawing& drawing;
    std::vector<std::int16_t> symbol_ids;
    std::map<std::pair<std::int16_t, sg_point>, std::int16_t> pin_at;  // pin property family by net and place
};

// On several pages a net's number is not that of the object.
void number_net(scribe& s, const sg_drawn_net& net, std::int16_t id) {
    if (s.drawing.page_count == 1) return;
    auto& record = tm_object_as<tm_type_net>(s.file, id);
    record.reserved = true;
    record.net_index = net.number;
}

void add_nets(scribe& s) {
    add_plain(s, tm_type_net_family, {}, [&] {
        for (const sg_drawn_net& net : s.drawing.nets)
            add_leaf(s, tm_type_net, {}, [&] { number_net(s, net, tm_net(net.is_bus, net.start, net.end)); });
    });
}

void add_page(scribe& s) {
    const sg_rectangle& e = s.drawing.extent;
    tm_bounds_t bounds;
    add_plain(s, tm_type_page, {}, [&] {
        add_leaf(s, tm_type_grid_2d, {e.xmin, e.ymin}, [&] {
            tm_grid_real({e.xmin, e.ymin}, {e.xmax, e.ymax}, sg_pitch, sg_pitch / 2, false, true, bounds);
        });
    });
}

// Of a bus; the nets stand by their ids.
std::int16_t lowest_label(const sg_drawing& drawing, std::int16_t net) {
    if (net == 0) return 0;
    const sg_drawn_net& drawn = drawing.nets[static_cast<std::size_t>(net - drawing.nets.front().id)];
    return std::min(drawn.start, drawn.end);
}

void add_pin_family(scribe& s, const sg_drawn_instance& instance, std::size_t pin) {
    const sg_drawn_symbol& symbol = s.drawing.symbols[static_cast<std::size_t>(instance.symbol)];
    const sg_point at = sg_pin_place(instance, symbol, pin);
    const sg_pin_kind& kind = symbol.kind.pins[pin];
    const auto last = static_cast<std::int16_t>(kind.is_bus ? std::abs(kind.start - kind.end) : 0);
    const std::int16_t net = instance.pin_net[pin];
    const std::int16_t lowest = lowest_label(s.drawing, net);
    const std::int16_t id =
        add_leaf(s, tm_type_pinpropfam, at, [&] { tm_pinpropfam(net, false, 0, last, lowest); });
    if (net != 0) s.pin_at.emplace(std::pair(net, at), id);
}

std::int16_t add_instance(scribe& s, const sg_drawn_instance& instance) {
    const auto symbol = static_cast<std::size_t>(instance.symbol);
    sg_words words = s.drawing.symbols[symbol].shape.inst;
    words.is_visible = instance.shows_name;
    return add(
        s, tm_type_instance, instance.at,
        [&] { tm_instance(s.symbol_ids[symbol], instance.is_flipped ? 2 : 0, instance.is_flipped); },
        [&] {
            add_plain(s, tm_type_bodpropfam, instance.at,
                      [&] { add_property(s, "INST", instance.name, words, instance.at, white); });
            for (std::size_t pin = 0; pin < instance.pin_net.size(); ++pin) add_pin_family(s, instance, pin);
        });
}

void add_tags(scribe& s) {
    add_plain(s, tm_type_tag_family, {}, [&] {
        for (const sg_drawn_tag& tag : s.drawing.tags)
            add_leaf(s, tm_type_tag, tag.at, [&] {
                tm_tag(name_record(sg_tag_names[static_cast<std::size_t>(tag.kind)]), value_record(tag.name));
            });
    });
}

std::string title_of(const sg_drawing& drawing) {
    if (drawing.page_count == 1) return drawing.title;
    return drawing.title + "  page " + std::to_string(drawing.page) + " of " +
           std::to_string(drawing.page_count);
}

void add_frame(scribe& s) {
    const sg_rectangle& e = s.drawing.extent;
    tm_bounds_t bounds;
    add_plain(s, tm_type_frame_family, {}, [&] {
        add_plain(s, tm_type_frame, {}, [&] {
            add_plain(s, tm_type_graphics, {}, [&] {
                add_plain(s, tm_type_property_family, {}, [&] {
                    const sg_words words{{e.xmin + title_inset, e.ymin + title_inset}, title_height, true};
                    add_property(s, "TITLE", title_of(s.drawing), words, {}, cyan);
                });
                add_leaf(s, tm_type_rectangle_2d, {e.xmin, e.ymin}, [&] {
                    tm_rectangle_2dreal(0, blue, false, 0, {e.xmin, e.ymin}, {e.xmax, e.ymax}, bounds);
                });
            });
        });
    });
}

// ---- wires

struct net_points {
    std::map<sg_point, std::int16_t> ids;  // vertices and pins
};

void add_vertices(scribe& s, const sg_drawn_net& net, net_points& points) {
    add_plain(s, tm_type_vertex_family, {}, [&] {
        const auto add_vertex = [&](const sg_point& at) {
            if (points.ids.contains(at)) return;
            const auto pin = s.pin_at.find({net.id, at});
            if (pin != s.pin_at.end()) {
                points.ids.emplace(at, pin->second);
                return;
            }
            tm_bounds_t bounds;
            const bool is_tie = std::find(net.ties.begin(), net.ties.end(), at) != net.ties.end();
            points.ids.emplace(at, add_leaf(s, tm_type_vertex_2d, at,
                                            [&] { tm_vertex_2dreal(net.id, is_tie, point(at), bounds); }));
        };
        for (const sg_wire& wire : net.wires) {
            add_vertex(wire.from);
            add_vertex(wire.to);
        }
        for (const sg_point& at : net.points) add_vertex(at);
    });
}

void fill_net(scribe& s, const sg_drawn_net& net) {
    std::int16_t type = 0;
    net_points points;
    tm_object_open(s.file, net.id, type, s.status);
    if (!net.wires.empty() || !net.points.empty()) add_vertices(s, net, points);
    add_plain(s, tm_type_graphics, {}, [&] {
        add_plain(s, tm_type_property_family, {}, [&] {
            add_property(s, "NET", net.name, net.label, {}, magenta);
            for (const sg_drawn_text& text : net.texts)
                add_property(s, text.property, text.text, text.words, {}, cyan);
        });
        for (const sg_wire& wire : net.wires)
            add_leaf(s, tm_type_segment, wire.from, [&] {
                tm_segment(0, wire_colour, net.is_bus ? bus_width : std::int8_t{1}, points.ids.at(wire.from),
                           points.ids.at(wire.to));
            });
    });
    tm_object_close(s.file, net.id, s.status);
}

// ---- files

bool create_file(author& a, const std::string& directory, std::string_view type, std::string& why) {
    if (directory.size() + 20 > tm_string_max) {
        why = "the path is too long for a sheet";
        return false;
    }
    tm_vext.init_done = true;
    tm_file_create_new(tm_string(directory), tm_string(type), a.file, a.status);
    if (a.status.all != 0) why = "cannot read the older sheet";
    return a.status.all == 0;
}

bool save_file(author& a, std::string& why) {
    tm_file_close(a.file, true, a.status);
    if (a.status.all == 0) return true;
    why = "cannot write the sheet";
    STATUS_T status{};
    tm_file_close(a.file, false, status);
    return false;
}

std::size_t objects_of(const sg_drawn_symbol& symbol) {
    const sg_symbol& shape = symbol.shape;
    return 8 + shape.lines.size() + shape.arcs.size() + shape.circles.size() + 2 * symbol.kind.pins.size();
}

std::size_t objects_of(const sg_drawn_net& net) {
    return 5 + 3 * net.wires.size() + net.points.size() + net.texts.size();  // at most two vertices a wire
}

}  // namespace

std::size_t sg_count_objects(const sg_drawing& drawing) {
    std::size_t count = 12 + drawing.tags.size();
    for (const sg_drawn_symbol& symbol : drawing.symbols) count += objects_of(symbol);
    for (const sg_drawn_instance& instance : drawing.instances) count += 3 + instance.pin_net.size();
    for (const sg_drawn_net& net : drawing.nets) count += objects_of(net);
    return count;
}

std::size_t sg_count_objects(const sg_drawn_symbol& symbol) { return 2 + objects_of(symbol); }

bool sg_write_sheet(const sg_drawing& drawing, const std::string& directory,
                    std::vector<std::int16_t>& instance_ids, std::string& why) {
    scribe s{{}, drawing, {}, {}};
    if (!create_file(s, directory, "sheet", why)) return false;
    add_plain(s, tm_type_main, {}, [&] {
        add_nets(s);
        add_page(s);
        add_plain(s, tm_type_symbol_family, {}, [&] {
            for (const sg_drawn_symbol& symbol : drawing.symbols)
                s.symbol_ids.push_back(add_symbol(s, symbol));
        });
        add_plain(s, tm_type_instance_family, {}, [&] {
            for (const sg_drawn_instance& instance : drawing.instances)
                instance_ids.push_back(add_instance(s, instance));
        });
        add_tags(s);
        add_frame(s);
    });
    for (const sg_drawn_net& net : drawing.nets) fill_net(s, net);
    return save_file(s, why);
}

bool sg_write_symbol(const sg_drawn_symbol& symbol, const std::string& directory, std::string& why) {
    author a;
    if (!create_file(a, directory, "symbol", why)) return false;
    add_plain(a, tm_type_main, {},
              [&] { add_plain(a, tm_type_symbol_family, {}, [&] { add_symbol(a, symbol); }); });
    return save_file(a, why);
}

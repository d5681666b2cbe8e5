#include "sheet_maker.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::int8_t red = 1, green = 2, cyan = 4, yellow = 5, white = 7;  // of the palette
constexpr std::int8_t wire_width = 1, bus_width = 3;

tm_point_t placed(tm_point_t at, tm_point_t origin, std::int8_t rotate, bool fliph) {
    if (fliph) at.x = -at.x;
    for (int turn = 0; turn < rotate; ++turn) at = {-at.y, at.x};
    return {origin.x + at.x, origin.y + at.y};
}

tm_name_record_t name_of(std::string_view text) {
    tm_name_record_t name;
    tm_copy_name(tm_string(text), name);
    return name;
}

tm_value_record_t value_of(std::string_view text) {
    tm_value_record_t value;
    tm_copy_value(tm_string(text), value);
    return value;
}

// Above the left end of the longest piece of a wire, beside it when it is upright.
tm_point_t label_place(const std::vector<points_t>& wires) {
    tm_point_t place;
    std::int32_t longest = -1;
    for (const points_t& wire : wires)
        for (std::size_t i = 1; i < wire.size(); ++i) {
            const tm_point_t a = wire[i - 1], b = wire[i];
            const std::int32_t length = std::abs(a.x - b.x) + std::abs(a.y - b.y);
            if (length <= longest) continue;
            longest = length;
            place = {std::min(a.x, b.x) + 2000, (a.y + b.y) / 2 + 1500};
        }
    return place;
}

// A shape of its own object, made and closed.
template <typename Make>
void shape(std::int16_t type, Make make) {
    std::int16_t id = 0;
    STATUS_T status;
    tm_bounds_t bounds;
    tm_object_create(tm_vext.cur_file, type, 0, 0, id, status);
    make(bounds);
    tm_object_close(tm_vext.cur_file, id, status);
}

}  // namespace

void sheet_maker::close() {
    tm_object_close(file_, opened_.back(), status_);
    opened_.pop_back();
}

sheet_maker::sheet_maker(const std::string& directory, tm_point_t extent) : extent_(extent) {
    tm_file_create_new(tm_string(directory), tm_string("sheet"), file_, status_);
    open(tm_type_main, tm_main);
    open(tm_type_page, tm_page);
    shape(tm_type_grid_2d, [&](tm_bounds_t& b) { tm_grid_real({}, extent, 10000, 5000, true, true, b); });
    close();
}

void sheet_maker::property(std::string_view name, std::string_view value, tm_point_t at, bool visible,
                           std::int32_t height) {
    shape(tm_type_property_2d, [&](tm_bounds_t& b) {
        tm_property_2dreal(name_of(name), value_of(value), false, visible, white, 0, height, at, b);
    });
}

void sheet_maker::symbols(const std::vector<symbol_look>& looks) {
    open(tm_type_symbol_family, tm_symbol_family);
    for (const symbol_look& look : looks) {
        const std::int16_t id = open(tm_type_symbol, [&] { tm_symbol(tm_string(look.path)); });
        symbols_.emplace(look.path, std::pair(id, look));
        open(tm_type_body, tm_body);
        open(tm_type_graphics, tm_graphics);
        open(tm_type_property_family, tm_property_family);
        if (!look.model.empty()) property("MODEL", look.model, {15000, -5000}, false);
        close();
        look.draw();
        close();
        close();
        open(tm_type_pin_family, tm_pin_family);
        for (const symbol_pin& pin : look.pins) {
            open(tm_type_pin, tm_pin, pin.at);
            const tm_point_t text = {pin.at.x == 0 ? 13000 : pin.at.x - 16000, pin.at.y - 2500};
            property("PIN", pin.name, text, look.pin_names_shown, 5000);
            close();
        }
        close();
        close();
    }
    close();
}

void sheet_maker::instance(std::string_view path, std::string_view name, tm_point_t at, tm_point_t label,
                           std::int8_t rotate, bool fliph) {
    const auto& [symbol, look] = symbols_.at(path);
    open(
        tm_type_instance, [&] { tm_instance(symbol, rotate, fliph); }, at);
    open(tm_type_bodpropfam, tm_bodpropfam);
    property("INST", name, {at.x + label.x, at.y + label.y}, true);
    close();
    for (const symbol_pin& pin : look.pins) {
        const tm_point_t end = placed(pin.at, at, rotate, fliph);
        pins_[{end.x, end.y}] = open(
            tm_type_pinpropfam, [] { tm_pinpropfam(0, false, 0, 0, 0); }, end);
        close();
    }
    close();
}

void sheet_maker::vertices(std::int16_t net, const std::vector<points_t>& wires) {
    std::map<place, int> ends;  // of segments at a place
    for (const points_t& wire : wires)
        for (std::size_t i = 0; i < wire.size(); ++i)
            ends[{wire[i].x, wire[i].y}] += i == 0 || i + 1 == wire.size() ? 1 : 2;
    vertices_.clear();
    open(tm_type_vertex_family, tm_vertex_family);
    for (const auto& [at, count] : ends) {
        if (const auto pin = pins_.find(at); pin != pins_.end()) {
            tm_pinpropfam_set_net(file_, pin->second, net, count > 1);
            continue;
        }
        shape(tm_type_vertex_2d, [&](tm_bounds_t& b) {
            vertices_[at] = tm_vertex_2dreal(net, count > 2, {at.first, at.second}, b);
        });
    }
    close();
}

std::int16_t sheet_maker::end_at(tm_point_t at) const {
    const auto vertex = vertices_.find({at.x, at.y});
    return vertex != vertices_.end() ? vertex->second : pins_.at({at.x, at.y});
}

void sheet_maker::segments(const std::vector<points_t>& wires, bool is_bus) {
    for (const points_t& wire : wires)
        for (std::size_t i = 1; i < wire.size(); ++i)
            shape(tm_type_segment, [&](tm_bounds_t&) {
                tm_segment(0, is_bus ? yellow : green, is_bus ? bus_width : wire_width, end_at(wire[i - 1]),
                           end_at(wire[i]));
            });
}

void sheet_maker::net(std::string_view name, const std::vector<points_t>& wires, bool is_bus,
                      std::int16_t bus_end) {
    const std::int16_t id = open(tm_type_net, [&] { tm_net(is_bus, 0, bus_end); });
    nets_.emplace(name, id);
    vertices(id, wires);
    open(tm_type_graphics, tm_graphics);
    open(tm_type_property_family, tm_property_family);
    property("NET", name, label_place(wires), true, 5000);
    close();
    segments(wires, is_bus);
    close();
    close();
}

void sheet_maker::tag(std::string_view kind, std::string_view net, tm_point_t at) {
    open(
        tm_type_tag, [&] { tm_tag(name_of(kind), value_of(net)); }, at);
    close();
}

void sheet_maker::frame(std::string_view title, const std::function<void()>& draw) {
    open(tm_type_frame_family, tm_frame_family);
    open(tm_type_frame, tm_frame);
    open(tm_type_graphics, tm_graphics);
    open(tm_type_property_family, tm_property_family);
    property("TITLE", title, {15000, 15000}, true, 8000);
    property("DRAWN_BY", "example_sheets", {15000, 6000}, false);
    close();
    make_rectangle({2000, 2000}, {extent_.x - 2000, extent_.y - 2000}, false, cyan);
    draw();
    close();
    close();
    close();
}

std::map<std::string, std::int16_t> sheet_maker::finish() {
    close();
    tm_file_close(file_, true, status_);
    if (status_.all == all_is_ok) return nets_;
    std::fprintf(stderr, "a sheet cannot be written\n");
    std::exit(1);
}

void make_line(tm_point_t from, tm_point_t to, std::int16_t style) {
    shape(tm_type_line_2d, [&](tm_bounds_t& b) { tm_line_2dreal(style, yellow, 1, from, to, b); });
}

void make_arc(tm_point_t from, tm_point_t over, tm_point_t to) {
    shape(tm_type_arc3p_2d, [&](tm_bounds_t& b) { tm_arc3p_2dreal(0, yellow, from, over, to, b); });
}

void make_circle(tm_point_t center, std::int32_t rad, bool filled) {
    shape(tm_type_circle_2d, [&](tm_bounds_t& b) { tm_circle_real(0, yellow, filled, red, center, rad, b); });
}

void make_rectangle(tm_point_t from, tm_point_t to, bool filled, std::int8_t color) {
    shape(tm_type_rectangle_2d,
          [&](tm_bounds_t& b) { tm_rectangle_2dreal(0, color, filled, cyan, from, to, b); });
}

void make_polyline(const points_t& points) {
    if (points.size() <= 5)
        shape(tm_type_polyline5_2d, [&](tm_bounds_t& b) { tm_polyline5_2dreal(0, yellow, points, b); });
    else
        shape(tm_type_polyline_2d, [&](tm_bounds_t& b) { tm_polyline_2dreal(0, yellow, points, b); });
}

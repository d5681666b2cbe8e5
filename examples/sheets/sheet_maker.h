// One sheet, made through the operations of the schematic database: symbols first, then instances, then nets
// whose wires find pins by their place, then tags and the frame.  Points are model units.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "schematic/object_make.h"
#include "schematic/sheet_file.h"

using points_t = std::vector<tm_point_t>;

struct symbol_pin {
    std::string_view name;
    tm_point_t at;  // in the symbol's frame
};

struct symbol_look {
    std::string_view path;   // of the sheet below, or of the symbol alone
    std::string_view model;  // its MODEL property; empty: none
    std::vector<symbol_pin> pins;
    bool pin_names_shown;
    std::function<void()> draw;  // makes the shapes
};

class sheet_maker {
public:
    sheet_maker(const std::string& directory, tm_point_t extent);
    void symbols(const std::vector<symbol_look>& looks);  // known by path from here on
    void begin_instances() { open(tm_type_instance_family, tm_instance_family); }
    // label: where its name stands, from its origin.
    void instance(std::string_view path, std::string_view name, tm_point_t at,
                  tm_point_t label = {10000, 22000}, std::int8_t rotate = 0, bool fliph = false);
    void begin_nets() { open(tm_type_net_family, tm_net_family); }
    // Wires through the points; the first and the last of a wire are pins, tags or junctions of others.
    void net(std::string_view name, const std::vector<points_t>& wires, bool is_bus = false,
             std::int16_t bus_end = 0);
    void begin_tags() { open(tm_type_tag_family, tm_tag_family); }
    void tag(std::string_view kind, std::string_view net, tm_point_t at);
    void frame(std::string_view title, const std::function<void()>& draw);
    void end_family() { close(); }
    // Saves version 1; the ids of the nets by name.
    std::map<std::string, std::int16_t> finish();

private:
    template <typename Constructor>
    std::int16_t open(std::int16_t type, Constructor constructor, tm_point_t at = {}) {
        tm_object_create(file_, type, at.x, at.y, opened_.emplace_back(), status_);
        constructor();
        return opened_.back();
    }
    void close();
    void property(std::string_view name, std::string_view value, tm_point_t at, bool visible,
                  std::int32_t height = 6000);
    void vertices(std::int16_t net, const std::vector<points_t>& wires);
    void segments(const std::vector<points_t>& wires, bool is_bus);
    std::int16_t end_at(tm_point_t at) const;

    using place = std::pair<std::int32_t, std::int32_t>;
    tm_file_index_t file_ = 0;
    STATUS_T status_;
    std::vector<std::int16_t> opened_;
    tm_point_t extent_;
    std::map<std::string_view, std::pair<std::int16_t, symbol_look>> symbols_;
    std::map<place, std::int16_t> pins_, vertices_;  // vertices of the net being made
    std::map<std::string, std::int16_t> nets_;
};

// Shapes for the symbols and frames; colours and styles as in the palette and the dash table.
void make_line(tm_point_t from, tm_point_t to, std::int16_t style = 0);
void make_arc(tm_point_t from, tm_point_t over, tm_point_t to);
void make_circle(tm_point_t center, std::int32_t rad, bool filled);
void make_rectangle(tm_point_t from, tm_point_t to, bool filled, std::int8_t color = 5);
void make_polyline(const points_t& points);

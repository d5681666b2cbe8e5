// A sheet for a test with a symbol of two pins, an instance of it at 10, 10 (thousand units), and a bus of
// two segments from its second pin over a corner to an end; its first pin is not connected.
#pragma once

#include <algorithm>

#include "schematic/drawn_sheet.h"

class wired_sheet : public drawn_sheet {
protected:
    wired_sheet() {
        symbol = open_symbol();
        open(tm_type_property_family, {}, tm_property_family);
        text("MODEL", "OR", {0, 0}, 6 * k);
        text("SIZE", "1", {0, 10 * k}, 6 * k);
        close(2);  // the property family and the graphics
        close();   // the body
        open(tm_type_pin_family, {}, tm_pin_family);
        for (const char* pin : {"A", "B"}) {
            open(tm_type_pin, {}, tm_pin);
            text("PIN", pin, {20 * k, 0}, 6 * k);
            close();
        }
        close(3);
        open(tm_type_instance_family, {}, tm_instance_family);
        instance = open(tm_type_instance, {10 * k, 10 * k}, [this] { tm_instance(symbol, 0, false); });
        open(tm_type_bodpropfam, {}, tm_bodpropfam);
        own = text("model", "AND", {10 * k, 30 * k}, 6 * k);
        close();
        pin_a = open(tm_type_pinpropfam, {10 * k, 10 * k}, [] { tm_pinpropfam(0, false, 0, 0, 0); });
        text("PIN", "own", {40 * k, 10 * k}, 6 * k);
        close();
        pin_b = add(tm_type_pinpropfam, [] { tm_pinpropfam(0, false, 0, 0, 0); }, {10 * k, 20 * k});
        close(2);
        open(tm_type_net_family, {}, tm_net_family);
        net = open(tm_type_net, {}, [] { tm_net(true, 3, 0); });
        open(tm_type_vertex_family, {}, tm_vertex_family);
        corner = vertex(net, {60 * k, 20 * k}, true);
        end = vertex(net, {60 * k, 60 * k});
        close();
        open(tm_type_graphics, {}, tm_graphics);
        segment = add(tm_type_segment, [this] { tm_segment(0, 2, 1, pin_b, corner); });
        add(tm_type_segment, [this] { tm_segment(1, 2, 5, corner, end); });
        close(3);
        tm_pinpropfam_set_net(file, pin_b, net, true);
    }
    bool has(const std::string& entry) const {
        return std::find(canvas.drawn.begin(), canvas.drawn.end(), entry) != canvas.drawn.end();
    }
    std::vector<std::int16_t> selected() const {  // in the order of the ids
        std::vector<std::int16_t> ids;
        for (std::int16_t id = 1; id <= tm_file_header(file).object_id_max; ++id)
            if (tm_inq_object_selected(file, id)) ids.push_back(id);
        return ids;
    }
    std::int16_t symbol = 0, instance = 0, own = 0, pin_a = 0, pin_b = 0, net = 0, corner = 0, end = 0,
                 segment = 0;
};

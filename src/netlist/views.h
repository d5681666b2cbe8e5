// yxi: record views.  A view is a self-contained copy of one net, instance or pin of the loaded design with
// its name, its path and its properties; it owns every text in it and stays valid whatever becomes of the
// store. The caller owns the view: the first call makes it, later calls refill it and add what is missing. An
// index outside the store, or no loaded design, leaves no view.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "netlist/text.h"

struct yxi_prop_record_t {
    yxi_text_t name;
    std::int16_t vtype = 0;  // yx_prop_types
    yxi_text_t svalue;       // YX_PSTRING
    union {
        std::int32_t ivalue[3] = {0, 0, 0};  // YX_PINTEGER: minimum, typical, maximum
        std::int32_t tvalue[3];              // YX_PTIME, time steps
        float rvalue[3];                     // YX_PREAL
    };
};

inline constexpr std::size_t yxi_max_properties = 20;
using yxi_properties_arrray_t = std::array<std::unique_ptr<yxi_prop_record_t>, yxi_max_properties>;

struct yxi_coordinate_t {
    float x = 0, y = 0;
};

struct yxi_net_record_t {
    std::int32_t self_id = 0;  // net index
    yxi_text_t name;
    std::int16_t net_type = 0, net_kind = 0;
    std::int16_t net_bus_start = 0, net_bus_end = 0;  // a bus; else 0
    yxi_text_t sim_path;
    std::int32_t bus = 0, father_net = 0, first_sub_net = 0, next_sub_net = 0;  // as the net's type has them
    std::int32_t netind_start = 0;                                              // a bus; else 0
    std::int8_t nb_of_property = 0;
    yxi_properties_arrray_t prop;
};

struct yxi_instance_record_t {
    std::int32_t self_id = 0;
    yxi_text_t name, sim_path, file_path;
    bool primitive = true;
    std::int32_t owning_instance = 0;
    std::int8_t nb_of_property = 0;
    yxi_properties_arrray_t prop;
    yxi_coordinate_t location;
    std::int16_t timing_index = 0;
};

struct yxi_pin_record_t {
    std::int32_t self_id = 0;
    yxi_text_t name;
    std::int16_t pin_type = 0;  // io_type
    yxi_text_t sim_path;
    std::int32_t instance = 0, net = 0;
    std::int16_t pin_start = 0, pin_end = 0, pin_net_start = 0;
    std::int8_t nb_of_property = 0;
    yxi_properties_arrray_t prop;
    yxi_coordinate_t location;
};

void yxi_get_net_record(std::int32_t net, std::unique_ptr<yxi_net_record_t>& view);
void yxi_get_instance_record(std::int32_t instance, std::unique_ptr<yxi_instance_record_t>& view);
void yxi_get_pin_record(std::int32_t pin, std::unique_ptr<yxi_pin_record_t>& view);

// The view's first property of exactly this name; null and false when there is none or the name's length is
// outside 1..200.
bool yxi_find_net_property(const yxi_net_record_t& view, const yxi_string_record_t& name,
                           const yxi_prop_record_t*& prop);
bool yxi_find_instance_property(const yxi_instance_record_t& view, const yxi_string_record_t& name,
                                const yxi_prop_record_t*& prop);
bool yxi_find_pin_property(const yxi_pin_record_t& view, const yxi_string_record_t& name,
                           const yxi_prop_record_t*& prop);

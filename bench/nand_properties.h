// The properties of benchmark designs: instance property MODEL, "nand", and pin properties RISE and FALL of
// so many time steps.
#pragma once

#include "netlist/design_image.h"

inline void bench_add_properties(yx_design_image_t& design, std::int32_t delay_steps) {
    design.prop_instance.emplace_back().name = tm_string("MODEL");
    for (const char* name : {"RISE", "FALL"}) design.prop_pin.emplace_back().name = tm_string(name);
    design.props.emplace_back().valuec = yxw_string(design, "nand");
    for (int k = 0; k < 2; ++k) {
        yx_prop_record_t& delay = design.props.emplace_back();
        delay.prop_type = YX_PTIME;
        for (std::int32_t& value : delay.valuet) value = delay_steps;
    }
}

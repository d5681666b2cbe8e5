// xp_design: the records of the design file.  Fills a design image from the flattened design: nets, then
// buses, then the sub-nets that carry input pins beyond the 32,767 a net can count; one instance a gate with
// its inputs and its output; one macro a module instance.  Objects with the same property values share them.
#pragma once

#include "expand/delays.h"
#include "expand/flatten.h"
#include "expand/paths.h"
#include "expand/sdf_annotate.h"
#include "netlist/design_image.h"

// Handler priorities of output pins: one that drives a clock runs before data that change at the same time.
inline constexpr std::int16_t xp_priority_data = 1, xp_priority_clock = 10;

enum xp_net_kinds : std::int16_t {
    xp_kind_inner = 0,
    xp_kind_input = 1,
    xp_kind_output = 2,
    xp_kind_inout = 3
};

// The delays of every part of the design, in order.  A cell of the delay file that is not there is refused.
void xp_find_delays(const xp_flat& flat, xp_timing& timing, std::vector<xp_delays>& delays,
                    xp_status& status);
// The header has the lowest revision that holds the design.
void xp_build_design(const xp_flat& flat, const std::vector<xp_delays>& delays,
                     const xp_annotation& annotation, float time_step, yx_design_image_t& image,
                     xp_paths& paths, xp_status& status);

// xp_paths: the paths and names of the design file.  Owns the string index of every net, gate, pin and macro.
// A path of more than xp_text_max characters becomes a short one (n1, g1, m1 ..., numbered over the design);
// an alias or bus with such a path is left out.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "expand/flatten.h"
#include "netlist/design_image.h"

inline constexpr std::size_t xp_text_max = 127;  // characters of a string

struct xp_child_name {        // a net child record
    std::uint32_t alias = 0;  // of xp_flat::aliases
    std::int32_t path = 0, name = 0;
};

struct xp_paths {  // string indexes, 0 for none
    std::vector<std::int32_t> net_path, net_name;
    std::vector<std::int32_t> bus_path, bus_name;      // 0: the bus is not written
    std::vector<std::int32_t> gate_path, gate_name;    // by number of the gate
    std::vector<std::int32_t> pin_path;                // gate by gate: inputs, output
    std::vector<std::int32_t> macro_path, macro_name;  // by scope; the top has none
    std::vector<xp_child_name> children;               // in the order of the aliases
    std::vector<std::int32_t> object_path;             // by object id of the sheets, 0 none
    std::vector<std::int32_t> object_alias;            // its further name
};

// Fills in the strings of the image and their indexes.
void xp_make_paths(const xp_flat& flat, yx_design_image_t& image, xp_paths& paths);
std::string_view xp_string_text(const yx_design_image_t& image, std::int32_t string);

// One line for every net and instance whose path differs from that of the netlist: path, path in the netlist,
// "net" or "instance", between tabs.
std::string xp_name_map(const xp_flat& flat, const xp_paths& paths, const yx_design_image_t& image);

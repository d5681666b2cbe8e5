// xp_paths: the paths and names of the design file.  Owns the string index of every net, gate, pin and macro,
// and the ladder of economies by which they are made to fit into 500,000 strings of 500,000 characters in
// all:
//
//   full      every name as in the netlist
//   hidden    hidden names become short ones; hidden aliases are left out
//   pins      pins take the path of their instance
//   derived   an instance takes the path of its output net with a "_" behind it, in the same characters
//   short     every name but those of the top module's ports becomes a short one
//   unnamed   nets and instances have paths only, no names of their own
//
// Short names are n1, n2 ... for nets and g1, g2 ... for instances in base 36.  From "derived" on a short
// name stands for the whole path: w1, w1_, w1_1, w1_1_, w1_1_2 ..., where each name begins the next, so that
// they all lie in the same characters: a name without a "_" at its end is a net's, the same with it its
// instance's.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "expand/flatten.h"
#include "netlist/design_image.h"

inline constexpr std::size_t xp_text_max = 127;  // characters of a string

struct xp_economy {
    std::string_view name;
    bool short_hidden, share_pins, derive_instances, short_visible, no_own_names;
};

std::span<const xp_economy> xp_economies();

struct xp_child_name {        // a net child record
    std::uint32_t alias = 0;  // of xp_flat::aliases
    std::int32_t path = 0, name = 0;
};

struct xp_paths {  // string indexes, 0 for none
    const xp_economy* economy = nullptr;
    std::vector<std::int32_t> net_path, net_name;
    std::vector<std::int32_t> bus_path, bus_name;      // 0: the bus is not written
    std::vector<std::int32_t> gate_path, gate_name;    // by number of the gate
    std::vector<std::int32_t> pin_path;                // gate by gate: inputs, output
    std::vector<std::int32_t> macro_path, macro_name;  // by scope; the top has none
    std::vector<xp_child_name> children;               // in the order of the aliases
    std::vector<std::int32_t> object_path;             // by object id of the sheets, 0 none
    std::vector<std::int32_t> object_alias;            // its further name
};

// Fills in the strings of the image and their indexes; the object ids of sheets are left out on demand.
// False: they do not fit.
bool xp_make_paths(const xp_flat& flat, const xp_economy& economy, bool with_object_ids,
                   yx_design_image_t& image, xp_paths& paths);
bool xp_strings_fit(const yx_design_image_t& image);
std::string_view xp_string_text(const yx_design_image_t& image, std::int32_t string);

// One line for every net and instance whose path differs from that of the netlist: path, path in the netlist,
// "net" or "instance", between tabs.
std::string xp_name_map(const xp_flat& flat, const xp_paths& paths, const yx_design_image_t& image);

// xp_names: the names of a module as the command language can type them.  Owns the rule that turns a name of
// the netlist into a typeable one and the set of names taken in a module, which nets and cells share, since a
// net's path, an instance's path and a pin's path are all looked up alike.  Letters are compared without
// regard to case.
//
// A typeable name has 1 to xp_name_max characters out of letters, digits and the signs that no rule of the
// command language reads otherwise; it begins with a letter and does not begin as the index forms N_ and NI_.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "expand/netlist_json.h"

inline constexpr std::size_t xp_name_max = 90;  // longer names are cut; a path has 127 characters

std::string xp_clean_name(std::string_view raw);

// A net name of a module: a port, a name of the netlist, or one made up for a net without any.
struct xp_net_name {
    std::string_view raw, name;
    bool hidden = false, is_port = false;
    xp_direction direction = xp_direction::none;
    xp_bits bits;
    std::int32_t offset = 0;
    bool upto = false;
};

inline bool xp_is_vector(const xp_net_name& name) { return name.bits.count > 1; }
// The index that bit k of a vector is written with.
std::int32_t xp_bit_label(const xp_net_name& name, std::uint32_t k);
// "[3]", or nothing for a scalar.
std::string xp_bit_suffix(const xp_net_name& name, std::uint32_t k);
// "[15:0]" of a vector.
std::string xp_range_suffix(const xp_net_name& name);

// Whether names differ in the case of letters at most.
bool xp_are_equal_names(std::string_view a, std::string_view b);

struct xp_taken_names {
    std::unordered_set<std::string> folded;
    std::unordered_map<std::string, std::size_t> numbered;  // folded name to the number tried last
};

bool xp_is_taken(const xp_taken_names& taken, std::string_view name);
// Takes the name, or the name with the first free number behind it; the result is the name taken.
std::string xp_take_name(xp_taken_names& taken, std::string_view name);
// The same for a vector: its base, range and bits must all be free.
std::string xp_take_vector(xp_taken_names& taken, std::string_view name, const xp_net_name& vector);

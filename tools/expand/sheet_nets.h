// xp_sheet_nets: the nets of a module's sheets.  Owns the one name that every bit has there, and makes nets
// of single bits and thick wires of several.
//
// A word of bits is a thick wire: a vector (q[7:0]) or a part of one (q[3:0]) by that name, a constant by its
// value (8'h2a), any other under the name of a vector with these bits, or of the pin that has them
// (u.x[3:0]). The last is joined to its bits by joints; thick wires that are parts of vectors are joined by
// name.
#pragma once

#include <map>
#include <span>
#include <unordered_set>

#include "expand/sheet_plan.h"

inline constexpr std::int32_t xp_open_bit = -1 - xp_constants;  // of an output, connected to nothing

struct xp_word_part {  // bits of a word that are one bit, a part of a vector, a constant, or open
    std::uint32_t first = 0, count = 0;
};

struct xp_sheet_nets {
    const xp_flat& flat;
    const xp_module& module;
    const xp_body& body;
    const std::string* constant_names;
    xp_sheet_plan& plan;
    std::vector<xp_net_ref> names;                             // by bit
    std::map<std::int32_t, std::int32_t> scalars;              // sheet net by bit or constant
    std::map<std::vector<std::int32_t>, std::int32_t> words;   // sheet net by bits
    std::map<std::vector<std::int32_t>, std::uint32_t> whole;  // first vector by its bits
    std::unordered_set<std::string> taken;                     // names of words
};

void xp_name_sheet_bits(xp_sheet_nets& nets);
std::int32_t xp_sheet_scalar(xp_sheet_nets& nets, std::int32_t bit);
// bits: least significant first, two or more; pin: the name when nothing else has one.
std::int32_t xp_sheet_word(xp_sheet_nets& nets, const std::vector<std::int32_t>& bits,
                           const std::string& pin);
// The parts of a word, the most significant first.
std::vector<xp_word_part> xp_parts_of_word(const xp_sheet_nets& nets, std::span<const std::int32_t> bits);
// The net of one part, -1 when it is open.
std::int32_t xp_sheet_part(xp_sheet_nets& nets, std::span<const std::int32_t> bits);

// xp_sdf: the delays and limits of an SDF file (2.1 and 3.0) as they stand in it.  Owns its text; names are
// pieces of it, without the "\" in front of signs where there are any.  Values are steps of the design.  What
// the format allows but no primitive has (RETAIN, PATHPULSE, SKEW ...) is counted by its keyword; text that
// is no SDF is refused with its line.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "expand/message.h"

struct xp_sdf_value {  // minimum, typical, maximum in steps
    std::array<double, 3> steps{};
    bool is_given = false;
};

enum class xp_sdf_kind : std::uint8_t {
    iopath,        // from an input pin to an output pin
    interconnect,  // from a driver to an input pin
    port,          // to an input pin
    net_delay,     // to every pin of a net
    device,        // from every input to an output pin, or to all
    setup,         // data pin, clock pin
    hold,
    setup_hold,
    recovery,  // set or reset, clock pin
    removal,
    recovery_removal,
    width,   // of a pulse, the edge that begins it
    period,  // of a clock
};

struct xp_sdf_pin {
    std::string_view name;
    char edge = 0;  // 'R' or 'F' in front of it, 0 for none
};

struct xp_sdf_entry {
    xp_sdf_kind kind = xp_sdf_kind::iopath;
    bool is_conditional = false, is_increment = false;
    xp_sdf_pin from, to;                 // of a check the pin that is checked, and its reference
    std::array<xp_sdf_value, 2> values;  // rise and fall, or the limits
    std::int32_t line = 0;
};

struct xp_sdf_cell {
    std::string_view type, instance;  // the instance's path with "/" between names; "*" for all of the type
    std::int32_t line = 0;
    std::size_t first_entry = 0, entry_count = 0;
};

struct xp_sdf {
    std::string path, text;
    std::deque<std::string> names;  // those that differ from the text
    std::vector<xp_sdf_cell> cells;
    std::vector<xp_sdf_entry> entries;
    std::map<std::string, std::size_t, std::less<>> left_out;  // by keyword
};

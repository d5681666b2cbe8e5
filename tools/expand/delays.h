// xp_delays: the delays of cells, in time steps.  Owns the delay rule of each cell type and the delays set
// for single cells.  A rule gives typical delays:
//     base + per_input * inputs + per_load * min(loads, load_cap)
// rounded to the nearest step, at least 1; minimum and maximum are the typical delay times a factor, rounded
// alike.  Limits of registers are given as they are, without factors.  Timing files are JSON, delay files
// lines of cell, rise and fall between tabs; what does not belong there is refused with its place.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "expand/liberty.h"
#include "expand/message.h"

inline constexpr std::int32_t xp_delay_max = 100'000'000;

using xp_delay = std::array<std::int32_t, 3>;  // minimum, typical, maximum

// The limits of a register: setup and hold of its data, least pulse widths of its clock or enable.  0: none.
struct xp_limits {
    xp_delay setup{2, 2, 2}, hold{}, min_high{}, min_low{};
};

struct xp_delays {
    xp_delay rise{}, fall{};
    const xp_limits* limits = nullptr;  // of the rule of the cell's type
};

struct xp_rule {
    double base = 0, per_input = 0, per_load = 0, load_cap = 0;
};

struct xp_cell_rule {
    xp_rule rise{2, 1, 1, 4}, fall{1, 1, 1, 4};
    xp_limits limits;
};

struct xp_timing {
    xp_cell_rule general;
    std::map<std::string, xp_cell_rule, std::less<>> by_type;
    double minimum = 0.7, maximum = 1.3;
    const xp_library* library = nullptr;  // whose cells may have rules
    struct single {
        xp_delays delays;
        std::int32_t line = 0;
        bool used = false;
    };
    std::unordered_map<std::string, single> by_cell;  // by path of the netlist without its first "/"
};

void xp_read_timing(const std::string& path, xp_timing& timing, xp_status& status);
void xp_parse_timing(const std::string& path, std::string_view text, xp_timing& timing, xp_status& status);
void xp_read_delays(const std::string& path, xp_timing& timing, xp_status& status);
void xp_parse_delays(const std::string& path, std::string_view text, xp_timing& timing, xp_status& status);

const xp_cell_rule& xp_rule_of(const xp_timing& timing, std::string_view type);
xp_delays xp_delays_of(const xp_timing& timing, const xp_cell_rule& rule, std::int32_t inputs,
                       std::int32_t loads);
// What is left of a cell's delays for its last gate, depth gates of one step before it: at least one step.
xp_delays xp_last_gate_delays(const xp_delays& cell, std::int32_t depth);

// xp_annotation: what an SDF file says of the pins of library cells.  Owns the way from entries to the pins
// of gates: the delay from an input pin to an output is the delay of the gate's input pin, the output's own
// is 0, and a wire's delay counts to the pin behind it.  Gates in front of the last one take a step each, off
// the delay of the pin that they feed; no way through a cell is shorter than a step.  Where conditions, edges
// or pins that share a gate pin differ, the larger delay or limit holds.
#pragma once

#include "expand/delays.h"
#include "expand/flatten.h"
#include "expand/sdf.h"

struct xp_pin_timing {
    xp_delay rise{}, fall{}, setup{}, hold{}, min_high{}, min_low{};
    xp_delay recovery{}, removal{}, period{}, idle{};  // idle: of the pulse in front of the active edge
};

struct xp_annotation {
    std::vector<std::int32_t> first;  // by gate of the design: its place in pins, -1 for none; empty: no gate
    std::vector<xp_pin_timing> pins;  // of a gate the inputs in their order, then the output
};

// What was annotated is told in notes, what was not found in warnings.
void xp_annotate(const xp_flat& flat, const xp_sdf& sdf, xp_annotation& annotation, xp_status& status);

// ---- between the steps of it

struct xp_sdf_delay {                   // in steps, not yet rounded
    std::array<xp_sdf_value, 2> edges;  // rise, fall
};

struct xp_sdf_counts {
    std::size_t annotated = 0, merged = 0, negative = 0;
};

struct xp_pin_limits {
    xp_sdf_value setup, hold, recovery, removal;  // against the clock
    xp_sdf_value high, low, period;
};

// What is known of one cell of the design.
struct xp_cell_timing {
    const xp_library_cell* type = nullptr;
    std::vector<xp_sdf_delay> paths;    // by output pin * pins + input pin
    std::vector<xp_sdf_delay> wires;    // by pin
    std::vector<xp_pin_limits> limits;  // by pin
};

// Takes one entry; false: nothing of the cell is meant by it.
bool xp_take_entry(const xp_sdf_entry& entry, xp_cell_timing& cell, xp_sdf_counts& counts);
// The pins of a part's last gate.
void xp_time_part(const xp_cell_timing& cell, const xp_plan_part& part, xp_sdf_counts& counts,
                  std::vector<xp_pin_timing>& pins);

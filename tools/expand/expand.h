// xp_expand: one run of the expander, from the netlist to the design file, its bus definitions and the map of
// names.  Nothing is left behind by a run that fails.
#pragma once

#include "expand/message.h"
#include "expand/options.h"

struct xp_summary {
    std::size_t instances = 0, nets = 0, macros = 0, pages = 0;
};

void xp_expand(const xp_options& options, xp_summary& summary, xp_status& status);

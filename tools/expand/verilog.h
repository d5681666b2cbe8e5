// xp_verilog: a netlist from Verilog.  Owns one run of Debian's yosys: the recipe, the arguments, and a
// folder for what passes between the two programs, gone when the run ends.  Files go to yosys as arguments of
// their own and never through a shell or a script; what stands in a script (top, defines, include folders) is
// held to signs that mean nothing there.  Yosys writes its own warnings and errors; a run that fails is
// refused.
#pragma once

#include "expand/liberty.h"
#include "expand/message.h"
#include "expand/netlist_json.h"
#include "expand/options.h"

// The netlist that the recipe makes of the input files; cells of the library stay as they are.
void xp_read_verilog(const xp_options& options, const xp_library& library, xp_netlist& netlist,
                     xp_status& status);

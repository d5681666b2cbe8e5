// tm: how the wires of a net look.  Whoever knows the states of the nets installs a procedure that is asked
// for every net that is drawn; without one, or when it says no, wires look as the sheet has them.
#pragma once

#include <cstdint>

#include "canvas/canvas.h"
#include "foundation/context.h"

struct tm_wire_look_t {
    tm_colour colour = tm_colour::green;
    tm_dash dash = tm_dash::solid;
};
using tm_wire_look_of_t = bool (*)(tm_file_index_t file_index, std::int16_t net, tm_wire_look_t& look);
inline tm_wire_look_of_t tm_wire_look_of = nullptr;

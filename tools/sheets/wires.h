// sg_wires: wires as drawings want them.
#pragma once

#include "sheets/graph.h"

// Splits wires where they meet others and joins those that go straight on; ties are the points where three or
// more meet.
void sg_normalise(std::vector<sg_wire>& wires, std::vector<sg_point>& ties);

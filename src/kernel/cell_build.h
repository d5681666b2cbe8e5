// kol: building the cells from the records.  Decides which instances go the short way: a gate of up to four
// inputs with one output, a register that checks nothing; each pin on one bit, no net at two pins of a gate,
// the output the net's only driver.  Reads delays in the active timing range.
#pragma once

#include "kernel/cells.h"

// Everything but the states.  False where the priorities of the drivers differ.
bool kol_build_cells();
// What a run needs to look for spikes.
void kol_build_spike_delays();
// The states of nets and drivers from the records.
void kol_read_cell_states();

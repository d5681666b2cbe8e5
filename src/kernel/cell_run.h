// kol: the run loop over cells.  The same order, states, histories and messages as the general way, event by
// event.
#pragma once

// False: every run goes the general way, as tests that compare both want it.
extern bool kol_cells_are_used;

// Executes events up to end_time, or to what ends the run; false: the run has to go the general way, nothing
// has been done.
bool kol_run_cells();

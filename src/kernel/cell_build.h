// kol: building the cells from the records.  Decides which instances go the short way: a gate of up to four
// inputs with one output, a register that checks nothing; each pin on one bit, no net at two pins of a gate,
// the output the net's only driver.  Reads delays in the active timing range.
#pragma once

#include "kernel/cells.h"

// Everything but the states.  False where the drivers have more priorities than there are ranks.
bool kol_build_cells(bool with_registers);
// What a spike of the net is measured by.
void kol_take_spike_delays(std::uint32_t at);
inline const kol_spike_delays_t& kol_spike_delays_of(std::uint32_t at) {
    if (kol_cells.spike_delays[at].longest_fed == kol_spike_delays_t::not_taken) kol_take_spike_delays(at);
    return kol_cells.spike_delays[at];
}
// The states of nets and drivers from the records.
void kol_read_cell_states();

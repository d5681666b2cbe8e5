// kol: the next change of a net among the events of the wheel, which a look for spikes needs.  Owns, while a
// run looks for spikes, the FORCE events of each net that come within kol_max_delay, entered or not.
#pragma once

#include <span>

#include "kernel/cells.h"
#include "kernel/stimuli_reader.h"

// Before the queue, whose times are given, is taken into the wheel.
void kol_begin_forces(std::span<const std::int32_t> times);
// Stimuli up to a time are looked at.
void kol_see_forces_until(std::int64_t time);
void kol_end_forces();
void kol_retire_force(std::uint32_t at);
// The time from now to the net's first event that carries another state, -1 when there is none within
// kol_max_delay: of the cell's single driver and of FORCEs, at an event that is executed; of any driver and
// of FORCEs.
std::int32_t kol_next_change_of_cell(std::uint32_t at, const kol_cell_t& cell, std::uint32_t executed);
std::int32_t kol_next_change_of_net(std::uint32_t at, std::int8_t state);
// The executed event leaves the chain of its driver.
void kol_unlink_pending(std::uint32_t place);

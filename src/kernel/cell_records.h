// kol: the way between cells and records.  A run finds cells that agree with the records, and leaves records
// that agree with the cells.
#pragma once

#include "kernel/cells.h"

// Builds or reads anew what does not agree, and empties the wheel at cur_time.  False where a run has to go
// the general way.
bool kol_prepare_cells();
// Writes what the run has changed back; but the states of fed pins and the times that registers keep, which
// follow from those of nets, only when somebody wants to see them.
void kol_write_back_cells();
void kol_bring_records_up();
// The same for the times of one register.
void kol_note_data_time(const kol_register_t& clocked);
// The same for the state of one net.
void kol_write_changed_net(std::uint32_t at);

// kol: the breaks.  Owns the records that stop a run when a net takes a state; a net is tested for the newest
// of its own.
#pragma once

#include "kernel/context.h"

// The net falls back to its newest remaining break.
void kol_remove_break(yx_break_signal_rec_t* record);
void kol_remove_all_breaks();

// kol: stimuli.  Turns the user's forces and clock blocks into FORCE events.
#pragma once

#include "kernel/context.h"

// Those of the run window [start_time, end_time).
void kol_expand_stimuli();

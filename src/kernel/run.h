// kol: the run loop.  Executes the events of the queue in order from cur_time up to end_time: resolves nets,
// keeps histories, detects hazards, spikes and breaks, calls the handlers of the pins that a net feeds.
// Hazards and spikes are counted warnings; inconsistent data is fatal (file_data_invalid).
#pragma once

#include "kernel/context.h"

void kol_exec_all_event(bool& no_event_found);

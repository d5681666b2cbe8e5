// kol: the execution of one event.  Resolves the net, keeps its history, detects hazards and spikes, calls
// the handlers of the pins that the net feeds.
#pragma once

#include "kernel/context.h"

// Executes the head of the queue, which stays there.
void kol_exec_cur_event();
void kol_exec_hdler(yx_procedure_t handler);

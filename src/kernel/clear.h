// kol: clearing.  The top of the kernel: knows every room that holds records of a run.
#pragma once

// Frees every run-time record of the simulator (events, histories, bit states, and what hangs off kol_ext:
// forces, clock blocks, probes, breaks, user buses, list and trace signals, each made with new) and returns
// kol_ext to its initial values (a test begins so; the program never does this).
void kol_context_clear();

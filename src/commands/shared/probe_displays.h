// kol: the probes on the sheets.  Hangs a display record on the schematic net of every probe that was set at
// the current level, so that the drawing writes the net's value beside it, and owns these records.
#pragma once

// Hangs up the probes of the current simulation path on the current level's sheet and takes down all others.
void kol_hang_probes();

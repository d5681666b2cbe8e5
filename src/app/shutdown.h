// Shutdown.  Owns the orderly end of the program's own things: the design, the sheet files, the schematic
// package and the trace file are closed, then the closing summary tells the counts of errors and warnings.
#pragma once

void finalize();

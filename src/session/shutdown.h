// kol: the end of a session.  Owns the closing of what a program has open: the design, the sheet files, the
// schematic package and the trace file.
#pragma once

#include <cstdint>

// Waits so many milliseconds where the pages are open, so that what was sent to them is seen.
void kol_close_session(std::int32_t pause);

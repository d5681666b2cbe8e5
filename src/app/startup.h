// The session of the window program, from its arguments to its closing line.  Errors of the design skip the
// command file and the event loop.
#pragma once

#include <cstdint>

void kolv_root(std::int32_t argc, char** argv);
// The orderly end: everything is closed, then the closing line tells the counts of errors and warnings.
void finalize();

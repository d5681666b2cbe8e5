// Start-up.  Owns the way from the command line to the event loop: stores the arguments, opens the trace
// files and the session transcript, creates the window, loads the design and sets it up, runs the initial
// command file.  A failure prints its line and ends the program, by exit or by the fatal exit; errors counted
// on the way skip the session and leave the closing summary.
#pragma once

#include <cstdint>

void kolv_root(std::int32_t argc, char** argv);
void initialize();

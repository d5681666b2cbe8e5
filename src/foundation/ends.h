// tm: what every program does first, so that it ends as it should: the fatal ends themselves are declared
// with the status codes.
#pragma once

#include <string>

// From now on an allocation that fails ends the program with one line on standard error and status 1, and a
// file that cannot grow or a pipe that nobody reads is a write that fails, not a signal that kills.
void tm_begin_process();
// Runs a program with one argument, without a shell, and waits for its end; nothing where commands may not
// run.
void tm_run_program(const char* program, std::string argument);

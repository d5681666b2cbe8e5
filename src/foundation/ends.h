// tm: what every program does first, so that it ends as it should: the fatal ends themselves are declared
// with the status codes.
#pragma once

#include <cstdio>
#include <string>

// From now on an allocation that fails ends the program with one line on standard error and status 1, and a
// file that cannot grow or a pipe that nobody reads is a write that fails, not a signal that kills.
void tm_begin_process();
// A trace file that every fatal end flushes, and whose last line it repeats on standard error while the
// stream is open.
void tm_repeat_trace_at_end(std::FILE* const* stream);
void tm_repeat_traces();
// Runs a program with one argument, without a shell, and waits for its end; nothing where commands may not
// run.
void tm_run_program(const char* program, std::string argument);

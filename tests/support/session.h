// tst: what the user would see and do.  Records the lines shown on the session area and answers the look for
// control keys.
#pragma once

#include <string>
#include <vector>

struct tst_session_t {
    std::vector<std::string> lines;  // shown since the design was loaded or tst_take_lines
    std::string keys;                // letters of waiting Control keys; a look takes its letter away
};
extern tst_session_t tst_session;

// Installs the recorder as the shell and empties it.
void tst_record_session();
// The lines shown so far; the next call begins behind them.
std::vector<std::string> tst_take_lines();
std::string tst_take_text();  // likewise, each line with a line end

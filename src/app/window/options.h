// tm: what the user chooses by resources of the program (share/kolv/Kolv holds the values that are shipped;
// here is what holds without them).
#pragma once

#include <Xm/Xm.h>

struct window_options_t {
    Boolean results_follow_window = False;  // header, labels and grid of the Results page move with its size
    Boolean names_beside_rows = False;      // of the trace: at the middle of their rows, else below
    Boolean confirm_loss = False;           // closing asks when something would be lost
};

// As read for the top window, once it is made.
const window_options_t& window_options();
void window_options_read();

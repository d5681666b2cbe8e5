// tm: what the user chooses by resources of the program (share/kolv/Kolv holds the values that are shipped;
// here is what holds without them).
#pragma once

#include <Xm/Xm.h>

#include <array>

#include "app/window/palette.h"

struct window_options_t {
    Boolean results_follow_window = False;  // header, labels and grid of the Results page move with its size
    Boolean names_beside_rows = False;      // of the trace: at the middle of their rows, else below
    Boolean confirm_loss = False;           // closing asks when something would be lost
    Boolean scale_pages = False;            // what the pages show grows with the resolution (Xft.dpi)
    Boolean bus_values = False;             // values of combined buses stand in their waveforms
    Boolean mark_unrecorded = False;        // a grey ground where no history was kept, and a note
    Boolean hints = False;                  // empty pages say what to do
    Boolean scroll_bars = False;            // of the Results page
    Boolean status_line = False;            // below the pages
    Boolean wheel_scrolls = False;          // else it does what button 3 does
    Boolean picked_by_path = False;         // LIST and TRACE call what is pointed at by its path
    Boolean sheet_shows_states = False;     // wires take the colours of their states
    int trace_row_height = 40;              // pixels at the usual resolution
    String scheme = nullptr;                // of colours: "light", else the dark one
    std::array<String, tm_colours> colours{};  // of the pages, by tm_colour; null: the scheme's
};

// As read for the top window, once it is made.
const window_options_t& window_options();
void window_options_read();

// How much larger than usual texts are (Xft.dpi), and what has a size in pixels on the pages.
double window_text_scale();
double window_page_scale();

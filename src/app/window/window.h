// tm: the main window.  Owns the application shell and everything in it: menu bar, tool bars, command entry,
// the two drawing pages, the session text.  tm_init creates and shows it; from then on user actions arrive in
// callbacks and leave as command lines.
#pragma once

#include <cstdint>
#include <string>

#include "foundation/context.h"

// Opens the display and shows the window under the given name.  Results: the size of the drawing area in
// pixels, the number of colour planes.  Status not 0: there is no display or no font, and trouble says which.
void tm_init(const tm_string_record_t& window_name, tm_bounds_t& bitmap_size, std::int16_t& planes,
             STATUS_T& status, std::string& trouble);
void tm_win_flush();      // shows every session line and sends what is buffered
void tm_win_main_loop();  // runs the event loop; does not return
void tm_win_close();      // destroys the window's resources and closes the display, if it is open

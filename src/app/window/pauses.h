// tm: the pauses of the program, milliseconds.  Each gives somebody else the time to be done first.
#pragma once

#include <cstdint>

inline constexpr std::int32_t pause_after_entry = 50;    // what a typed command has shown is painted
inline constexpr std::int32_t pause_before_press = 80;   // whoever taps a key has let it go
inline constexpr std::int32_t pause_before_release = 5;  // the press of a repeating key follows its release
inline constexpr std::int32_t pause_after_page = 50;     // the page comes to the front and is exposed
inline constexpr std::int32_t pause_of_settling = 10;    // between looks for the window's first events
inline constexpr std::int32_t pause_at_close = 100;      // the server has worked off what was sent
inline constexpr std::int32_t pause_of_check = 1;        // a directory is open while it is checked

// kol: the look-up table.  Up to 6 inputs on one bit each; input k, in the order of the pins, is bit k of the
// place in the table.  TABLE of the instance is the table in hexadecimal digits, the last of which holds the
// places 3 to 0.  Inputs that are "i" or "x" are completed in every way: the output is "i" where the table
// disagrees.  The delay is that of the input that changed and that of the output.  User errors of set-up are
// shown, counted, and end that instance's set-up.
#pragma once

#include <cstddef>

inline constexpr std::size_t kol_lut_max_inputs = 6;

void kol_lut_init();
void kol_lut_clear();    // forgets every instance
void kol_lut_refresh();  // the current instance's delays from its properties, silently
void kol_lut_hdler();    // of every input

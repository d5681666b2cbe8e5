// tm: the fonts of the window.  The toolkit does not survive a font that is missing, so they are tried before
// any widget is made.
#pragma once

#include <X11/Xlib.h>

#include <string>

// Empty when every face of the resources can be opened, or what is wrong.
std::string font_trouble(Display* display);

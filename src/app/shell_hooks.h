// tm: the window's shell record.  Lets everything below reach the user: session lines, command entry,
// redraws, pointer shape, waiting keys.
#pragma once

// From here on the ends of the program close files; the rest takes effect with the window (tm_use_window).
void tm_install_shell_hooks();
void tm_use_window();

// tm: the window's shell record.  Lets everything below reach the user: session lines, command entry,
// redraws, pointer shape, waiting keys.
#pragma once

// Once the window is made (tm_init).
void tm_use_window();

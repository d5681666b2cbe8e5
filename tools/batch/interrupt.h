// Control-C: the first one stops a run as Control-s does in the window, one more before that has been seen
// ends the program.
#pragma once

void bt_watch_interrupts();
// One that no run has seen does not count any more.
void bt_forget_interrupt();

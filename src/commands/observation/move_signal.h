// kol: the signal that MOVE SIGNAL moves.
#pragma once

// Picks the signal of the Results page at the pointer (kol_ext.signal_position).
void kol_mark_signal();

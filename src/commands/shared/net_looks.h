// kol: the colours of states on the sheet.  Wires of the current level's sheet look as the states of their
// nets: 0 green, 1 yellow, x magenta, i red and dashed, Z and U cyan and dashed; those of buses stay.
// Before the first run all wires look as the sheet has them.
#pragma once

// From now on, or no more.
void kol_show_states_on_sheets(bool on);
// The sheet of a level has been read anew.
void kol_forget_net_looks();

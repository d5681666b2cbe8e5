// kol: the procedures that DOBIN and DODIRECTBIN can call: "kolp_statistics" shows the sizes of the design
// and of the event queue, "kolp_arguments" the texts that it is called with.
#pragma once

// Enters them in the registry of procedures; repeated calls change nothing.
void kol_register_procedures();

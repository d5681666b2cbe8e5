// kol: the first step of the set-up.  Fills references from indexes; inconsistent chains are fatal
// (file_data_invalid).
#pragma once

// References of every net, its children, its pin chains; then of every instance and its pins.
void kol_link_nets();
void kol_link_instances();

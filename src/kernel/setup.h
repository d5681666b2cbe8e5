// kol: simulation set-up.  Turns the loaded netlist into a network that runs: fills references from indexes,
// binds instances to models and pins to handlers, schedules initial states, computes the largest delay; and
// returns the run-time state to its initial value for the restart commands.  User errors are shown and
// counted; inconsistent chains are fatal (file_data_invalid).
#pragma once

// Once, on a loaded design, with an empty queue at time 0.
void kol_init_object_ptr();
// Expects cur_time 0.
void kol_init_net_state();
// Takes the delays and limits of every instance over from the properties again, after these have been
// rescaled, and computes the largest delay.
void kol_refresh_timing();

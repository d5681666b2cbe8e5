// kol: the checkpoint of a run.  Archives what decides how the simulation goes on: times and settings, states
// and their times, timing, the models' data, the queue in its order, the stimuli, the histories.  The design
// is the loaded one; a fingerprint says which.  What observes nets is archived by its owners, between the two
// parts, since histories belong to observed nets.
#pragma once

#include "foundation/archive.h"
#include "kernel/context.h"

// Of names, pins and their connections.
std::uint64_t kol_design_fingerprint();

void kol_archive_run(tm_archive_t& archive);
void kol_archive_histories(tm_archive_t& archive);
void kol_archive_stimuli(tm_archive_t& archive);

// A reference to a net or a pin, none included, as its index; one outside the design becomes none.
void kol_archive_net(tm_archive_t& archive, yx_net_record_t*& net);
void kol_archive_pin(tm_archive_t& archive, yx_pin_record_t*& pin);

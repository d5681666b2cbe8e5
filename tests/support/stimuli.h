// tst: runs of a small design.  Schedules FORCE events written as text, runs, and reads back what the nets
// did.  Times are time steps.
#pragma once

#include <string>
#include <string_view>

// FORCE events "d=1@5 c=0z@7": net, state, time.
void tst_schedule(std::string_view stimuli);
// Goes on from the current time.
void tst_run_until(std::int32_t time);

std::string tst_state_text(std::int8_t state);
// The history of an observed net behind its first record: "14:1S 36:0S"; the first begins every history.
std::string tst_changes_of(std::string_view net);
std::string tst_history_of(std::string_view net);  // the first record included

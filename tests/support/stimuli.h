// tst: runs of a small design.  Schedules FORCE events written as text, runs, and reads back what the nets
// did.  Times are time steps.
#pragma once

#include <string>
#include <string_view>

// FORCE events "d=1@5 c=0z@7": net, state, time.
void tst_schedule(std::string_view stimuli);
// Goes on from the current time.
void tst_run_until(std::int32_t time);

// Builds a design, schedules, runs, and expects changes of nets ("y 10:1S 20:iS z 11:1S": words without a
// colon are nets) and the text shown.  Spikes are looked for only under a spike model.
void tst_expect_run(const std::string& design, std::string_view stimuli, const std::string& changes,
                    const std::string& text = "", int spike_model = -1);

std::string tst_state_text(std::int8_t state);
std::string tst_net_state(std::string_view net);  // its current one
std::string tst_queue_text();                     // "10:/a=1S 12:/y=0S"
// The history of an observed net behind its first record: "14:1S 36:0S"; the first begins every history.
std::string tst_changes_of(std::string_view net);
std::string tst_history_of(std::string_view net);  // the first record included

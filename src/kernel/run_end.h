// kol: what ends or interrupts a run after an event: a break, the user's keys, too many errors and warnings;
// and what is known of it meanwhile.
#pragma once

#include <csignal>

#include "kernel/context.h"

struct kol_executed_t {
    bool looks_at_keys;
    std::int32_t time;
    const yx_net_record_t* net;  // where a break is looked for
};

// True ends the run; the user has been told why.  counted_before: tm_counted when the run began.
bool kol_is_limit_reached(std::int64_t counted_before);  // errors and warnings alone
bool kol_is_run_ended(const kol_executed_t& executed, std::int64_t counted_before);

// Errors and warnings that a run goes on with; one more ends it.
extern std::int64_t kol_run_limit;

// Events that have been executed since the program began.
extern std::int64_t kol_events_executed;
// Set from outside, by a signal if need be: tm_shell.show_progress is called before the next time is reached.
extern volatile std::sig_atomic_t kol_progress_is_due;
void kol_show_progress();

// Counts an event; true once in many, where the keys are to be looked at behind it.  Behind a FORCE event
// they always are.
inline bool kol_is_look_due() {
    static std::uint32_t events = 0;
    constexpr std::uint32_t events_between_looks = 1U << 14;
    return (++events & (events_between_looks - 1)) == 0;
}

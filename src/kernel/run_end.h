// kol: what ends or interrupts a run after an event: a break, the user's keys, too many errors and warnings.
#pragma once

#include "kernel/context.h"

struct kol_executed_t {
    bool is_force;
    std::int32_t time;
    const yx_net_record_t* net;  // where a break is looked for
};

// True ends the run; the user has been told why.  counted_before: tm_counted when the run began.
bool kol_is_limit_reached(std::int64_t counted_before);  // errors and warnings alone
bool kol_is_run_ended(const kol_executed_t& executed, std::int64_t counted_before);

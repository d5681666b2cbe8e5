// rs: the changes of several nets in one order of time, as files write them, from the histories.
#pragma once

#include <vector>

#include "kernel/context.h"

struct rs_change_t {
    std::int32_t time = 0;
    std::uint32_t net = 0;  // index into the nets given
    std::int8_t state = 0;
};

struct rs_changes_t {
    std::vector<std::int8_t> states;   // of the nets at the begin time
    std::vector<rs_change_t> changes;  // behind it, up to the end time; of one time in the order of the nets
};

// The nets are observed; one that is not keeps its present state.
rs_changes_t rs_changes_of(const std::vector<yx_net_record_t*>& nets, std::int32_t begin_time,
                           std::int32_t end_time);

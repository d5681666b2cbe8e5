// Histories merged by time.
#include "results/files/changes.h"

#include <algorithm>

#include "kernel/history.h"

rs_changes_t rs_changes_of(const std::vector<yx_net_record_t*>& nets, std::int32_t begin_time,
                           std::int32_t end_time) {
    rs_changes_t found;
    for (const yx_net_record_t* net : nets) {
        const auto index = static_cast<std::uint32_t>(found.states.size());
        const kol_history_t* history = net->UU.U1.history;
        if (history == nullptr) {
            found.states.push_back(net->UU.U1.cur_state.state);
            continue;
        }
        const std::size_t first = history->find(begin_time);
        found.states.push_back((*history)[first].state);
        for (std::size_t place = (*history)[first].time <= begin_time ? first + 1 : first;
             place < history->size() && (*history)[place].time <= end_time; ++place)
            found.changes.push_back({(*history)[place].time, index, (*history)[place].state});
    }
    std::ranges::stable_sort(found.changes, {}, &rs_change_t::time);
    return found;
}

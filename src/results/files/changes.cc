// Histories merged by time.
#include "results/files/changes.h"

#include <algorithm>

rs_changes_t rs_changes_of(const std::vector<yx_net_record_t*>& nets, std::int32_t begin_time,
                           std::int32_t end_time) {
    rs_changes_t found;
    for (const yx_net_record_t* net : nets) {
        const yx_list_state_rec_t* record = net->UU.U1.first_state;
        std::int8_t state = record == nullptr ? net->UU.U1.cur_state.state : record->state;
        for (; record != nullptr && record->time <= begin_time; record = record->next) state = record->state;
        const auto index = static_cast<std::uint32_t>(found.states.size());
        found.states.push_back(state);
        for (; record != nullptr && record->time <= end_time; record = record->next)
            found.changes.push_back({record->time, index, record->state});
    }
    std::ranges::stable_sort(found.changes, {}, &rs_change_t::time);
    return found;
}

// Records of histories: taken, appended, recycled.
#include "kernel/history.h"

#include <deque>
#include <unordered_map>

#include "kernel/cells.h"

namespace {

std::deque<yx_list_state_rec_t> records;
yx_list_state_rec_t* free_records = nullptr;                // linked through next
std::unordered_map<const yx_net_u1_t*, std::int32_t> late;  // histories that begin behind time 0

yx_list_state_rec_t* take_record() {
    if (free_records == nullptr) return &records.emplace_back();
    yx_list_state_rec_t* record = free_records;
    free_records = record->next;
    *record = {};
    return record;
}

void recycle(yx_list_state_rec_t* first, yx_list_state_rec_t* last) {
    last->next = free_records;
    free_records = first;
}

void begin_history(yx_net_record_t* net) {
    const yx_signal_state_rec& cur = net->UU.U1.cur_state;
    if (const std::int32_t known = cur.time < 0 ? kol_ext.cur_time : cur.time; known > 0)
        late[&net->UU.U1] = known;
    kol_append_history(net, 0, cur.time == 0 ? cur.state : std::int8_t{0});
    if (cur.time > 0) kol_append_history(net, cur.time, cur.state);
    if (cur.time < 0 && cur.state != 0) kol_append_history(net, kol_ext.resume_time, cur.state);
}

void end_history(yx_net_u1_t& net) {
    if (net.first_state != nullptr) recycle(net.first_state, net.list_state);
    net.first_state = net.list_state = nullptr;
    late.erase(&net);
}

// The newest record is the one that stays.
void reset_history(yx_net_u1_t& net) {
    late.erase(&net);
    yx_list_state_rec_t* const kept = net.list_state;
    if (kept == nullptr) return;
    if (kept->previous != nullptr) recycle(net.first_state, kept->previous);
    *kept = {};
    net.first_state = kept;
}

void reset_signal(yx_signal_rec_t& signal) {
    if (signal.sig_bus) {
        if (signal.bus != nullptr) kol_init_bus_list_state(signal.bus);
        return;
    }
    if (signal.net == nullptr) return;
    reset_history(signal.net->UU.U1);
    signal.list_state = signal.list_state_cur = signal.net->UU.U1.first_state;
}

}  // namespace

yx_list_state_rec_t* kol_observe_net(yx_net_record_t* net) {
    if (net->UU.U1.nb_of_observer++ == 0) {
        begin_history(net);
        kol_watch_cell(*net);
    }
    return net->UU.U1.first_state;
}

void kol_forget_net(yx_net_record_t* net) {
    yx_net_u1_t& u1 = net->UU.U1;
    if (u1.nb_of_observer == 0 || --u1.nb_of_observer > 0) return;
    end_history(u1);
    kol_watch_cell(*net);
}

std::int32_t kol_recorded_from(const yx_net_record_t& net) {
    const auto found = late.find(&net.UU.U1);
    return found == late.end() ? 0 : found->second;
}

void kol_append_history(yx_net_record_t* net, std::int32_t time, std::int8_t state) {
    yx_net_u1_t& u1 = net->UU.U1;
    yx_list_state_rec_t* record = take_record();
    record->time = time;
    record->state = state;
    record->previous = u1.list_state;
    (u1.list_state == nullptr ? u1.first_state : u1.list_state->next) = record;
    u1.list_state = record;
}

void kol_init_list_state() {
    for (yx_signal_rec_t* signal = kol_ext.list_signal; signal != nullptr; signal = signal->previous)
        reset_signal(*signal);
    for (yx_signal_rec_t* signal = kol_ext.trace_signal; signal != nullptr; signal = signal->previous)
        reset_signal(*signal);
    for (yx_bus_rec_t* bus = kol_ext.start_sim_bus; bus != nullptr; bus = bus->next)
        kol_init_bus_list_state(bus);
}

void kol_init_bus_list_state(yx_bus_rec_t* bus) {
    for (yx_signal_rec_t* member = bus->signal; member != nullptr; member = member->next)
        reset_signal(*member);
}

void kol_clear_history() {
    records.clear();
    free_records = nullptr;
    late.clear();
}

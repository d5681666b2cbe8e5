// The loop over the queue, and what ends it.
#include "kernel/run.h"

#include <algorithm>

#include "foundation/context.h"
#include "foundation/shell.h"
#include "kernel/execute.h"
#include "kernel/queue.h"
#include "kernel/queue_check.h"
#include "kernel/run_messages.h"
#include "kernel/stimuli.h"

namespace {

constexpr std::int32_t run_limit = 50;  // errors and warnings of a run

std::int32_t counted() { return tm_vext.num_errors + tm_vext.num_warnings; }

// What ends or reports on a run after an event looks at this, for the event's record is recycled by then.
struct executed_t {
    bool is_force;
    std::int32_t time;
    const yx_net_record_t* net;  // where a break is looked for
};

executed_t exec_head() {
    const yx_event_rec_t& event = *kol_ext.cur_event;
    const executed_t executed{event.pin == nullptr, event.time, event.net};
    kol_ext.cur_time = event.time;
    kol_exec_cur_event();
    kol_retire_cur_event();
    return executed;
}

bool breaks_at(const executed_t& executed) {
    const yx_net_u1_t& net = executed.net->UU.U1;
    return executed.time != kol_ext.start_time && net.break_signal != nullptr &&
           net.break_signal->state == net.cur_state.state;
}

// True ends the run.
bool ask_user(const executed_t& executed) {
    if (!executed.is_force) return false;
    if (tm_shell.take_control_key('s')) {
        kol_say_break_request(kol_ext.cur_time);
        return true;
    }
    if (tm_shell.take_control_key('b')) kol_say_status(kol_ext.cur_time);
    return false;
}

bool is_run_ended(const executed_t& executed, std::int32_t counted_before) {
    if (breaks_at(executed)) {
        kol_say_break(*executed.net, kol_ext.cur_time);
        return true;
    }
    if (ask_user(executed)) return true;
    if (counted() - counted_before <= run_limit) return false;
    kol_say_limit(kol_ext.cur_time);
    return true;
}

void exec_until_end() {
    const std::int32_t counted_before = counted();
    kol_ext.spike_min = kol_ext.spike_min_t0;
    while (kol_ext.cur_event != nullptr) {
        const std::int32_t time = kol_ext.cur_event->time;
        if (kol_ext.tspike_min > 0 && time >= kol_ext.tspike_min) kol_ext.spike_min = kol_ext.spike_min_t;
        if (time > kol_ext.end_time) return;
        const executed_t executed = exec_head();
        if (!is_run_ended(executed, counted_before)) continue;
        kol_ext.time_breaked = true;
        return;
    }
}

}  // namespace

void kol_exec_all_event(bool& no_event_found) {
    no_event_found = false;
    kol_expand_stimuli();
    if (kol_ext.cur_event == nullptr) {
        no_event_found = true;
        kol_ext.cur_time = kol_ext.end_time;
        return;
    }
    kol_list_all_event();
    exec_until_end();
    kol_ext.cur_time = kol_ext.time_breaked ? std::min(kol_ext.cur_time, kol_ext.end_time) : kol_ext.end_time;
}

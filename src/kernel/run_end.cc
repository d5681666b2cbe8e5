// Breaks, keys and the limit, in this order.
#include "kernel/run_end.h"

#include "foundation/shell.h"
#include "kernel/run_messages.h"

std::int64_t kol_run_limit = 50;
std::int64_t kol_events_executed = 0;
volatile std::sig_atomic_t kol_progress_is_due = 0;

namespace {

bool breaks_at(const kol_executed_t& executed) {
    const yx_net_u1_t& net = executed.net->UU.U1;
    return executed.time != kol_ext.start_time && net.break_signal != nullptr &&
           net.break_signal->state == net.cur_state.state;
}

// True ends the run.
bool ask_user(const kol_executed_t& executed) {
    if (!executed.looks_at_keys) return false;
    if (tm_shell.take_control_key('s')) {
        kol_say_break_request(kol_ext.cur_time);
        return true;
    }
    if (tm_shell.take_control_key('b')) kol_say_status(kol_ext.cur_time);
    return false;
}

}  // namespace

bool kol_is_limit_reached(std::int64_t counted_before) {
    if (tm_counted() - counted_before <= kol_run_limit) return false;
    kol_say_limit(kol_ext.cur_time, kol_run_limit);
    return true;
}

bool kol_is_run_ended(const kol_executed_t& executed, std::int64_t counted_before) {
    if (breaks_at(executed)) {
        kol_say_break(*executed.net, kol_ext.cur_time);
        return true;
    }
    if (ask_user(executed)) return true;
    return kol_is_limit_reached(counted_before);
}

void kol_show_progress() {
    kol_progress_is_due = 0;
    tm_shell.show_progress();
}

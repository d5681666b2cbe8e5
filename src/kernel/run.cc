// The loop over the queue, and what ends it.
#include "kernel/run.h"

#include <algorithm>

#include "foundation/shell.h"
#include "kernel/cell_records.h"
#include "kernel/cell_run.h"
#include "kernel/execute.h"
#include "kernel/queue.h"
#include "kernel/queue_check.h"
#include "kernel/run_end.h"
#include "kernel/stimuli.h"
#include "kernel/watchers.h"

namespace {

kol_executed_t exec_head() {
    const yx_event_rec_t& event = *kol_ext.cur_event;
    const kol_executed_t executed{event.pin == nullptr, event.time, event.net};
    kol_ext.cur_time = event.time;
    kol_exec_cur_event();
    kol_retire_cur_event();
    return executed;
}

void note_change(const yx_net_record_t& net) {
    if (kol_watchers.nets.changed != nullptr)
        kol_watchers.changes.push_back({static_cast<std::uint32_t>(net.self), net.UU.U1.cur_state.state});
}

void exec_until_end() {
    const std::int64_t counted_before = tm_counted();
    kol_ext.spike_min = kol_ext.spike_min_t0;
    while (kol_ext.cur_event != nullptr) {
        const std::int32_t time = kol_ext.cur_event->time;
        if (kol_watchers.is_on && time > kol_ext.cur_time && kol_watch_time(time, counted_before)) {
            kol_ext.time_breaked = true;
            return;
        }
        if (kol_ext.tspike_min > 0 && time >= kol_ext.tspike_min) kol_ext.spike_min = kol_ext.spike_min_t;
        if (time > kol_ext.end_time) return;
        if (kol_progress_is_due != 0) kol_show_progress();
        const kol_executed_t executed = exec_head();
        note_change(*executed.net);
        ++kol_events_executed;
        if (!kol_is_run_ended(executed, counted_before)) continue;
        kol_ext.time_breaked = true;
        return;
    }
}

void run_general_way(const kol_stimuli_t& stimuli) {
    kol_bring_records_up();
    kol_forget_cell_states();
    kol_schedule_stimuli(stimuli);
    kol_list_all_event();
    exec_until_end();
}

void exec_window(bool& no_event_found) {
    const kol_stimuli_t stimuli = kol_stimuli_of_window();
    if (kol_ext.cur_event == nullptr && stimuli.empty()) {
        no_event_found = true;
        kol_ext.cur_time = kol_ext.end_time;
        return;
    }
    if (!kol_run_cells(stimuli)) run_general_way(stimuli);
    kol_ext.cur_time = kol_ext.time_breaked ? std::min(kol_ext.cur_time, kol_ext.end_time) : kol_ext.end_time;
}

}  // namespace

void kol_exec_all_event(bool& no_event_found) {
    no_event_found = false;
    if (kol_watchers.is_on) kol_begin_watched_run();
    exec_window(no_event_found);
    if (kol_watchers.is_on) kol_end_watched_run();
}

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
#include "kernel/stimuli_entry.h"
#include "kernel/watchers.h"

namespace {

constexpr kol_stimuli_target_t queue_of_records = {
    [](const kol_stimulus_t& stimulus) {
        kol_create_force_event(yx_ptrto_net_rec(stimulus.net), stimulus.time, stimulus.state);
    },
    kol_put_forces_first,
};

kol_executed_t exec_head() {
    const yx_event_rec_t& event = *kol_ext.cur_event;
    const kol_executed_t executed{event.pin == nullptr || kol_is_look_due(), event.time, event.net};
    kol_ext.cur_time = event.time;
    kol_exec_cur_event();
    kol_retire_cur_event();
    return executed;
}

void note_change(const yx_net_record_t& net) {
    if (kol_watchers.nets.changed != nullptr)
        kol_watchers.changes.push_back({static_cast<std::uint32_t>(net.self), net.UU.U1.cur_state.state});
}

std::int64_t next_time(const kol_stimuli_entry_t& stimuli) {
    if (kol_ext.cur_event == nullptr) return stimuli.next_time();
    return std::min<std::int64_t>(kol_ext.cur_event->time, stimuli.next_time());
}

// A look for spikes sees what comes within kol_max_delay.
std::int64_t time_to_be_seen(std::int64_t time) { return kol_ext.spike_on ? time + kol_max_delay : time; }

void exec_until_end(kol_stimuli_entry_t& stimuli) {
    const std::int64_t counted_before = tm_counted();
    kol_ext.spike_min = kol_ext.spike_min_t0;
    for (;;) {
        const std::int64_t time = next_time(stimuli);
        if (time == kol_stimuli_reader_t::never) return;
        if (kol_watchers.is_on && time > kol_ext.cur_time && kol_watch_time(time, counted_before)) {
            kol_ext.time_breaked = true;
            return;
        }
        if (kol_ext.tspike_min > 0 && time >= kol_ext.tspike_min) kol_ext.spike_min = kol_ext.spike_min_t;
        if (time > kol_ext.end_time) return;
        if (kol_progress_is_due != 0) kol_show_progress();
        stimuli.enter_until(time_to_be_seen(time));
        const kol_executed_t executed = exec_head();
        note_change(*executed.net);
        ++kol_events_executed;
        if (!kol_is_run_ended(executed, counted_before)) continue;
        kol_ext.time_breaked = true;
        return;
    }
}

void run_general_way() {
    kol_stimuli_entry_t stimuli(queue_of_records);
    kol_bring_records_up();
    kol_forget_cell_states();
    stimuli.begin(kol_times_of_queue());
    kol_list_all_event();
    exec_until_end(stimuli);
    stimuli.end(kol_times_of_queue());
}

bool has_events() {
    return kol_ext.cur_event != nullptr || kol_stimuli_reader_t().next_time() != kol_stimuli_reader_t::never;
}

void exec_window(bool& no_event_found) {
    kol_open_window(kol_ext.start_time, kol_ext.end_time);
    if (!has_events()) {
        no_event_found = true;
        kol_drop_windows();
        kol_ext.cur_time = kol_ext.end_time;
        return;
    }
    if (!kol_run_cells()) run_general_way();
    kol_ext.cur_time = kol_ext.time_breaked ? std::min(kol_ext.cur_time, kol_ext.end_time) : kol_ext.end_time;
}

}  // namespace

void kol_exec_all_event(bool& no_event_found) {
    no_event_found = false;
    if (kol_watchers.is_on) kol_begin_watched_run();
    exec_window(no_event_found);
    if (kol_watchers.is_on) kol_end_watched_run();
}

// Who is told of a run when a time is over.
#include "kernel/run_watch.h"

#include <algorithm>

#include "kernel/bus_bits.h"
#include "kernel/run_end.h"
#include "kernel/run_messages.h"

namespace {

void tell_changes() {
    if (kol_run_watch.changes.empty()) return;
    kol_run_watch.nets.changed(kol_ext.cur_time, kol_run_watch.changes);
    kol_run_watch.changes.clear();
}

void keep_appointments(std::int64_t next_time) {
    const std::int64_t before = std::min(next_time, std::int64_t{kol_ext.end_time} + 1);
    constexpr std::int64_t last = INT32_MAX;
    if (kol_run_watch.appointments.next < before)
        kol_run_watch.appointments.keep(static_cast<std::int32_t>(std::min(before, last)));
}

bool has_value(const kol_bus_break_t& bus) {
    bool is_new = false;
    for (std::size_t k = 0; k < bus.bits.size(); ++k) {
        const yx_signal_state_rec& cur = bus.bits[k]->UU.U1.cur_state;
        if (bus.values[k] != 'x' && kol_bit_of_state(cur.state) != bus.values[k]) return false;
        is_new = is_new || cur.time == kol_ext.cur_time;
    }
    return is_new && kol_ext.cur_time != kol_ext.start_time;
}

bool breaks_on_bus() {
    for (const kol_bus_break_t& bus : kol_run_watch.bus_breaks) {
        if (!has_value(bus)) continue;
        kol_say_bus_break(bus.name, bus.value, kol_ext.cur_time);
        return true;
    }
    return false;
}

}  // namespace

kol_run_watch_t kol_run_watch;

void kol_set_run_watch() {
    kol_run_watch.is_on = kol_run_watch.nets.changed != nullptr ||
                          kol_run_watch.appointments.keep != nullptr || !kol_run_watch.bus_breaks.empty();
}

void kol_begin_run_watch() {
    if (kol_run_watch.nets.begin != nullptr) kol_run_watch.nets.begin(kol_ext.cur_time);
    if (kol_run_watch.appointments.begin != nullptr) kol_run_watch.appointments.begin(kol_ext.cur_time);
}

bool kol_watch_time(std::int64_t next_time, std::int64_t counted_before) {
    tell_changes();
    keep_appointments(next_time);
    return breaks_on_bus() || kol_is_limit_reached(counted_before);
}

void kol_end_run_watch() {
    tell_changes();
    if (!kol_ext.time_breaked) keep_appointments(INT64_MAX);
    if (kol_run_watch.appointments.end != nullptr) kol_run_watch.appointments.end(kol_ext.cur_time);
    if (kol_run_watch.nets.end != nullptr) kol_run_watch.nets.end(kol_ext.cur_time);
}

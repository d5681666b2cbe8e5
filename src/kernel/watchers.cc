// Who is told of a run when a time is over.
#include "kernel/watchers.h"

#include <algorithm>

#include "kernel/bus_bits.h"
#include "kernel/run_end.h"
#include "kernel/run_messages.h"

namespace {

void tell_changes() {
    if (kol_watchers.changes.empty()) return;
    kol_watchers.nets.changed(kol_ext.cur_time, kol_watchers.changes);
    kol_watchers.changes.clear();
}

void keep_appointments(std::int64_t next_time) {
    const std::int64_t before = std::min(next_time, std::int64_t{kol_ext.end_time} + 1);
    constexpr std::int64_t last = INT32_MAX;
    if (kol_watchers.appointments.next < before)
        kol_watchers.appointments.keep(static_cast<std::int32_t>(std::min(before, last)));
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
    for (const kol_bus_break_t& bus : kol_watchers.bus_breaks) {
        if (!has_value(bus)) continue;
        kol_say_bus_break(bus.name, bus.value, kol_ext.cur_time);
        return true;
    }
    return false;
}

}  // namespace

kol_watchers_t kol_watchers;

void kol_set_watchers() {
    kol_watchers.is_on = kol_watchers.nets.changed != nullptr || kol_watchers.appointments.keep != nullptr ||
                         !kol_watchers.bus_breaks.empty();
}

void kol_begin_watched_run() {
    if (kol_watchers.nets.begin != nullptr) kol_watchers.nets.begin(kol_ext.cur_time);
    if (kol_watchers.appointments.begin != nullptr) kol_watchers.appointments.begin(kol_ext.cur_time);
}

bool kol_watch_time(std::int64_t next_time, std::int64_t counted_before) {
    tell_changes();
    keep_appointments(next_time);
    return breaks_on_bus() || kol_is_limit_reached(counted_before);
}

void kol_end_watched_run() {
    tell_changes();
    if (!kol_ext.time_breaked) keep_appointments(INT64_MAX);
    if (kol_watchers.appointments.end != nullptr) kol_watchers.appointments.end(kol_ext.cur_time);
    if (kol_watchers.nets.end != nullptr) kol_watchers.nets.end(kol_ext.cur_time);
}

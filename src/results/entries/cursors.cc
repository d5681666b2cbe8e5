// The cursors of the entries, which follow the state histories of the nets.
#include "results/entries/cursors.h"

#include <algorithm>
#include <limits>

#include "kernel/history.h"
#include "results/entries/entry.h"

namespace {

bool has_history(const yx_signal_rec_t& signal) {
    if (signal.history != nullptr) return true;
    kol_trace(" LIST : no history : \"%.*s\"", signal.name.len, signal.name.char_);
    return false;
}

void find_next_change(yx_signal_rec_t* entries, std::int32_t time, std::int32_t& next) {
    kol_for_each_entry(
        entries, [&](yx_signal_rec_t* signal) { kol_list_get_signextime(signal, time, next); },
        [&](yx_bus_rec_t* bus) { kol_list_get_busnextime(bus, time, next); });
}

}  // namespace

void kol_list_get_sigresult(yx_signal_rec_t* signal, std::int32_t cur_time) {
    if (has_history(*signal)) signal->cursor = signal->history->find(cur_time, signal->cursor);
}

void kol_list_get_busresult(yx_bus_rec_t* bus, std::int32_t cur_time) {
    kol_for_each_entry(
        bus->signal, [&](yx_signal_rec_t* signal) { kol_list_get_sigresult(signal, cur_time); },
        [&](yx_bus_rec_t* nested) { kol_list_get_busresult(nested, cur_time); });
}

void kol_list_get_signextime(yx_signal_rec_t* signal, std::int32_t curtime, std::int32_t& nextime) {
    if (!has_history(*signal)) return;
    const kol_history_t& history = *signal->history;
    std::size_t later = history.find(curtime, signal->cursor);
    if (history[later].time <= curtime) ++later;
    if (later == history.size()) return;
    signal->cursor = later;
    nextime = std::min(nextime, history[later].time);
}

void kol_list_get_busnextime(yx_bus_rec_t* bus, std::int32_t curtime, std::int32_t& nextime) {
    find_next_change(bus->signal, curtime, nextime);
}

std::int32_t rs_change_before(yx_signal_rec_t& signal, std::int32_t time) {
    if (time < 1) return 0;
    kol_list_get_sigresult(&signal, time - 1);
    return signal.history == nullptr ? 0 : std::min((*signal.history)[signal.cursor].time, time);
}

std::int32_t rs_change_before(yx_bus_rec_t& bus, std::int32_t time) {
    std::int32_t latest = 0;
    kol_for_each_entry(
        bus.signal,
        [&](yx_signal_rec_t* signal) { latest = std::max(latest, rs_change_before(*signal, time)); },
        [&](yx_bus_rec_t* nested) { latest = std::max(latest, rs_change_before(*nested, time)); });
    return latest;
}

void kol_list_get_nextime(std::int32_t curtime, std::int32_t& nextime) {
    nextime = kol_ext.cur_time;
    find_next_change(kol_list_first_entry(), curtime, nextime);
}

bool kol_list_next_row_time(std::int32_t& time) {
    if (!kol_ext.list_change_on) {
        if (time > std::numeric_limits<std::int32_t>::max() - kol_ext.list_period) return false;
        time += kol_ext.list_period;
        return true;
    }
    std::int32_t next = 0;
    kol_list_get_nextime(time, next);
    if (next <= time) return false;
    time = next;
    return true;
}

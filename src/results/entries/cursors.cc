// The cursors of the entries, which follow the state histories of the nets.
#include "results/entries/cursors.h"

#include <algorithm>
#include <limits>

#include "results/entries/entry.h"

namespace {

// The last history record not later than the time, or the first record; none without a history.  Successive
// times lie close together, so the walk starts at the cursor.
yx_list_state_rec_t* record_at(const yx_signal_rec_t& signal, std::int32_t time) {
    yx_list_state_rec_t* record =
        signal.list_state_cur != nullptr ? signal.list_state_cur : signal.list_state;
    if (record == nullptr) {
        kol_trace(" LIST : no history : \"%.*s\"", signal.name.len, signal.name.char_);
        return nullptr;
    }
    while (record->next != nullptr && record->next->time <= time) record = record->next;
    while (record->time > time && record->previous != nullptr) record = record->previous;
    return record;
}

void find_next_change(yx_signal_rec_t* entries, std::int32_t time, std::int32_t& next) {
    kol_for_each_entry(
        entries, [&](yx_signal_rec_t* signal) { kol_list_get_signextime(signal, time, next); },
        [&](yx_bus_rec_t* bus) { kol_list_get_busnextime(bus, time, next); });
}

}  // namespace

void kol_list_get_sigresult(yx_signal_rec_t* signal, std::int32_t cur_time) {
    signal->list_state_cur = record_at(*signal, cur_time);
}

void kol_list_get_busresult(yx_bus_rec_t* bus, std::int32_t cur_time) {
    kol_for_each_entry(
        bus->signal, [&](yx_signal_rec_t* signal) { kol_list_get_sigresult(signal, cur_time); },
        [&](yx_bus_rec_t* nested) { kol_list_get_busresult(nested, cur_time); });
}

void kol_list_get_signextime(yx_signal_rec_t* signal, std::int32_t curtime, std::int32_t& nextime) {
    yx_list_state_rec_t* later = record_at(*signal, curtime);
    if (later != nullptr && later->time <= curtime) later = later->next;
    if (later == nullptr) return;
    signal->list_state_cur = later;
    if (later->time < nextime) nextime = later->time;
}

void kol_list_get_busnextime(yx_bus_rec_t* bus, std::int32_t curtime, std::int32_t& nextime) {
    find_next_change(bus->signal, curtime, nextime);
}

std::int32_t rs_change_before(yx_signal_rec_t& signal, std::int32_t time) {
    if (time < 1) return 0;
    kol_list_get_sigresult(&signal, time - 1);
    return signal.list_state_cur == nullptr ? 0 : std::min(signal.list_state_cur->time, time);
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

// What the entries show at a time.
#include "results/entries/time_cursor.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <vector>

#include "kernel/history.h"
#include "kernel/say.h"
#include "kernel/state.h"
#include "results/entries/cursors.h"
#include "results/entries/entry.h"
#include "results/entries/observed.h"

namespace {

// Signals of the bus itself; buses inside it are entries of their own.
std::vector<yx_signal_rec_t*> signals_of(const rs_entry_t& entry) {
    if (entry.bus == nullptr) return {entry.signal};
    std::vector<yx_signal_rec_t*> signals;
    for (yx_signal_rec_t* member = entry.bus->signal; member != nullptr; member = member->next)
        if (!member->sig_bus) signals.push_back(member);
    return signals;
}

bool read_state(yx_signal_rec_t& signal, std::int32_t time, std::int8_t& state) {
    kol_list_get_sigresult(&signal, time);
    if (signal.history == nullptr) return false;
    state = (*signal.history)[signal.cursor].state;
    return true;
}

std::int16_t radix_of(const yx_bus_rec_t& bus) {
    for (const yx_signal_rec_t* entry = kol_ext.list_signal; entry != nullptr; entry = entry->previous)
        if (entry->bus == &bus) return entry->base_number;
    return kol_hexadecimal;
}

}  // namespace

std::string rs_value_at(const rs_entry_t& entry, std::int32_t time) {
    std::string bits;
    std::int8_t state = 0;
    for (yx_signal_rec_t* const signal : signals_of(entry)) {
        if (!read_state(*signal, time, state)) return {};
        if (signal->net != nullptr && time < kol_recorded_from(*signal->net)) return "?";
        bits += kol_bit_of_state(state);
    }
    if (entry.bus != nullptr) return rs_value_text(bits, radix_of(*entry.bus));
    char two[2];
    kol_state_to_statechar(state, two);
    return {two, 2};
}

std::string rs_cursor_text() {
    const auto& [first, second, follow] = rs_cursors;
    std::string text;
    if (first.is_set) text += "CURSOR " + kol_time_text(first.time);
    if (second.is_set) text += "  SECOND " + kol_time_text(second.time);
    if (!first.is_set || !second.is_set) return text;
    const std::int64_t difference = std::abs(std::int64_t{second.time} - first.time);
    const double units = static_cast<double>(difference) * yx_sext.time_step / kol_ext.scale_user_unit;
    text += "  DIFF " + kol_time_text(static_cast<std::int32_t>(
                            std::min<std::int64_t>(difference, std::numeric_limits<std::int32_t>::max())));
    char inverse[32];
    std::snprintf(inverse, sizeof inverse, "  1/DIFF %.4g", units > 0 ? 1 / units : 0.0);
    return units > 0 ? text + inverse : text;
}

bool rs_next_change(const rs_entry_t& entry, std::int32_t time, std::int32_t& change) {
    constexpr std::int32_t none = std::numeric_limits<std::int32_t>::max();
    change = none;
    for (yx_signal_rec_t* const signal : signals_of(entry)) kol_list_get_signextime(signal, time, change);
    return change != none;
}

bool rs_previous_change(const rs_entry_t& entry, std::int32_t time, std::int32_t& change) {
    change = 0;
    for (yx_signal_rec_t* const signal : signals_of(entry)) {
        change = std::max(change, rs_change_before(*signal, time));
    }
    return change > 0 && change < time;
}

bool rs_state_at(const yx_net_record_t& net, std::int32_t time, std::int8_t& state) {
    if (net.net_type == YX_TSTD_BUS || net.UU.U1.history == nullptr || time < kol_recorded_from(net))
        return false;
    yx_signal_rec_t reader;
    reader.history = net.UU.U1.history;
    return read_state(reader, time, state);
}

bool rs_shown_state(const yx_net_record_t& net, std::int8_t& state) {
    if (rs_cursors.probes_follow && rs_cursors.first.is_set)
        return rs_state_at(net, rs_cursors.first.time, state);
    state = net.UU.U1.cur_state.state;
    return net.net_type != YX_TSTD_BUS;
}

std::int32_t rs_recorded_from(const rs_entry_t& entry) {
    std::int32_t from = 0;
    for (const yx_signal_rec_t* const signal : signals_of(entry))
        if (signal->net != nullptr) from = std::max(from, kol_recorded_from(*signal->net));
    return from;
}

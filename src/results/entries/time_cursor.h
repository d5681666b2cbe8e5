// rs: the cursors in time.  Owns the two times that the user has marked, and says what the entries of the
// views show at a time and when they change.  Times are time steps.
#pragma once

#include <cstdint>
#include <string>

#include "kernel/context.h"

struct rs_time_cursor_t {
    bool is_set = false;
    std::int32_t time = 0;
};
struct rs_cursors_t {
    rs_time_cursor_t first, second;
    bool probes_follow = false;  // probes and sheets show the first cursor's time, not the present
};
inline rs_cursors_t rs_cursors;

// An entry of a view: a signal, or the bus that stands in its place.
struct rs_entry_t {
    yx_signal_rec_t* signal = nullptr;
    yx_bus_rec_t* bus = nullptr;
    explicit operator bool() const { return signal != nullptr || bus != nullptr; }
};

// "1S", or the digits of a bus in its radix, the first member being the most significant: hexadecimal unless
// LIST has given it another; "x" where the digits are not all 0 and 1.  Empty without a history.
std::string rs_value_at(const rs_entry_t& entry, std::int32_t time);
// "1.25 : 2.5 ..." what the cursors say, empty when none is set.
std::string rs_cursor_text();

// The next change behind a time, or the last one before it; false: there is none.
bool rs_next_change(const rs_entry_t& entry, std::int32_t time, std::int32_t& change);
bool rs_previous_change(const rs_entry_t& entry, std::int32_t time, std::int32_t& change);

// The state of a net at a time; false when no history says it.
bool rs_state_at(const yx_net_record_t& net, std::int32_t time, std::int8_t& state);
// What sheets and probes show of a net: its state at the cursor's time while they follow it, else the present
// one.
bool rs_shown_state(const yx_net_record_t& net, std::int8_t& state);
// Since when the history of an entry is known, 0 from the beginning.
std::int32_t rs_recorded_from(const rs_entry_t& entry);

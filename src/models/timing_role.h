// kol: the memory of a timed input.  A role (data, clock or enable, set, reset) is one pin of an instance
// with its edge, its limits and the times of its last transitions; this room classifies a change of that pin,
// records it and answers the reference time that the checks measure from.  Times and limits are time steps,
// limits as minimum, typical, maximum.  A pin that is not its role's pin, or stands on bits, is fatal
// (file_data_invalid).
#pragma once

#include "foundation/archive.h"
#include "kernel/context.h"

enum class kol_change : std::uint8_t { rising, falling, unknown };

struct kol_timing_role_t {
    yx_pin_record_t* pin = nullptr;
    bool found = false;  // the instance has such a pin
    bool on = false;     // set and reset: active; enable of a switch: closed; enable of a latch: it holds
    char edge = 'R';     // recorded and active transitions: 'R', 'F' or 'X' (both), in either case
    std::int32_t setup[3] = {0, 0, 0}, hold[3] = {0, 0, 0};
    std::int32_t min_time_high[3] = {0, 0, 0}, min_time_low[3] = {0, 0, 0};
    std::int32_t rising_time = 0, falling_time = 0;
};

struct kol_transition_t {
    kol_change change = kol_change::unknown;
    std::int16_t value = 0;          // the net's new value
    std::int32_t time = 0;           // of this change
    std::int32_t opposite_time = 0;  // where the pulse that this change ends began
};

// The net that a pin on one bit reads: its own, the member it touches, or the root of a sub-net's tree.
yx_net_record_t* kol_input_net(const yx_pin_record_t* pin);
// The value that the role's pin reads; "i" where there is no such pin.
std::int16_t kol_role_value(const kol_timing_role_t& role);
// The change of the role's pin, which must be cur_pin; nothing is recorded.
kol_transition_t kol_read_transition(const kol_timing_role_t& role);
// The same, and the change is recorded under the role's edge.
kol_transition_t kol_record_transition(kol_timing_role_t& role);
// The same, and the change is recorded whatever the edge: pulses are then measured from edge to edge.
kol_transition_t kol_record_both_edges(kol_timing_role_t& role);
// True for a change that the edge names: falling for F, rising for R, every one otherwise.
bool kol_is_active(char edge, kol_change change);
// Those changes as bits, of which each stands for old value x 4 + new value.
std::uint16_t kol_active_changes(char edge);
// True when a check of the role may find a violation in some timing range.
bool kol_has_limits(const kol_timing_role_t& role);
// True when that check is setup at most, and the role is checked at any change.
bool kol_checks_setup_only(const kol_timing_role_t& role);
// Time of the last transition that the role's edge names; the later of both for any other edge than R and F.
std::int32_t kol_reference_time(const kol_timing_role_t& role);
// The enable rule of checker and switch: on after the edge's change, off after the opposite one, inverted by
// a change among "i" and "x".
void kol_follow_enable(char edge, kol_change change, bool& on);
// Returns the run-time fields to what the last change of the pin's net left, to their initial values for a
// net that has never changed; the times of the transitions become 0.  Edge, limits and pin stay.
void kol_restart_role(kol_timing_role_t& role);
// The same for an enable of checker or switch.
void kol_restart_enable(const kol_timing_role_t& role, bool initially_on, bool& on);
// The run-time fields.
void kol_archive_role(tm_archive_t& archive, kol_timing_role_t& role);

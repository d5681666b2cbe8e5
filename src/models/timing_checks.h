// kol: timing checks.  Pulse width, setup and hold of timed inputs: each violation shows its message lines
// and counts one warning, and changes nothing else.  A limit of 0 disables its check.  Limits are those of
// the current instance's timing range.
#pragma once

#include "models/timing_role.h"

// The pulse that this change of the role's pin ends.
void kol_check_pulse_width(const kol_timing_role_t& role, const kol_transition_t& transition);
// The reference (clock or enable) has changed: has the other input been stable for its setup time?
void kol_check_setup(const kol_timing_role_t& reference, const kol_transition_t& transition,
                     const kol_timing_role_t& input);
// The input has changed: is the reference's transition further back than the input's hold time?
void kol_check_hold(const kol_timing_role_t& input, const kol_transition_t& transition,
                    const kol_timing_role_t& reference);
// What a violation names: the pin at which it is seen, and the one that it is measured from, if that is
// another.
struct kol_violation_t {
    std::string_view text;
    const kol_timing_role_t& at;
    const kol_timing_role_t* from;
};
// Less than the limit between two instants; since < 0: the first has not come yet.
void kol_check_since(std::int32_t since, std::int32_t time, const std::int32_t (&limits)[3],
                     const kol_violation_t& violation);
// A reset that is active overrides a set that becomes active.
void kol_report_override(const kol_timing_role_t& reset, const kol_timing_role_t& set, std::int32_t time);

// kol: edge checks.  What flip-flop and transparent latch check beyond the four timing properties: the end of
// set and reset against the clock (RECOVERY_TIME, REMOVAL_TIME of R and S), and of the clock the time from
// one active edge to the next (MIN_PERIOD) and the pulse in front of the active edge (MIN_TIME_IDLE).  Owns
// these limits and the times that they need; an instance without such a property has none.  Only edges that
// the run has seen count. Each violation shows its lines and counts one warning.
#pragma once

#include <array>
#include <memory>

#include "models/timing_role.h"

struct kol_release_check_t {  // of set or reset
    std::int32_t recovery[3] = {0, 0, 0}, removal[3] = {0, 0, 0};
    std::int32_t released_at = -1;
};

struct kol_edge_checks_t {
    std::int32_t period[3] = {0, 0, 0}, idle[3] = {0, 0, 0};
    std::int32_t active_at = -1, opposite_at = -1;  // of the clock
    std::array<kol_release_check_t, 2> releases;    // reset, set
};

// The roles of a register whose properties count; set and reset may have no pin.
struct kol_edge_roles_t {
    const kol_timing_role_t& control;
    std::array<const kol_timing_role_t*, 2> overrides;  // reset, set
};

// From the properties of the pins; null where there are none.  A property that is no time is shown and
// counted.
std::unique_ptr<kol_edge_checks_t> kol_read_edge_checks(const kol_edge_roles_t& roles);
// Takes the limits over again, the times stay.
void kol_refresh_edge_checks(const kol_edge_roles_t& roles, kol_edge_checks_t* checks);
void kol_restart_edge_checks(kol_edge_checks_t* checks);
// The clock or enable has changed.
void kol_check_clock(kol_edge_checks_t* checks, const kol_edge_roles_t& roles, const kol_transition_t& clock);
// Set or reset has changed and is no longer on.
void kol_check_release(kol_edge_checks_t* checks, const kol_edge_roles_t& roles,
                       const kol_timing_role_t& override_role, const kol_transition_t& transition);

// Recovery, removal, period and idle pulse.
#include "models/edge_checks.h"

#include "models/pin_properties.h"
#include "models/timing_checks.h"

namespace {

constexpr std::string_view period_violation = "# !! Min Period Violation on pin:";
constexpr std::string_view low_violation = "# !! Min Time Low Violation on pin:";
constexpr std::string_view high_violation = "# !! Min Time High Violation on pin:";
constexpr std::string_view recovery_violation = "# !! Recovery Time Violation on pin:";
constexpr std::string_view removal_violation = "# !! Removal Time Violation on pin:";

// True when the pin has the property; one of another type is shown.
bool take(const kol_timing_role_t& role, const tm_string_record_t& property, std::int32_t (&limit)[3]) {
    bool is_found = false;
    return role.pin != nullptr && kol_read_limit(*role.pin, property, limit, is_found) && is_found;
}

bool take_limits(const kol_edge_roles_t& roles, kol_edge_checks_t& checks) {
    static const tm_string_record_t period = tm_string("MIN_PERIOD"), idle = tm_string("MIN_TIME_IDLE"),
                                    recovery = tm_string("RECOVERY_TIME"),
                                    removal = tm_string("REMOVAL_TIME");
    bool has_any = take(roles.control, period, checks.period);
    has_any |= take(roles.control, idle, checks.idle);
    for (std::size_t k = 0; k < checks.releases.size(); ++k) {
        has_any |= take(*roles.overrides[k], recovery, checks.releases[k].recovery);
        has_any |= take(*roles.overrides[k], removal, checks.releases[k].removal);
    }
    return has_any;
}

}  // namespace

std::unique_ptr<kol_edge_checks_t> kol_read_edge_checks(const kol_edge_roles_t& roles) {
    kol_edge_checks_t checks;
    return take_limits(roles, checks) ? std::make_unique<kol_edge_checks_t>(checks) : nullptr;
}

void kol_refresh_edge_checks(const kol_edge_roles_t& roles, kol_edge_checks_t* checks) {
    if (checks != nullptr) take_limits(roles, *checks);
}

void kol_restart_edge_checks(kol_edge_checks_t* checks) {
    if (checks == nullptr) return;
    checks->active_at = checks->opposite_at = -1;
    for (kol_release_check_t& release : checks->releases) release.released_at = -1;
}

void kol_check_clock(kol_edge_checks_t* checks, const kol_edge_roles_t& roles,
                     const kol_transition_t& clock) {
    if (checks == nullptr) return;
    const kol_timing_role_t& control = roles.control;
    if (!kol_is_active(control.edge, clock.change)) {
        checks->opposite_at = clock.time;
        return;
    }
    kol_check_since(checks->active_at, clock.time, checks->period, {period_violation, control, nullptr});
    kol_check_since(checks->opposite_at, clock.time, checks->idle,
                    {clock.change == kol_change::falling ? high_violation : low_violation, control, nullptr});
    checks->active_at = clock.time;
    if (roles.overrides[0]->on || roles.overrides[1]->on) return;
    for (std::size_t k = 0; k < checks->releases.size(); ++k)
        kol_check_since(checks->releases[k].released_at, clock.time, checks->releases[k].recovery,
                        {recovery_violation, control, roles.overrides[k]});
}

void kol_check_release(kol_edge_checks_t* checks, const kol_edge_roles_t& roles,
                       const kol_timing_role_t& override_role, const kol_transition_t& transition) {
    if (checks == nullptr) return;
    kol_release_check_t& release = checks->releases[&override_role == roles.overrides[0] ? 0 : 1];
    release.released_at = transition.time;
    kol_check_since(checks->active_at, transition.time, release.removal,
                    {removal_violation, override_role, &roles.control});
}

// Classification and memory of the transitions of an input, and the rules of edges.
#include "models/timing_role.h"

#include <algorithm>

#include "foundation/status.h"
#include "kernel/network.h"
#include "kernel/state.h"

namespace {

constexpr bool is_edge(char edge, char letter) { return tm_upper_case(edge) == letter; }

kol_change classify(std::int16_t old_value, std::int16_t new_value) {
    if (old_value == kol_v0 || new_value == kol_v1) return kol_change::rising;
    if (old_value == kol_v1 || new_value == kol_v0) return kol_change::falling;
    return kol_change::unknown;
}

// That of the net of the role's pin; unknown for a net that has never changed.
kol_change last_change(const kol_timing_role_t& role) {
    const yx_net_u1_t& net = kol_input_net(role.pin)->UU.U1;
    return classify(kol_value_of(net.old_state.state), kol_value_of(net.cur_state.state));
}

bool is_limit(const std::int32_t (&limit)[3]) {
    return std::ranges::any_of(limit, [](std::int32_t time) { return time != 0; });
}

std::int32_t opposite_time(const kol_timing_role_t& role, kol_change change) {
    switch (change) {
        case kol_change::rising:
            return role.falling_time;
        case kol_change::falling:
            return role.rising_time;
        case kol_change::unknown:
            break;
    }
    return std::max(role.rising_time, role.falling_time);
}

}  // namespace

yx_net_record_t* kol_input_net(const yx_pin_record_t* pin) {
    yx_net_record_t* net = pin->net_ptr;
    if (net->net_type == YX_TSTD_BUS)
        net = yx_ptrto_net_rec(pin->pin_net_start + net->UU.U2.netind_start + pin->pin_start);
    return kol_root_net(net);
}

std::int16_t kol_role_value(const kol_timing_role_t& role) {
    if (role.pin == nullptr) return kol_vi;
    return kol_value_of(kol_input_net(role.pin)->UU.U1.cur_state.state);
}

kol_transition_t kol_read_transition(const kol_timing_role_t& role) {
    if (kol_ext.cur_pin == nullptr || role.pin != kol_ext.cur_pin || role.pin->pin_end != 0) {
        kol_trace(" KOL_READ_TRANSITION : pin is not the pin of its role : instance %d",
                  kol_ext.cur_inst != nullptr ? kol_ext.cur_inst->self : 0);
        tm_fatal(file_data_invalid);
    }
    const yx_net_u1_t& net = kol_input_net(role.pin)->UU.U1;
    std::int16_t old_value = 0;
    std::int16_t drive = 0;
    kol_transition_t result;
    kol_state_to_valdrive(net.cur_state.state, result.value, drive);
    kol_state_to_valdrive(net.old_state.state, old_value, drive);
    result.change = classify(old_value, result.value);
    result.time = net.cur_state.time;
    result.opposite_time = opposite_time(role, result.change);
    return result;
}

namespace {

kol_transition_t record(kol_timing_role_t& role, bool any) {
    const kol_transition_t result = kol_read_transition(role);
    if (result.change != kol_change::falling && (any || is_edge(role.edge, 'R')))
        role.rising_time = result.time;
    if (result.change != kol_change::rising && (any || is_edge(role.edge, 'F')))
        role.falling_time = result.time;
    return result;
}

}  // namespace

kol_transition_t kol_record_transition(kol_timing_role_t& role) {
    return record(role, is_edge(role.edge, 'X'));
}

kol_transition_t kol_record_both_edges(kol_timing_role_t& role) { return record(role, true); }

bool kol_is_active(char edge, kol_change change) {
    if (is_edge(edge, 'F')) return change == kol_change::falling;
    if (is_edge(edge, 'R')) return change == kol_change::rising;
    return true;
}

std::uint16_t kol_active_changes(char edge) {
    unsigned changes = 0;
    for (std::int16_t old_value = 0; old_value < 4; ++old_value)
        for (std::int16_t value = 0; value < 4; ++value)
            if (kol_is_active(edge, classify(old_value, value))) changes |= 1U << (old_value * 4 + value);
    return static_cast<std::uint16_t>(changes);
}

bool kol_has_limits(const kol_timing_role_t& role) {
    return is_limit(role.setup) || is_limit(role.hold) || is_limit(role.min_time_high) ||
           is_limit(role.min_time_low);
}

bool kol_checks_setup_only(const kol_timing_role_t& role) {
    const bool has_edge = is_edge(role.edge, 'R') || is_edge(role.edge, 'F');
    return !is_limit(role.hold) && (!has_edge || !is_limit(role.setup));
}

std::int32_t kol_reference_time(const kol_timing_role_t& role) {
    if (is_edge(role.edge, 'F')) return role.falling_time;
    if (is_edge(role.edge, 'R')) return role.rising_time;
    return std::max(role.rising_time, role.falling_time);
}

void kol_follow_enable(char edge, kol_change change, bool& on) {
    if (!is_edge(edge, 'R') && !is_edge(edge, 'F') && !is_edge(edge, 'X'))
        on = false;
    else if (change == kol_change::unknown)
        on = !on;
    else
        on = kol_is_active(edge, change);
}

void kol_restart_role(kol_timing_role_t& role) {
    const bool single_edge = is_edge(role.edge, 'R') || is_edge(role.edge, 'F');
    role.on = single_edge && role.pin != nullptr && kol_is_active(role.edge, last_change(role));
    role.rising_time = role.falling_time = 0;
}

void kol_restart_enable(const kol_timing_role_t& role, bool initially_on, bool& on) {
    on = initially_on;
    if (role.pin == nullptr) return;
    const kol_change change = last_change(role);
    if (change != kol_change::unknown) kol_follow_enable(role.edge, change, on);
}

void kol_archive_role(tm_archive_t& archive, kol_timing_role_t& role) {
    archive(role.on, role.rising_time, role.falling_time);
}

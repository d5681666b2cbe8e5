// Capture, set and reset of flip-flop and latch.
#include "models/storage.h"

#include "foundation/status.h"
#include "kernel/state.h"
#include "models/pin_outputs.h"
#include "models/timing_checks.h"

namespace {

bool is_single_edge(char edge) { return tm_upper_case(edge) == 'R' || tm_upper_case(edge) == 'F'; }

// Follows set_on or reset_on; the result tells whether the input has become active.
bool follow_override(kol_storage_t& storage, kol_timing_role_t& role, kol_change change) {
    if (!is_single_edge(role.edge)) {
        role.on = !role.on;
        storage.check_data_on = !storage.check_data_on;
        return !storage.check_data_on;
    }
    role.on = kol_is_active(role.edge, change);
    storage.check_data_on = !role.on;
    return role.on;
}

// The part that set and reset have in common; false: nothing more to do.
bool override_changed(kol_storage_t& storage, kol_timing_role_t& role, kol_transition_t& transition) {
    if (!role.found) {
        kol_trace(" KOL_STORAGE : no such pin : instance %d", kol_ext.cur_inst->self);
        tm_fatal(file_data_invalid);
    }
    transition = kol_record_transition(role);
    kol_check_pulse_width(role, transition);
    const bool was_active = role.on, active = follow_override(storage, role, transition.change);
    kol_check_hold(role, transition, storage.control);
    if (was_active && !role.on)
        kol_check_release(storage.edges.get(), storage.edge_roles(), role, transition);
    return active;
}

}  // namespace

void kol_drive_outputs(const kol_outputs_t& outputs, std::int16_t value, std::int32_t input_delay) {
    for (std::int32_t i = 0; i < outputs.nb_q; ++i)
        kol_schedule_output(outputs.q_pin[static_cast<std::size_t>(i)], value, input_delay);
    for (std::int32_t i = 0; i < outputs.nb_qb; ++i)
        kol_schedule_output(outputs.qb_pin[static_cast<std::size_t>(i)], kol_inverted(value), input_delay);
}

void kol_capture(const kol_storage_t& storage, const yx_pin_record_t* cause) {
    if (storage.d.pin == nullptr) {
        kol_trace(" KOL_CAPTURE : no data pin : instance %d", kol_ext.cur_inst->self);
        tm_fatal(file_data_invalid);
    }
    const std::int16_t value = kol_value_of(kol_input_net(storage.d.pin)->UU.U1.cur_state.state);
    kol_drive_outputs(storage.outputs, value, kol_input_delay(cause, value));
}

void kol_set_changed(kol_storage_t& storage) {
    kol_transition_t transition;
    if (!override_changed(storage, storage.s, transition)) return;
    if (storage.r.on)
        kol_report_override(storage.r, storage.s, transition.time);
    else
        kol_drive_outputs(storage.outputs, kol_v1, kol_input_delay(storage.s.pin, transition.value));
}

void kol_reset_changed(kol_storage_t& storage) {
    kol_transition_t transition;
    if (override_changed(storage, storage.r, transition))
        kol_drive_outputs(storage.outputs, kol_v0, kol_input_delay(storage.r.pin, transition.value));
}

void kol_restart_storage(kol_storage_t& storage) {
    for (kol_timing_role_t* role : storage.roles()) kol_restart_role(*role);
    storage.check_data_on = !storage.s.on && !storage.r.on;
    kol_restart_edge_checks(storage.edges.get());
}

void kol_archive_storage(tm_archive_t& archive, kol_storage_t& storage) {
    for (kol_timing_role_t* role : storage.roles()) kol_archive_role(archive, *role);
    archive(storage.check_data_on);
    if (storage.edges == nullptr) return;
    archive(storage.edges->active_at, storage.edges->opposite_at);
    for (kol_release_check_t& release : storage.edges->releases) archive(release.released_at);
}

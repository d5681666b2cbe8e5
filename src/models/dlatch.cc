// The transparent latch: its roles, its value as a function of its levels, and what each input checks.
#include "models/dlatch.h"

#include "kernel/state.h"
#include "models/pin_outputs.h"
#include "models/pin_setup.h"
#include "models/storage.h"
#include "models/timing_checks.h"
#include "models/user_data.h"

namespace {

struct kol_dlatch_userdata_rec_t : kol_storage_t {
    std::int16_t held = kol_vi;
    bool knows_held = false;  // false: the output net says it
};

kol_user_data<kol_dlatch_userdata_rec_t> user_data;

// Whether the input may be on that level: an unknown one may be on both, a missing one is never active.
bool may_be(const kol_timing_role_t& role, std::int16_t active_value, bool active) {
    if (!role.found) return !active;
    const std::int16_t value = kol_role_value(role);
    return value == kol_v0 || value == kol_v1 ? (value == active_value) == active : true;
}

std::int16_t active_value(const kol_timing_role_t& override_role) {
    return tm_upper_case(override_role.edge) == 'F' ? kol_v0 : kol_v1;
}
std::int16_t open_value(const kol_timing_role_t& enable) {
    return tm_upper_case(enable.edge) == 'F' ? kol_v1 : kol_v0;
}

// The value that all ways of reading the levels agree on, else "i".
std::int16_t settled_value(const kol_dlatch_userdata_rec_t& latch) {
    const std::int16_t data = kol_role_value(latch.d);
    std::int16_t result = -1;
    for (unsigned levels = 0; levels < 8; ++levels) {
        const bool reset = (levels & 4U) != 0, set = (levels & 2U) != 0, open = (levels & 1U) != 0;
        if (!may_be(latch.r, active_value(latch.r), reset) || !may_be(latch.s, active_value(latch.s), set) ||
            !may_be(latch.control, open_value(latch.control), open))
            continue;
        const std::int16_t uncontrolled = open ? data : latch.held, value = reset ? std::int16_t{kol_v0}
                                                                            : set ? std::int16_t{kol_v1}
                                                                                  : uncontrolled;
        if (result >= 0 && value != result) return kol_vi;
        result = value;
    }
    return result;
}

bool is_active(const kol_timing_role_t& role) { return !may_be(role, active_value(role), false); }

std::int16_t value_of_outputs(const kol_outputs_t& outputs) {
    if (outputs.nb_q > 0) return kol_value_of(kol_input_net(outputs.q_pin[0])->UU.U1.cur_state.state);
    if (outputs.nb_qb > 0)
        return kol_inverted(kol_value_of(kol_input_net(outputs.qb_pin[0])->UU.U1.cur_state.state));
    return kol_vi;
}

void settle(kol_dlatch_userdata_rec_t& latch) {
    if (!latch.knows_held) latch.held = value_of_outputs(latch.outputs);
    latch.knows_held = true;
    const std::int16_t value = settled_value(latch);
    if (value == latch.held) return;
    latch.held = value;
    kol_drive_outputs(latch.outputs, value, kol_input_delay(kol_ext.cur_pin, value));
}

void override_changed(kol_dlatch_userdata_rec_t& latch, kol_timing_role_t& role) {
    const kol_transition_t transition = kol_record_both_edges(role);
    kol_check_pulse_width(role, transition);
    kol_check_hold(role, transition, latch.control);
    const bool was_active = role.on;
    role.on = is_active(role);
    if (was_active && !role.on) kol_check_release(latch.edges.get(), latch.edge_roles(), role, transition);
    latch.check_data_on = !latch.s.on && !latch.r.on;
    settle(latch);
}

}  // namespace

void kol_dlatch_init() {
    kol_dlatch_userdata_rec_t& latch = user_data.create();
    kol_set_up_pins(kol_latch_plan, latch.roles(), &latch.outputs);
    latch.edges = kol_read_edge_checks(latch.edge_roles());
    for (const kol_timing_role_t* role : {&latch.control, &latch.s, &latch.r})
        if (role->pin != nullptr && tm_upper_case(role->edge) == 'X')
            kol_show_pin_error("# !!! Error : a Level is Needed, EDGE \"X\" Has None, on pin : ", *role->pin);
}

void kol_dlatch_clear() { user_data.all().clear(); }

void kol_dlatch_restart() {
    for (kol_dlatch_userdata_rec_t& latch : user_data.all()) {
        kol_restart_storage(latch);
        for (kol_timing_role_t* role : {&latch.s, &latch.r}) role->on = is_active(*role);
        latch.check_data_on = !latch.s.on && !latch.r.on;
        latch.knows_held = false;
    }
}

void kol_dlatch_archive(tm_archive_t& archive) {
    for (kol_dlatch_userdata_rec_t& latch : user_data.all()) {
        kol_archive_storage(archive, latch);
        archive(latch.held, latch.knows_held);
    }
}

void kol_dlatch_refresh() {
    kol_dlatch_userdata_rec_t& latch = user_data.current();
    kol_refresh_pins(kol_latch_plan, latch.roles());
    kol_refresh_edge_checks(latch.edge_roles(), latch.edges.get());
}

void kol_dlatch_d_hdler() {
    kol_dlatch_userdata_rec_t& latch = user_data.current();
    const kol_transition_t data = kol_record_transition(latch.d);
    if (latch.check_data_on) kol_check_hold(latch.d, data, latch.control);
    settle(latch);
}

void kol_dlatch_e_hdler() {
    kol_dlatch_userdata_rec_t& latch = user_data.current();
    const kol_transition_t enable = kol_record_both_edges(latch.control);
    if (latch.s.found) kol_check_setup(latch.control, enable, latch.s);
    if (latch.r.found) kol_check_setup(latch.control, enable, latch.r);
    kol_check_clock(latch.edges.get(), latch.edge_roles(), enable);
    if (latch.check_data_on) {
        kol_check_pulse_width(latch.control, enable);
        kol_check_setup(latch.control, enable, latch.d);
    }
    settle(latch);
}

void kol_dlatch_s_hdler() {
    kol_dlatch_userdata_rec_t& latch = user_data.current();
    override_changed(latch, latch.s);
}

void kol_dlatch_r_hdler() {
    kol_dlatch_userdata_rec_t& latch = user_data.current();
    override_changed(latch, latch.r);
}

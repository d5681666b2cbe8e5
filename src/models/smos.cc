// The MOS switch: its roles, and the resolution that its closing and its terminals cause.
#include "models/smos.h"

#include "foundation/status.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "kernel/state.h"
#include "kernel/time.h"
#include "models/pin_nets.h"
#include "models/pin_outputs.h"
#include "models/pin_roles.h"
#include "models/user_data.h"

namespace {

struct kol_smos_userdata_rec_t {
    kol_timing_role_t e;  // on: the switch is closed
};

constexpr kol_role_rule_t role_rules[] = {
    {'E', "", true, 'R', 'F', kol_enable_name_error, kol_enable_polarity_error, kol_limit_use::ignored,
     kol_limit_use::ignored},
};
constexpr kol_pin_plan_t plan = {role_rules, kol_other_pin::terminal, true, false};

kol_user_data<kol_smos_userdata_rec_t> user_data;

kol_smos_userdata_rec_t& current_switch() {
    kol_smos_userdata_rec_t& smos = user_data.current();
    if (smos.e.found && kol_ext.cur_pin != nullptr && kol_ext.cur_pin->pin_end == 0) return smos;
    kol_trace(" KOL_SMOS : no enable pin or a bus pin : instance %d", kol_ext.cur_inst->self);
    tm_fatal(file_data_invalid);
}

// Calls visit(terminal pin, root net) for every net that a terminal of the current instance reaches.
template <typename Visit>
void for_each_terminal_net(Visit visit) {
    for (yx_pin_record_t* pin = kol_ext.cur_inst->first_pin_ptr; pin != nullptr; pin = pin->next_pin_inst_ptr)
        if (pin->io_type == YX_IO_TERMINAL)
            kol_each_net_of_pin(*pin, [&](yx_net_record_t* net) { visit(pin, kol_root_net(net)); });
}

void resolve_and_drive(std::int32_t input_delay) {
    std::int8_t state = 0;
    for_each_terminal_net([&](yx_pin_record_t*, yx_net_record_t* net) {
        state = kol_net_state(net->UU.U1.cur_state.state, state);
    });
    const std::int16_t value = kol_value_of(state);
    for_each_terminal_net([&](yx_pin_record_t* pin, yx_net_record_t* net) {
        if (net->UU.U1.cur_state.state != state)
            kol_output_state(pin, net, kol_sum_of_delays(kol_output_delay(pin, net, value), input_delay),
                             state);
    });
}

}  // namespace

void kol_smos_init() {
    kol_timing_role_t* const roles[] = {&user_data.create().e};
    kol_set_up_pins(plan, roles, nullptr);
}

void kol_smos_clear() { user_data.all().clear(); }

void kol_smos_restart() {
    for (kol_smos_userdata_rec_t& smos : user_data.all()) kol_restart_enable(smos.e, false, smos.e.on);
}

void kol_smos_archive(tm_archive_t& archive) {
    for (kol_smos_userdata_rec_t& smos : user_data.all()) kol_archive_role(archive, smos.e);
}

void kol_smos_refresh() { kol_refresh_pins(plan, {}); }

void kol_smos_e_hdler() {
    kol_timing_role_t& enable = current_switch().e;
    const kol_transition_t transition = kol_read_transition(enable);
    kol_follow_enable(enable.edge, transition.change, enable.on);
    if (kol_is_active(enable.edge, transition.change))
        resolve_and_drive(kol_input_delay(enable.pin, transition.value));
}

void kol_smos_d_hdler() {
    if (!current_switch().e.on) return;
    const yx_pin_record_t* const pin = kol_ext.cur_pin;
    resolve_and_drive(kol_input_delay(pin, kol_value_of(kol_input_net(pin)->UU.U1.cur_state.state)));
}

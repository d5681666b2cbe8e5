// The order of the set-up, initial states, the largest delay.
#include "kernel/setup.h"

#include <algorithm>

#include "kernel/cell_records.h"
#include "kernel/context.h"
#include "kernel/name_index.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "kernel/setup_instances.h"
#include "kernel/setup_links.h"
#include "kernel/stimuli.h"
#include "kernel/time.h"

namespace {

void init_state_of_net(yx_net_record_t* net) {
    yx_net_u1_t& u1 = net->UU.U1;
    const bool has_initial_state = net->net_kind == yx_kind_initialised || u1.state_init != 0;
    u1.cur_state.state = u1.old_state.state = 0;
    u1.cur_state.time = u1.old_state.time = has_initial_state ? 0 : -1;
    if (has_initial_state) kol_create_force_event(net, 0, u1.state_init);
}

void raise_max_delay(const yx_net_u1_t& net, const yx_pin_record_t& pin) {
    for (std::size_t range = 0; range < 3; ++range) {
        kol_max_delay = std::max(kol_max_delay, kol_sum_of_delays(net.rise[range], pin.rise[range]));
        kol_max_delay = std::max(kol_max_delay, kol_sum_of_delays(net.fall[range], pin.fall[range]));
    }
}

void init_states_of_nets() {
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        kol_ext.cur_net = yx_ptrto_net_rec(i);
        if (kol_ext.cur_net->net_type != YX_TSTD_BUS) init_state_of_net(kol_ext.cur_net);
    }
}

void compute_max_delay() {
    kol_max_delay = 0;
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        const yx_net_record_t& root = *yx_ptrto_net_rec(i);
        if (root.net_type != YX_TSTANDARD) continue;
        for (const kol_pin_link_t& fed : kol_fan_out_of(root)) raise_max_delay(root.UU.U1, *fed.pin);
        for (const kol_pin_link_t& driver : kol_drivers_of(root)) raise_max_delay(root.UU.U1, *driver.pin);
    }
}

}  // namespace

void kol_init_object_ptr() {
    kol_forget_names();
    kol_forget_cells();
    kol_clear_models();
    kol_link_nets();
    kol_link_instances();
    init_states_of_nets();
    const bool is_complete = kol_set_up_instances();
    kol_build_network();
    kol_max_delay = 0;
    if (is_complete) compute_max_delay();
}

void kol_init_net_state() {
    kol_empty_queue();
    kol_drop_windows();
    kol_forget_cell_states();
    init_states_of_nets();
    compute_max_delay();
    for (std::int32_t i = 1; i <= yx_sext.max_inst_cur; ++i)
        for (yx_pin_record_t* pin = yx_ptrto_inst_rec(i)->first_pin_ptr; pin != nullptr;
             pin = pin->next_pin_inst_ptr)
            kol_reset_pin_state(*pin);
    kol_restart_models();
}

void kol_refresh_timing() {
    kol_bring_records_up();
    kol_forget_cells();
    for (std::int32_t i = 1; i <= yx_sext.max_inst_cur; ++i) {
        kol_ext.cur_inst = yx_ptrto_inst_rec(i);
        const kol_model_t* model = kol_model_of(*kol_ext.cur_inst);
        if (model != nullptr && model->refresh != nullptr) model->refresh();
    }
    compute_max_delay();
}

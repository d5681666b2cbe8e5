// What stands beside restored states is made to fit them.
#include "kernel/resume.h"

#include "kernel/cells.h"
#include "kernel/history.h"
#include "kernel/model.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "kernel/stimuli.h"

namespace {

constexpr std::int32_t never = -1;

template <typename Visit>
void for_each_bit(yx_pin_record_t& pin, Visit visit) {
    if (pin.pin_state.bus == nullptr) return;  // a pin of no instance
    for (std::int32_t bit = pin.pin_start; bit <= pin.pin_end; ++bit) {
        yx_net_record_t* net = yx_ptrto_net_rec(kol_member_index(pin, bit));
        visit(kol_pin_state(pin, *net), *kol_root_net(net));
    }
}

// A time of the abandoned run would be taken for a change of this one.
void forget_times() {
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        yx_net_record_t& net = *yx_ptrto_net_rec(i);
        if (net.net_type != YX_TSTD_BUS) net.UU.U1.cur_state.time = net.UU.U1.old_state.time = never;
    }
    for (std::int32_t i = 1; i <= yx_sext.max_pin_cur; ++i) {
        yx_pin_record_t& pin = *yx_ptrto_pin_rec(i);
        if (pin.pin_end == 0)
            pin.pin_state.std.time = never;
        else
            for_each_bit(pin, [](yx_signal_state_rec& bit, yx_net_record_t&) { bit.time = never; });
    }
}

void begin_histories(std::int32_t time) {
    kol_init_list_state();
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        yx_net_record_t& net = *yx_ptrto_net_rec(i);
        if (net.net_type != YX_TSTD_BUS && net.UU.U1.history != nullptr)
            net.UU.U1.history->append(time, net.UU.U1.cur_state.state);
    }
}

}  // namespace

void kol_take_states_of_bits(yx_pin_record_t& pin) {
    for_each_bit(
        pin, [](yx_signal_state_rec& bit, yx_net_record_t& net) { bit.state = net.UU.U1.cur_state.state; });
}

void kol_resume_at(std::int32_t time) {
    kol_empty_queue();
    kol_drop_windows();
    kol_forget_cell_states();
    forget_times();
    kol_restart_models();
    kol_ext.time_breaked = false;
    kol_ext.start_time = kol_ext.cur_time = kol_ext.end_time = kol_ext.resume_time = time;
    begin_histories(time);
}

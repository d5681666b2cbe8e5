// References of nets, children, pin chains and instances.
#include "kernel/setup_links.h"

#include "foundation/status.h"
#include "kernel/context.h"
#include "kernel/net_events.h"
#include "kernel/network.h"

namespace {

[[noreturn]] void stop(const char* what, std::int32_t index) {
    kol_trace(" KOL_INIT_OBJECT_PTR : %s : %d", what, index);
    tm_fatal(file_data_invalid);
}

yx_net_record_t* net_or_none(std::int32_t index) { return index == 0 ? nullptr : yx_ptrto_net_rec(index); }

void forget_run(yx_net_record_t& net) {
    yx_net_u1_t& u1 = net.UU.U1;
    u1.break_signal = nullptr;
    u1.history = nullptr;
    u1.nb_of_observer = 0;
    kol_forget_net_events(net);
}

void link_tree(yx_net_record_t& net) {
    yx_net_u1_t& u1 = net.UU.U1;
    const bool has_father = u1.father_net != 0;
    if (has_father != (net.net_type == YX_TSUB_NET)) stop("father of net", net.self);
    u1.father_net_ptr = net_or_none(u1.father_net);
    u1.first_sub_net_ptr = net_or_none(u1.first_sub_net);
    u1.next_sub_net_ptr = net_or_none(u1.next_sub_net);
    u1.bus_ptr = net_or_none(u1.bus);
}

void link_children(yx_net_record_t& net) {
    yx_net_child_record_t** slot = &net.first_child_ptr;
    for (std::int32_t index = net.first_child; index != 0;) {
        *slot = yx_ptrto_net_child_rec(index);
        index = (*slot)->next_child;
        slot = &(*slot)->next_child_ptr;
    }
    *slot = nullptr;
}

struct chain_t {
    std::int32_t yx_net_record_t::*first_index;
    yx_pin_record_t* yx_net_record_t::*first;
    std::int32_t yx_pin_record_t::*next_index;
    yx_pin_record_t* yx_pin_record_t::*next;
};
constexpr chain_t chains[] = {
    {&yx_net_record_t::first_pin_in_ind, &yx_net_record_t::first_pin_in_ptr,
     &yx_pin_record_t::next_pin_in_ind, &yx_pin_record_t::next_pin_in_ptr},
    {&yx_net_record_t::first_pin_out_ind, &yx_net_record_t::first_pin_out_ptr,
     &yx_pin_record_t::next_pin_out_ind, &yx_pin_record_t::next_pin_out_ptr},
};

void link_chain(yx_net_record_t& net, const chain_t& chain) {
    yx_pin_record_t** slot = &(net.*chain.first);
    for (std::int32_t index = net.*chain.first_index; index != 0;) {
        yx_pin_record_t* pin = yx_ptrto_pin_rec(index);
        pin->net_ptr = yx_ptrto_net_rec(pin->net_ind);
        if (pin->net_ptr != &net && pin->net_ptr->net_type != YX_TSTD_BUS) stop("net of pin", pin->self);
        *slot = pin;
        slot = &(pin->*chain.next);
        index = pin->*chain.next_index;
    }
    *slot = nullptr;
}

void link_net(yx_net_record_t& net) {
    if (net.net_type == YX_TSTD_BUS)
        net.UU.U2.netind_start_ptr = yx_ptrto_net_rec(net.UU.U2.netind_start);
    else if (net.net_type == YX_TSTANDARD || net.net_type == YX_TSUB_NET)
        link_tree(net);
    else
        stop("type of net", net.self);
    link_children(net);
    for (const chain_t& chain : chains) link_chain(net, chain);
}

void link_pin(yx_pin_record_t& pin, yx_inst_record_t& inst) {
    if (pin.instance_ind != inst.self || pin.net_ind < 1) stop("instance or net of pin", pin.self);
    pin.instance_ptr = &inst;
    pin.net_ptr = yx_ptrto_net_rec(pin.net_ind);
    pin.pin_hdler = nullptr;
    kol_reset_pin_state(pin);
}

}  // namespace

void kol_link_nets() {
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        yx_net_record_t& net = *yx_ptrto_net_rec(i);
        forget_run(net);
        link_net(net);
    }
}

void kol_link_instances() {
    for (std::int32_t i = 1; i <= yx_sext.max_inst_cur; ++i) {
        yx_inst_record_t& inst = *yx_ptrto_inst_rec(i);
        inst.user_data_area = nullptr;
        yx_pin_record_t** slot = &inst.first_pin_ptr;
        for (std::int32_t k = 0; k < inst.nb_of_pin; ++k) {
            *slot = yx_ptrto_pin_rec(inst.first_pin_ind + k);
            link_pin(**slot, inst);
            slot = &(*slot)->next_pin_inst_ptr;
        }
        *slot = nullptr;
    }
}

#include "commands/observed_signal.h"

#include "kernel/history.h"
#include "kernel/lookup.h"

namespace {

constexpr std::string_view first_member_suffix = "_0";

bool find_signal_net(const tm_string_record_t& name, yx_net_record_t*& net) {
    kol_probe_signal_rec_t* probe = nullptr;
    if (kol_find_net_probe(name, probe) != 0) {
        net = probe->net;
        return true;
    }
    if (tm_const_equal_string("/", name) && kol_find_net_path(name, net) != 0) return true;
    if (tm_const_equal_string("NI_", name) && kol_find_net_abs(name, net) != 0) return true;
    return kol_find_net_rel(name, net) != 0;
}

}  // namespace

bool kol_find_signal(const tm_string_record_t& name, kol_found_signal_t& found) {
    found = {};
    found.name = name;
    if (kol_find_sim_bus(name, found.bus) != 0) return true;
    found.bus = nullptr;
    if (!find_signal_net(name, found.net)) return false;
    if (found.net->net_type == YX_TSTD_BUS) {
        found.net = yx_ptrto_net_rec(found.net->UU.U2.netind_start);
        tm_append(first_member_suffix, found.name);
    }
    return true;
}

yx_signal_rec_t* kol_make_signal(const kol_found_signal_t& found, std::int16_t base_number) {
    auto* signal = new yx_signal_rec_t;
    signal->name = found.name;
    signal->cur_sim_path = kol_ext.cur_sim_path;
    signal->sig_bus = found.bus != nullptr;
    signal->base_number = base_number;
    signal->bus = found.bus;
    signal->net = found.net;
    if (found.net != nullptr) signal->list_state = kol_observe_net(found.net);
    signal->list_state_cur = signal->list_state;
    return signal;
}

void kol_drop_signal(yx_signal_rec_t* signal) {
    if (signal->net != nullptr) kol_forget_net(signal->net);
    delete signal;
}

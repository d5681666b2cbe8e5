// Entries of the views and members of buses.

#include "commands/observation/observed_signal.h"

#include "commands/shared/parameters.h"
#include "foundation/list.h"
#include "kernel/history.h"
#include "kernel/lookup.h"
#include "results/trace/layout.h"

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

void delete_forgotten(yx_bus_rec_t* bus) {
    const auto owned = tm_list_take(bus, kol_ext.start_forgotten_bus, kol_ext.last_forgotten_bus);
    while (bus->signal != nullptr) kol_drop_signal(tm_list_take_next(bus->signal));
}

// The signals of a combined bus share a row; a bus inside a bus has rows of its own.
std::int32_t rows_of(const yx_signal_rec_t& entry) {
    if (!entry.sig_bus) return 1;
    std::int32_t rows = 0;
    bool shared_row_taken = false;
    for (const yx_signal_rec_t* member = entry.bus->signal; member != nullptr; member = member->next) {
        const bool shares = entry.bus->combine && !member->sig_bus;
        if (!shares || !shared_row_taken) rows += rows_of(*member);
        shared_row_taken = shared_row_taken || shares;
    }
    return rows;
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

std::unique_ptr<yx_signal_rec_t> kol_make_signal(const kol_found_signal_t& found, std::int16_t base_number) {
    auto signal = std::make_unique<yx_signal_rec_t>();
    signal->name = found.name;
    signal->cur_sim_path = kol_ext.cur_sim_path;
    signal->sig_bus = found.bus != nullptr;
    signal->base_number = base_number;
    signal->bus = found.bus;
    signal->net = found.net;
    if (found.bus != nullptr) ++found.bus->nb_of_holder;
    if (found.net != nullptr) signal->history = kol_observe_net(found.net);
    return signal;
}

void kol_drop_signal(std::unique_ptr<yx_signal_rec_t> signal) {
    yx_bus_rec_t* const bus = signal->bus;
    if (signal->net != nullptr) kol_forget_net(signal->net);
    signal.reset();
    if (bus != nullptr && --bus->nb_of_holder == 0 && bus->forgotten) delete_forgotten(bus);
}

void kol_forget_bus(yx_bus_rec_t* bus) {
    tm_list_append(tm_list_take(bus, kol_ext.start_sim_bus, kol_ext.last_sim_bus),
                   kol_ext.start_forgotten_bus, kol_ext.last_forgotten_bus);
    bus->forgotten = true;
    if (bus->nb_of_holder == 0) delete_forgotten(bus);
}

bool kol_trace_fits() {
    std::int32_t rows = 0;
    for (const yx_signal_rec_t* entry = kol_ext.trace_signal; entry != nullptr; entry = entry->previous)
        rows += rows_of(*entry);
    return rows <= kol_trace_max_row;
}

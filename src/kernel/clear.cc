// What clearing the simulator takes, room by room.
#include "kernel/clear.h"

#include "foundation/list.h"
#include "kernel/cells.h"
#include "kernel/context.h"
#include "kernel/history.h"
#include "kernel/model.h"
#include "kernel/name_index.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "kernel/stimuli.h"
#include "kernel/watchers.h"

namespace {

void delete_buses(yx_bus_rec_t*& first, yx_bus_rec_t*& last) {
    for (auto* bus = first; bus != nullptr; bus = bus->next)
        while (bus->signal != nullptr) tm_list_take_next(bus->signal);
    tm_list_clear(first, last);
}

void delete_observers() {
    tm_list_clear(kol_ext.break_signal);
    tm_list_clear(kol_ext.start_probe_signal, kol_ext.last_probe_signal);
    delete_buses(kol_ext.start_sim_bus, kol_ext.last_sim_bus);
    delete_buses(kol_ext.start_forgotten_bus, kol_ext.last_forgotten_bus);
    tm_list_clear(kol_ext.list_signal);
    tm_list_clear(kol_ext.trace_signal);
}

}  // namespace

void kol_context_clear() {
    kol_clear_stimuli();
    delete_observers();
    kol_clear_models();
    kol_clear_queue();
    kol_clear_history();
    kol_clear_network();
    kol_forget_names();
    kol_forget_cells();
    kol_ext = {};
    kol_max_delay = 0;
    kol_init_do_file = {};
    kol_watchers = {};
}

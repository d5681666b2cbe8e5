// What clearing the simulator takes, room by room.
#include "kernel/clear.h"

#include "kernel/cells.h"
#include "kernel/context.h"
#include "kernel/history.h"
#include "kernel/model.h"
#include "kernel/name_index.h"
#include "kernel/network.h"
#include "kernel/queue.h"

namespace {

template <typename Record>
void delete_chain(Record* record, Record* Record::*link) {
    while (record != nullptr) {
        Record* const linked = record->*link;
        delete record;
        record = linked;
    }
}

void delete_stimuli() {
    delete_chain(kol_ext.start_force, &kol_force_rec_t::next);
    for (auto* block = kol_ext.start_clock_force_blk; block != nullptr; block = block->next)
        delete_chain(block->start_force, &kol_force_rec_t::next);
    delete_chain(kol_ext.start_clock_force_blk, &kol_forceblk_rec_t::next);
}

void delete_buses(yx_bus_rec_t* first) {
    for (auto* bus = first; bus != nullptr; bus = bus->next)
        delete_chain(bus->signal, &yx_signal_rec_t::next);
    delete_chain(first, &yx_bus_rec_t::next);
}

void delete_observers() {
    delete_chain(kol_ext.break_signal, &yx_break_signal_rec_t::previous);
    delete_chain(kol_ext.start_probe_signal, &kol_probe_signal_rec_t::next);
    delete_buses(kol_ext.start_sim_bus);
    delete_buses(kol_ext.start_forgotten_bus);
    delete_chain(kol_ext.list_signal, &yx_signal_rec_t::previous);
    delete_chain(kol_ext.trace_signal, &yx_signal_rec_t::previous);
}

}  // namespace

void kol_context_clear() {
    delete_stimuli();
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
}

// kol: the entries of the list and of the trace.  An entry is a signal, or a bus whose members are entries.
#pragma once

#include "kernel/context.h"

// The first entry of a chain; any entry leads to it, none gives none.
inline yx_signal_rec_t* kol_first_of(yx_signal_rec_t* entry) {
    while (entry != nullptr && entry->previous != nullptr) entry = entry->previous;
    return entry;
}
inline yx_signal_rec_t* kol_list_first_entry() { return kol_first_of(kol_ext.list_signal); }
inline yx_signal_rec_t* kol_trace_first_entry() { return kol_first_of(kol_ext.trace_signal); }

// Visits an entry and those behind it: signals as records, buses that have members as buses.
template <typename OnSignal, typename OnBus>
void kol_for_each_entry(yx_signal_rec_t* entry, OnSignal on_signal, OnBus on_bus) {
    for (; entry != nullptr; entry = entry->next) {
        if (!entry->sig_bus)
            on_signal(entry);
        else if (entry->bus != nullptr)
            on_bus(entry->bus);
    }
}

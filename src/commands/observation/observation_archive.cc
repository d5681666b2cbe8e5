// Buses, entries, breaks and probes, written and made again.
#include "commands/observation/observation_archive.h"

#include <algorithm>

#include "commands/observation/breaks.h"
#include "commands/observation/bus_breaks.h"
#include "commands/observation/observed_signal.h"
#include "commands/shared/probe_displays.h"
#include "foundation/list.h"
#include "kernel/checkpoint.h"
#include "kernel/watchers.h"
#include "results/entries/entry.h"

namespace {

using buses_t = std::vector<yx_bus_rec_t*>;

buses_t all_buses() {
    buses_t buses;
    for (yx_bus_rec_t* bus = kol_ext.start_sim_bus; bus != nullptr; bus = bus->next) buses.push_back(bus);
    for (yx_bus_rec_t* bus = kol_ext.start_forgotten_bus; bus != nullptr; bus = bus->next)
        buses.push_back(bus);
    return buses;
}

void drop_entries(yx_signal_rec_t*& newest) {
    while (newest != nullptr) kol_drop_signal(tm_list_take(newest, newest));
}

void drop_all() {
    drop_entries(kol_ext.list_signal);
    drop_entries(kol_ext.trace_signal);
    while (kol_ext.start_sim_bus != nullptr) kol_forget_bus(kol_ext.start_sim_bus);
    kol_remove_all_breaks();
    kol_remove_bus_breaks();
    tm_list_clear(kol_ext.start_probe_signal, kol_ext.last_probe_signal);
}

// ---- signals

void archive_signal(tm_archive_t& archive, const buses_t& buses, yx_signal_rec_t& signal) {
    const auto place = std::ranges::find(buses, signal.bus) - buses.begin();
    auto bus = signal.bus == nullptr ? std::uint32_t{0} : static_cast<std::uint32_t>(place + 1);
    archive(signal.name, signal.cur_sim_path, signal.base_number, bus);
    kol_archive_net(archive, signal.net);
    if (archive.is_reading()) signal.bus = bus == 0 || bus > buses.size() ? nullptr : buses[bus - 1];
}

void write_signals(tm_archive_t& archive, const buses_t& buses, yx_signal_rec_t* first) {
    std::size_t count = 0;
    for (const yx_signal_rec_t* signal = first; signal != nullptr; signal = signal->next) ++count;
    archive.count(count);
    for (yx_signal_rec_t* signal = first; signal != nullptr; signal = signal->next)
        archive_signal(archive, buses, *signal);
}

template <typename Append>
void read_signals(tm_archive_t& archive, const buses_t& buses, Append append) {
    const std::size_t count = archive.count(0);
    for (std::size_t k = 0; k < count && archive.is_sound(); ++k) {
        yx_signal_rec_t read;
        archive_signal(archive, buses, read);
        if (read.bus == nullptr && read.net == nullptr) continue;
        auto signal = kol_make_signal({read.name, read.bus, read.net}, read.base_number);
        signal->cur_sim_path = read.cur_sim_path;
        append(std::move(signal));
    }
}

void archive_entries(tm_archive_t& archive, const buses_t& buses, yx_signal_rec_t*& newest) {
    if (!archive.is_reading()) return write_signals(archive, buses, kol_first_of(newest));
    read_signals(archive, buses, [&newest](auto signal) { tm_list_append(std::move(signal), newest); });
}

// ---- buses

void archive_bus(tm_archive_t& archive, yx_bus_rec_t& bus) {
    archive(bus.name, bus.cur_sim_path, bus.combine, bus.forgotten);
}

buses_t read_buses(tm_archive_t& archive) {
    buses_t buses;
    const std::size_t count = archive.count(0);
    for (std::size_t k = 0; k < count && archive.is_sound(); ++k) {
        auto bus = std::make_unique<yx_bus_rec_t>();
        archive_bus(archive, *bus);
        buses.push_back(bus.get());
        if (bus->forgotten)
            tm_list_append(std::move(bus), kol_ext.start_forgotten_bus, kol_ext.last_forgotten_bus);
        else
            tm_list_append(std::move(bus), kol_ext.start_sim_bus, kol_ext.last_sim_bus);
    }
    return buses;
}

buses_t archive_buses(tm_archive_t& archive) {
    buses_t buses = archive.is_reading() ? read_buses(archive) : all_buses();
    if (!archive.is_reading()) {
        archive.count(buses.size());
        for (yx_bus_rec_t* bus : buses) archive_bus(archive, *bus);
    }
    for (yx_bus_rec_t* bus : buses) {
        yx_signal_rec_t* last = nullptr;
        if (!archive.is_reading())
            write_signals(archive, buses, bus->signal);
        else
            read_signals(archive, buses,
                         [&](auto signal) { tm_list_append(std::move(signal), bus->signal, last); });
    }
    return buses;
}

// ---- breaks and probes

void archive_break(tm_archive_t& archive, yx_break_signal_rec_t& record) {
    archive(record.break_name, record.state, record.cur_sim_path, record.net_type);
    kol_archive_net(archive, record.net);
}

void archive_breaks(tm_archive_t& archive) {
    std::vector<yx_break_signal_rec_t*> breaks;
    for (auto* record = kol_ext.break_signal; record != nullptr; record = record->previous)
        breaks.insert(breaks.begin(), record);
    const std::size_t count = archive.count(breaks.size());
    for (yx_break_signal_rec_t* record : breaks) archive_break(archive, *record);
    for (std::size_t k = breaks.size(); k < count && archive.is_sound(); ++k) {
        auto record = std::make_unique<yx_break_signal_rec_t>();
        archive_break(archive, *record);
        if (record->net == nullptr) continue;
        record->net->UU.U1.break_signal = record.get();
        tm_list_append(std::move(record), kol_ext.break_signal);
    }
}

void archive_bus_breaks(tm_archive_t& archive) {
    kol_watchers.bus_breaks.resize(archive.count(kol_watchers.bus_breaks.size()));
    for (kol_bus_break_t& bus : kol_watchers.bus_breaks) {
        archive(bus.name, bus.cur_sim_path, bus.value, bus.values);
        bus.bits.resize(archive.count(bus.bits.size()));
        for (yx_net_record_t*& net : bus.bits) kol_archive_net(archive, net);
    }
    kol_set_watchers();
}

void archive_probe(tm_archive_t& archive, kol_probe_signal_rec_t& probe) {
    archive(probe.probe_name, probe.cur_sim_path, probe.object_id, probe.vertex);
    kol_archive_net(archive, probe.net);
}

void archive_probes(tm_archive_t& archive) {
    std::size_t present = 0;
    for (auto* probe = kol_ext.start_probe_signal; probe != nullptr; probe = probe->next) ++present;
    const std::size_t count = archive.count(present);
    for (auto* probe = kol_ext.start_probe_signal; probe != nullptr; probe = probe->next)
        archive_probe(archive, *probe);
    for (std::size_t k = present; k < count && archive.is_sound(); ++k) {
        auto probe = std::make_unique<kol_probe_signal_rec_t>();
        archive_probe(archive, *probe);
        if (probe->net != nullptr)
            tm_list_append(std::move(probe), kol_ext.start_probe_signal, kol_ext.last_probe_signal);
    }
    if (archive.is_reading()) kol_hang_probes();
}

}  // namespace

void kol_archive_observation(tm_archive_t& archive) {
    if (archive.is_reading()) drop_all();
    const buses_t buses = archive_buses(archive);
    archive_entries(archive, buses, kol_ext.list_signal);
    archive_entries(archive, buses, kol_ext.trace_signal);
    archive_breaks(archive);
    archive_bus_breaks(archive);
    archive_probes(archive);
}

// What has to be built or read anew, and what a run has changed.
#include "kernel/cell_records.h"

#include <algorithm>
#include <limits>

#include "kernel/cell_build.h"
#include "kernel/watchers.h"

namespace {

constexpr std::int32_t last_time = std::numeric_limits<std::int32_t>::max();

bool spikes_count() { return kol_ext.spike_on || kol_ext.spiked; }

// By these models the pins of one net are shown different states, or times that are past, so that registers
// have to see each change themselves.
bool registers_are_called() {
    return spikes_count() && (kol_ext.spike_model == kol_suppress || kol_ext.spike_model == kol_pessimistic);
}

void build_when_changed() {
    kol_cells_made_t& made = kol_cells.made;
    const bool has_registers = !registers_are_called() && !made.pins_differ;
    if (made.is_made && made.has_registers == has_registers &&
        made.sim_range_type == kol_ext.sim_range_type && made.timing_ar == kol_ext.timing_ar)
        return;
    kol_bring_records_up();
    const bool pins_differ = made.pins_differ;
    const bool is_possible = kol_build_cells(has_registers);
    made = {true, is_possible, false, has_registers, pins_differ, kol_ext.sim_range_type, kol_ext.timing_ar};
}

void begin_wheel() {
    const std::int64_t longest = std::min<std::int64_t>(2 * std::int64_t{kol_max_delay}, last_time);
    kol_cells.looks_for_spikes = kol_ext.spike_on;
    kol_cells.holds_pins = spikes_count() && kol_ext.spike_model == kol_suppress;
    kol_cells.made.pins_differ = kol_cells.made.pins_differ || kol_cells.holds_pins;
    kol_cells.is_ranked =
        kol_cells.priorities.size() > 1 || (spikes_count() && kol_ext.spike_model == kol_pessimistic);
    kol_cells.is_plain = !kol_cells.is_ranked && !spikes_count();
    kol_cells.pending.clear();
    kol_cells.wheel.begin(
        kol_ext.cur_time, static_cast<std::int32_t>(longest), kol_first_force() << kol_what_shift,
        kol_first_driver() << kol_what_shift,
        std::max<std::uint32_t>(1, static_cast<std::uint32_t>(kol_cells.priorities.size())));
}

void mark_breaks() {
    for (const auto* record = kol_ext.break_signal; record != nullptr; record = record->previous)
        kol_cells.cell[static_cast<std::size_t>(record->net->self)].flags |= kol_cell_breaks;
    for (const kol_bus_break_t& bus : kol_watchers.bus_breaks)
        for (const yx_net_record_t* net : bus.bits)
            kol_cells.cell[static_cast<std::size_t>(net->self)].flags |= kol_cell_breaks;
}

void write_back(yx_net_record_t& root, kol_cell_t& cell) {
    if ((cell.flags & kol_cell_single) != 0) {
        yx_signal_state_rec& seen = kol_pin_state(*kol_drivers_of(root)[0].pin, root);
        seen.state = cell.seen;
        seen.time = cell.seen_time;
    }
    kol_write_changed_net(static_cast<std::uint32_t>(root.self));
    cell.flags &= static_cast<std::uint8_t>(~(kol_cell_listed | kol_cell_forced));
}

}  // namespace

bool kol_prepare_cells() {
    build_when_changed();
    if (!kol_cells.made.is_possible) return false;
    if (!kol_cells.made.has_states) kol_read_cell_states();
    kol_cells.made.has_states = true;
    mark_breaks();
    if (kol_ext.spike_on) kol_cells.spike_delays.resize(kol_cells.cell.size());
    begin_wheel();
    return true;
}

void kol_write_back_cells() {
    for (const std::uint32_t at : kol_cells.listed)
        write_back(*yx_ptrto_net_rec(static_cast<std::int32_t>(at)), kol_cells.cell[at]);
    kol_cells.listed.clear();
}

void kol_note_data_time(const kol_register_t& clocked) {
    const yx_inst_record_t& inst = *kol_cells.called[clocked.clock].pin->instance_ptr;
    const std::int32_t time = kol_shown_to_fed(clocked.data, kol_cells.cell[clocked.data]).time;
    clocked.note_data_time(inst, std::max(time, 0));
}

void kol_bring_records_up() {
    for (const std::uint32_t at : kol_cells.stale) {
        if (!kol_cells.is_stale[at]) continue;
        kol_write_fed_pins(kol_cells.cell[at], *yx_ptrto_net_rec(static_cast<std::int32_t>(at)));
        kol_cells.is_stale[at] = false;
    }
    kol_cells.stale.clear();
    if (!kol_cells.made.is_made || !kol_cells.made.has_states) return;
    for (const kol_register_t& clocked : kol_cells.registers) kol_note_data_time(clocked);
}

void kol_write_changed_net(std::uint32_t at) {
    const kol_cell_t& cell = kol_cells.cell[at];
    yx_net_u1_t& net = yx_ptrto_net_rec(static_cast<std::int32_t>(at))->UU.U1;
    const bool is_written = net.cur_state.time == cell.cur_time && net.cur_state.state == cell.cur &&
                            net.old_state.state == cell.old;
    if (is_written) return;
    kol_write_net(cell, net);
    kol_mark_stale(at);
}

// Nets to cells, instances to gates and registers, fed pins to entries.
#include "kernel/cell_build.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "kernel/model.h"
#include "kernel/setup_instances.h"
#include "kernel/spikes.h"
#include "kernel/state.h"
#include "kernel/time.h"

namespace {

constexpr std::size_t most_inputs = 4;
constexpr std::size_t most_tables = 256, most_ranks = 256;

std::size_t index_of(const yx_net_record_t& net) { return static_cast<std::size_t>(net.self); }
std::size_t index_of(const yx_inst_record_t& inst) { return static_cast<std::size_t>(inst.self); }

// The net of a pin on one bit, none of any other.
yx_net_record_t* net_of(const yx_pin_record_t& pin) {
    if (pin.pin_end != 0) return nullptr;
    if (pin.net_ptr->net_type != YX_TSTD_BUS) return pin.net_ptr;
    return yx_ptrto_net_rec(kol_member_index(pin, pin.pin_start));
}

yx_net_record_t* root_of(const yx_pin_record_t& pin) {
    yx_net_record_t* const net = net_of(pin);
    return net == nullptr ? nullptr : kol_root_net(net);
}

// ---- what an instance is

enum class way : std::uint8_t { handlers, gate, clocked };

struct instance_t {
    way kind = way::handlers;
    std::uint32_t index = 0;  // of the cell, the timed gate or the register
    bool is_timed = false;
};

struct delays_t {
    std::int32_t rise = 0, fall = 0;
};

struct builder_t {
    std::vector<instance_t> instances = std::vector<instance_t>(index_of_last());
    std::unordered_map<std::uint64_t, std::uint8_t> table_of;
    bool with_registers = true;

    static std::size_t index_of_last() { return static_cast<std::size_t>(yx_sext.max_inst_cur) + 1; }
};

std::optional<std::size_t> range_of(const yx_inst_record_t& inst) {
    if (inst.timing_index < 0 || inst.timing_index > yx_timing_indexes) return {};
    const std::int16_t range = inst.timing_index == 0
                                   ? kol_ext.sim_range_type
                                   : kol_ext.timing_ar[static_cast<std::size_t>(inst.timing_index - 1)];
    if (range < 1 || range > 3) return {};
    return static_cast<std::size_t>(range - 1);
}

// The delays of a bus record are not defined, so there the pin's own delays count alone.
delays_t output_delays(const yx_pin_record_t& pin, std::size_t range) {
    const bool is_bus = pin.net_ptr->net_type == YX_TSTD_BUS;
    const yx_net_u1_t& net = pin.net_ptr->UU.U1;
    return {kol_sum_of_delays(is_bus ? 0 : net.rise[range], pin.rise[range]),
            kol_sum_of_delays(is_bus ? 0 : net.fall[range], pin.fall[range])};
}

// By "0", "1", another value; the input's delays are chosen by the value that caused the change.
using three_delays = std::array<std::int32_t, 3>;
three_delays delays_through(const delays_t& output, const delays_t& input, bool is_inverted) {
    const auto sum = [&](std::int16_t value, std::int16_t cause) {
        return kol_sum_of_delays(kol_delay_of(value, output.rise, output.fall),
                                 kol_delay_of(cause, input.rise, input.fall));
    };
    return {sum(kol_v0, is_inverted ? kol_v1 : kol_v0), sum(kol_v1, is_inverted ? kol_v0 : kol_v1),
            sum(kol_vx, kol_vx)};
}

bool are_possible(const three_delays& delays) {
    return std::ranges::all_of(delays, [](std::int32_t delay) { return delay >= 0; });
}
bool are_short(const three_delays& delays) {
    return std::ranges::all_of(delays, [](std::int32_t delay) { return delay <= UINT16_MAX; });
}

// ---- tables

std::int8_t state_of(std::int16_t value, const yx_pin_record_t& output) {
    std::int8_t state = 0;
    kol_valdrive_to_state(value, output.drive_array[static_cast<std::size_t>(value)], state);
    return state;
}

std::array<std::int8_t, 256> make_table(kol_value_of_t value_of, std::size_t inputs,
                                        const yx_pin_record_t& output) {
    std::array<std::int8_t, 256> table{};
    std::array<std::int16_t, most_inputs> values{};
    for (std::size_t in = 0; in < table.size(); ++in) {
        for (std::size_t k = 0; k < inputs; ++k) values[k] = static_cast<std::int16_t>(in >> 2 * k & 3);
        table[in] = state_of(value_of(std::span(values).first(inputs)), output);
    }
    return table;
}

// Tables are few: functions, numbers of inputs and drives that the design has.
std::optional<std::uint8_t> table_for(builder_t& b, kol_value_of_t value_of, std::size_t inputs,
                                      const yx_pin_record_t& output) {
    std::uint64_t key = reinterpret_cast<std::uintptr_t>(value_of);
    key = key << 3 | inputs;
    for (const std::int16_t drive : output.drive_array)
        key = key << 3 | static_cast<std::uint64_t>(drive & 7);
    const auto [at, is_new] = b.table_of.try_emplace(key, std::uint8_t{0});
    if (!is_new) return at->second;
    if (kol_cells.table.size() == most_tables) {
        b.table_of.erase(at);
        return {};
    }
    at->second = static_cast<std::uint8_t>(kol_cells.table.size());
    kol_cells.table.push_back(make_table(value_of, inputs, output));
    return at->second;
}

std::int16_t same(std::span<const std::int16_t> values) { return values[0]; }
std::int16_t inverse(std::span<const std::int16_t> values) { return kol_nand_value(kol_v1, values[0]); }

// ---- gates and registers

struct pins_t {
    std::vector<yx_pin_record_t*> inputs;
    yx_pin_record_t* output = nullptr;
    std::vector<yx_net_record_t*> roots;  // of the inputs
};

bool is_single_driver(const yx_pin_record_t& pin) {
    const yx_net_record_t* const root = root_of(pin);
    return root != nullptr && (kol_cells.cell[index_of(*root)].flags & kol_cell_single) != 0 &&
           kol_drivers_of(*root)[0].pin == &pin;
}

// False where the instance's pins do not fit the short way.
bool collect(const yx_inst_record_t& inst, pins_t& pins) {
    for (yx_pin_record_t* pin = inst.first_pin_ptr; pin != nullptr; pin = pin->next_pin_inst_ptr) {
        if (pin->io_type == YX_IO_INPUT) {
            if (pin->pin_hdler == nullptr || root_of(*pin) == nullptr) return false;
            pins.inputs.push_back(pin);
            pins.roots.push_back(root_of(*pin));
        } else if (pin->io_type == YX_IO_OUTPUT && pins.output == nullptr) {
            pins.output = pin;
        } else {
            return false;
        }
    }
    std::ranges::sort(pins.roots);
    return pins.output != nullptr && is_single_driver(*pins.output) && !pins.inputs.empty() &&
           std::ranges::adjacent_find(pins.roots) == pins.roots.end();
}

void put_delays(kol_cell_t& cell, const three_delays& delays) {
    for (std::size_t k = 0; k < delays.size(); ++k) cell.delay[k] = static_cast<std::uint16_t>(delays[k]);
}

instance_t make_gate(builder_t& b, kol_value_of_t value_of, const pins_t& pins, std::size_t range) {
    if (pins.inputs.size() > most_inputs) return {};
    const delays_t output = output_delays(*pins.output, range);
    std::vector<three_delays> delays;
    for (const yx_pin_record_t* pin : pins.inputs)
        delays.push_back(delays_through(output, {pin->rise[range], pin->fall[range]}, false));
    if (!std::ranges::all_of(delays, are_possible)) return {};
    const auto table = table_for(b, value_of, pins.inputs.size(), *pins.output);
    if (!table) return {};
    const auto at = static_cast<std::uint32_t>(root_of(*pins.output)->self);
    kol_cells.cell[at].table = *table;
    if (std::ranges::adjacent_find(delays, std::not_equal_to{}) == delays.end() && are_short(delays[0])) {
        put_delays(kol_cells.cell[at], delays[0]);
        return {way::gate, at, false};
    }
    const auto first = static_cast<std::uint32_t>(kol_cells.timed.size());
    for (const three_delays& of_pin : delays)
        kol_cells.timed.push_back({at, {of_pin[0], of_pin[1], of_pin[2]}});
    return {way::gate, first, true};
}

instance_t make_register(builder_t& b, const kol_short_way_t& plan, const pins_t& pins, std::size_t range) {
    const yx_pin_record_t& clock = *plan.clock;
    if (!b.with_registers || pins.inputs.size() != 2 || pins.output != plan.output) return {};
    const three_delays delays = delays_through(output_delays(*pins.output, range),
                                               {clock.rise[range], clock.fall[range]}, plan.is_inverted);
    const auto table = table_for(b, plan.is_inverted ? inverse : same, 1, *pins.output);
    if (!table || !are_possible(delays) || !are_short(delays)) return {};
    const auto at = static_cast<std::uint32_t>(root_of(*pins.output)->self);
    kol_cells.cell[at].table = *table;
    put_delays(kol_cells.cell[at], delays);
    kol_cells.registers.push_back({at, static_cast<std::uint32_t>(root_of(*plan.data)->self),
                                   plan.setup[range], plan.active,
                                   static_cast<std::uint32_t>(kol_cells.called.size()), plan.note_data_time});
    kol_cells.called.push_back({const_cast<yx_pin_record_t*>(plan.clock), net_of(*plan.clock)});
    return {way::clocked, static_cast<std::uint32_t>(kol_cells.registers.size() - 1), false};
}

instance_t make_instance(builder_t& b, const yx_inst_record_t& inst) {
    const kol_model_t* const model = kol_model_of(inst);
    if (model == nullptr || model->short_way == nullptr) return {};
    const kol_short_way_t plan = model->short_way(inst);
    const auto range = range_of(inst);
    pins_t pins;
    if (!range || (plan.value_of == nullptr && plan.clock == nullptr) || !collect(inst, pins)) return {};
    return plan.value_of != nullptr ? make_gate(b, plan.value_of, pins, *range)
                                    : make_register(b, plan, pins, *range);
}

// ---- nets

bool is_single(const yx_net_record_t& root) {
    if (root.UU.U1.nb_of_driver != 1 || root.UU.U1.cur_state.fixed) return false;
    if (kol_drivers_of(root)[0].pin->io_type != YX_IO_OUTPUT) return false;
    return std::ranges::all_of(kol_fan_out_of(root),
                               [](const kol_pin_link_t& fed) { return fed.pin->io_type == YX_IO_INPUT; });
}

std::uint8_t flags_of(const yx_net_record_t& root) {
    std::uint8_t flags = 0;
    if (is_single(root)) flags |= kol_cell_single;
    if (root.UU.U1.cur_state.fixed) flags |= kol_cell_fixed;
    if (root.UU.U1.history != nullptr) flags |= kol_cell_observed;
    for (const kol_pin_link_t& fed : kol_fan_out_of(root))
        if (fed.pin->io_type != YX_IO_INPUT) flags |= kol_cell_terminal;
    return flags;
}

template <typename Visit>
void for_each_root(Visit visit) {
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i)
        if (yx_net_record_t& net = *yx_ptrto_net_rec(i); net.net_type == YX_TSTANDARD)
            visit(net, kol_cells.cell[static_cast<std::size_t>(i)]);
}

template <typename Visit>
void for_each_instance(Visit visit) {
    for (std::int32_t i = 1; i <= yx_sext.max_inst_cur; ++i) visit(*yx_ptrto_inst_rec(i));
}

void mirror(std::int32_t net) {
    kol_cells.cell[index_of(*kol_root_net(yx_ptrto_net_rec(net)))].flags |= kol_cell_mirrored;
}

// Handlers read the records of the nets that their instance touches.
void mirror_nets_of(const yx_inst_record_t& inst) {
    for (yx_pin_record_t* pin = inst.first_pin_ptr; pin != nullptr; pin = pin->next_pin_inst_ptr)
        if (const yx_net_record_t* net = net_of(*pin); net != nullptr)
            mirror(net->self);
        else
            for (std::int32_t bit = pin->pin_start; bit <= pin->pin_end; ++bit)
                mirror(kol_member_index(*pin, bit));
}

kol_fed_t entry(kol_fed_kind kind, std::size_t index, std::size_t position) {
    return {static_cast<std::uint32_t>(kind) | static_cast<std::uint32_t>(position) << 4 |
            static_cast<std::uint32_t>(index) << 6};
}

// The position of an input among those of its gate.
std::uint32_t position_of(const yx_pin_record_t& input) {
    std::uint32_t position = 0;
    for (const yx_pin_record_t* pin = input.instance_ptr->first_pin_ptr; pin != &input;
         pin = pin->next_pin_inst_ptr)
        position += pin->io_type == YX_IO_INPUT ? 1 : 0;
    return position;
}

void add_entry(kol_fed_t fed, const yx_pin_record_t& pin) {
    kol_cells.fed.push_back(fed);
    kol_cells.fed_pin.push_back(pin.self);
}

void add_fed(const instance_t& inst, const kol_pin_link_t& fed) {
    if (inst.kind == way::handlers) {
        add_entry(entry(kol_fed_kind::handler, kol_cells.called.size(), 0), *fed.pin);
        kol_cells.called.push_back(fed);
    } else if (inst.kind == way::gate) {
        const std::uint32_t position = position_of(*fed.pin);
        add_entry(entry(inst.is_timed ? kol_fed_kind::timed : kol_fed_kind::gate,
                        inst.index + (inst.is_timed ? position : 0), position),
                  *fed.pin);
    } else if (root_of(*fed.pin)->self != static_cast<std::int32_t>(kol_cells.registers[inst.index].data)) {
        add_entry(entry(kol_fed_kind::clock, inst.index, 0), *fed.pin);
    }
}

void add_fed_pins(const builder_t& b, const yx_net_record_t& root, kol_cell_t& cell) {
    const std::size_t first = kol_cells.fed.size();
    for (const kol_pin_link_t& fed : kol_fan_out_of(root))
        if (fed.pin->pin_hdler != nullptr && fed.pin->instance_ptr != nullptr)
            add_fed(b.instances[index_of(*fed.pin->instance_ptr)], fed);
    cell.first_fed = kol_cells.fed.size() == first ? 0 : static_cast<std::uint32_t>(first);
    if (cell.first_fed != 0) kol_cells.fed.back().bits |= 8;
}

three_delays spike_delays_of(const yx_pin_record_t& pin, const yx_net_record_t& root) {
    return {kol_spike_delay(pin, root, kol_v0), kol_spike_delay(pin, root, kol_v1),
            kol_spike_delay(pin, root, kol_vx)};
}

kol_spike_delays_t spike_delays_of(const yx_net_record_t& root, const kol_cell_t& cell) {
    kol_spike_delays_t delays;
    if ((cell.flags & kol_cell_single) != 0)
        std::ranges::copy(spike_delays_of(*kol_drivers_of(root)[0].pin, root), delays.driver);
    delays.longest_fed = kol_spike_delays_t::nothing_fed;
    for (const kol_pin_link_t& fed : kol_fan_out_of(root)) {
        const three_delays of_pin = spike_delays_of(*fed.pin, root);
        if (delays.longest_fed == kol_spike_delays_t::nothing_fed) {
            std::ranges::copy(of_pin, delays.fed);
            delays.longest_fed = 0;
        }
        delays.are_fed_alike = delays.are_fed_alike && std::ranges::equal(of_pin, delays.fed);
        delays.longest_fed = std::max(delays.longest_fed, std::ranges::max(of_pin));
    }
    return delays;
}

// False: there are more than ranks.
bool collect_priorities() {
    std::vector<std::int16_t>& found = kol_cells.priorities;
    for_each_root([&](const yx_net_record_t& root, const kol_cell_t&) {
        for (const kol_pin_link_t& link : kol_pins_of(root)) {
            const std::int16_t priority = link.pin->pin_hdl_priority;
            if (link.pin->io_type == YX_IO_INPUT || (!found.empty() && found.back() == priority)) continue;
            const auto at = std::ranges::lower_bound(found, priority);
            if (at == found.end() || *at != priority) found.insert(at, priority);
        }
    });
    return found.size() < most_ranks;
}

void build_ranks() {
    if (kol_cells.priorities.size() < 2) return;
    kol_cells.rank.assign(kol_cells.cell.size(), 0);
    for_each_root([](const yx_net_record_t& root, const kol_cell_t& cell) {
        if ((cell.flags & kol_cell_single) == 0) return;
        kol_cells.rank[index_of(root)] = kol_rank_of(kol_drivers_of(root)[0].pin->pin_hdl_priority);
    });
}

}  // namespace

void kol_take_spike_delays(std::uint32_t at) {
    const yx_net_record_t& root = *yx_ptrto_net_rec(static_cast<std::int32_t>(at));
    kol_cells.spike_delays[at] = spike_delays_of(root, kol_cells.cell[at]);
}

bool kol_build_cells(bool with_registers) {
    kol_cells = {};
    kol_cells.cell.assign(static_cast<std::size_t>(yx_sext.max_net_cur) + 1, {});
    kol_cells.is_stale.assign(kol_cells.cell.size(), false);
    kol_cells.fed_pin.assign(1, 0);
    kol_cells.fed.assign(1, {static_cast<std::uint32_t>(kol_fed_kind::none) | 8});
    for_each_root([](const yx_net_record_t& root, kol_cell_t& cell) { cell.flags = flags_of(root); });
    if (!collect_priorities()) return false;
    build_ranks();
    builder_t b;
    b.with_registers = with_registers;
    for_each_instance([&](const yx_inst_record_t& inst) {
        b.instances[index_of(inst)] = make_instance(b, inst);
        if (b.instances[index_of(inst)].kind == way::handlers) mirror_nets_of(inst);
    });
    for_each_root([&](const yx_net_record_t& root, kol_cell_t& cell) { add_fed_pins(b, root, cell); });
    return true;
}

namespace {

// What the fed pins were shown where that is not what the net took.  Pins that were shown different states
// are kept up one by one from here on.
void read_shown(const yx_net_record_t& root, kol_cell_t& cell) {
    const yx_signal_state_rec* first = nullptr;
    for (const kol_pin_link_t& fed : kol_fan_out_of(root)) {
        if (fed.pin->io_type != YX_IO_INPUT) continue;
        const yx_signal_state_rec& seen = kol_pin_state(*fed.pin, *fed.net);
        if (first == nullptr) first = &seen;
        if (seen.state != first->state || seen.time != first->time) cell.flags |= kol_cell_terminal;
    }
    if (first == nullptr || (first->state == cell.cur && first->time == cell.cur_time)) return;
    kol_cells.shown.resize(kol_cells.cell.size());
    kol_cells.shown[index_of(root)] = {cell.cur_time, *first};
}

}  // namespace

void kol_read_cell_states() {
    for_each_root([](yx_net_record_t& root, kol_cell_t& cell) {
        const yx_net_u1_t& net = root.UU.U1;
        cell.cur = net.cur_state.state;
        cell.old = net.old_state.state;
        cell.cur_time = net.cur_state.time;
        if (cell.cur_time >= 0) read_shown(root, cell);
        cell.newest_time = -1;
        if ((cell.flags & kol_cell_single) == 0) return;
        const yx_signal_state_rec& seen = kol_pin_state(*kol_drivers_of(root)[0].pin, root);
        cell.seen = seen.state;
        cell.seen_time = seen.time;
    });
    for_each_root([](const yx_net_record_t&, const kol_cell_t& cell) {
        for (std::uint32_t at = cell.first_fed;; ++at) {
            const kol_fed_t fed = kol_cells.fed[at];
            if (fed.is_input()) kol_put_input(fed, kol_value_of(cell.cur));
            if (fed.is_last()) return;
        }
    });
}

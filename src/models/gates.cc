// The gates: set-up, the nets and delays gathered at the first evaluation, and the evaluation itself.
#include "models/gates.h"

#include <algorithm>
#include <array>
#include <deque>
#include <new>
#include <span>
#include <vector>

#include "foundation/status.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "kernel/state.h"
#include "kernel/time.h"
#include "models/pin_nets.h"
#include "models/pin_setup.h"

namespace {

[[noreturn]] void stop(const char* what) {
    kol_trace(" KOL_GATE : %s : instance : %d : pin : %d", what,
              kol_ext.cur_inst == nullptr ? 0 : kol_ext.cur_inst->self,
              kol_ext.cur_pin == nullptr ? 0 : kol_ext.cur_pin->self);
    tm_fatal(file_data_invalid);
}

// ---- gates as they run

struct output_t {
    yx_pin_record_t* pin;
    yx_net_record_t* root;
    std::int32_t rise, fall;  // of net and pin together, in the gate's timing range
    std::int16_t priority;
    std::int8_t state[4];  // by value
};

using input_t = const yx_signal_state_rec*;

struct wide_gate_t {
    std::vector<input_t> inputs;
    std::vector<output_t> outputs;
};

// What an evaluation reads, in the instance's record and gathered at the first one: of a gate with one output
// and up to two inputs all of it, of any other the way to it.
struct gate_t {
    output_t output{};
    std::array<input_t, 2> inputs{};
    std::int32_t wide = 0;  // its place in wide_gates, from 1; 0: none
    std::int8_t nb_of_input = 0;
    std::int8_t range = 0;  // timing range of the delays; 0: not taken yet
};
static_assert(sizeof(gate_t) <= sizeof(yx_inst_record_t::run_area) &&
              alignof(gate_t) <= alignof(yx_inst_record_t));

std::deque<wide_gate_t> wide_gates;

gate_t& gate_of(yx_inst_record_t& inst) {
    return *std::launder(reinterpret_cast<gate_t*>(inst.run_area.data()));
}

wide_gate_t& wide_of(const gate_t& gate) { return wide_gates[static_cast<std::size_t>(gate.wide - 1)]; }

std::span<const input_t> inputs_of(const gate_t& gate) {
    if (gate.wide != 0) return wide_of(gate).inputs;
    return {gate.inputs.data(), static_cast<std::size_t>(gate.nb_of_input)};
}

std::span<output_t> outputs_of(gate_t& gate) {
    if (gate.wide != 0) return wide_of(gate).outputs;
    return {&gate.output, 1};
}

void gather_inputs(const yx_pin_record_t& pin, wide_gate_t& all) {
    kol_each_net_of_pin(
        pin, [&all](yx_net_record_t* net) { all.inputs.push_back(&kol_root_net(net)->UU.U1.cur_state); });
}

void gather_outputs(yx_pin_record_t& pin, wide_gate_t& all) {
    output_t output{&pin, nullptr, 0, 0, pin.pin_hdl_priority, {}};
    for (std::int16_t value = 0; value < 4; ++value)
        kol_valdrive_to_state(value, pin.drive_array[value], output.state[value]);
    kol_each_net_of_pin(pin, [&](yx_net_record_t* net) {
        output.root = kol_root_net(net);
        all.outputs.push_back(output);
    });
}

void gather(gate_t& gate, const yx_inst_record_t& inst) {
    wide_gate_t all;
    yx_pin_record_t* pin = inst.first_pin_ptr;
    for (std::int32_t k = 0; k < inst.nb_of_pin; ++k, pin = pin->next_pin_inst_ptr) {
        if (pin == nullptr) stop("missing pin");
        if (pin->io_type == YX_IO_INPUT) gather_inputs(*pin, all);
        if (pin->io_type == YX_IO_OUTPUT) gather_outputs(*pin, all);
    }
    if (all.inputs.size() <= gate.inputs.size() && all.outputs.size() == 1) {
        gate.output = all.outputs[0];
        gate.nb_of_input = static_cast<std::int8_t>(all.inputs.size());
        std::ranges::copy(all.inputs, gate.inputs.begin());
    } else {
        wide_gates.push_back(std::move(all));
        gate.wide = static_cast<std::int32_t>(wide_gates.size());
    }
}

// The delays of a bus record are not defined, so there the pin's own delays count alone.
void take_delays(gate_t& gate, std::int16_t range) {
    const auto r = static_cast<std::size_t>(range - 1);
    for (output_t& output : outputs_of(gate)) {
        const yx_net_record_t& net = *output.pin->net_ptr;
        const bool is_bus = net.net_type == YX_TSTD_BUS;
        output.rise = kol_sum_of_delays(is_bus ? 0 : net.UU.U1.rise[r], output.pin->rise[r]);
        output.fall = kol_sum_of_delays(is_bus ? 0 : net.UU.U1.fall[r], output.pin->fall[r]);
    }
    gate.range = static_cast<std::int8_t>(range);
}

// ---- set-up

bool set_up_pin(yx_pin_record_t& pin) {
    return kol_check_pin_type(pin) && kol_read_pin_delays(pin) &&
           (pin.io_type != YX_IO_OUTPUT || kol_read_pin_drive(pin));
}

void set_up() {
    if (kol_ext.cur_inst == nullptr) stop("no instance");
    new (kol_ext.cur_inst->run_area.data()) gate_t;
    yx_pin_record_t* pin = kol_ext.cur_inst->first_pin_ptr;
    for (std::int32_t k = 0; k < kol_ext.cur_inst->nb_of_pin; ++k, pin = pin->next_pin_inst_ptr) {
        if (pin == nullptr) stop("missing pin");
        if (!set_up_pin(*pin)) return;
    }
}

// ---- evaluation

using inputs_t = std::span<const input_t>;
using fold_t = std::int16_t (*)(std::int16_t, std::int16_t);

template <fold_t fold>
std::int16_t folded(inputs_t states, std::int16_t value) {
    for (const input_t state : states) value = fold(kol_value_of(state->state), value);
    return value;
}

std::int16_t and_of(inputs_t states) { return folded<kol_and_value>(states, kol_v1); }
std::int16_t nand_of(inputs_t states) { return kol_nand_value(kol_v1, and_of(states)); }
std::int16_t or_of(inputs_t states) { return folded<kol_or_value>(states, kol_v0); }
std::int16_t nor_of(inputs_t states) { return kol_nor_value(kol_v0, or_of(states)); }
std::int16_t xor_of(inputs_t states) {
    if (states.empty()) return kol_v1;
    return folded<kol_xor_value>(states.subspan(1), kol_value_of(states[0]->state));
}

template <std::int16_t (*value_of)(inputs_t)>
void evaluate() {
    yx_inst_record_t* const inst = kol_ext.cur_inst;
    if (inst == nullptr) stop("no instance");
    gate_t& gate = gate_of(*inst);
    if (gate.output.pin == nullptr && gate.wide == 0) gather(gate, *inst);
    const std::int16_t value = value_of(inputs_of(gate));
    const std::int16_t range = kol_timind(inst);
    if (range != gate.range) take_delays(gate, range);
    const std::int32_t input_delay =
        kol_delay_of(value, kol_ext.cur_pin->rise[range - 1], kol_ext.cur_pin->fall[range - 1]);
    for (const output_t& output : outputs_of(gate)) {
        const std::int32_t delay = kol_delay_of(value, output.rise, output.fall);
        kol_schedule(output.pin, output.root, output.priority, kol_sum_of_delays(delay, input_delay),
                     output.state[value]);
    }
}

}  // namespace

void kol_and_init() { set_up(); }
void kol_nand_init() { set_up(); }
void kol_or_init() { set_up(); }
void kol_nor_init() { set_up(); }
void kol_xor_init() { set_up(); }

void kol_and_i1_hdler() { evaluate<and_of>(); }
void kol_nand_i1_hdler() { evaluate<nand_of>(); }
void kol_or_i1_hdler() { evaluate<or_of>(); }
void kol_nor_i1_hdler() { evaluate<nor_of>(); }
void kol_xor_i1_hdler() { evaluate<xor_of>(); }

namespace {

template <fold_t fold>
std::int16_t folded_values(std::span<const std::int16_t> values, std::int16_t value) {
    for (const std::int16_t input : values) value = fold(input, value);
    return value;
}

}  // namespace

kol_short_way_t kol_and_short_way(const yx_inst_record_t& /*inst*/) {
    return {[](std::span<const std::int16_t> in) { return folded_values<kol_and_value>(in, kol_v1); }};
}
kol_short_way_t kol_nand_short_way(const yx_inst_record_t& /*inst*/) {
    return {[](std::span<const std::int16_t> in) {
        return kol_nand_value(kol_v1, folded_values<kol_and_value>(in, kol_v1));
    }};
}
kol_short_way_t kol_or_short_way(const yx_inst_record_t& /*inst*/) {
    return {[](std::span<const std::int16_t> in) { return folded_values<kol_or_value>(in, kol_v0); }};
}
kol_short_way_t kol_nor_short_way(const yx_inst_record_t& /*inst*/) {
    return {[](std::span<const std::int16_t> in) {
        return kol_nor_value(kol_v0, folded_values<kol_or_value>(in, kol_v0));
    }};
}
kol_short_way_t kol_xor_short_way(const yx_inst_record_t& /*inst*/) {
    return {[](std::span<const std::int16_t> in) {
        return folded_values<kol_xor_value>(in.subspan(1), in.front());
    }};
}

void kol_gate_refresh() {
    kol_refresh_pin_delays(*kol_ext.cur_inst);
    gate_of(*kol_ext.cur_inst).range = 0;
}

void kol_clear_gates() { wide_gates.clear(); }

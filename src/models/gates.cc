#include "models/gates.h"

#include <span>
#include <vector>

#include "foundation/status.h"
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

// ---- gates as they run: each one's inputs and outputs side by side, gathered when it is first evaluated

struct output_t {
    yx_pin_record_t* pin;
    yx_net_record_t* net;
    std::int32_t rise[3];  // net and pin together
    std::int32_t fall[3];
};

struct gate_t {
    bool is_gathered = false;
    std::size_t first_input = 0, nb_of_input = 0;
    std::size_t first_output = 0, nb_of_output = 0;
};

std::vector<gate_t> gates;  // by instance
std::vector<const yx_signal_state_rec*> inputs;
std::vector<output_t> outputs;

void gather_input(const yx_pin_record_t& pin) {
    kol_each_net_of_pin(pin,
                        [](yx_net_record_t* net) { inputs.push_back(&kol_root_net(net)->UU.U1.cur_state); });
}

// The delays of a bus record are not defined, so there the pin's own delays count alone.
output_t output_of(yx_pin_record_t& pin, yx_net_record_t* net) {
    output_t output{&pin, net, {}, {}};
    const yx_net_u1_t none{};
    const yx_net_u1_t& attached = pin.net_ptr->net_type == YX_TSTD_BUS ? none : pin.net_ptr->UU.U1;
    for (std::size_t range = 0; range < 3; ++range) {
        output.rise[range] = kol_sum_of_delays(attached.rise[range], pin.rise[range]);
        output.fall[range] = kol_sum_of_delays(attached.fall[range], pin.fall[range]);
    }
    return output;
}

void gather(gate_t& gate, const yx_inst_record_t& inst) {
    gate.first_input = inputs.size();
    gate.first_output = outputs.size();
    yx_pin_record_t* pin = inst.first_pin_ptr;
    for (std::int32_t k = 0; k < inst.nb_of_pin; ++k, pin = pin->next_pin_inst_ptr) {
        if (pin == nullptr) stop("missing pin");
        if (pin->io_type == 1) gather_input(*pin);
        if (pin->io_type == 2)
            kol_each_net_of_pin(*pin,
                                [pin](yx_net_record_t* net) { outputs.push_back(output_of(*pin, net)); });
    }
    gate.nb_of_input = inputs.size() - gate.first_input;
    gate.nb_of_output = outputs.size() - gate.first_output;
    gate.is_gathered = true;
}

gate_t& gate_of(const yx_inst_record_t& inst) {
    const auto at = static_cast<std::size_t>(inst.self);
    if (at >= gates.size()) gates.resize(static_cast<std::size_t>(yx_sext.max_inst_cur) + 1);
    return gates[at];
}

// ---- set-up

bool set_up_pin(yx_pin_record_t& pin) {
    return kol_check_pin_type(pin) && kol_read_pin_delays(pin) &&
           (pin.io_type != 2 || kol_read_pin_drive(pin));
}

void set_up() {
    if (kol_ext.cur_inst == nullptr) stop("no instance");
    gate_of(*kol_ext.cur_inst) = {};
    yx_pin_record_t* pin = kol_ext.cur_inst->first_pin_ptr;
    for (std::int32_t k = 0; k < kol_ext.cur_inst->nb_of_pin; ++k, pin = pin->next_pin_inst_ptr) {
        if (pin == nullptr) stop("missing pin");
        if (!set_up_pin(*pin)) return;
    }
}

// ---- evaluation

using inputs_t = std::span<const yx_signal_state_rec* const>;
using fold_t = std::int16_t (*)(std::int16_t, std::int16_t);

template <fold_t fold>
std::int16_t folded(inputs_t states, std::int16_t value) {
    for (const yx_signal_state_rec* state : states) value = fold(kol_value_of(state->state), value);
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

void schedule(const output_t& output, std::int16_t value, std::size_t range, std::int32_t input_delay) {
    std::int8_t state = 0;
    kol_valdrive_to_state(value, output.pin->drive_array[value], state);
    const std::int32_t output_delay = kol_delay_of(value, output.rise[range], output.fall[range]);
    kol_output_state(output.pin, output.net, kol_sum_of_delays(output_delay, input_delay), state);
}

template <std::int16_t (*value_of)(inputs_t)>
void evaluate() {
    if (kol_ext.cur_inst == nullptr) stop("no instance");
    gate_t& gate = gate_of(*kol_ext.cur_inst);
    if (!gate.is_gathered) gather(gate, *kol_ext.cur_inst);
    const std::int16_t value = value_of(inputs_t{inputs}.subspan(gate.first_input, gate.nb_of_input));
    const auto range = static_cast<std::size_t>(kol_timind(kol_ext.cur_inst) - 1);
    const std::int32_t input_delay =
        kol_delay_of(value, kol_ext.cur_pin->rise[range], kol_ext.cur_pin->fall[range]);
    for (const output_t& output : std::span(outputs).subspan(gate.first_output, gate.nb_of_output))
        schedule(output, value, range, input_delay);
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

void kol_gate_refresh() {
    kol_refresh_pin_delays(*kol_ext.cur_inst);
    // What was gathered is gathered again with the new delays.
    if (!outputs.empty()) kol_clear_gates();
}

void kol_clear_gates() {
    gates.clear();
    inputs.clear();
    outputs.clear();
}

// Delays of timed pins and the scheduling of their outputs.
#include "models/pin_outputs.h"

#include "kernel/queue.h"
#include "kernel/state.h"
#include "kernel/time.h"
#include "models/pin_nets.h"

namespace {

std::size_t range_index() { return static_cast<std::size_t>(kol_timind(kol_ext.cur_inst) - 1); }

}  // namespace

std::int32_t kol_input_delay(const yx_pin_record_t* pin, std::int16_t value) {
    const std::size_t r = range_index();
    return kol_delay_of(value, pin->rise[r], pin->fall[r]);
}

std::int32_t kol_output_delay(const yx_pin_record_t* pin, const yx_net_record_t* net, std::int16_t value) {
    const std::size_t r = range_index();
    if (net->net_type == YX_TSTD_BUS) return kol_delay_of(value, pin->rise[r], pin->fall[r]);
    return kol_delay_of(value, kol_sum_of_delays(net->UU.U1.rise[r], pin->rise[r]),
                        kol_sum_of_delays(net->UU.U1.fall[r], pin->fall[r]));
}

void kol_schedule_output(yx_pin_record_t* pin, std::int16_t value, std::int32_t input_delay) {
    std::int8_t state = 0;
    kol_valdrive_to_state(value, pin->drive_array[value], state);
    kol_schedule_state(pin, state, input_delay);
}

void kol_schedule_state(yx_pin_record_t* pin, std::int8_t state, std::int32_t input_delay) {
    const std::int16_t value = kol_value_of(state);
    const std::int32_t delay = kol_sum_of_delays(kol_output_delay(pin, pin->net_ptr, value), input_delay);
    kol_each_net_of_pin(*pin, [&](yx_net_record_t* net) { kol_output_state(pin, net, delay, state); });
}

// The delay by state and timing range.
#include "kernel/spikes.h"

#include "kernel/state.h"
#include "kernel/time.h"

std::int32_t kol_spike_delay(const yx_pin_record_t& pin, const yx_net_record_t& root, std::int8_t state) {
    const auto range = static_cast<std::size_t>(kol_timind(pin.instance_ptr) - 1);
    const yx_net_u1_t& net = root.UU.U1;
    return kol_delay_of(kol_value_of(state), kol_sum_of_delays(net.rise[range], pin.rise[range]),
                        kol_sum_of_delays(net.fall[range], pin.fall[range]));
}

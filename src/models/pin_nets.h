// kol: the nets that a pin reads or drives: every member net of its range for a pin that spans bits, the
// selected member for a single pin on a bus, else its own net.
#pragma once

#include "kernel/network.h"

template <typename Take>
void kol_each_net_of_pin(const yx_pin_record_t& pin, Take take) {
    if (pin.pin_end != 0)
        for (std::int32_t bit = pin.pin_start; bit <= pin.pin_end; ++bit)
            take(yx_ptrto_net_rec(kol_member_index(pin, bit)));
    else if (pin.net_ptr->net_type == YX_TSTD_BUS)
        take(yx_ptrto_net_rec(kol_member_index(pin, pin.pin_start)));
    else
        take(pin.net_ptr);
}

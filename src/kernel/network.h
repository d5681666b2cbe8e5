// kol: the network as the run sees it.  Owns, for every net tree, a flat array hanging off its root net:
// the pins that drive the tree, then the pins that it feeds, both in pre-order of the tree and within a net
// in chain order, the net's own pins before those that stand on its bus.  Also owns the bit states of the
// pins that span bits.  Built by the set-up from records whose references are filled.
#pragma once

#include <span>

#include "kernel/context.h"

struct kol_pin_link_t {
    yx_pin_record_t* pin = nullptr;
    yx_net_record_t* net = nullptr;  // the net of the tree on which the pin stands
};

// The root of the net's tree; a bus or a broken tree is fatal.
yx_net_record_t* kol_root_net(yx_net_record_t* net);
// The next net of the net tree in pre-order, none at its end.
yx_net_record_t* kol_find_next_childnet(yx_net_record_t* net);
// True when a pin on the net's chain touches this net: always, unless the pin stands on the net's bus and its
// range leaves the net out.
bool kol_pin_belongs_to_net(const yx_pin_record_t* pin, const yx_net_record_t* net);

void kol_build_network();
void kol_clear_network();

inline std::span<const kol_pin_link_t> kol_drivers_of(const yx_net_record_t& root) {
    return {root.UU.U1.link, static_cast<std::size_t>(root.UU.U1.nb_of_driver)};
}
inline std::span<const kol_pin_link_t> kol_fan_out_of(const yx_net_record_t& root) {
    return {root.UU.U1.link + root.UU.U1.nb_of_driver, static_cast<std::size_t>(root.UU.U1.nb_of_fan_out)};
}
// Both: a pin that drives without being an output stands among those that the tree feeds.
inline std::span<const kol_pin_link_t> kol_pins_of(const yx_net_record_t& root) {
    return {root.UU.U1.link, static_cast<std::size_t>(root.UU.U1.nb_of_driver + root.UU.U1.nb_of_fan_out)};
}

// Returns the pin's state to (iU, never), making bit states where the pin spans bits; a pin that spans bits
// and is not on a bus is fatal.
void kol_reset_pin_state(yx_pin_record_t& pin);
// The pin's state for one net that it touches; a pin spanning bits has one for each member of its bus.
yx_signal_state_rec& kol_bit_state(yx_pin_record_t& pin, const yx_net_record_t& net);
inline yx_signal_state_rec& kol_pin_state(yx_pin_record_t& pin, const yx_net_record_t& net) {
    return pin.pin_state.bus == nullptr ? pin.pin_state.std : kol_bit_state(pin, net);
}
// Index of the member net of a pin's bus at a bit.
inline std::int32_t kol_member_index(const yx_pin_record_t& pin, std::int32_t bit) {
    return pin.pin_net_start + pin.net_ptr->UU.U2.netind_start + bit;
}

// Net trees, their drivers and fed pins, and the bit states of pins that span bits.
#include "kernel/network.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "foundation/status.h"

namespace {

std::vector<kol_pin_link_t> links;
std::vector<std::unique_ptr<yx_signal_state_rec[]>> bit_states;

[[noreturn]] void stop(const char* what, const yx_net_record_t* net) {
    kol_trace(" KOL_NETWORK  : %s : net : %d", what, net == nullptr ? 0 : net->self);
    tm_fatal(file_data_invalid);
}

// One of the two chains on which a net's pins hang.
struct chain_t {
    yx_pin_record_t* yx_net_record_t::*first;
    yx_pin_record_t* yx_pin_record_t::*next;
};
constexpr chain_t chain_in{&yx_net_record_t::first_pin_in_ptr, &yx_pin_record_t::next_pin_in_ptr};
constexpr chain_t chain_out{&yx_net_record_t::first_pin_out_ptr, &yx_pin_record_t::next_pin_out_ptr};

// Pins that stand on a bus, sorted by the member net that they touch, in chain order within a net.
struct touch_t {
    std::int32_t net_index;
    yx_pin_record_t* pin;
};

std::int32_t first_bit(const yx_pin_record_t& pin) { return pin.pin_start; }
std::int32_t last_bit(const yx_pin_record_t& pin) { return pin.pin_end != 0 ? pin.pin_end : pin.pin_start; }

std::vector<touch_t> touches_of_buses(const chain_t& chain) {
    std::vector<touch_t> touches;
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        yx_net_record_t* bus = yx_ptrto_net_rec(i);
        if (bus->net_type != YX_TSTD_BUS) continue;
        for (yx_pin_record_t* pin = bus->*chain.first; pin != nullptr; pin = pin->*chain.next)
            for (std::int32_t bit = first_bit(*pin); bit <= last_bit(*pin); ++bit)
                touches.push_back({kol_member_index(*pin, bit), pin});
    }
    std::ranges::stable_sort(touches, {}, &touch_t::net_index);
    return touches;
}

// Calls take(pin) for every pin that belongs to the net.
template <typename Take>
void each_pin(yx_net_record_t* net, const chain_t& chain, const std::vector<touch_t>& touches, Take take) {
    bool bus_pin_met = false;
    for (yx_pin_record_t* pin = net->*chain.first; pin != nullptr; pin = pin->*chain.next) {
        bus_pin_met = bus_pin_met || pin->net_ptr->net_type == YX_TSTD_BUS;
        if (kol_pin_belongs_to_net(pin, net)) take(pin);
    }
    if (bus_pin_met) return;  // the net's own chain leads through its bus's pins
    for (const touch_t& touch : std::ranges::equal_range(touches, net->self, {}, &touch_t::net_index))
        if (kol_pin_belongs_to_net(touch.pin, net)) take(touch.pin);
}

std::int32_t collect_pins(yx_net_record_t* root, const chain_t& chain, const std::vector<touch_t>& touches) {
    const std::size_t before = links.size();
    for (yx_net_record_t* net = root; net != nullptr; net = kol_find_next_childnet(net))
        each_pin(net, chain, touches, [net](yx_pin_record_t* pin) { links.push_back({pin, net}); });
    return static_cast<std::int32_t>(links.size() - before);
}

// The roots' links were collected in index order, so they follow each other in that order.
void point_roots_at_links() {
    const kol_pin_link_t* link = links.data();
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        yx_net_record_t* net = yx_ptrto_net_rec(i);
        if (net->net_type != YX_TSTANDARD) continue;
        net->UU.U1.link = link;
        link += net->UU.U1.nb_of_driver + net->UU.U1.nb_of_fan_out;
    }
}

}  // namespace

void kol_clear_network() {
    links.clear();
    bit_states.clear();
}

void kol_build_network() {
    links.clear();
    const std::vector<touch_t> in = touches_of_buses(chain_in);
    const std::vector<touch_t> out = touches_of_buses(chain_out);
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        yx_net_record_t* net = yx_ptrto_net_rec(i);
        if (net->net_type != YX_TSTANDARD) continue;
        net->UU.U1.nb_of_driver = collect_pins(net, chain_out, out);
        net->UU.U1.nb_of_fan_out = collect_pins(net, chain_in, in);
    }
    point_roots_at_links();
}

void kol_reset_pin_state(yx_pin_record_t& pin) {
    pin.pin_state.std = {};
    if (pin.pin_end == 0) return;
    if (pin.net_ptr->net_type != YX_TSTD_BUS) stop("a pin spans bits of a net that is no bus", pin.net_ptr);
    if (pin.pin_state.bus == nullptr) {
        bit_states.push_back(std::make_unique<yx_signal_state_rec[]>(yx_max_bus_bits));
        pin.pin_state.bus = bit_states.back().get();
    }
    std::fill_n(pin.pin_state.bus, yx_max_bus_bits, yx_signal_state_rec{});
}

yx_signal_state_rec& kol_bit_state(yx_pin_record_t& pin, const yx_net_record_t& net) {
    const std::int16_t position = net.UU.U1.posinbus;
    if (position < 1 || position > yx_max_bus_bits || pin.pin_state.bus == nullptr)
        stop("position in bus", &net);
    return pin.pin_state.bus[position - 1];
}

yx_net_record_t* kol_root_net(yx_net_record_t* net) {
    if (net == nullptr) stop("no net", net);
    yx_net_record_t* father = net->UU.U1.father_net_ptr;
    if (net->net_type == YX_TSTANDARD && father == nullptr) return net;
    if (net->net_type != YX_TSUB_NET || father == nullptr) stop("no root of a net tree", net);
    while (father->UU.U1.father_net_ptr != nullptr) father = father->UU.U1.father_net_ptr;
    return father;
}

yx_net_record_t* kol_find_next_childnet(yx_net_record_t* net) {
    if (net == nullptr || net->net_type == YX_TSTD_BUS) stop("no net of a net tree", net);
    if (net->UU.U1.first_sub_net_ptr != nullptr) return net->UU.U1.first_sub_net_ptr;
    for (; net != nullptr; net = net->UU.U1.father_net_ptr)
        if (net->UU.U1.next_sub_net_ptr != nullptr) return net->UU.U1.next_sub_net_ptr;
    return nullptr;
}

bool kol_pin_belongs_to_net(const yx_pin_record_t* pin, const yx_net_record_t* net) {
    if (pin->net_ptr->net_type != YX_TSTD_BUS) return true;
    if (pin->net_ptr != net->UU.U1.bus_ptr) stop("a pin on another bus", net);
    return net->self >= kol_member_index(*pin, first_bit(*pin)) &&
           net->self <= kol_member_index(*pin, last_bit(*pin));
}

// Memory that a design takes, delays that it has.
#include "netlist/design_limits.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>

#include "foundation/input.h"

namespace {

constexpr std::int64_t megabyte = 1 << 20;

// ---- memory

// At least this much of each kind, with what the set-up and a run add: a pin's link and place among the fed
// ones, a net's cell and its delays.
struct kind_t {
    std::int32_t yx_general_info_record_t::*count;
    std::int64_t bytes;
};
using info_t = yx_general_info_record_t;
constexpr kind_t kinds[] = {
    {&info_t::nbof_char, 1},
    {&info_t::nbof_string, sizeof(yx_string_record_t)},
    {&info_t::nbof_prop, sizeof(yx_prop_record_t)},
    {&info_t::nbof_instance, sizeof(yx_inst_record_t)},
    {&info_t::nbof_pin, sizeof(yx_pin_record_t) + 24},
    {&info_t::nbof_net, sizeof(yx_net_record_t) + 44},
    {&info_t::nbof_net_child, sizeof(yx_net_child_record_t)},
    {&info_t::nbof_pinm, sizeof(yx_pinm_record_t)},
    {&info_t::nbof_macro, sizeof(yx_macro_record_t)},
};

// ---- delays

using delay_t = std::array<std::int32_t, 3>;  // minimum, typical, maximum

struct delays_t {
    delay_t rise{}, fall{};
};

// The place of a name among the properties of pins, none for one that pins do not have.
std::int32_t place_of(const tm_string_record_t& wanted) {
    for (std::int32_t k = 0; k < yx_sext.nbof_property_pin; ++k) {
        const tm_string_record_t& name = yx_sext.property_pin[static_cast<std::size_t>(k)].name;
        if (name.len == wanted.len && tm_const_equal_string(wanted.char_, name)) return k;
    }
    return std::numeric_limits<std::int32_t>::max();
}

class delay_check {
public:
    // Of an instance: what is wrong with the pin whose number comes back, none: nothing.
    const yx_pin_record_t* wrong_pin(const yx_inst_record_t& inst) const {
        const delay_t least = least_of_inputs(inst);
        for (std::int32_t k = 0; k < inst.nb_of_pin; ++k) {
            const yx_pin_record_t& pin = *yx_ptrto_pin_rec(inst.first_pin_ind + k);
            if (pin.io_type != YX_IO_INPUT && is_negative(pin, least)) return &pin;
        }
        return nullptr;
    }

private:
    void take(const yx_pin_record_t& pin, std::int32_t place, delay_t& delay) const {
        if (place >= pin.nb_of_property) return;
        const yx_prop_record_t& value = *yx_ptrto_prop_rec(pin.first_prop + place);
        if (value.prop_type == YX_PTIME) std::ranges::copy(value.valuet, delay.begin());
    }
    delays_t delays_of(const yx_pin_record_t& pin) const {
        delays_t delays;
        take(pin, rise_, delays.rise);
        take(pin, fall_, delays.fall);
        return delays;
    }
    delay_t least_of_inputs(const yx_inst_record_t& inst) const {
        constexpr std::int32_t none = std::numeric_limits<std::int32_t>::max();
        delay_t least{none, none, none};
        for (std::int32_t k = 0; k < inst.nb_of_pin; ++k) {
            const yx_pin_record_t& pin = *yx_ptrto_pin_rec(inst.first_pin_ind + k);
            if (pin.io_type == YX_IO_OUTPUT) continue;
            const delays_t delays = delays_of(pin);
            for (std::size_t r = 0; r < least.size(); ++r)
                least[r] = std::min({least[r], delays.rise[r], delays.fall[r]});
        }
        for (std::int32_t& delay : least) delay = delay == none ? 0 : delay;
        return least;
    }
    // The delays of a bus record are not defined: there the pin's own count alone.
    bool is_negative(const yx_pin_record_t& pin, const delay_t& least) const {
        const yx_net_record_t& net = *yx_ptrto_net_rec(pin.net_ind);
        const bool is_bus = net.net_type == YX_TSTD_BUS;
        const delays_t own = delays_of(pin);
        for (std::size_t r = 0; r < least.size(); ++r)
            if (std::int64_t{own.rise[r]} + (is_bus ? 0 : net.UU.U1.rise[r]) + least[r] < 0 ||
                std::int64_t{own.fall[r]} + (is_bus ? 0 : net.UU.U1.fall[r]) + least[r] < 0)
                return true;
        return false;
    }

    std::int32_t rise_ = place_of(tm_string("RISE")), fall_ = place_of(tm_string("FALL"));
};

}  // namespace

void yxc_check_memory(const yx_general_info_record_t& info, yxc_fault_t& fault) {
    std::int64_t needed = 0;
    for (const kind_t& kind : kinds) needed += std::int64_t{info.*kind.count} * kind.bytes;
    const std::int64_t left = tm_memory_left();
    if (needed <= left) return;
    yxc_set_fault(fault, yxl_header.section, 1,
                  "its records take at least " + std::to_string(needed / megabyte) + " MB of memory, " +
                      std::to_string(left / megabyte) + " MB are left");
}

void yxc_check_delays(yxc_fault_t& fault) {
    const delay_check check;
    for (std::int32_t i = 1; i <= yx_sext.max_inst_cur && yxc_is_sound(fault); ++i) {
        const yx_pin_record_t* const pin = check.wrong_pin(*yx_ptrto_inst_rec(i));
        if (pin != nullptr)
            yxc_set_fault(fault, yxl_pins.section, pin->self,
                          "delay of pin, net and input together is negative: a change before its cause");
    }
}

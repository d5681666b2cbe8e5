// Walks over nets, instances and pins by index.
#include "netlist/walk.h"

#include "netlist/store.h"

namespace {

bool is_index(std::int32_t index, std::int32_t count) {
    return yx_sext.open_file_ok && index >= 1 && index <= count;
}

std::int32_t index_or_none(std::int32_t index, std::int32_t count) {
    return is_index(index, count) ? index : 0;
}

// A pin that a walk has reached, with its direction.
void give_pin(std::int32_t index, std::int32_t& pin, std::int16_t& io_type) {
    pin = index_or_none(index, yx_sext.max_pin_cur);
    io_type = 0;
    if (pin == 0) return;
    const yx_pin_record_t& record = *yx_ptrto_pin_rec(pin);
    yx_ptrto_net_rec(record.net_ind);
    io_type = record.io_type;
}

void first_of_chain(std::int32_t net, std::int32_t yx_net_record_t::*first, std::int32_t& pin,
                    std::int16_t& io_type) {
    const bool known = is_index(net, yx_sext.max_net_cur);
    give_pin(known ? yx_ptrto_net_rec(net)->*first : 0, pin, io_type);
}

void next_of_chain(std::int32_t yx_pin_record_t::*next, std::int32_t& pin, std::int16_t& io_type) {
    const bool known = is_index(pin, yx_sext.max_pin_cur);
    give_pin(known ? yx_ptrto_pin_rec(pin)->*next : 0, pin, io_type);
}

}  // namespace

void yxi_get_first_net(std::int32_t& net) { net = index_or_none(1, yx_sext.max_net_cur); }
void yxi_get_next_net(std::int32_t& net) { net = index_or_none(net + 1, yx_sext.max_net_cur); }
void yxi_get_first_instance(std::int32_t& instance) { instance = index_or_none(1, yx_sext.max_inst_cur); }
void yxi_get_next_instance(std::int32_t& instance) {
    instance = index_or_none(instance + 1, yx_sext.max_inst_cur);
}

void yxi_get_first_pin_of_instance(std::int32_t instance, std::int32_t& pin) {
    pin = 0;
    if (!is_index(instance, yx_sext.max_inst_cur)) return;
    const yx_inst_record_t& record = *yx_ptrto_inst_rec(instance);
    std::int16_t io_type = 0;
    if (record.nb_of_pin > 0) give_pin(record.first_pin_ind, pin, io_type);
}

void yxi_get_next_pin_of_instance(std::int32_t& pin) {
    const std::int32_t current = pin;
    pin = 0;
    if (!is_index(current, yx_sext.max_pin_cur)) return;
    const yx_inst_record_t& inst = *yx_ptrto_inst_rec(yx_ptrto_pin_rec(current)->instance_ind);
    std::int16_t io_type = 0;
    if (current + 1 < inst.first_pin_ind + inst.nb_of_pin) give_pin(current + 1, pin, io_type);
}

void yxi_get_first_pin_in_of_net(std::int32_t net, std::int32_t& pin, std::int16_t& io_type) {
    first_of_chain(net, &yx_net_record_t::first_pin_in_ind, pin, io_type);
}

void yxi_get_next_pin_in_of_net(std::int32_t& pin, std::int16_t& io_type) {
    next_of_chain(&yx_pin_record_t::next_pin_in_ind, pin, io_type);
}

void yxi_get_first_pin_out_of_net(std::int32_t net, std::int32_t& pin, std::int16_t& io_type) {
    first_of_chain(net, &yx_net_record_t::first_pin_out_ind, pin, io_type);
}

void yxi_get_next_pin_out_of_net(std::int32_t& pin, std::int16_t& io_type) {
    next_of_chain(&yx_pin_record_t::next_pin_out_ind, pin, io_type);
}

// yxi: iterators.  Walk the nets and instances of the loaded design, the pins of an instance and the pins of
// a net by index.  A walk that has nothing to give, or no further record, or no loaded design gives index 0
// (and io_type 0); so does an index outside its kind.
#pragma once

#include <cstdint>

void yxi_get_first_net(std::int32_t& net);
void yxi_get_next_net(std::int32_t& net);
void yxi_get_first_instance(std::int32_t& instance);
void yxi_get_next_instance(std::int32_t& instance);

// The pins of an instance, by rising index.
void yxi_get_first_pin_of_instance(std::int32_t instance, std::int32_t& pin);
void yxi_get_next_pin_of_instance(std::int32_t& pin);

// The pins on a net's input chain and on its output chain.  A pin whose net is none of the store's is fatal.
void yxi_get_first_pin_in_of_net(std::int32_t net, std::int32_t& pin, std::int16_t& io_type);
void yxi_get_next_pin_in_of_net(std::int32_t& pin, std::int16_t& io_type);
void yxi_get_first_pin_out_of_net(std::int32_t net, std::int32_t& pin, std::int16_t& io_type);
void yxi_get_next_pin_out_of_net(std::int32_t& pin, std::int16_t& io_type);

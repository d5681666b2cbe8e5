// kol: the value of a whole bus, as commands take and show it.
#pragma once

#include <string>
#include <vector>

#include "commands/language/command.h"
#include "kernel/bus_bits.h"

struct kol_bus_value_t {
    std::vector<yx_net_record_t*> bits;  // roots, the highest first
    std::string value;                   // a character a bit: 0, 1, x, z
};

// The bus of this name and the bits of this value, in the radix that LIST gave the bus, else hexadecimal.
kol_rejection_t kol_read_bus_value(const tm_string_record_t& name, const tm_string_record_t& value,
                                   kol_bus_value_t& bus);
// The radix that LIST gave a user bus; hexadecimal for others.
std::int16_t kol_listed_radix(const yx_bus_rec_t* bus);
// Its value now.
std::string kol_bus_value_text(const std::vector<yx_net_record_t*>& bits, std::int16_t radix);

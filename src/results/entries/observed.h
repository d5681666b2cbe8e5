// rs: what is observed, for files: each entry of the views with its full name and the nets that are its bits,
// and the texts of their values.  A bus is read from its first member, the highest bit.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "kernel/bus_bits.h"

struct rs_observed_t {
    std::string path;                    // "/u1/sum"
    std::vector<yx_net_record_t*> bits;  // roots, the highest first; one of a signal
    bool is_bus = false;
    std::int16_t radix = kol_hexadecimal;
};

// An entry, and every entry of a chain from its first one on.
rs_observed_t rs_observed_of(const yx_signal_rec_t& entry);
void rs_add_observed(const yx_signal_rec_t* first, std::vector<rs_observed_t>& observed);
// The full name of a name given at a simulation path; of a net where it is no name of a level.
std::string rs_full_name(const tm_string_record_t& name, const tm_string_record_t& sim_path,
                         const yx_net_record_t* net);

// The digits of a value, given as characters of bits: a digit of which no bit is known or high impedance is
// 'x' or 'z', a decimal number with such a bit one 'x' or 'z'.
std::string rs_value_text(std::string_view bits, std::int16_t radix);

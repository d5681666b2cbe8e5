// kol: the bits of whole buses.  Says which nets a bus has, the highest bit first: the members of a user bus
// from the first on, those of a bus of the design or the nets name[0], name[1], ... from the last on; and
// turns texts of values into states of bits.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kernel/context.h"
#include "kernel/state.h"

// Roots; buses in the bus count with their bits.
std::vector<yx_net_record_t*> kol_bits_of(const yx_bus_rec_t& bus);
// A user bus, a bus of the design or a vector of nets, in this order; bus: the user bus, or none.  False: no
// bus has this name.
bool kol_find_bits(const tm_string_record_t& name, std::vector<yx_net_record_t*>& bits, yx_bus_rec_t*& bus);

enum kol_radix : std::int16_t { kol_hexadecimal = 0, kol_binary = 1, kol_decimal = 2 };

// The radix that a letter H, B or D stands for, in either case; -1 for any other.
std::int16_t kol_radix_of_letter(char letter);
// The bits of a value, '0', '1', 'x' or 'z', the highest first.  A first letter H, B or D says the radix; a
// digit x or z stands for all its bits, and a leading one for those above.  False: no such number, or it does
// not fit.
bool kol_read_bits(std::string_view value, std::int16_t radix, std::size_t width, std::string& bits);
// The strong state of a bit, unknown for any other character than 0 and 1; of 'z' high impedance.
std::int8_t kol_state_of_bit(char bit);
// '0', '1', 'x' or 'z': the drive Z is z; the value i, the value x and the drive U are x.
constexpr char kol_bit_of_state(std::int8_t state) {
    constexpr std::string_view bits = "xxxxzzzzx0x1x0x1x0x1";  // of U, Z, R, W, S, by value i 0 x 1
    static_assert(bits.size() == kol_state_count);
    return kol_state_is_valid(state) ? bits[static_cast<std::size_t>(state)] : 'x';
}

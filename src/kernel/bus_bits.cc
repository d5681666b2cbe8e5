// Bits of buses and texts of their values.
#include "kernel/bus_bits.h"

#include <algorithm>
#include <string>

#include "kernel/lookup.h"
#include "kernel/network.h"

namespace {

constexpr std::int32_t most_bits = 1024, highest_start = 64;

void add_bits(const yx_bus_rec_t& bus, std::vector<yx_net_record_t*>& bits) {
    for (const yx_signal_rec_t* member = bus.signal; member != nullptr; member = member->next) {
        if (!member->sig_bus)
            bits.push_back(kol_root_net(member->net));
        else if (member->bus != nullptr)
            add_bits(*member->bus, bits);
    }
}

void add_members(const yx_net_record_t& bus, std::vector<yx_net_record_t*>& bits) {
    const std::int32_t count = std::abs(bus.UU.U2.net_bus_end - bus.UU.U2.net_bus_start) + 1;
    for (std::int32_t k = count; k-- > 0;)
        bits.push_back(kol_root_net(yx_ptrto_net_rec(bus.UU.U2.netind_start + k)));
}

bool find_bit(const tm_string_record_t& name, std::int32_t bit, yx_net_record_t*& net) {
    tm_string_record_t of_bit = name;
    tm_append("[" + std::to_string(bit) + "]", of_bit);
    return kol_find_net(of_bit, net) != 0 && net->net_type != YX_TSTD_BUS;
}

void add_vector(const tm_string_record_t& name, std::vector<yx_net_record_t*>& bits) {
    yx_net_record_t* net = nullptr;
    std::int32_t bit = 0;
    while (bit < highest_start && !find_bit(name, bit, net)) ++bit;
    const std::int32_t end = bit + most_bits;
    for (; bit < end && find_bit(name, bit, net); ++bit) bits.push_back(net);
    std::ranges::reverse(bits);
}

// ---- values

// -1: no digit of the radix.
int value_of_digit(char digit, int radix) {
    const std::size_t value = std::string_view("0123456789ABCDEF").find(tm_upper_case(digit));
    return value < static_cast<std::size_t>(radix) ? static_cast<int>(value) : -1;
}

bool is_unknown_digit(char digit) { return tm_upper_case(digit) == 'X' || tm_upper_case(digit) == 'Z'; }

bool add_digits(std::string_view digits, int bits_of_digit, std::string& bits) {
    for (const char digit : digits) {
        const int value = value_of_digit(digit, 1 << bits_of_digit);
        if (value < 0 && !is_unknown_digit(digit)) return false;
        const char unknown = tm_upper_case(digit) == 'X' ? 'x' : 'z';
        for (int bit = bits_of_digit; bit-- > 0;)
            bits += value < 0 ? unknown : static_cast<char>('0' + (value >> bit & 1));
    }
    return true;
}

// Bits from the lowest on: ten times the number, and a digit.
void add_decimal_digit(int digit, std::string& bits) {
    for (char& bit : bits) {
        digit += (bit - '0') * 10;
        bit = static_cast<char>('0' + digit % 2);
        digit /= 2;
    }
    for (; digit > 0; digit /= 2) bits += static_cast<char>('0' + digit % 2);
}

bool read_decimal(std::string_view digits, std::string& bits) {
    if (digits.size() == 1 && is_unknown_digit(digits[0])) return add_digits(digits, 1, bits);
    for (const char digit : digits) {
        const int value = value_of_digit(digit, 10);
        if (value < 0) return false;
        add_decimal_digit(value, bits);
    }
    std::ranges::reverse(bits);
    return true;
}

bool fit(std::size_t width, std::string& bits) {
    const char above = !bits.empty() && is_unknown_digit(bits[0]) ? bits[0] : '0';
    if (bits.size() < width) bits.insert(0, width - bits.size(), above);
    const std::size_t surplus = bits.size() - width;
    const bool fits = std::all_of(bits.begin(), bits.begin() + static_cast<std::ptrdiff_t>(surplus),
                                  [above](char bit) { return bit == above; });
    bits.erase(0, surplus);
    return fits;
}

}  // namespace

std::vector<yx_net_record_t*> kol_bits_of(const yx_bus_rec_t& bus) {
    std::vector<yx_net_record_t*> bits;
    add_bits(bus, bits);
    return bits;
}

bool kol_find_bits(const tm_string_record_t& name, std::vector<yx_net_record_t*>& bits, yx_bus_rec_t*& bus) {
    bits.clear();
    bus = nullptr;
    yx_net_record_t* net = nullptr;
    if (kol_find_sim_bus(name, bus) != 0)
        bits = kol_bits_of(*bus);
    else if (kol_find_net(name, net) != 0 && net->net_type == YX_TSTD_BUS)
        add_members(*net, bits);
    else
        add_vector(name, bits);
    return !bits.empty();
}

std::int16_t kol_radix_of_letter(char letter) {
    const std::size_t radix = std::string_view("HBD").find(tm_upper_case(letter));
    return radix == std::string_view::npos ? std::int16_t{-1} : static_cast<std::int16_t>(radix);
}

bool kol_read_bits(std::string_view value, std::int16_t radix, std::size_t width, std::string& bits) {
    bits.clear();
    if (!value.empty() && kol_radix_of_letter(value[0]) >= 0) {
        radix = kol_radix_of_letter(value[0]);
        value.remove_prefix(1);
    }
    if (value.empty()) return false;
    const bool is_read = radix == kol_decimal ? read_decimal(value, bits)
                                              : add_digits(value, radix == kol_binary ? 1 : 4, bits);
    return is_read && fit(width, bits);
}

std::int8_t kol_state_of_bit(char bit) {
    constexpr std::int16_t high_impedance = 1;
    const std::int16_t value = bit == '0' ? kol_v0 : bit == '1' ? kol_v1 : kol_vx;
    std::int8_t state = 0;
    kol_valdrive_to_state(value, bit == 'z' ? high_impedance : kol_drive_strong, state);
    return state;
}

// Full names, bits and values of what is observed.
#include "results/entries/observed.h"

#include <algorithm>

#include "kernel/network.h"
#include "kernel/say.h"

namespace {

// NI_n and N_n stand for a net of the design or of a sheet.
bool is_indexed(std::string_view name) {
    const std::size_t line = name.find('_');
    return tm_upper_case(name[0]) == 'N' && (line == 1 || (line == 2 && tm_upper_case(name[1]) == 'I'));
}

bool is_known(std::string_view bits) { return bits.find_first_not_of("01") == bits.npos; }

char unknown_digit(std::string_view bits) { return bits.find_first_not_of('z') == bits.npos ? 'z' : 'x'; }

char digit_of(std::string_view bits) {
    if (!is_known(bits)) return unknown_digit(bits);
    unsigned value = 0;
    for (const char bit : bits) value = value * 2 + (bit == '1' ? 1 : 0);
    return "0123456789ABCDEF"[value];
}

std::string hexadecimal(std::string_view bits) {
    constexpr std::size_t bits_of_digit = 4;
    std::string text;
    std::size_t length = bits.size() % bits_of_digit;
    if (length == 0) length = bits_of_digit;
    for (; !bits.empty(); bits.remove_prefix(length), length = bits_of_digit)
        text += digit_of(bits.substr(0, length));
    return text;
}

// Twice the number, and one more; digits from the lowest.
void shift_in(std::string& digits, bool bit) {
    int carry = bit ? 1 : 0;
    for (char& digit : digits) {
        const int twice = (digit - '0') * 2 + carry;
        digit = static_cast<char>('0' + twice % 10);
        carry = twice / 10;
    }
    if (carry != 0) digits += '1';
}

std::string decimal(std::string_view bits) {
    if (!is_known(bits)) return {unknown_digit(bits)};
    std::string digits = "0";
    for (const char bit : bits) shift_in(digits, bit == '1');
    std::ranges::reverse(digits);
    return digits;
}

}  // namespace

std::string rs_full_name(const tm_string_record_t& name, const tm_string_record_t& sim_path,
                         const yx_net_record_t* net) {
    const std::string_view text = tm_view(name);
    if (text.starts_with('/')) return std::string(text);
    if (net != nullptr && is_indexed(text)) return std::string(kol_path(net->sim_path));
    return std::string(tm_view(sim_path)).append(text);
}

rs_observed_t rs_observed_of(const yx_signal_rec_t& entry) {
    rs_observed_t observed{
        rs_full_name(entry.name, entry.cur_sim_path, entry.net), {}, entry.sig_bus, entry.base_number};
    if (entry.sig_bus && entry.bus != nullptr)
        observed.bits = kol_bits_of(*entry.bus);
    else if (entry.net != nullptr)
        observed.bits.push_back(kol_root_net(entry.net));
    return observed;
}

void rs_add_observed(const yx_signal_rec_t* first, std::vector<rs_observed_t>& observed) {
    for (const yx_signal_rec_t* entry = first; entry != nullptr; entry = entry->next) {
        rs_observed_t one = rs_observed_of(*entry);
        const auto is_same = [&one](const rs_observed_t& other) {
            return other.path == one.path && other.bits == one.bits;
        };
        if (!one.bits.empty() && std::ranges::none_of(observed, is_same)) observed.push_back(std::move(one));
    }
}

std::string rs_value_text(std::string_view bits, std::int16_t radix) {
    if (radix == kol_binary) return std::string(bits);
    return radix == kol_decimal ? decimal(bits) : hexadecimal(bits);
}

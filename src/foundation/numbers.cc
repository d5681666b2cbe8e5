// Numbers from texts and texts from numbers.
#include "foundation/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr std::int32_t real_scale = 100000;
constexpr std::int64_t digits_limit = 1'000'000'000'000'000'000 / 10;  // ten times this still fits
constexpr int hex_text_max = 512;

// The value of a digit in the base, -1 for any other character.
int digit_value(char c, int base) {
    if (c >= '0' && c <= '9') return c - '0';
    const char upper = tm_upper_case(c);
    return base == 16 && upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : -1;
}

// Unsigned, so that a text too long for the result wraps.
std::uint32_t read_integer(const tm_string_record_t& s, int base, bool& error_found) {
    std::uint32_t value = 0;
    error_found = false;
    for (const char c : tm_view(s)) {
        if (c == ' ') continue;
        const int digit = digit_value(c, base);
        if (digit < 0) {
            error_found = true;
            break;
        }
        value = value * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
    }
    return value;
}

struct decimal_t {
    std::int64_t digits = 0;  // signed: all digits of the text, the point left out
    std::int64_t divisor = 1;
};

float quotient(const decimal_t& d) { return static_cast<float>(d.digits) / static_cast<float>(d.divisor); }

// False when the integer part has more digits than any result can hold.  Fraction digits beyond what 64 bits
// hold change nothing in single precision and are passed over.
bool add_digit(int digit, bool after_point, decimal_t& d) {
    if (d.digits >= digits_limit || d.divisor >= digits_limit) return after_point;
    d.digits = d.digits * 10 + digit;
    if (after_point) d.divisor *= 10;
    return true;
}

decimal_t read_decimal(const tm_string_record_t& s, bool& error_found) {
    const std::string_view text = tm_view(s);
    std::size_t at = std::min(text.find_first_not_of(' '), text.size());
    const bool negative = at < text.size() && text[at] == '-';
    if (negative) at = std::min(text.find_first_not_of(' ', at + 1), text.size());

    decimal_t d;
    bool point = false;
    error_found = false;
    for (; at < text.size() && text[at] != ' '; ++at) {
        const int digit = digit_value(text[at], 10);
        if (text[at] == '.')
            point = true;
        else if (digit < 0 || !add_digit(digit, point, d)) {
            error_found = true;
            return {};
        }
    }
    if (negative) d.digits = -d.digits;
    return d;
}

void format_decimal(double value, tm_string_record_t& s) {
    char text[64];
    if (value == 0) {
        tm_copy_const("0.0", s);
        return;
    }
    const double x = std::fabs(value);
    double whole = std::trunc(x + 0.0001);
    double hundredths = std::trunc(std::fabs(x - whole) * 100 + 0.5);
    if (hundredths >= 100) {
        whole += 1;
        hundredths = 0;
    }
    std::snprintf(text, sizeof text, "%s%.0f.%02.0f", value < 0 ? "-" : "", whole, hundredths);
    tm_copy_const(text, s);
}

}  // namespace

void tm_string_to_int16(const tm_string_record_t& s, std::int16_t& n, bool& error_found) {
    n = static_cast<std::int16_t>(read_integer(s, 10, error_found));
}

void tm_string_to_int32(const tm_string_record_t& s, std::int32_t& n, bool& error_found) {
    n = static_cast<std::int32_t>(read_integer(s, 10, error_found));
}

void tm_stringh_to_int32(const tm_string_record_t& s, std::int32_t& n, bool& error_found) {
    n = static_cast<std::int32_t>(read_integer(s, 16, error_found));
}

bool tm_string_to_number(const tm_string_record_t& s, std::int32_t highest, std::int32_t& n) {
    std::int64_t value = 0;
    for (const char c : tm_view(s)) {
        if (c == ' ') continue;
        const int digit = digit_value(c, 10);
        if (digit < 0) return false;
        value = std::min<std::int64_t>(value * 10 + digit, INT32_MAX + 1LL);
    }
    if (value < 1 || value > highest) return false;
    n = static_cast<std::int32_t>(value);
    return true;
}

void tm_string_to_real(const tm_string_record_t& s, std::int32_t& r, bool& error_found) {
    r = 0;
    const float scaled = std::floor(quotient(read_decimal(s, error_found)) * real_scale + 0.5F);
    constexpr float limit = 2147483648.0F;
    if (scaled < -limit || scaled >= limit)
        error_found = true;
    else
        r = static_cast<std::int32_t>(scaled);
}

void tm_string_to_shortreal(const tm_string_record_t& s, float& f, bool& error_found) {
    f = quotient(read_decimal(s, error_found));
}

void tm_int32_to_string(std::int32_t n, tm_string_record_t& s) {
    char text[16];
    std::snprintf(text, sizeof text, "%d", n);
    tm_copy_const(text, s);
}

void tm_int16_to_string(std::int16_t n, tm_string_record_t& s) { tm_int32_to_string(n, s); }

void tm_real_to_string(std::int32_t r, tm_string_record_t& s) {
    format_decimal(static_cast<double>(r) / real_scale, s);
}

void tm_shortreal_to_string(float f, tm_string_record_t& s) { format_decimal(static_cast<double>(f), s); }

char tm_conver_hex(std::int32_t nb) { return nb >= 0 && nb <= 15 ? "0123456789ABCDEF"[nb] : '?'; }

void tm_conver_char(std::uint8_t byte, char (&two)[2]) {
    two[0] = tm_conver_hex(byte / 16);
    two[1] = tm_conver_hex(byte % 16);
}

void tm_conver_int16(std::int16_t v, char (&hi)[2], char (&lo)[2]) {
    const auto bits = static_cast<std::uint16_t>(v);
    tm_conver_char(static_cast<std::uint8_t>(bits / 256), hi);
    tm_conver_char(static_cast<std::uint8_t>(bits % 256), lo);
}

std::int32_t xtoi(const char* text) {
    std::uint32_t value = 0;
    for (int i = 0; text != nullptr && i < hex_text_max; ++i) {
        const int digit = digit_value(text[i], 16);
        if (digit < 0) break;
        value = value * 16 + static_cast<std::uint32_t>(digit);
    }
    return static_cast<std::int32_t>(value);
}

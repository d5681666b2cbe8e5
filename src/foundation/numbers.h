// tm: numbers and text.  Converts between counted strings and integers, hexadecimal, the fixed-point real (a
// signed 32-bit integer holding a decimal number times 100000) and the short real (float).  A bad text sets
// error_found and keeps the digits read before the fault; nothing here prints or stops.
#pragma once

#include "foundation/strings.h"

void tm_string_to_int16(const tm_string_record_t& s, std::int16_t& n, bool& error_found);
void tm_string_to_int32(const tm_string_record_t& s, std::int32_t& n, bool& error_found);
void tm_stringh_to_int32(const tm_string_record_t& s, std::int32_t& n, bool& error_found);
// A whole number 1..highest as above, but without wrapping; false: it is none.
bool tm_string_to_number(const tm_string_record_t& s, std::int32_t highest, std::int32_t& n);
void tm_string_to_real(const tm_string_record_t& s, std::int32_t& r, bool& error_found);
void tm_string_to_shortreal(const tm_string_record_t& s, float& f, bool& error_found);
void tm_int32_to_string(std::int32_t n, tm_string_record_t& s);
void tm_int16_to_string(std::int16_t n, tm_string_record_t& s);
void tm_real_to_string(std::int32_t r, tm_string_record_t& s);
void tm_shortreal_to_string(float f, tm_string_record_t& s);

char tm_conver_hex(std::int32_t nb);
void tm_conver_char(std::uint8_t byte, char (&two)[2]);
void tm_conver_int16(std::int16_t v, char (&hi)[2], char (&lo)[2]);
std::int32_t xtoi(const char* text);

constexpr std::int32_t tm_minr(std::int32_t a, std::int32_t b) { return a < b ? a : b; }
constexpr std::int32_t tm_maxr(std::int32_t a, std::int32_t b) { return a > b ? a : b; }
constexpr std::int32_t tm_mini32(std::int32_t a, std::int32_t b) { return a < b ? a : b; }
constexpr std::int32_t tm_maxi32(std::int32_t a, std::int32_t b) { return a > b ? a : b; }
constexpr std::int16_t tm_mini16(std::int16_t a, std::int16_t b) { return a < b ? a : b; }
constexpr std::int16_t tm_maxi16(std::int16_t a, std::int16_t b) { return a > b ? a : b; }
constexpr float tm_float(std::int32_t n) { return static_cast<float>(n); }

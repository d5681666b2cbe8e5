// tm: counted strings.  Owns the three text records of the system, the checks that keep them sound, copy and
// concatenation between them, the case-insensitive comparisons, the tokenizer and the character sets it stops
// at.  Texts are printable ASCII (32..126), kept zero-terminated behind their last character; positions are
// 1-based.  An unsound record or a source length out of range is an internal fault: a line in the trace file,
// then the fatal exit with invalid_string.  Overflow of a concatenation cuts silently at 199 characters.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

inline constexpr std::int32_t tm_string_max = 199;
inline constexpr std::int32_t tm_name_max = 64;
inline constexpr std::int32_t tm_value_max = 96;

struct tm_string_record_t {
    std::int32_t len = 0;  // 0..199
    union {
        char char_[204] = {};
        char all[204];  // the same storage, raw
    };
};

struct tm_name_record_t {
    std::int32_t len = 0;  // 0..64; copy and concatenation accept 63
    char char_[64] = {};
};

struct tm_value_record_t {
    std::int32_t len = 0;  // 0..96; copy and concatenation accept 95
    char char_[96] = {};
};

// A set of character codes: the number of 32-bit words in use, then the membership bits.
struct tm_char_set_t {
    std::int32_t words = 0;  // 0..8
    std::array<std::uint32_t, 8> bits{};
};

inline std::string_view tm_view(const tm_string_record_t& s) {
    return {s.char_, static_cast<std::size_t>(s.len)};
}
inline std::string_view tm_view(const tm_name_record_t& n) {
    return {n.char_, static_cast<std::size_t>(n.len)};
}
inline std::string_view tm_view(const tm_value_record_t& v) {
    return {v.char_, static_cast<std::size_t>(v.len)};
}

// Checks: fatal when the record is unsound.
void tm_check_string(const tm_string_record_t& s);
void tm_check_name(const tm_name_record_t& n);
void tm_check_value(const tm_value_record_t& v);

// Copies, destination last.  The source length must be 0..199 (names 0..63, values 0..95), else fatal.
// tm_copy_const and tm_concat_const count their text by xstrlen, so they take its first 99 characters; a text
// of 200 characters or more is fatal.
void tm_copy_line(const tm_string_record_t& src, tm_string_record_t& dst);
void tm_copy_string(const char* chars, std::int32_t len, tm_string_record_t& dst);
void tm_copy_const(const char* text, tm_string_record_t& dst);
void tm_copy_name(const tm_string_record_t& src, tm_name_record_t& dst);
void tm_copy_value(const tm_string_record_t& src, tm_value_record_t& dst);
void tm_name_string(const tm_name_record_t& src, tm_string_record_t& dst);
void tm_value_string(const tm_value_record_t& src, tm_string_record_t& dst);

// Concatenations: append to dst what fits up to 199 characters.  tm_concat_sp appends its blank only while
// the result stays below 199.
void tm_concat_line(const tm_string_record_t& src, tm_string_record_t& dst);
void tm_concat_astr(const char* chars, std::int32_t len, tm_string_record_t& dst);
void tm_concat_const(const char* text, tm_string_record_t& dst);
void tm_concat_name(const tm_name_record_t& name, tm_string_record_t& dst);
void tm_concat_value(const tm_value_record_t& value, tm_string_record_t& dst);
void tm_concat_sp(tm_string_record_t& dst);

// The length of a zero-terminated text as xstrlen counts it; fatal above 200.
std::int32_t tm_length(const char* text);

// For code of our own: a record from any printable text, cut at 199 characters.
tm_string_record_t tm_string(std::string_view text);
// Appends any printable text, cut at 199 characters, without the 99-character rule of constants.
void tm_append(std::string_view text, tm_string_record_t& dst);

// Comparisons, all without regard to case.  "iden": equal.  "equal": the first operand is a prefix of the
// second.
bool tm_string_iden_string(const tm_string_record_t& a, const tm_string_record_t& b);
bool tm_iden_string(const char* chars, std::int32_t len, const tm_string_record_t& s);
bool tm_const_iden_string(const char* text, const tm_string_record_t& s);
bool tm_const_iden_name(const char* text, const tm_name_record_t& n);
bool tm_const_iden_value(const char* text, const tm_value_record_t& v);
bool tm_name_iden_string(const tm_name_record_t& n, const tm_string_record_t& s);
bool tm_name_iden_name(const tm_name_record_t& a, const tm_name_record_t& b);
bool tm_value_iden_value(const tm_value_record_t& a, const tm_value_record_t& b);
bool tm_value_iden_string(const tm_value_record_t& v, const tm_string_record_t& s);
bool tm_const_equal_string(const char* text, const tm_string_record_t& s);
bool tm_equal_string(const char* chars, std::int32_t len, const tm_string_record_t& s);
bool tm_name_equal_string(const tm_name_record_t& n, const tm_string_record_t& s);
bool tm_string_equal_name(const tm_string_record_t& s, const tm_name_record_t& n);
bool tm_value_equal_string(const tm_value_record_t& v, const tm_string_record_t& s);
bool tm_string_equal_value(const tm_string_record_t& s, const tm_value_record_t& v);
bool tm_is_less_than(const tm_string_record_t& a, const tm_string_record_t& b);

constexpr char tm_upper_case(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// Character sets.
void P_setcpy(const tm_char_set_t& src, tm_char_set_t& dst);
void P_expset(tm_char_set_t& set);                   // the empty set
void P_expset(tm_char_set_t& set, unsigned char c);  // the set of one character
void P_addset(tm_char_set_t& set, unsigned char c);
bool P_inset(unsigned char c, const tm_char_set_t& set);
tm_char_set_t tm_char_set(std::string_view members);

// Skips from pos over characters of the set; ch is the first other character, 0 when pos is outside the text.
void tm_findchar(const tm_string_record_t& buf, const tm_char_set_t& set, char& ch, std::int32_t& pos);
// The next token of buf from pos (1-based); quoted tokens keep their quotes.  One terminator in front of the
// token is stepped over, then blanks; pos ends on the terminator behind the token, behind the closing quote,
// or at len + 1.  An empty token with pos below len stands between two terminators: with the set {blank, ','}
// both "a,,b" and "a , b" give "a", "", "b".  A terminator in the last position is never stepped over: an
// empty token with pos at len or beyond means that nothing is left.
void tm_rd_string_t(const tm_string_record_t& buf, const tm_char_set_t& term_chars, tm_string_record_t& token,
                    std::int32_t& pos);
// Makes any text sound before it is used as a command; inner line feeds become ';'.
void tm_rest_string(tm_string_record_t& s);

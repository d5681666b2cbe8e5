// yxi: texts of the netlist.  Copies and compares the store's strings (a 1-based string index), the module's
// own string record and the counted strings.  A store string index outside 1..max_string_cur, a store string
// with a negative length or without characters, and a source longer than 200 characters end the program with
// exit status 69 (invalid_string), the reason being written to the store's debug file.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "netlist/store.h"

inline constexpr std::int32_t yxi_string_max = 200;   // longest text of a string record
inline constexpr std::size_t yxi_string_bytes = 208;  // of the buffer behind one

struct yxi_string_record_t {
    std::int32_t len = 0;
    char* charp = nullptr;  // yxi_string_bytes bytes, owned by the view
};

inline std::string_view yxi_view(const yxi_string_record_t& s) {
    return {s.charp, static_cast<std::size_t>(s.len)};
}

// A string record together with its buffer; empty at first.
struct yxi_text_t : yxi_string_record_t {
    std::array<char, yxi_string_bytes> buffer{};
    yxi_text_t() { charp = buffer.data(); }
    yxi_text_t(const yxi_text_t&) = delete;
    yxi_text_t& operator=(const yxi_text_t&) = delete;
};

// Store string (index) to a counted string (zero-terminated) and to a string record (characters only).
void yxi_copy_string_yx_tm(std::int32_t string_index, tm_string_record_t& dst);
void yxi_copy_string_yx_yxi(std::int32_t string_index, yxi_string_record_t& dst);
// Into a string record: a counted string of 0..200 characters and a text of at most 200, both terminated
// with a zero, and another record of 0..200 characters.
void yxi_coprec_tm_yxi(const tm_string_record_t& src, yxi_string_record_t& dst);
void yxi_copy_const(const char* text, yxi_string_record_t& dst);
void yxi_copy_string(const yxi_string_record_t& src, yxi_string_record_t& dst);

// Store string against counted string, without regard to case: equality, and "s is a prefix of the store
// string".
bool yxistring_iden_tmstring(std::int32_t string_index, const tm_string_record_t& s);
bool tmstring_equal_yxistring(const tm_string_record_t& s, std::int32_t string_index);
// Equal lengths and characters, case counting.
bool yxi_equal_string(const yxi_string_record_t& a, const yxi_string_record_t& b);

char yxi_upper_case(char c);
// A new zero-terminated copy of the record's text, at most 200 characters.
std::unique_ptr<char[]> yxi_writestr(const yxi_string_record_t& src);
// The decimal text of a number; of a real as tm_shortreal_to_string writes it.
void yxi_integer_to_string(std::int32_t n, yxi_string_record_t& dst);
void yxi_real_to_string(float f, yxi_string_record_t& dst);

// Command-line argument (1-based; empty when there is none), token and date readers over string records,
// after tm_get_arg, tm_rd_string_t, tm_findchar and tm_get_date.
void yxi_get_arg(std::int32_t position, yxi_string_record_t& dst);
void yxi_rd_string_t(const yxi_string_record_t& buf, const tm_char_set_t& term_chars,
                     yxi_string_record_t& token, std::int32_t& pos);
void yxi_findchar(const yxi_string_record_t& buf, const tm_char_set_t& set, char& ch, std::int32_t& pos);
void yxi_get_date(std::int16_t& day, std::int16_t& month, std::int16_t& year, std::int16_t& hour,
                  std::int16_t& minute);

// The module's own stop: prints the code and its name on standard output and in the store's debug file and
// exits with the code.
[[noreturn]] void yxi_set_status(std::int32_t error_code);

// Comparisons of counted strings.
#include <algorithm>
#include <cstring>

#include "foundation/platform.h"
#include "foundation/status.h"
#include "foundation/strings.h"

namespace {

constexpr std::int32_t operand_max = 200;

struct text_t {
    const char* chars;
    std::int32_t len;
};

template <typename Record>
text_t text_of(const Record& r) {
    return {r.char_, r.len};
}

text_t text_of(const char* constant) { return {constant, xstrlen(constant)}; }

bool same(const char* a, const char* b, std::int32_t count) {
    for (std::int32_t i = 0; i < count; ++i)
        if (tm_upper_case(a[i]) != tm_upper_case(b[i])) return false;
    return true;
}

bool iden(text_t a, text_t b) { return a.len == b.len && same(a.chars, b.chars, a.len); }
bool equal(text_t a, text_t b) { return a.len <= b.len && same(a.chars, b.chars, a.len); }

bool is_operand(const char* operation, const char* text) {
    const auto len = static_cast<std::int32_t>(strnlen(text, operand_max + 1));
    if (len <= operand_max) return true;
    tm_trace("!!! ( %s ) constant too long : \"%.10s\"\n", operation, text);
    return false;
}

}  // namespace

bool tm_string_iden_string(const tm_string_record_t& a, const tm_string_record_t& b) {
    return iden(text_of(a), text_of(b));
}

bool tm_iden_string(const char* chars, std::int32_t len, const tm_string_record_t& s) {
    return iden({chars, len}, text_of(s));
}

bool tm_const_iden_string(const char* text, const tm_string_record_t& s) {
    return is_operand("tm_const_iden_string", text) && iden(text_of(text), text_of(s));
}

bool tm_const_iden_name(const char* text, const tm_name_record_t& n) {
    return iden(text_of(text), text_of(n));
}

bool tm_const_iden_value(const char* text, const tm_value_record_t& v) {
    return iden(text_of(text), text_of(v));
}

bool tm_name_iden_string(const tm_name_record_t& n, const tm_string_record_t& s) {
    return iden(text_of(n), text_of(s));
}

bool tm_name_iden_name(const tm_name_record_t& a, const tm_name_record_t& b) {
    tm_check_name(a);
    tm_check_name(b);
    return iden(text_of(a), text_of(b));
}

bool tm_value_iden_value(const tm_value_record_t& a, const tm_value_record_t& b) {
    tm_check_value(a);
    tm_check_value(b);
    return iden(text_of(a), text_of(b));
}

bool tm_value_iden_string(const tm_value_record_t& v, const tm_string_record_t& s) {
    return iden(text_of(v), text_of(s));
}

bool tm_const_equal_string(const char* text, const tm_string_record_t& s) {
    return is_operand("tm_const_equal_string", text) && equal(text_of(text), text_of(s));
}

bool tm_equal_string(const char* chars, std::int32_t len, const tm_string_record_t& s) {
    if (len >= 0 && len <= operand_max) return equal({chars, len}, text_of(s));
    tm_trace("!!! ( tm_equal_string ) invalid len : %d\n", len);
    return false;
}

bool tm_name_equal_string(const tm_name_record_t& n, const tm_string_record_t& s) {
    return equal(text_of(n), text_of(s));
}

bool tm_string_equal_name(const tm_string_record_t& s, const tm_name_record_t& n) {
    return equal(text_of(s), text_of(n));
}

bool tm_value_equal_string(const tm_value_record_t& v, const tm_string_record_t& s) {
    return equal(text_of(v), text_of(s));
}

bool tm_string_equal_value(const tm_string_record_t& s, const tm_value_record_t& v) {
    return equal(text_of(s), text_of(v));
}

bool tm_is_less_than(const tm_string_record_t& a, const tm_string_record_t& b) {
    // The first position counts even in an empty text: its zero byte orders it before any other.
    const std::int32_t count = std::max(1, std::min(a.len, b.len));
    for (std::int32_t i = 0; i < count; ++i) {
        const auto left = static_cast<signed char>(tm_upper_case(a.char_[i]));
        const auto right = static_cast<signed char>(tm_upper_case(b.char_[i]));
        if (left != right) return left < right;
    }
    return a.len < b.len;
}

// Checks, copies and concatenations of counted strings.
#include "foundation/strings.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "foundation/platform.h"
#include "foundation/printable.h"
#include "foundation/status.h"

namespace {

constexpr std::int32_t name_copy_max = tm_name_max - 1;  // one place stays free for the zero byte
constexpr std::int32_t value_copy_max = tm_value_max - 1;
constexpr std::int32_t constant_max = 200;

std::string first_bytes(const char* chars) {
    std::string shown, numbers;
    for (int i = 0; i < 8; ++i) {
        shown += tm_is_printable(chars[i]) ? chars[i] : '.';
        numbers += " " + std::to_string(static_cast<unsigned char>(chars[i]));
    }
    return "'" + shown + "'" + numbers;
}

[[noreturn]] void stop_length(const char* operation, std::int32_t len, const char* chars) {
    tm_trace("!!! ( %s ) ( %s ) len : %d  '%.5s'  %s\n", operation, len < 0 ? "< 0" : "too long", len, chars,
             first_bytes(chars).c_str());
    tm_fatal(invalid_string);
}

void check(const char* operation, const char* chars, std::int32_t len, std::int32_t max) {
    if (len < 0 || len > max) stop_length(operation, len, chars);
    const char* bad = std::find_if_not(chars, chars + len, tm_is_printable);
    if (bad == chars + len) return;
    tm_trace("!!! ( %s ) ( invalid char ) len : %d  index : %d  code : %d\n", operation, len,
             static_cast<int>(bad - chars) + 1, static_cast<unsigned char>(*bad));
    tm_fatal(invalid_string);
}

void check_source(const char* operation, const char* chars, std::int32_t len, std::int32_t max) {
    if (len >= 0 && len <= max) return;
    tm_trace("!!! ( %s ) %s : %d  \"%.10s\"\n", operation, len < 0 ? "< 0" : "> max", len, chars);
    tm_fatal(invalid_string);
}

// Source and destination may be the same record, hence memmove and the length by value.
template <typename Record>
void store(const char* chars, std::int32_t len, Record& dst) {
    std::memmove(dst.char_, chars, static_cast<std::size_t>(len));
    dst.char_[len] = '\0';
    dst.len = len;
}

void append(const char* operation, const char* chars, std::int32_t len, std::int32_t max,
            tm_string_record_t& dst) {
    tm_check_string(dst);
    check_source(operation, chars, len, max);
    const std::int32_t fits = std::min(len, tm_string_max - dst.len);
    std::memmove(dst.char_ + dst.len, chars, static_cast<std::size_t>(fits));
    dst.len += fits;
    dst.char_[dst.len] = '\0';
    tm_check_string(dst);
}

// The true length as far as it matters here; xstrlen stops at 99.
std::int32_t bounded_length(const char* text) {
    return static_cast<std::int32_t>(strnlen(text, constant_max + 1));
}

}  // namespace

void tm_check_string(const tm_string_record_t& s) { check("tm_check_string", s.char_, s.len, tm_string_max); }
void tm_check_name(const tm_name_record_t& n) { check("tm_check_name", n.char_, n.len, tm_name_max); }
void tm_check_value(const tm_value_record_t& v) { check("tm_check_value", v.char_, v.len, tm_value_max); }

void tm_copy_line(const tm_string_record_t& src, tm_string_record_t& dst) {
    tm_check_string(src);
    store(src.char_, src.len, dst);
    tm_check_string(dst);
}

void tm_copy_string(const char* chars, std::int32_t len, tm_string_record_t& dst) {
    check_source("tm_copy_string", chars, len, tm_string_max);
    store(chars, len, dst);
    tm_check_string(dst);
}

void tm_copy_const(const char* text, tm_string_record_t& dst) {
    if (bounded_length(text) > tm_string_max) {
        store(text, tm_string_max - 1, dst);
        std::printf(" !!! error in  copy_const : > max %s\n", text);
        check_source("tm_copy_const", text, constant_max, tm_string_max);
    }
    store(text, xstrlen(text), dst);
    tm_check_string(dst);
}

void tm_copy_name(const tm_string_record_t& src, tm_name_record_t& dst) {
    tm_check_string(src);
    check_source("tm_copy_name", src.char_, src.len, name_copy_max);
    store(src.char_, src.len, dst);
    tm_check_name(dst);
}

void tm_copy_value(const tm_string_record_t& src, tm_value_record_t& dst) {
    tm_check_string(src);
    check_source("tm_copy_value", src.char_, src.len, value_copy_max);
    store(src.char_, src.len, dst);
    tm_check_value(dst);
}

void tm_name_string(const tm_name_record_t& src, tm_string_record_t& dst) {
    tm_check_name(src);
    check_source("tm_name_string", src.char_, src.len, name_copy_max);
    store(src.char_, src.len, dst);
    tm_check_string(dst);
}

void tm_value_string(const tm_value_record_t& src, tm_string_record_t& dst) {
    tm_check_value(src);
    check_source("tm_value_string", src.char_, src.len, value_copy_max);
    store(src.char_, src.len, dst);
    tm_check_string(dst);
}

void tm_concat_line(const tm_string_record_t& src, tm_string_record_t& dst) {
    append("tm_concat_line", src.char_, src.len, tm_string_max, dst);
}

void tm_concat_astr(const char* chars, std::int32_t len, tm_string_record_t& dst) {
    append("tm_concat_astr", chars, len, tm_string_max, dst);
}

void tm_concat_const(const char* text, tm_string_record_t& dst) {
    const std::int32_t len = bounded_length(text);
    append("tm_concat_const", text, len > tm_string_max ? len : xstrlen(text), tm_string_max, dst);
}

void tm_concat_name(const tm_name_record_t& name, tm_string_record_t& dst) {
    append("tm_concat_name", name.char_, name.len, name_copy_max, dst);
}

void tm_concat_value(const tm_value_record_t& value, tm_string_record_t& dst) {
    append("tm_concat_value", value.char_, value.len, value_copy_max, dst);
}

void tm_concat_sp(tm_string_record_t& dst) {
    tm_check_string(dst);
    if (dst.len + 1 < tm_string_max) append("tm_concat_sp", " ", 1, 1, dst);
}

std::int32_t tm_length(const char* text) {
    check_source("tm_length", text, bounded_length(text), constant_max);
    return xstrlen(text);
}

tm_string_record_t tm_string(std::string_view text) {
    tm_string_record_t s;
    tm_append(text, s);
    return s;
}

void tm_append(std::string_view text, tm_string_record_t& dst) {
    const std::string_view kept = text.substr(0, tm_string_max);
    if (kept.empty()) return;  // it may have no characters to point at
    tm_concat_astr(kept.data(), static_cast<std::int32_t>(kept.size()), dst);
}

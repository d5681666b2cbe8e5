// Strings between the store, its string record and the counted strings.
#include "netlist/text.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/numbers.h"
#include "foundation/status.h"

namespace {

[[noreturn]] void stop_at_text(const char* operation, const char* what, std::int32_t number) {
    if (yx_debugfile != nullptr) std::fprintf(yx_debugfile, " !! %s : %s : %d\n", operation, what, number);
    yxi_set_status(invalid_string);
}

std::string_view store_text(const char* operation, std::int32_t string_index) {
    if (string_index < 1 || string_index > yx_sext.max_string_cur)
        stop_at_text(operation, "string index", string_index);
    const yx_string_record_t& string = *yx_ptrto_string_rec(string_index);
    if (string.len < 0 || (string.len > 0 && string.charp == nullptr))
        stop_at_text(operation, "string length", string.len);
    return {string.charp, static_cast<std::size_t>(string.len)};
}

void check_length(const char* operation, std::int32_t len) {
    if (len < 0 || len > yxi_string_max) stop_at_text(operation, "text length", len);
}

void store_characters(std::string_view text, yxi_string_record_t& dst) {
    dst.len = static_cast<std::int32_t>(text.size());
    std::copy(text.begin(), text.end(), dst.charp);
}

void store_terminated(std::string_view text, yxi_string_record_t& dst) {
    store_characters(text, dst);
    dst.charp[text.size()] = '\0';
}

bool same_ignoring_case(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return yxi_upper_case(x) == yxi_upper_case(y); });
}

tm_string_record_t counted(const char* operation, const yxi_string_record_t& src) {
    check_length(operation, src.len);
    tm_string_record_t s;
    tm_copy_string(src.charp, std::min(src.len, tm_string_max), s);
    return s;
}

}  // namespace

void yxi_copy_string_yx_tm(std::int32_t string_index, tm_string_record_t& dst) {
    const std::string_view text = store_text("yxi_copy_string_yx_tm", string_index);
    dst.len = static_cast<std::int32_t>(text.size());
    std::copy(text.begin(), text.end(), dst.char_);
    dst.char_[text.size()] = '\0';
}

void yxi_copy_string_yx_yxi(std::int32_t string_index, yxi_string_record_t& dst) {
    store_characters(store_text("yxi_copy_string_yx_yxi", string_index), dst);
}

void yxi_coprec_tm_yxi(const tm_string_record_t& src, yxi_string_record_t& dst) {
    check_length("yxi_coprec_tm_yxi", src.len);
    store_terminated(tm_view(src), dst);
}

void yxi_copy_const(const char* text, yxi_string_record_t& dst) {
    const std::size_t length = strnlen(text, yxi_string_max + 1);
    check_length("yxi_copy_const", static_cast<std::int32_t>(length));
    store_terminated({text, length}, dst);
}

void yxi_copy_string(const yxi_string_record_t& src, yxi_string_record_t& dst) {
    check_length("yxi_copy_string", src.len);
    store_characters(yxi_view(src), dst);
}

bool yxistring_iden_tmstring(std::int32_t string_index, const tm_string_record_t& s) {
    return same_ignoring_case(store_text("yxistring_iden_tmstring", string_index), tm_view(s));
}

bool tmstring_equal_yxistring(const tm_string_record_t& s, std::int32_t string_index) {
    const std::string_view text = store_text("tmstring_equal_yxistring", string_index);
    return same_ignoring_case(text.substr(0, static_cast<std::size_t>(std::max(s.len, 0))), tm_view(s));
}

bool yxi_equal_string(const yxi_string_record_t& a, const yxi_string_record_t& b) {
    return yxi_view(a) == yxi_view(b);
}

char yxi_upper_case(char c) { return tm_upper_case(c); }

std::unique_ptr<char[]> yxi_writestr(const yxi_string_record_t& src) {
    const std::string_view text = yxi_view(src).substr(0, yxi_string_max);
    auto copy = std::make_unique<char[]>(text.size() + 1);
    std::copy(text.begin(), text.end(), copy.get());
    return copy;
}

void yxi_integer_to_string(std::int32_t n, yxi_string_record_t& dst) {
    tm_string_record_t text;
    tm_int32_to_string(n, text);
    yxi_coprec_tm_yxi(text, dst);
}

void yxi_real_to_string(float f, yxi_string_record_t& dst) {
    tm_string_record_t text;
    tm_shortreal_to_string(f, text);
    yxi_coprec_tm_yxi(text, dst);
}

void yxi_get_arg(std::int32_t position, yxi_string_record_t& dst) {
    tm_string_record_t argument;
    STATUS_T status;
    tm_get_arg(position, argument, status);
    yxi_coprec_tm_yxi(argument, dst);
}

void yxi_rd_string_t(const yxi_string_record_t& buf, const tm_char_set_t& term_chars,
                     yxi_string_record_t& token, std::int32_t& pos) {
    tm_string_record_t found;
    tm_rd_string_t(counted("yxi_rd_string_t", buf), term_chars, found, pos);
    yxi_coprec_tm_yxi(found, token);
}

void yxi_findchar(const yxi_string_record_t& buf, const tm_char_set_t& set, char& ch, std::int32_t& pos) {
    tm_findchar(counted("yxi_findchar", buf), set, ch, pos);
}

void yxi_get_date(std::int16_t& day, std::int16_t& month, std::int16_t& year, std::int16_t& hour,
                  std::int16_t& minute) {
    tm_get_date(day, month, year, hour, minute);
}

void yxi_set_status(std::int32_t error_code) {
    const std::string_view name = tm_error_array[static_cast<std::size_t>(error_code)];
    const auto width = static_cast<int>(name.size());
    for (std::FILE* stream : {stdout, yx_debugfile}) {
        if (stream == nullptr) continue;
        std::fprintf(stream, " ?? error in TM_PACKAGE  code : %d\n", error_code);
        std::fprintf(stream, " ?? error  : %*s%.*s\n", std::max(30 - width, 0), "", width, name.data());
    }
    std::exit(error_code);
}

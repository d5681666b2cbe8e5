// Tokens of counted strings, and the character sets that end them.
#include <algorithm>

#include "foundation/strings.h"

#include "foundation/printable.h"

namespace {

constexpr std::int32_t position_max = 200;
constexpr std::int32_t word_bits = 32;

bool is_quote(char c) { return c == '\'' || c == '"'; }

char char_at(const tm_string_record_t& s, std::int32_t pos) { return s.char_[pos - 1]; }

bool at_member(const tm_string_record_t& s, std::int32_t pos, const tm_char_set_t& set) {
    return P_inset(static_cast<unsigned char>(char_at(s, pos)), set);
}

void add(char c, tm_string_record_t& token) {
    token.char_[token.len++] = c;
    token.char_[token.len] = '\0';
}

void drop_trailing_blanks(tm_string_record_t& token) {
    while (token.len > 0 && token.char_[token.len - 1] == ' ') token.char_[--token.len] = '\0';
}

// pos stands on the first character of the token; for a quoted one the opening quote is already taken.
void copy_until(const tm_string_record_t& buf, const tm_char_set_t& stop, tm_string_record_t& token,
                std::int32_t& pos) {
    while (pos <= buf.len && pos < position_max && !at_member(buf, pos, stop))
        add(char_at(buf, pos++), token);
}

void read_quoted(const tm_string_record_t& buf, tm_string_record_t& token, std::int32_t& pos) {
    const char quote = char_at(buf, pos++);
    tm_char_set_t stop;
    P_expset(stop, static_cast<unsigned char>(quote));
    add(quote, token);
    copy_until(buf, stop, token, pos);
    if (pos <= buf.len && char_at(buf, pos) == quote) {
        add(quote, token);
        ++pos;
    } else {
        drop_trailing_blanks(token);
    }
}

}  // namespace

void P_setcpy(const tm_char_set_t& src, tm_char_set_t& dst) { dst = src; }

void P_expset(tm_char_set_t& set) { set = tm_char_set_t{}; }

void P_expset(tm_char_set_t& set, unsigned char c) {
    P_expset(set);
    P_addset(set, c);
}

void P_addset(tm_char_set_t& set, unsigned char c) {
    const std::int32_t word = c / word_bits;
    set.words = std::max(set.words, word + 1);
    set.bits[static_cast<std::size_t>(word)] |= 1U << (c % word_bits);
}

bool P_inset(unsigned char c, const tm_char_set_t& set) {
    const std::int32_t word = c / word_bits;
    return word < set.words && (set.bits[static_cast<std::size_t>(word)] >> (c % word_bits) & 1U) != 0;
}

tm_char_set_t tm_char_set(std::string_view members) {
    tm_char_set_t set;
    for (const char c : members) P_addset(set, static_cast<unsigned char>(c));
    return set;
}

void tm_findchar(const tm_string_record_t& buf, const tm_char_set_t& set, char& ch, std::int32_t& pos) {
    ch = '\0';
    const std::int32_t last = std::min(buf.len, position_max);
    if (pos < 1 || pos > last) return;
    while (pos <= last && at_member(buf, pos, set)) ++pos;
    if (pos <= last) ch = char_at(buf, pos);
}

void tm_rd_string_t(const tm_string_record_t& buf, const tm_char_set_t& term_chars, tm_string_record_t& token,
                    std::int32_t& pos) {
    static const tm_char_set_t blank = tm_char_set(" ");
    token.len = 0;
    token.char_[0] = '\0';
    tm_check_string(buf);
    if (pos < 1 || pos > buf.len || pos > position_max) return;
    if (pos < buf.len && at_member(buf, pos, term_chars)) ++pos;
    char first = '\0';
    tm_findchar(buf, blank, first, pos);
    if (pos > buf.len) return;
    if (is_quote(first) && pos < buf.len)
        read_quoted(buf, token, pos);
    else
        copy_until(buf, term_chars, token, pos);
}

void tm_rest_string(tm_string_record_t& s) {
    const std::int32_t len = std::clamp(s.len, 0, tm_string_max - 1);
    std::int32_t i = 0;
    for (; i < len; ++i) {
        char& c = s.char_[i];
        if (c == '\0' || (c == '\n' && i == len - 1)) break;
        if (c == '\n')
            c = ';';
        else if (!tm_is_printable(c))
            c = ' ';
    }
    s.len = i;
    s.char_[i] = '\0';
}

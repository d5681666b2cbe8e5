// xp_sdf_words: the words of an SDF file: parentheses, texts, names and numbers.  Owns where the reading is;
// a fault is told with its line and ends it.
#pragma once

#include <string>
#include <string_view>

#include "expand/sdf.h"

struct xp_sdf_reader {
    xp_sdf& sdf;
    xp_status& status;
    double seconds_per_step;
    double scale = 1;  // steps of the file's time unit
    char divider = '.';
    std::size_t at = 0;
    std::int32_t line = 1;
    std::string_view word{};  // "(", ")", a text without its quotes, or a word; empty at the end
    std::int32_t word_line = 1;
};

void xp_sdf_refuse(xp_sdf_reader& r, std::string_view what);
// Goes on to the next word.
void xp_sdf_next(xp_sdf_reader& r);
// The same behind this word, which must be there.
void xp_sdf_expect(xp_sdf_reader& r, std::string_view word);
// What is left of a list whose "(" has been read, and its ")".
void xp_sdf_skip_list(xp_sdf_reader& r);
bool xp_sdf_is_at_end(const xp_sdf_reader& r);  // of a list, or of the file
std::string xp_sdf_upper(std::string_view text);
// The keyword of the list that begins here.
std::string xp_sdf_keyword_ahead(const xp_sdf_reader& r);
// The name without "\" in front of signs, and "/" for the divider.
std::string_view xp_sdf_name_of(xp_sdf_reader& r, std::string_view text);
// "(1)", "(1:2:3)", "()".
xp_sdf_value xp_sdf_read_value(xp_sdf_reader& r);

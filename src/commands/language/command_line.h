// kol: the parts of a command line.  A line holds commands separated by ';', a command holds keywords
// separated by blanks and commas.  A keyword that begins with a quote reaches to its closing quote, or to the
// end of the line where none closes it, and keeps its quotes; separators inside it are text.  Positions are
// 1-based.
#pragma once

#include "commands/language/command.h"

// The next command of the line from pos, without its leading blanks; false when it is empty or none is left.
bool kol_next_command(const tm_string_record_t& line, std::int32_t& pos, tm_string_record_t& command);
// The first keyword of a command; empty when it has none.
void kol_first_word(const tm_string_record_t& command, tm_string_record_t& word);
// Splits a command into at most 30 keywords, none of them empty; further ones are ignored.
kol_keywords_t kol_split_keywords(const tm_string_record_t& command);

constexpr bool kol_is_quote(char c) { return c == '\'' || c == '"'; }
// The text between the first quote of a keyword and the last occurrence of that quote, then a blank; without
// a quote the keyword unchanged.  A quote that nothing closes counts as closed by the end.
tm_string_record_t kol_unquoted(const tm_string_record_t& keyword);

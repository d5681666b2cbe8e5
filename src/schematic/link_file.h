// tm: the link of a sheet.  The file DIR/TYPE.tm, sheets being of type "sheet", is a text whose first line
// begins with the link value: "_" and the number of the current version.  The data file is the link's path
// followed by the link value: DIR/sheet.tm_3.
#pragma once

#include "foundation/context.h"

// The first token of the first line, ended by a blank, a comma or a zero byte.  link_found false: the file
// is not there, is empty (one more in num_errors), or has no token there.  False: there is something that
// cannot be read.
bool tm_read_tm_link(const tm_string_record_t& link_pathname, tm_string_record_t& link_value,
                     bool& link_found);
// Writes the link: the value, 8 blanks, a line end, to a file beside it that then takes its place.  False
// when it cannot be written; the old link is then whole.
bool tm_add_tm_link(const tm_string_record_t& link_pathname, const tm_string_record_t& link_value);

// Paths and version of the current data file.  Without a link the version is 1 and the link value "_1".  When
// what follows the first character of the link value is no 16-bit number, the version is 0 and the data path
// is the link's.  False: there is a link that cannot be read.
bool tm_file_get_file_version(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                              std::int16_t& fileversion, tm_string_record_t& file_pathname,
                              tm_string_record_t& link_pathname, tm_string_record_t& link_value,
                              bool& version_found);
// The next version; fileversion is at most 32766.
void tm_file_new_file_version(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                              std::int16_t fileversion, std::int16_t& fileversion_new,
                              tm_string_record_t& link_value_new, tm_string_record_t& pathname_new);

// Splits a symbol's path, "DIR/sheet.tm_4": the directory is the text before the last "/" that an "s" of
// either case follows (empty without one), the version the number behind the last ".tm_" (any case; 0 when
// there is none).
void tm_get_path_n0version(const tm_string_record_t& path, tm_string_record_t& directory,
                           std::int16_t& version);

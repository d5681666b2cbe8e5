// tm: whole files.  Paths are resolved as everywhere (tm_resolve_path); one that would be cut is refused.
#pragma once

#include <string>

#include "foundation/replacement.h"

inline constexpr std::size_t tm_sheet_file_max = 16 << 20;  // bytes; no sheet comes near

// Opens an ordinary file for reading; null when there is none.
tm_stream tm_open_to_read(const tm_string_record_t& pathname);
// False: the file cannot be opened, or is longer than there may be bytes.
bool tm_read_whole(const tm_string_record_t& pathname, std::string& bytes,
                   std::size_t most = tm_sheet_file_max);
// Writes a file that takes the place of an older one.  False: nothing has changed at the path.
bool tm_write_whole(const tm_string_record_t& pathname, const std::string& bytes);

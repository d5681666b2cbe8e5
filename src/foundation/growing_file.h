// tm: files that grow while the program runs: traces and the transcript.
#pragma once

#include <string>

#include "foundation/files.h"

// Creates or empties the file (mode 0660), for this program alone where is_locked: null while another one
// holds it, errno being EWOULDBLOCK.  A link under that name is removed, never followed; anything else than a
// regular file is refused.
tm_stream tm_create_log(const std::string& path, bool is_locked = false);
// What stands in the last line of such a file; empty where there is none.
std::string tm_last_line(std::FILE* log);

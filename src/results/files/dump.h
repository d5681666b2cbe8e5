// rs: the dump, a VCD file of all nets below a path that grows while runs go on.  A run that begins earlier
// than the file has come, as one that starts anew, begins the file anew.  After every run what it says is in
// the file.  There is at most one dump.
#pragma once

#include <string>
#include <string_view>

// False, error saying why: the file cannot be made, or no net has a name there.  The older dump ends.
bool rs_begin_dump(const std::string& file, std::string_view path, std::int32_t levels, bool has_strengths,
                   std::string& error);
// False: there was none, or its file could not be written to its end.
bool rs_end_dump();
bool rs_is_dumping();

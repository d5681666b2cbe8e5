// The expanded design that belongs to the sheets.
#pragma once

#include <map>
#include <string>

using net_ids = std::map<std::string, std::int16_t>;  // object ids of a sheet's nets by name

// Writes DIRECTORY/design_yx.  False: why says what is wrong.
bool write_design(const std::string& directory, const net_ids& top, const net_ids& adder,
                  const net_ids& carry, std::string& why);

// rs: what a dump shows: every name of a net below a path, bits of one name as vectors.
#pragma once

#include <string>
#include <vector>

#include "results/files/vcd.h"

struct rs_dumped_t {
    std::vector<rs_vcd_variable_t> variables;
    std::vector<std::vector<std::uint32_t>> bits;  // root nets by code, the highest bit first
};

// The names at most so many levels below the path, 0 for all; the path ends with "/".  None: nothing there.
rs_dumped_t rs_dumped_below(std::string_view path, std::int32_t levels);

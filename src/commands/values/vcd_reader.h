// kol: VCD files as stimuli.  Reads the changes of the variables of a VCD file and gives those that have the
// name of a net, below a scope that stands for the top level of the design.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kernel/context.h"

struct kol_vcd_force_t {
    std::int32_t time = 0;
    std::uint32_t net = 0;  // index of a root
    std::int8_t state = 0;
};

struct kol_vcd_read_t {
    std::vector<kol_vcd_force_t> forces;  // in the order of the file: times never decrease
    std::int32_t variables = 0;           // that name nets
    std::vector<std::string> unknown;     // the names of the others below the scope
};

// The scope is "tb.dut" or "tb/dut"; without one it is the outermost scope where there is only one.  False:
// error says what is wrong.
bool kol_read_vcd(std::string_view text, std::string_view scope, kol_vcd_read_t& read, std::string& error);

// rs: the text of VCD files: scopes and variables, values, the scale of time.  A variable is a net or a
// vector of nets with a path of the design; the scope of the top level is "top".  Values are 0, 1, x and z;
// in the extended form, behind an option, each has a letter and the strengths of its 0 and its 1.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct rs_vcd_variable_t {
    std::string path;   // "/u1/sum"
    std::string range;  // "[3:0]", empty for one bit
    std::uint32_t width = 1;
    std::uint32_t code = 0;  // variables of one code have one value
};

struct rs_vcd_scale_t {
    std::string unit;         // "10ps"
    std::int64_t factor = 1;  // units of a time step
};
// A time step in nanoseconds, as it was written before it became a float.
double rs_nanoseconds_of(float time_step);
rs_vcd_scale_t rs_vcd_scale_of(float time_step);

// The short name of a code.
std::string rs_vcd_code(std::uint32_t code);
// Everything before the first time.
std::string rs_vcd_header(std::vector<rs_vcd_variable_t> variables, const rs_vcd_scale_t& scale,
                          bool has_strengths);

// One value line: states by bit, the highest first.
void rs_vcd_add_value(const std::vector<std::int8_t>& states, std::string_view code, bool has_strengths,
                      std::string& text);

// rs: what WRITE VCD writes: the signals and user buses of the list and the trace, each under its full name.
#pragma once

#include <cstdint>
#include <cstdio>

// From the values at the begin time to the end time.
void rs_write_vcd(std::FILE* file, std::int32_t begin_time, std::int32_t end_time, bool has_strengths);

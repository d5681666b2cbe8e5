// rs: what WRITE CSV writes: the list as comma-separated values, a column an entry under its full name, a row
// for the begin time and one for each later time at which an entry changes.  Signals show the texts of the
// list, buses a value in their radix.
#pragma once

#include <cstdint>
#include <cstdio>

void rs_write_csv(std::FILE* file, std::int32_t begin_time, std::int32_t end_time);

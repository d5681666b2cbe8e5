// xp_sdf reading: the delays and limits of an SDF file, by the grammar of 2.1 and 3.0.  Text that is no SDF
// is refused with its line.
#pragma once

#include "expand/sdf.h"

// seconds_per_step: what one step of the design lasts.
void xp_read_sdf(const std::string& path, double seconds_per_step, xp_sdf& sdf, xp_status& status);
// The same from sdf.text.
void xp_parse_sdf(double seconds_per_step, xp_sdf& sdf, xp_status& status);
// "1ps", "10 ns", "0.1us": seconds; 0 for a text that is none.
double xp_seconds_of(std::string_view text);

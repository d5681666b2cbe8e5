// yxc: whether a sound design can be run: that its records and what a run keeps beside them fit in the memory
// that is left, and that no change comes before its cause.  Like the other checks these find one fault.
#pragma once

#include "netlist/design_check.h"

// Of the counts in the header, before anything else is read.
void yxc_check_memory(const yx_general_info_record_t& info, yxc_fault_t& fault);
// In every timing range: the delay of a pin that drives, of its net and of the inputs of its instance
// together is not negative.
void yxc_check_delays(yxc_fault_t& fault);

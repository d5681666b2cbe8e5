// kol: the values that the expansion of the command entry puts behind a command, each followed by a blank;
// "*** " stands for one that is not set.
#pragma once

#include <string_view>

#include "foundation/strings.h"

void kol_add_text(std::string_view value, tm_string_record_t& entry);
void kol_add_real(std::int32_t value, tm_string_record_t& entry);
// Below 0: not set.
void kol_add_time(std::int32_t time, tm_string_record_t& entry);
void kol_add_factor(float factor, tm_string_record_t& entry);

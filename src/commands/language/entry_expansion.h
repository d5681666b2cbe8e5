// kol: command expansion.  "?" behind a command in the entry replaces it by the command with its current
// values, which its row's procedure adds: each followed by a blank, "*** " for one that is not set.
#pragma once

#include <string_view>

#include "foundation/strings.h"

void kol_expand_cmd(const tm_string_record_t& text);

void kol_add_text(std::string_view value, tm_string_record_t& entry);
void kol_add_real(std::int32_t value, tm_string_record_t& entry);
// Below 0: not set.
void kol_add_time(std::int32_t time, tm_string_record_t& entry);
void kol_add_factor(float factor, tm_string_record_t& entry);

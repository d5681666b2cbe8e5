// kol: breaks of whole buses: reported and forgotten with the breaks of nets.
#pragma once

#include "foundation/strings.h"

bool kol_has_bus_break();
void kol_remove_bus_breaks();
// The newest of this name, at any level; false: there is none.
bool kol_remove_bus_break(const tm_string_record_t& name);
// Reports all, or those of a name; false: there is none.
bool kol_report_bus_breaks(const tm_string_record_t* name);

// kol: property lookup in the netlist.  Finds a property value of an instance, pin, net, macro or macro pin
// by name, without regard to case, in the name table of its kind.  A null object or an absent property gives
// value_found false; a name of length outside 1..200 is fatal (invalid_string).
#pragma once

#include "netlist/store.h"

void kol_inst_getvalueof_prop_on(const yx_inst_record_t* inst, const tm_string_record_t& name,
                                 yx_prop_record_t*& value, bool& value_found);
void kol_pin_getvalueof_prop_on(const yx_pin_record_t* pin, const tm_string_record_t& name,
                                yx_prop_record_t*& value, bool& value_found);
void kol_net_getvalueof_prop_on(const yx_net_record_t* net, const tm_string_record_t& name,
                                yx_prop_record_t*& value, bool& value_found);
void kol_pinm_getvalueof_prop_on(const yx_pinm_record_t* pinm, const tm_string_record_t& name,
                                 yx_prop_record_t*& value, bool& value_found);
void kol_macro_getvalueof_prop_on(const yx_macro_record_t* macro, const tm_string_record_t& name,
                                  yx_prop_record_t*& value, bool& value_found);

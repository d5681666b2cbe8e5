// kol: what the set-ups of the models share.  Reads the properties of a pin into its record.  Every procedure
// that finds a fault shows it with the pin's path, counts one error and answers false.
#pragma once

#include <string_view>

#include "kernel/context.h"

// The pin's property of that name, none when it has none.
const yx_prop_record_t* kol_pin_property(const yx_pin_record_t& pin, const tm_string_record_t& name);

bool kol_show_pin_error(std::string_view text, const yx_pin_record_t& pin);
// "# !!! Error : NO property "NAME" on pin : " and "# !!! Error : INVALID  property "NAME" type on pin : ".
bool kol_show_no_property(std::string_view name, const yx_pin_record_t& pin);
bool kol_show_property_type(std::string_view name, const yx_pin_record_t& pin);

inline constexpr std::string_view kol_pintype_error = "# !!! Error : INVALID  property \"PINTYPE\" on pin : ";

// An io_type other than input and output is a fault.
bool kol_check_pin_type(const yx_pin_record_t& pin);
// RISE and FALL, both required, into rise and fall.
bool kol_read_pin_delays(yx_pin_record_t& pin);
// The same for every pin of an instance, silently, after the properties have been rescaled.
void kol_refresh_pin_delays(const yx_inst_record_t& inst);
// DRIVE into drive_array; "S" for every value where the property, or a letter of it, is missing.
bool kol_read_pin_drive(yx_pin_record_t& pin);

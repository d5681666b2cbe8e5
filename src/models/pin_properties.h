// kol: the properties of timed pins.  Reads the properties with which flip-flop, latch, checker and switch
// describe a pin.  A false result: the property is missing or of the wrong type; the error is shown and
// counted, and the set-up of the instance ends.
#pragma once

#include <string>
#include <string_view>

#include "netlist/store.h"

// PIN, in capitals.
bool kol_read_pin_name(const yx_pin_record_t& pin, std::string& name);
// EDGE: its first character, unchanged; 'X' for an empty text.
bool kol_read_edge(const yx_pin_record_t& pin, char& edge);
// A time property that may be absent; then the limits are left alone and is_found is false.
bool kol_read_limit(const yx_pin_record_t& pin, const tm_string_record_t& property, std::int32_t (&limit)[3],
                    bool& is_found);

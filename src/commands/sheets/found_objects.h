// kol: objects of a sheet found by their names.  Names compare without regard to case; "*" stands for any
// characters, "?" for one.  Results are ids in the order of the sheet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "schematic/object.h"

using kol_found_objects_t = std::vector<std::int16_t>;
using kol_find_objects_t = kol_found_objects_t (*)(tm_file_index_t file, const tm_string_record_t& name);

bool kol_name_fits(std::string_view pattern, std::string_view name);
// The value of the first property of that name; empty without one.
std::string kol_property_of(tm_file_index_t file, std::int16_t object, std::string_view name);
// "U3", "U3/D" or "net": what a user calls an instance, a pin or a net; empty for other objects.
std::string kol_name_of(tm_file_index_t file, std::int16_t object);

kol_found_objects_t kol_find_instances(tm_file_index_t file, const tm_string_record_t& name);
// By NET, or "N_17" by number, or by any name of a signal of the design, "/U3/D" among them.
kol_found_objects_t kol_find_nets(tm_file_index_t file, const tm_string_record_t& name);
// Pins of the instances placed on the sheet: "U3/D", or "D" on any instance.
kol_found_objects_t kol_find_pins(tm_file_index_t file, const tm_string_record_t& name);
// The pins of an instance, each with its pin of the symbol: they stand in the same order; 0 where one is
// missing.
struct kol_placed_pin_t {
    std::int16_t placed = 0;  // pin property family
    std::int16_t pin = 0;
};
std::vector<kol_placed_pin_t> kol_pins_of(tm_file_index_t file, std::int16_t instance);
// The value of a pin's own property PIN, else that of the symbol's pin.
std::string kol_pin_name(tm_file_index_t file, const kol_placed_pin_t& pin);
// The symbol of an instance; 0 when it has none.
std::int16_t kol_symbol_of(tm_file_index_t file, std::int16_t instance);

// Selects or unselects them; how many changed.
std::int32_t kol_select_found(tm_file_index_t file, const kol_found_objects_t& found, bool on);
// Brings the box around them into the middle of the window.
void kol_centre_on(tm_file_index_t file, const kol_found_objects_t& found);

// Objects by name.

#include "commands/sheets/found_objects.h"

#include <algorithm>
#include <limits>

#include "commands/shared/picking.h"
#include "commands/shared/sheet_levels.h"
#include "foundation/numbers.h"
#include "kernel/lookup.h"
#include "schematic/net_number.h"
#include "schematic/object_box.h"
#include "schematic/object_reader.h"
#include "schematic/object_walk.h"
#include "schematic/placement.h"
#include "schematic/viewport.h"

namespace {

bool same_letter(char pattern, char name) {
    return pattern == '?' || tm_upper_case(pattern) == tm_upper_case(name);
}

bool is_same(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return tm_upper_case(x) == tm_upper_case(y); });
}

std::int32_t whole(double value) {
    constexpr double least = std::numeric_limits<std::int32_t>::min();
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(value, least, most));
}

// The objects of a walk whose property has a value that fits.
kol_found_objects_t find_by(tm_file_index_t file, const tm_walk& objects, std::string_view property,
                            const tm_string_record_t& name) {
    kol_found_objects_t found;
    for (const std::int16_t object : objects) {
        const std::string value = kol_property_of(file, object, property);
        if (!value.empty() && kol_name_fits(tm_view(name), value)) found.push_back(object);
    }
    return found;
}

// "N_17": net 17 when the sheet has wires of it, as not every page has.
std::int16_t net_of_number(tm_file_index_t file, const tm_string_record_t& name) {
    std::int32_t number = 0;
    if (!tm_const_equal_string("N_", name) ||
        !tm_string_to_number(tm_string(tm_view(name).substr(2)), INT32_MAX, number))
        return 0;
    const std::int16_t id = tm_numbered_net(file, number);
    return id != 0 && !tm_segments(file, id).empty() ? id : std::int16_t{0};
}

// The drawn nets that are the design's net of this name, as the level's sheet names them.
kol_found_objects_t nets_of_signal(tm_file_index_t file, const tm_string_record_t& name) {
    kol_found_objects_t found;
    yx_net_record_t *signal = nullptr, *net = nullptr;
    if (kol_level_file() != kol_context_file() || kol_find_net(name, signal) == 0) return found;
    tm_string_record_t number;
    for (const std::int16_t id : tm_nets(file)) {
        if (kol_property_of(file, id, "NET").empty()) continue;
        kol_find_sheet_net(file, id, number, net);
        if (net == signal) found.push_back(id);
    }
    return found;
}

}  // namespace

bool kol_name_fits(std::string_view pattern, std::string_view name) {
    std::size_t p = 0, n = 0, star = std::string_view::npos, behind = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            behind = n;
        } else if (p < pattern.size() && same_letter(pattern[p], name[n])) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++behind;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

std::string kol_property_of(tm_file_index_t file, std::int16_t object, std::string_view name) {
    for (const std::int16_t id : tm_properties(file, object)) {
        const auto& property = tm_object_as<tm_type_property_2d>(file, id);
        if (is_same(name, tm_view(property.name))) return std::string(tm_view(property.nvalue));
    }
    return {};
}

std::int16_t kol_symbol_of(tm_file_index_t file, std::int16_t instance) {
    const tm_reader_t sheet(file);
    const std::int16_t id = tm_object_as<tm_type_instance>(file, instance).symbol;
    const auto* const symbol = sheet.record<tm_type_symbol>(id);
    return symbol != nullptr && !tm_inq_object_deleted(file, id) ? id : std::int16_t{0};
}

std::vector<kol_placed_pin_t> kol_pins_of(tm_file_index_t file, std::int16_t instance) {
    std::vector<kol_placed_pin_t> pins;
    for (const std::int16_t placed : tm_pins(file, instance)) pins.push_back({placed, 0});
    const std::int16_t symbol = kol_symbol_of(file, instance);
    if (symbol == 0) return pins;
    std::size_t i = 0;
    for (const std::int16_t pin : tm_pins(file, symbol)) {
        if (i == pins.size()) pins.push_back({});
        pins[i++].pin = pin;
    }
    return pins;
}

std::string kol_pin_name(tm_file_index_t file, const kol_placed_pin_t& pin) {
    const std::string own = pin.placed != 0 ? kol_property_of(file, pin.placed, "PIN") : std::string();
    return own.empty() && pin.pin != 0 ? kol_property_of(file, pin.pin, "PIN") : own;
}

std::string kol_name_of(tm_file_index_t file, std::int16_t object) {
    const std::int16_t type = tm_object(file, object).object_type;
    if (type == tm_type_instance) return kol_property_of(file, object, "INST");
    if (type == tm_type_net) return kol_property_of(file, object, "NET");
    if (type != tm_type_pinpropfam) return {};
    const std::int16_t instance = tm_ancestor_of_type(file, object, tm_type_instance);
    if (instance == 0) return {};
    for (const kol_placed_pin_t& pin : kol_pins_of(file, instance))
        if (pin.placed == object) return kol_name_of(file, instance) + "/" + kol_pin_name(file, pin);
    return {};
}

kol_found_objects_t kol_find_instances(tm_file_index_t file, const tm_string_record_t& name) {
    return find_by(file, tm_instances(file), "INST", name);
}

kol_found_objects_t kol_find_nets(tm_file_index_t file, const tm_string_record_t& name) {
    const kol_found_objects_t named = find_by(file, tm_nets(file), "NET", name);
    if (!named.empty()) return named;
    if (const std::int16_t number = net_of_number(file, name); number != 0) return {number};
    return nets_of_signal(file, name);
}

kol_found_objects_t kol_find_pins(tm_file_index_t file, const tm_string_record_t& name) {
    const std::string_view text = tm_view(name);
    const std::size_t slash = text.rfind('/');
    const bool of_any = slash == std::string_view::npos;
    const std::string_view wanted = of_any ? text : text.substr(slash + 1);
    kol_found_objects_t found;
    for (const std::int16_t instance : tm_instances(file)) {
        if (!of_any && !kol_name_fits(text.substr(0, slash), kol_property_of(file, instance, "INST")))
            continue;
        for (const kol_placed_pin_t& pin : kol_pins_of(file, instance))
            if (pin.placed != 0 && kol_name_fits(wanted, kol_pin_name(file, pin)))
                found.push_back(pin.placed);
    }
    return found;
}

std::int32_t kol_select_found(tm_file_index_t file, const kol_found_objects_t& found, bool on) {
    std::int32_t changed = 0;
    for (const std::int16_t object : found) {
        if (tm_inq_object_selected(file, object) != on) ++changed;
        tm_set_object_selected(file, object, on);
    }
    return changed;
}

void kol_centre_on(tm_file_index_t file, const kol_found_objects_t& found) {
    tm_box_t box;
    for (const std::int16_t object : found) tm_enclose(box, tm_object_box(tm_reader_t(file), object));
    if (box.is_empty()) return;
    tm_view_centre(file, {whole(box.xmin), whole(box.ymin), whole(box.xmax), whole(box.ymax)});
}

// PIN, EDGE and the four limits, read with their error lines.
#include "models/pin_properties.h"

#include <algorithm>

#include "kernel/say.h"
#include "models/pin_setup.h"

namespace {

const tm_string_record_t pin_name = tm_string("PIN");
const tm_string_record_t pin_edge = tm_string("EDGE");

constexpr std::string_view edge_type =
    "# !!! Error : INVALID  property \"EDGE\" type(String:R/F/X) on pin : ";
constexpr std::string_view edge_value =
    "# !!! Error : INVALID  property \"EDGE\" Value :\"R\"or\"F\"or\"X\") on pin : ";

}  // namespace

bool kol_read_pin_name(const yx_pin_record_t& pin, std::string& name) {
    const yx_prop_record_t* value = kol_pin_property(pin, pin_name);
    if (value == nullptr) return kol_show_no_property("PIN", pin);
    if (value->prop_type != YX_PSTRING) return kol_show_property_type("PIN", pin);
    name = kol_path(value->valuec);
    std::ranges::transform(name, name.begin(), tm_upper_case);
    return true;
}

bool kol_read_edge(const yx_pin_record_t& pin, char& edge) {
    const yx_prop_record_t* value = kol_pin_property(pin, pin_edge);
    if (value == nullptr) return kol_show_no_property("EDGE", pin);
    if (value->prop_type != YX_PSTRING) return kol_show_pin_error(edge_type, pin);
    const std::string_view text = kol_path(value->valuec);
    const char first = text.empty() ? 'X' : text.front();
    if (std::string_view("RFX").find(tm_upper_case(first)) == std::string_view::npos)
        return kol_show_pin_error(edge_value, pin);
    edge = first;
    return true;
}

bool kol_read_limit(const yx_pin_record_t& pin, const tm_string_record_t& property, std::int32_t (&limit)[3],
                    bool& is_found) {
    const yx_prop_record_t* value = kol_pin_property(pin, property);
    is_found = value != nullptr;
    if (!is_found) return true;
    if (value->prop_type != YX_PTIME) return kol_show_property_type(tm_view(property), pin);
    std::ranges::copy(value->valuet, limit);
    return true;
}

// Properties by name.
#include "netlist/property.h"

#include <algorithm>

#include "foundation/status.h"
#include "netlist/text.h"

namespace {

using name_table_t = std::array<yx_prop_type_record_t, yx_max_names>;

[[noreturn]] void stop_at_name(const char* lookup, const tm_string_record_t& name) {
    if (yx_debugfile != nullptr) {
        std::fprintf(yx_debugfile, " !! %s : name length : %d\n \"%.*s\"\n", lookup, name.len,
                     std::clamp(name.len, 0, tm_string_max), name.char_);
        std::fflush(yx_debugfile);
    }
    tm_fatal(invalid_string);
}

bool is_name(const tm_string_record_t& wanted, const tm_string_record_t& name) {
    if (wanted.len != name.len) return false;
    return std::equal(wanted.char_, wanted.char_ + wanted.len, name.char_,
                      [](char a, char b) { return tm_upper_case(a) == tm_upper_case(b); });
}

template <typename Record>
void find_value(const char* lookup, const Record* record, const name_table_t& names,
                const tm_string_record_t& name, yx_prop_record_t*& value, bool& value_found) {
    value = nullptr;
    value_found = false;
    if (record == nullptr) return;
    if (name.len < 1 || name.len > yxi_string_max) stop_at_name(lookup, name);
    const std::int32_t count = std::min<std::int32_t>(record->nb_of_property, yx_max_names);
    for (std::int32_t k = 0; k < count; ++k) {
        if (!is_name(name, names[static_cast<std::size_t>(k)].name)) continue;
        value = yx_ptrto_prop_rec(record->first_prop + k);
        value_found = true;
        return;
    }
}

}  // namespace

void kol_inst_getvalueof_prop_on(const yx_inst_record_t* inst, const tm_string_record_t& name,
                                 yx_prop_record_t*& value, bool& value_found) {
    find_value("kol_inst_getvalueof_prop_on", inst, yx_sext.property_instance, name, value, value_found);
}

void kol_pin_getvalueof_prop_on(const yx_pin_record_t* pin, const tm_string_record_t& name,
                                yx_prop_record_t*& value, bool& value_found) {
    find_value("kol_pin_getvalueof_prop_on", pin, yx_sext.property_pin, name, value, value_found);
}

void kol_net_getvalueof_prop_on(const yx_net_record_t* net, const tm_string_record_t& name,
                                yx_prop_record_t*& value, bool& value_found) {
    find_value("kol_net_getvalueof_prop_on", net, yx_sext.property_net, name, value, value_found);
}

void kol_pinm_getvalueof_prop_on(const yx_pinm_record_t* pinm, const tm_string_record_t& name,
                                 yx_prop_record_t*& value, bool& value_found) {
    find_value("kol_pinm_getvalueof_prop_on", pinm, yx_sext.property_pin, name, value, value_found);
}

void kol_macro_getvalueof_prop_on(const yx_macro_record_t* macro, const tm_string_record_t& name,
                                  yx_prop_record_t*& value, bool& value_found) {
    find_value("kol_macro_getvalueof_prop_on", macro, yx_sext.property_instance, name, value, value_found);
}

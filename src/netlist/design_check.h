// yxc: the check of a design while and after it is loaded.  A loaded design is walked by index without
// further thought, so whatever could lead such a walk astray is found here, in time in proportion to the size
// of the design: values outside the ranges of the layout tables, strings outside their block, property, pin
// and member runs outside their kind, chains that run in circles or disagree with their counts, net trees
// that do not hang together.  Holds no state; the first fault found ends the check.
#pragma once

#include <string>
#include <string_view>

#include "netlist/layout.h"

struct yxc_fault_t {
    std::string_view section;  // empty: no fault
    std::int32_t record = 0;   // 1-based
    std::string what;
};

inline bool yxc_is_sound(const yxc_fault_t& fault) { return fault.section.empty(); }
void yxc_set_fault(yxc_fault_t& fault, std::string_view section, std::int32_t record, std::string what);

std::string yxc_outside(std::string_view field, std::int32_t value, lay_limits limits);

// The fields of one record against the ranges of its rows.
template <typename Record>
void yxc_check_record(const lay_layout<Record>& layout, const Record& record, std::int32_t place,
                      yxc_fault_t& fault) {
    lay_each_row(layout, record, [&](const lay_row<Record>& row) {
        if (row.range.bound == lay_bound::none) return true;
        const std::int32_t value = row.value(record);
        const lay_limits limits = lay_limits_of(row.range, place);
        if (value >= limits.lowest && value <= limits.highest) return true;
        yxc_set_fault(fault, layout.section, place, yxc_outside(row.name, value, limits));
        return false;
    });
}

// What the ranges leave open in the header, in an entry of a property name table and in the strings (before
// their characters are used).
void yxc_check_header(const yx_general_info_record_t& info, yxc_fault_t& fault);
void yxc_check_names(std::string_view section, const yx_prop_type_record_t& names, std::int32_t place,
                     yxc_fault_t& fault);
void yxc_check_strings(yxc_fault_t& fault);

// How the records of the whole store refer to each other; every single value lies inside its range.
void yxc_check_references(yxc_fault_t& fault);

// What the primitive cells of a sheet look like: from the outermost function of their formula, or from the
// model that they become.
#include <algorithm>

#include "expand/sheet_plan.h"

namespace {

bool is_letter_of_name(char c) { return c >= 'a' && c <= 'z'; }

std::vector<std::string_view> functions_of(std::string_view formula) {
    std::vector<std::string_view> names;
    for (std::size_t at = 0; at < formula.size();) {
        std::size_t end = at;
        while (end < formula.size() && is_letter_of_name(formula[end])) ++end;
        if (end > at) names.push_back(formula.substr(at, end - at));
        at = end + 1;
    }
    return names;
}

// Whether the outermost function says it all: inverters and functions of its kind are what is inside.
bool is_of_one_function(const std::vector<std::string_view>& names) {
    return std::all_of(names.begin() + 1, names.end(),
                       [&](std::string_view name) { return name == names[0] || name == "not"; });
}

// "$_DFFE_PN_" of the family "$_DFFE_" is a DFFE, the function "and" an AND.
std::string type_name(std::string_view family) {
    std::string text;
    for (const char c : family)
        if (c != '$' && c != '_') text += tm_upper_case(c);
    return text;
}

xp_cell_look look_of(const xp_cell_type& type, std::size_t input_bits) {
    const std::vector<std::string_view> functions = functions_of(type.formula);
    const bool is_reduction = type.shape == xp_shape::reduce, is_of_one_word = type.inputs.size() == 1;
    xp_cell_look look{sg_form::box, false, type_name(type.name)};
    if (type.shape == xp_shape::memory) return {sg_form::memory, false, "MEM"};
    if (type.shape == xp_shape::table) look.form = sg_form::table;
    if (functions.empty() || !is_of_one_function(functions) || (is_reduction && !is_of_one_word)) return look;
    const xp_function_look function = xp_look_of_function(functions[0]);
    look.form = is_reduction && input_bits == 1 ? sg_form::buffer : function.form;
    look.is_inverted = function.is_inverted;
    if (is_reduction) look.type = type_name(functions[0]);
    return look;
}

}  // namespace

xp_cell_look xp_look_of(std::string_view type, std::size_t input_bits) {
    if (const xp_cell_type* row = xp_find_cell_type(type)) return look_of(*row, input_bits);
    xp_timed_form form;
    const xp_timed_row* timed = xp_find_timed(type, form);
    if (timed == nullptr) return {sg_form::box, false, type_name(type)};
    const xp_function_look look = xp_look_of_model(timed->model);
    return {look.form, look.is_inverted, look.form == sg_form::tristate ? "TBUF" : type_name(timed->name)};
}

xp_cell_look xp_look_of_library(const xp_library_cell& cell) {
    xp_cell_look look{cell.registers.empty() ? sg_form::table : sg_form::box, false, cell.name};
    if (cell.parts.size() != 1) return look;
    const xp_plan_gate& last = cell.parts[0].gates.back();
    const bool is_inverted_tristate = cell.parts[0].gates.size() == 2 && xp_is_tristate(last.model) &&
                                      cell.parts[0].gates[0].pins.size() == 1;
    if (cell.parts[0].gates.size() > 1 && !is_inverted_tristate) return look;
    const xp_function_look shape = xp_look_of_model(last.model);
    if (last.pins.size() == 1)
        look.form = sg_form::buffer;
    else if (shape.form != sg_form::box)
        look.form = shape.form;
    look.is_inverted = shape.is_inverted || is_inverted_tristate;
    return look;
}

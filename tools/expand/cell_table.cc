// The cell types of Yosys, the functions of their formulas, and the compiler of these.
#include "expand/cell_table.h"

#include <iterator>

namespace {

using enum xp_shape;

// clang-format off
constexpr xp_cell_type cell_types[] = {
    {"$_BUF_",        gate,     "A",      "buf(A)"},
    {"$_NOT_",        gate,     "A",      "not(A)"},
    {"$_AND_",        gate,     "AB",     "and(A,B)"},
    {"$_NAND_",       gate,     "AB",     "nand(A,B)"},
    {"$_OR_",         gate,     "AB",     "or(A,B)"},
    {"$_NOR_",        gate,     "AB",     "nor(A,B)"},
    {"$_XOR_",        gate,     "AB",     "xor(A,B)"},
    {"$_XNOR_",       gate,     "AB",     "xnor(A,B)"},
    {"$_ANDNOT_",     gate,     "AB",     "and(A,not(B))"},
    {"$_ORNOT_",      gate,     "AB",     "or(A,not(B))"},
    {"$_MUX_",        gate,     "ABS",    "mux(A,B,S)"},
    {"$_NMUX_",       gate,     "ABS",    "nmux(A,B,S)"},
    {"$_AOI3_",       gate,     "ABC",    "nor(and(A,B),C)"},
    {"$_OAI3_",       gate,     "ABC",    "nand(or(A,B),C)"},
    {"$_AOI4_",       gate,     "ABCD",   "nor(and(A,B),and(C,D))"},
    {"$_OAI4_",       gate,     "ABCD",   "nand(or(A,B),or(C,D))"},
    {"$_MUX4_",       gate,     "ABCDST", "mux(mux(A,B,S),mux(C,D,S),T)"},
    {"$_MUX8_",       gate,     "ABCDEFGHSTU",
     "mux(mux(mux(A,B,S),mux(C,D,S),T),mux(mux(E,F,S),mux(G,H,S),T),U)"},
    {"$_MUX16_",      gate,     "ABCDEFGHIJKLMNOPSTUV",
     "mux(mux(mux(mux(A,B,S),mux(C,D,S),T),mux(mux(E,F,S),mux(G,H,S),T),U),"
         "mux(mux(mux(I,J,S),mux(K,L,S),T),mux(mux(M,N,S),mux(O,P,S),T),U),V)"},
    {"$buf",          word,     "A",      "buf(A)"},
    {"$pos",          word,     "A",      "buf(A)"},
    {"$not",          word,     "A",      "not(A)"},
    {"$and",          word,     "AB",     "and(A,B)"},
    {"$or",           word,     "AB",     "or(A,B)"},
    {"$xor",          word,     "AB",     "xor(A,B)"},
    {"$xnor",         word,     "AB",     "xnor(A,B)"},
    {"$mux",          word,     "ABS",    "mux(A,B,S)"},
    {"$reduce_and",   reduce,   "A",      "and(A*)"},
    {"$reduce_or",    reduce,   "A",      "or(A*)"},
    {"$reduce_bool",  reduce,   "A",      "or(A*)"},
    {"$reduce_xor",   reduce,   "A",      "xor(A*)"},
    {"$reduce_xnor",  reduce,   "A",      "xnor(A*)"},
    {"$logic_not",    reduce,   "A",      "nor(A*)"},
    {"$logic_and",    reduce,   "AB",     "and(or(A*),or(B*))"},
    {"$logic_or",     reduce,   "AB",     "or(A*,B*)"},
    {"$lut",          table,    "A",      ""},
    {"$pmux",         selector, "ABS",    ""},
    {"$mem_v2",       memory,   "",       ""},
    {"$scopeinfo",    ignored,  "",       ""},
    {"$assert",       ignored,  "",       ""},
    {"$assume",       ignored,  "",       ""},
    {"$cover",        ignored,  "",       ""},
    {"$fair",         ignored,  "",       ""},
    {"$live",         ignored,  "",       ""},
    {"$check",        ignored,  "",       ""},
    {"$print",        ignored,  "",       ""},
};

// The functions beside the gates of the table of models.
struct function {
    std::string_view name;
    xp_model model;
    bool with_one;       // a constant 1 is a further input
    bool is_multiplexer; // the model is its last gate
    xp_function_look look;
};

constexpr function functions[] = {
    {"buf",  xp_model_named("AND"),  false, false, {sg_form::buffer,      false}},
    {"not",  xp_model_named("NAND"), false, false, {sg_form::buffer,      true}},
    {"xnor", xp_model_named("XOR"),  true,  false, {sg_form::xor_gate,    true}},
    {"mux",  xp_model_named("OR"),   false, true,  {sg_form::multiplexer, false}},
    {"nmux", xp_model_named("NOR"),  false, true,  {sg_form::multiplexer, true}},
};

constexpr sg_form forms[] = {sg_form::box, sg_form::and_gate, sg_form::or_gate, sg_form::xor_gate, sg_form::tristate};
static_assert(std::size(forms) == static_cast<std::size_t>(kol_symbol::triangle) + 1);
// clang-format on

using kind = enum xp_operand::kind;

struct compiler {
    std::string_view formula, inputs;  // the formula is sound
    std::size_t at = 0;
    xp_steps steps;
};

constexpr xp_function_look look_of(xp_model model) {
    return {forms[static_cast<std::size_t>(model->symbol)], model->is_inverted};
}

constexpr bool is_named(xp_model model, std::string_view name) {
    if (model->kind != kol_model_kind::gate || model->model.name.size() != name.size()) return false;
    for (std::size_t i = 0; i < name.size(); ++i)
        if (tm_upper_case(name[i]) != model->model.name[i]) return false;
    return true;
}

constexpr function function_named(std::string_view name) {
    for (const function& row : functions)
        if (row.name == name) return row;
    for (const kol_model_row_t& row : kol_model_rows)
        if (is_named(&row, name)) return {name, &row, false, false, look_of(&row)};
    throw "no such function";  // at compile time only: the proof below compiles every formula
}

constexpr xp_operand add_step(compiler& c, xp_model model, std::vector<xp_operand> operands) {
    c.steps.push_back({model, std::move(operands)});
    return {kind::step, static_cast<std::uint8_t>(c.steps.size() - 1)};
}

constexpr xp_operand add_multiplexer(compiler& c, xp_model last, const std::vector<xp_operand>& abs) {
    const xp_operand a = abs[0], b = abs[1], s = abs[2];
    const xp_operand not_s = add_step(c, xp_model_named("NAND"), {s});
    const xp_operand from_a = add_step(c, xp_model_named("AND"), {a, not_s});
    const xp_operand from_b = add_step(c, xp_model_named("AND"), {b, s});
    const xp_operand from_both = add_step(c, xp_model_named("AND"), {a, b});
    return add_step(c, last, {from_a, from_b, from_both});
}

constexpr xp_operand compile_operand(compiler& c);

constexpr xp_operand compile_call(compiler& c) {
    const std::size_t open = c.formula.find('(', c.at);
    const function called = function_named(c.formula.substr(c.at, open - c.at));
    std::vector<xp_operand> operands;
    c.at = open;
    do {
        ++c.at;
        operands.push_back(compile_operand(c));
    } while (c.formula[c.at] == ',');
    ++c.at;
    if (called.is_multiplexer) return add_multiplexer(c, called.model, operands);
    if (called.with_one) operands.push_back({kind::constant, 1});
    return add_step(c, called.model, std::move(operands));
}

constexpr xp_operand compile_operand(compiler& c) {
    const char first = c.formula[c.at];
    if (first >= 'a' && first <= 'z') return compile_call(c);
    ++c.at;
    if (first == '0' || first == '1') return {kind::constant, static_cast<std::uint8_t>(first - '0')};
    const std::size_t port = c.inputs.find(first);
    if (port == std::string_view::npos) throw "no such port";
    const bool is_whole = c.at < c.formula.size() && c.formula[c.at] == '*';
    if (is_whole) ++c.at;
    return {is_whole ? kind::whole_port : kind::port, static_cast<std::uint8_t>(port)};
}

constexpr xp_steps compiled(std::string_view formula, std::string_view inputs) {
    compiler c{formula, inputs, 0, {}};
    compile_operand(c);
    if (c.at != formula.size()) throw "text behind the formula";
    return c.steps;
}

constexpr bool formulas_compile() {
    for (const xp_cell_type& row : cell_types)
        if (!row.formula.empty() && compiled(row.formula, row.inputs).empty()) return false;
    return true;
}
static_assert(formulas_compile());

}  // namespace

const xp_cell_type* xp_find_cell_type(std::string_view name) {
    for (const xp_cell_type& row : cell_types)
        if (row.name == name) return &row;
    return nullptr;
}

std::span<const xp_cell_type> xp_cell_types() { return cell_types; }

xp_function_look xp_look_of_model(xp_model model) { return look_of(model); }
xp_function_look xp_look_of_function(std::string_view name) { return function_named(name).look; }

xp_steps xp_compile(std::string_view formula, std::string_view inputs) { return compiled(formula, inputs); }

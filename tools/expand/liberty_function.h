// xp_function: the logic functions of library cells.  Owns how a function is written in Liberty ("!", "'",
// "^", "*", "&" or a blank, "+" or "|", in this order of binding) and its table of results.  A function
// keeps only the inputs that it depends on, at most xp_function_inputs_max.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

inline constexpr std::size_t xp_function_inputs_max = 12;

struct xp_function {
    std::vector<std::int32_t> inputs;  // numbers that the cell gives its pins and states
    std::vector<bool> table{false};    // bit k of a place is the value of input k
};

// What a name in a function stands for; false for a name that is none.
using xp_function_lookup = std::function<bool(std::string_view name, xp_function& meaning)>;

xp_function xp_function_of_input(std::int32_t input);
xp_function xp_function_not(const xp_function& a);
enum class xp_function_join : std::uint8_t { all, any, odd };
xp_function xp_function_joined(const xp_function& a, const xp_function& b, xp_function_join how);
// The value under values of the inputs: bit k of `values` is that of input k.
inline bool xp_function_at(const xp_function& f, std::size_t values) { return f.table[values]; }
// Whether the function is one input, or its inverse.
inline bool xp_is_literal(const xp_function& f) { return f.inputs.size() == 1; }
inline bool xp_is_inverted_literal(const xp_function& f) { return xp_is_literal(f) && f.table[0]; }
// How the function follows an input: 1 with it, -1 against it, 0 as the others say.
int xp_sense_of(const xp_function& f, std::size_t input);
// The table in hexadecimal digits, the highest places first.
std::string xp_table_text(const std::vector<bool>& table);

// False for a text that is no function, with what is wrong in `why`.
bool xp_parse_function(std::string_view text, const xp_function_lookup& lookup, xp_function& function,
                       std::string& why);

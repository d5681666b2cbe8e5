#include <algorithm>

#include "expand/sheet_plan.h"

namespace {

using enum sg_form;

struct look_row {
    std::string_view type;
    sg_form form;
    bool is_inverted;
    std::string_view called;
};

// clang-format off
constexpr look_row looks[] = {
    {"$_BUF_",       buffer,      false, "BUF"},
    {"$_NOT_",       buffer,      true,  "NOT"},
    {"$_AND_",       and_gate,    false, "AND"},
    {"$_NAND_",      and_gate,    true,  "NAND"},
    {"$_OR_",        or_gate,     false, "OR"},
    {"$_NOR_",       or_gate,     true,  "NOR"},
    {"$_XOR_",       xor_gate,    false, "XOR"},
    {"$_XNOR_",      xor_gate,    true,  "XNOR"},
    {"$_ANDNOT_",    and_gate,    false, "ANDNOT"},
    {"$_ORNOT_",     or_gate,     false, "ORNOT"},
    {"$_MUX_",       multiplexer, false, "MUX"},
    {"$_NMUX_",      multiplexer, true,  "NMUX"},
    {"$_MUX4_",      multiplexer, false, "MUX4"},
    {"$_MUX8_",      multiplexer, false, "MUX8"},
    {"$_MUX16_",     multiplexer, false, "MUX16"},
    {"$buf",         buffer,      false, "BUF"},
    {"$pos",         buffer,      false, "BUF"},
    {"$not",         buffer,      true,  "NOT"},
    {"$and",         and_gate,    false, "AND"},
    {"$or",          or_gate,     false, "OR"},
    {"$xor",         xor_gate,    false, "XOR"},
    {"$xnor",        xor_gate,    true,  "XNOR"},
    {"$mux",         multiplexer, false, "MUX"},
    {"$reduce_and",  and_gate,    false, "AND"},
    {"$reduce_or",   or_gate,     false, "OR"},
    {"$reduce_bool", or_gate,     false, "OR"},
    {"$reduce_xor",  xor_gate,    false, "XOR"},
    {"$reduce_xnor", xor_gate,    true,  "XNOR"},
    {"$logic_not",   or_gate,     true,  "NOR"},
    {"$_TBUF_",      tristate,    false, "TBUF"},
    {"$tribuf",      tristate,    false, "TBUF"},
};
// clang-format on

// "$_DFFE_PN_" of the family "$_DFFE_" is a DFFE.
std::string type_name(std::string_view family) {
    std::string text;
    for (const char c : family)
        if (c != '$' && c != '_') text += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return text;
}

bool is_one_input(std::string_view type) { return type.starts_with("$reduce_") || type == "$logic_not"; }

}  // namespace

xp_cell_look xp_look_of(std::string_view type, std::size_t input_bits) {
    for (const look_row& row : looks) {
        if (row.type != type) continue;
        const bool is_buffer = input_bits == 1 && is_one_input(type);
        return {is_buffer ? buffer : row.form, row.is_inverted, std::string(row.called)};
    }
    xp_timed_form form;
    const xp_timed_row* timed = xp_find_timed(type, form);
    return {box, false, type_name(timed != nullptr ? timed->name : type)};
}

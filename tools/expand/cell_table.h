// xp_cell: what each cell type of Yosys becomes.  Owns one table: cell type, shape, input ports, and the
// formula of its output over the simulator's gates.  A formula is compiled into steps, one gate each, the
// last one driving the output.
//
// Formulas are calls of the simulator's gates (and, nand, or, nor, xor, ... by their MODEL) and of xnor, not,
// buf, mux(a,b,s) and nmux, over ports ("A"), all bits of a port ("A*") and the constants 0 and 1.  not is a
// NAND and buf an AND with one input; xnor is an XOR with a constant 1 as further input; mux is the OR of a
// gated by not s, b gated by s, and a AND b, so that its output stays when s changes between equal inputs.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "models/model_table.h"
#include "sheets/symbol.h"

// A row of the simulator's table of models.
using xp_model = const kol_model_row_t*;

// The model of a name in capitals; none does not compile.
consteval xp_model xp_model_named(std::string_view name) {
    for (const kol_model_row_t& row : kol_model_rows)
        if (row.model.name == name) return &row;
    throw "no such model";
}

// How a sheet shows a function or a model.
struct xp_function_look {
    sg_form form = sg_form::box;
    bool is_inverted = false;
};

constexpr bool xp_is_register(xp_model model) { return model->kind == kol_model_kind::register_; }
constexpr bool xp_is_memory(xp_model model) { return model->kind == kol_model_kind::memory; }
// Drives its net with states of its own, beside others.
constexpr bool xp_is_tristate(xp_model model) { return model->kind == kol_model_kind::buffer; }

enum class xp_shape : std::uint8_t {
    gate,      // ports of one bit
    word,      // one formula per bit of Y; A and B are extended to its width, S serves every bit
    reduce,    // Y bit 0 from whole ports, the other bits 0
    table,     // Y bit 0 from the bits of A and the parameter LUT
    selector,  // Y is A, or the word of B whose bit of S is 1
    memory,    // a memory of its own, by its parameters
    ignored,   // carries no function
};

struct xp_cell_type {
    std::string_view name;
    xp_shape shape;
    std::string_view inputs;  // one letter a port; the output is Y
    std::string_view formula;
};

struct xp_operand {
    enum class kind : std::uint8_t { port, whole_port, step, constant } kind;
    std::uint8_t index;  // of the port, of the step, or the constant 0 or 1
};

struct xp_step {
    xp_model model = nullptr;
    std::vector<xp_operand> operands;
};

using xp_steps = std::vector<xp_step>;

// The row of a cell type; null for one the table does not hold.
const xp_cell_type* xp_find_cell_type(std::string_view name);
std::span<const xp_cell_type> xp_cell_types();
// The steps of a formula over the given input ports.
xp_steps xp_compile(std::string_view formula, std::string_view inputs);
xp_function_look xp_look_of_model(xp_model model);
xp_function_look xp_look_of_function(std::string_view name);

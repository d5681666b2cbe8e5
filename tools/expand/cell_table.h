// xp_cell: what each cell type of Yosys becomes.  Owns one table: cell type, shape, input ports, and the
// formula of its output over the simulator's gates.  A formula is compiled into steps, one gate each, the
// last one driving the output.
//
// Formulas are calls of and, nand, or, nor, xor, xnor, not, buf, mux(a,b,s) and nmux over ports ("A"), all
// bits of a port ("A*") and the constants 0 and 1.  not is a NAND and buf an AND with one input; xnor is an
// XOR with a constant 1 as further input; mux is the OR of a gated by not s, b gated by s, and a AND b, so
// that its output stays when s changes between equal inputs.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

enum class xp_model : std::uint8_t {
    and_gate,
    nand_gate,
    or_gate,
    nor_gate,
    xor_gate,
    dff,
    latch,
    smos,
    count
};

// The MODEL property of a model.
inline constexpr std::array<std::string_view, 8> xp_model_names = {"AND", "NAND", "OR",    "NOR",
                                                                   "XOR", "DFF",  "LATCH", "SMOS"};
static_assert(xp_model_names.size() == static_cast<std::size_t>(xp_model::count));

constexpr bool xp_is_register(xp_model model) { return model == xp_model::dff || model == xp_model::latch; }
constexpr std::string_view xp_output_pin(xp_model model) { return xp_is_register(model) ? "Q" : "Y"; }

enum class xp_shape : std::uint8_t {
    gate,      // ports of one bit
    word,      // one formula per bit of Y; A and B are extended to its width, S serves every bit
    reduce,    // Y bit 0 from whole ports, the other bits 0
    selector,  // Y is A, or the word of B whose bit of S is 1
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
    xp_model model;
    std::vector<xp_operand> operands;
};

using xp_steps = std::vector<xp_step>;

// The row of a cell type; null for one the table does not hold.
const xp_cell_type* xp_find_cell_type(std::string_view name);
std::span<const xp_cell_type> xp_cell_types();
// The steps of a formula over the given input ports.
xp_steps xp_compile(std::string_view formula, std::string_view inputs);

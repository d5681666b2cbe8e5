// kol: the table of models that the program knows, in the order in which MODEL values are tried.  A model is
// announced here and nowhere else: the kernel takes its name and procedures, the expander and the sheets what
// it is, how its output pin is called and how it looks.
#pragma once

#include <array>
#include <span>

#include "kernel/model.h"
#include "models/dff.h"
#include "models/dlatch.h"
#include "models/gates.h"
#include "models/latch.h"
#include "models/lut.h"
#include "models/mem.h"
#include "models/smos.h"
#include "models/stable.h"
#include "models/tri.h"

enum class kol_model_kind : std::uint8_t {
    gate,       // the function of its inputs; its name is a function in the formulas of cells
    register_,  // keeps a value: D, a clock or enable, R, S; takes initial values
    switch_,    // drives and reads its terminals
    buffer,     // drives its net or leaves it to others
    table,      // the function of its inputs that a property says
    memory,     // several outputs; its pins are named by port
    checker,    // drives nothing
};

enum class kol_symbol : std::uint8_t { box, and_gate, or_gate, xor_gate, triangle };

struct kol_model_row_t {
    kol_model_t model;
    kol_model_kind kind;
    kol_symbol symbol = kol_symbol::box;
    bool is_inverted = false;      // the symbol has a bubble at its output
    std::string_view output = {};  // PIN of its output or driven terminal
    std::string_view clock = {};   // what the PIN of its clock or enable begins with
};

// ---- handlers by PIN

// PIN values of `least` to `most` characters that begin so, in either case.
struct kol_pin_row_t {
    std::string_view begin;
    std::size_t least, most;
    yx_procedure_t handler;
};

inline constexpr std::size_t kol_any_length = 127;

inline constexpr std::array kol_dff_pins = {
    kol_pin_row_t{"D", 1, 1, kol_dff_d_hdler},
    kol_pin_row_t{"CLK", 3, 4, kol_dff_clk_hdler},
    kol_pin_row_t{"R", 1, 2, kol_dff_r_hdler},
    kol_pin_row_t{"S", 1, 2, kol_dff_s_hdler},
};
inline constexpr std::array kol_latch_pins = {
    kol_pin_row_t{"D", 1, 1, kol_latch_d_hdler},
    kol_pin_row_t{"E", 1, 2, kol_latch_e_hdler},
    kol_pin_row_t{"R", 1, 2, kol_latch_r_hdler},
    kol_pin_row_t{"S", 1, 2, kol_latch_s_hdler},
};
inline constexpr std::array kol_stable_pins = {
    kol_pin_row_t{"D", 1, 1, kol_stable_d_hdler},
    kol_pin_row_t{"CLK", 3, 4, kol_stable_clk_hdler},
    kol_pin_row_t{"E", 1, 2, kol_stable_e_hdler},
};
inline constexpr std::array kol_dlatch_pins = {
    kol_pin_row_t{"D", 1, 1, kol_dlatch_d_hdler},
    kol_pin_row_t{"E", 1, 2, kol_dlatch_e_hdler},
    kol_pin_row_t{"R", 1, 2, kol_dlatch_r_hdler},
    kol_pin_row_t{"S", 1, 2, kol_dlatch_s_hdler},
};
inline constexpr std::array kol_tri_pins = {
    kol_pin_row_t{"A", 1, 1, kol_tri_hdler},
    kol_pin_row_t{"E", 1, 2, kol_tri_hdler},
};
inline constexpr std::array kol_smos_pins = {
    kol_pin_row_t{"E", 1, 2, kol_smos_e_hdler},
    kol_pin_row_t{"", 0, kol_any_length, kol_smos_d_hdler},
};

constexpr bool kol_fits(const kol_pin_row_t& row, std::string_view value) {
    if (value.size() < row.least || value.size() > row.most) return false;
    for (std::size_t k = 0; k < row.begin.size(); ++k)
        if (tm_upper_case(value[k]) != row.begin[k]) return false;
    return true;
}

template <const auto& rows>
yx_procedure_t kol_by_pin(std::string_view value) {
    for (const kol_pin_row_t& row : rows)
        if (kol_fits(row, value)) return row.handler;
    return nullptr;
}

// One handler serves every input pin of a gate.
template <yx_procedure_t handler>
yx_procedure_t kol_every_input(std::string_view) {
    return handler;
}

template <yx_procedure_t set_up, yx_procedure_t handler,
          kol_short_way_t (*short_way)(const yx_inst_record_t&)>
constexpr kol_model_row_t kol_gate(std::string_view name, kol_symbol symbol, bool is_inverted) {
    return {{name, set_up, false, kol_every_input<handler>, kol_clear_gates, nullptr, kol_gate_refresh,
             short_way},
            kol_model_kind::gate,
            symbol,
            is_inverted,
            "Y",
            {}};
}

// ---- the table

// clang-format off
inline constexpr kol_model_row_t kol_model_rows[] = {
    kol_gate<kol_and_init,  kol_and_i1_hdler, kol_and_short_way> ("AND",  kol_symbol::and_gate, false),
    kol_gate<kol_nand_init, kol_nand_i1_hdler, kol_nand_short_way>("NAND", kol_symbol::and_gate, true),
    kol_gate<kol_or_init,   kol_or_i1_hdler, kol_or_short_way>  ("OR",   kol_symbol::or_gate,  false),
    kol_gate<kol_nor_init,  kol_nor_i1_hdler, kol_nor_short_way> ("NOR",  kol_symbol::or_gate,  true),
    kol_gate<kol_xor_init,  kol_xor_i1_hdler, kol_xor_short_way> ("XOR",  kol_symbol::xor_gate, false),
    //  MODEL     set-up           by PIN  handler of an input pin       clear             restart             refresh
    {{ "DFF",     kol_dff_init,    true,   kol_by_pin<kol_dff_pins>,     kol_dff_clear,    kol_dff_restart,    kol_dff_refresh, kol_dff_short_way, kol_dff_archive },
     kol_model_kind::register_, kol_symbol::box, false, "Q", "CLK"},
    {{ "LATCH",   kol_latch_init,  true,   kol_by_pin<kol_latch_pins>,   kol_latch_clear,  kol_latch_restart,  kol_latch_refresh, nullptr, kol_latch_archive },
     kol_model_kind::register_, kol_symbol::box, false, "Q", "E"},
    {{ "STABLE",  kol_stable_init, true,   kol_by_pin<kol_stable_pins>,  kol_stable_clear, kol_stable_restart, kol_stable_refresh, nullptr, kol_stable_archive },
     kol_model_kind::checker},
    {{ "SMOS",    kol_smos_init,   true,   kol_by_pin<kol_smos_pins>,    kol_smos_clear,   kol_smos_restart,   kol_smos_refresh, nullptr, kol_smos_archive },
     kol_model_kind::switch_, kol_symbol::triangle, false, "Y", "E"},
    {{ "DLATCH",  kol_dlatch_init, true,   kol_by_pin<kol_dlatch_pins>,  kol_dlatch_clear, kol_dlatch_restart, kol_dlatch_refresh, nullptr, kol_dlatch_archive },
     kol_model_kind::register_, kol_symbol::box, false, "Q", "E"},
    {{ "TRI",     kol_tri_init,    true,   kol_by_pin<kol_tri_pins>,     kol_tri_clear,    nullptr,            kol_tri_refresh },
     kol_model_kind::buffer, kol_symbol::triangle, false, "Y", "E"},
    {{ "LUT",     kol_lut_init,    false,  kol_every_input<kol_lut_hdler>, kol_lut_clear,  nullptr,            kol_lut_refresh },
     kol_model_kind::table, kol_symbol::box, false, "Y"},
    {{ "MEM",     kol_mem_init,    false,  kol_every_input<kol_mem_hdler>, kol_mem_clear,  kol_mem_restart,    kol_mem_refresh, nullptr, kol_mem_archive },
     kol_model_kind::memory, kol_symbol::box, false, "R0D0"},
};
// clang-format on

// What the kernel needs of them.
std::span<const kol_model_t> kol_model_table();

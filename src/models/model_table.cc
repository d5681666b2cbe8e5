#include "models/model_table.h"

#include <array>

#include "models/dff.h"
#include "models/gates.h"
#include "models/latch.h"
#include "models/smos.h"
#include "models/stable.h"

namespace {

// One handler serves every input pin of a gate.
template <yx_procedure_t handler>
yx_procedure_t every_input(std::string_view) {
    return handler;
}

// PIN values of `least` to `most` characters that begin so, in either case.
struct pin_row {
    std::string_view begin;
    std::size_t least, most;
    yx_procedure_t handler;
};

constexpr bool fits(const pin_row& row, std::string_view value) {
    if (value.size() < row.least || value.size() > row.most) return false;
    for (std::size_t k = 0; k < row.begin.size(); ++k)
        if (tm_upper_case(value[k]) != row.begin[k]) return false;
    return true;
}

template <const auto& rows>
yx_procedure_t by_pin(std::string_view value) {
    for (const pin_row& row : rows)
        if (fits(row, value)) return row.handler;
    return nullptr;
}

constexpr std::size_t any_length = 127;

constexpr std::array dff_pins = {
    pin_row{"D", 1, 1, kol_dff_d_hdler},
    pin_row{"CLK", 3, 4, kol_dff_clk_hdler},
    pin_row{"R", 1, 2, kol_dff_r_hdler},
    pin_row{"S", 1, 2, kol_dff_s_hdler},
};
constexpr std::array latch_pins = {
    pin_row{"D", 1, 1, kol_latch_d_hdler},
    pin_row{"E", 1, 2, kol_latch_e_hdler},
    pin_row{"R", 1, 2, kol_latch_r_hdler},
    pin_row{"S", 1, 2, kol_latch_s_hdler},
};
constexpr std::array stable_pins = {
    pin_row{"D", 1, 1, kol_stable_d_hdler},
    pin_row{"CLK", 3, 4, kol_stable_clk_hdler},
    pin_row{"E", 1, 2, kol_stable_e_hdler},
};
constexpr std::array smos_pins = {
    pin_row{"E", 1, 2, kol_smos_e_hdler},
    pin_row{"", 0, any_length, kol_smos_d_hdler},
};

// clang-format off
constexpr kol_model_t table[] = {
    // MODEL    set-up           by PIN  handler of an input pin         clear             restart             refresh
    { "and",    kol_and_init,    false,  every_input<kol_and_i1_hdler>,  kol_clear_gates,  nullptr,            kol_gate_refresh },
    { "nand",   kol_nand_init,   false,  every_input<kol_nand_i1_hdler>, nullptr,          nullptr,            kol_gate_refresh },
    { "or",     kol_or_init,     false,  every_input<kol_or_i1_hdler>,   nullptr,          nullptr,            kol_gate_refresh },
    { "nor",    kol_nor_init,    false,  every_input<kol_nor_i1_hdler>,  nullptr,          nullptr,            kol_gate_refresh },
    { "xor",    kol_xor_init,    false,  every_input<kol_xor_i1_hdler>,  nullptr,          nullptr,            kol_gate_refresh },
    { "dff",    kol_dff_init,    true,   by_pin<dff_pins>,               kol_dff_clear,    kol_dff_restart,    kol_dff_refresh },
    { "latch",  kol_latch_init,  true,   by_pin<latch_pins>,             kol_latch_clear,  kol_latch_restart,  kol_latch_refresh },
    { "stable", kol_stable_init, true,   by_pin<stable_pins>,            kol_stable_clear, kol_stable_restart, kol_stable_refresh },
    { "smos",   kol_smos_init,   true,   by_pin<smos_pins>,              kol_smos_clear,   kol_smos_restart,   kol_smos_refresh },
};
// clang-format on

}  // namespace

std::span<const kol_model_t> kol_model_table() { return table; }

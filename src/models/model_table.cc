#include "models/model_table.h"

#include "models/gates.h"

namespace {

// One handler serves every input pin of a gate.
template <yx_procedure_t handler>
yx_procedure_t every_input(std::string_view) {
    return handler;
}

// clang-format off
constexpr kol_model_t table[] = {
    // MODEL   set-up          by PIN  handler of an input pin          clear
    { "and",   kol_and_init,   false,  every_input<kol_and_i1_hdler>,   kol_clear_gates },
    { "nand",  kol_nand_init,  false,  every_input<kol_nand_i1_hdler>,  nullptr },
    { "or",    kol_or_init,    false,  every_input<kol_or_i1_hdler>,    nullptr },
    { "nor",   kol_nor_init,   false,  every_input<kol_nor_i1_hdler>,   nullptr },
    { "xor",   kol_xor_init,   false,  every_input<kol_xor_i1_hdler>,   nullptr },
};
// clang-format on

}  // namespace

std::span<const kol_model_t> kol_model_table() { return table; }

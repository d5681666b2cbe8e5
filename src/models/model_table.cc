// The kernel's part of the table of models.
#include "models/model_table.h"

namespace {

constexpr std::array table = [] {
    std::array<kol_model_t, std::size(kol_model_rows)> models{};
    for (std::size_t i = 0; i < models.size(); ++i) models[i] = kol_model_rows[i].model;
    return models;
}();

}  // namespace

std::span<const kol_model_t> kol_model_table() { return table; }

// The table of models that the program registered.
#include "kernel/model.h"

#include <algorithm>

namespace {

std::span<const kol_model_t> models;

bool is_same_word(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, tm_upper_case, tm_upper_case);
}

}  // namespace

void kol_set_models(std::span<const kol_model_t> table) { models = table; }

std::span<const kol_model_t> kol_models() { return models; }

const kol_model_t* kol_find_model(std::string_view name) {
    const auto found = std::ranges::find_if(
        models, [name](const kol_model_t& model) { return is_same_word(model.name, name); });
    return found == models.end() ? nullptr : &*found;
}

void kol_clear_models() {
    for (const kol_model_t& model : models)
        if (model.clear != nullptr) model.clear();
}

void kol_restart_models() {
    for (const kol_model_t& model : models)
        if (model.restart != nullptr) model.restart();
}

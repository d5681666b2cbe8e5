// TIMING COEFFICIENT and TIMING INDEX.
#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "commands/language/entry_expansion.h"
#include "commands/shared/parameters.h"
#include "commands/stimulus/handlers.h"
#include "foundation/numbers.h"
#include "foundation/shell.h"
#include "kernel/setup.h"

namespace {

constexpr kol_rejection_t kind_invalid{
    "# !! Error : Invalid 3rd parameter : should be \"D\",\"P\",\"S\",or \"H\" "};
constexpr kol_rejection_t factor_invalid{"# !! Error : Invalid 4th parameter "};
constexpr kol_rejection_t start_invalid{"# !! Error : Invalid start index "};
constexpr kol_rejection_t end_invalid{"# !! Error : Invalid final index "};
constexpr std::string_view type_invalid = "# !! Error : Invalid Timing Type : \"";

// ---- coefficients

struct coefficient_row {
    std::string_view letter;
    float kol_defref_var_rec_t::*coefficient;
    std::array<const char*, 2> instance_properties, pin_properties;
};
constexpr coefficient_row coefficients[] = {
    {"D", &kol_defref_var_rec_t::tim_coef_delay, {}, {"RISE", "FALL"}},
    {"S", &kol_defref_var_rec_t::tim_coef_setup, {"SETUP_TIME"}, {"SETUP_TIME"}},
    {"H", &kol_defref_var_rec_t::tim_coef_hold, {"HOLD_TIME"}, {"HOLD_TIME"}},
    {"P", &kol_defref_var_rec_t::tim_coef_minpulse, {"PULSE_WIDTH"}, {}},
};

std::int32_t rescaled(std::int32_t value, std::int32_t typical, float factor) {
    const float distance = std::floor(factor * static_cast<float>(std::int64_t{value} - typical) + 0.5F);
    const double moved = static_cast<double>(typical) + static_cast<double>(distance);
    return static_cast<std::int32_t>(std::clamp<double>(moved, std::numeric_limits<std::int32_t>::min(),
                                                        std::numeric_limits<std::int32_t>::max()));
}

// Objects of one design share property values: each value is rescaled once.
class rescaling_t {
public:
    explicit rescaling_t(float factor)
        : factor_(factor), is_done_(static_cast<std::size_t>(yx_sext.max_prop_cur) + 1) {}

    template <typename Object>
    void apply(const Object& object, std::span<const bool> concerned) {
        for (std::int32_t k = 0; k < object.nb_of_property; ++k)
            if (concerned[static_cast<std::size_t>(k)]) rescale(object.first_prop + k);
    }

private:
    void rescale(std::int32_t index) {
        yx_prop_record_t& property = *yx_ptrto_prop_rec(index);
        if (property.prop_type != YX_PTIME || is_done_[static_cast<std::size_t>(index)]) return;
        is_done_[static_cast<std::size_t>(index)] = true;
        property.valuet[0] = rescaled(property.valuet[0], property.valuet[1], factor_);
        property.valuet[2] = rescaled(property.valuet[2], property.valuet[1], factor_);
    }

    float factor_;
    std::vector<bool> is_done_;
};

using concerned_t = std::array<bool, yx_max_names>;
using name_table_t = std::array<yx_prop_type_record_t, yx_max_names>;

concerned_t concerned_entries(const name_table_t& table, std::int32_t count,
                              std::span<const char* const> names) {
    concerned_t concerned{};
    for (std::size_t k = 0; k < static_cast<std::size_t>(count); ++k)
        concerned[k] = std::ranges::any_of(names, [&](const char* name) {
            return name != nullptr && tm_const_iden_string(name, table[k].name);
        });
    return concerned;
}

void rescale_design(const coefficient_row& row, float factor) {
    const concerned_t of_instance =
        concerned_entries(yx_sext.property_instance, yx_sext.nbof_property_instance, row.instance_properties);
    const concerned_t of_pin =
        concerned_entries(yx_sext.property_pin, yx_sext.nbof_property_pin, row.pin_properties);
    rescaling_t rescaling(factor);
    for (std::int32_t i = 1; i <= yx_sext.max_inst_cur; ++i) {
        const yx_inst_record_t& inst = *yx_ptrto_inst_rec(i);
        rescaling.apply(inst, of_instance);
        for (const yx_pin_record_t* pin = inst.first_pin_ptr; pin != nullptr; pin = pin->next_pin_inst_ptr)
            rescaling.apply(*pin, of_pin);
    }
    kol_refresh_timing();
}

kol_rejection_t read_coefficient(const kol_line_t& line, const coefficient_row*& row, float& factor) {
    row = std::ranges::find_if(coefficients, [&](const coefficient_row& candidate) {
        return kol_begins_with_one_of(line[3], candidate.letter);
    });
    if (row == std::end(coefficients)) return kind_invalid;
    bool error_found = false;
    tm_string_to_shortreal(line[4], factor, error_found);
    return error_found || factor < 0 ? factor_invalid : kol_rejection_t{};
}

std::string coefficients_text() {
    std::string all;
    for (const coefficient_row& row : coefficients) {
        tm_string_record_t text;
        tm_shortreal_to_string(kol_ext.*row.coefficient, text);
        all.append(tm_view(text)).append(" ");
    }
    return all;
}

// ---- indexes

// The coding of a timing range, 0 for a word that names none.
std::int16_t range_type(const tm_string_record_t& word) {
    constexpr std::array<const char*, 3> names = {"MI", "TY", "MA"};
    for (std::size_t k = 0; k < names.size(); ++k)
        if (tm_const_equal_string(names[k], word)) return static_cast<std::int16_t>(k + 1);
    return 0;
}

kol_rejection_t read_start(const kol_line_t& line, std::int32_t& start) {
    bool error_found = false;
    tm_string_to_int32(line[3], start, error_found);
    if (error_found || start < 1 || start > yx_timing_indexes) return start_invalid;
    return start + (line.nkeyword - 3) - 1 > yx_timing_indexes ? end_invalid : kol_rejection_t{};
}

}  // namespace

void kol_add_coefficients(tm_string_record_t& entry) {
    for (const coefficient_row& row : coefficients) kol_add_factor(kol_ext.*row.coefficient, entry);
}

kol_result_t kol_timing_coeficient_cmd(const kol_line_t& line) {
    const coefficient_row* row = nullptr;
    float factor = 0;
    if (const kol_rejection_t wrong = read_coefficient(line, row, factor)) return wrong;
    kol_ext.*row->coefficient = factor;
    rescale_design(*row, factor);
    return kol_accepted(coefficients_text());
}

kol_result_t kol_timing_index_cmd(const kol_line_t& line) {
    std::int32_t start = 0;
    if (const kol_rejection_t wrong = read_start(line, start)) return wrong;
    for (std::int16_t k = 4; k <= line.nkeyword; ++k) {
        if (range_type(line[k]) != 0) continue;
        return kol_rejected({type_invalid, tm_view(line[k]), "\" "});
    }
    for (std::int16_t k = 4; k <= line.nkeyword; ++k)
        kol_ext.timing_ar[static_cast<std::size_t>(start - 1 + k - 4)] = range_type(line[k]);
    return {};
}

// PERIOD LIST, PERIOD TRACE, SCALE TRACE TIME, SCALE USER UNIT and SWITCHE LIST.
#include "commands/language/entry_expansion.h"
#include "commands/observation/handlers.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "foundation/numbers.h"
#include "foundation/shell.h"
#include "kernel/say.h"
#include "results/list/layout.h"

namespace {

constexpr kol_rejection_t base_invalid{"# !! Error : Invalid base_time "};
constexpr kol_rejection_t unit_invalid{"# !! Error : Invalid scale user unit time "};
constexpr kol_rejection_t switch_invalid{
    "# !! Error : 3rd parameter invalid (should be :\"Cha\",\"Per\",\"Sta\",\"Val\")", kol_form::usual,
    "# LIST "};

struct switch_t {
    std::string_view letter, echo;
    bool kol_defref_var_rec_t::*state;
    bool on;
};
constexpr switch_t switches[] = {
    {"C", "Change ", &kol_defref_var_rec_t::list_change_on, true},
    {"P", "Period ", &kol_defref_var_rec_t::list_change_on, false},
    {"S", "State ", &kol_defref_var_rec_t::list_state_on, true},
    {"V", "Value ", &kol_defref_var_rec_t::list_state_on, false},
};

const switch_t* find_switch(const tm_string_record_t& keyword) {
    for (const switch_t& each : switches)
        if (kol_begins_with_one_of(keyword, each.letter)) return &each;
    return nullptr;
}

// Drives beside the values may make the list too wide.
bool turn(const switch_t& chosen) {
    const bool before = kol_ext.*chosen.state;
    kol_ext.*chosen.state = chosen.on;
    if (kol_list_fits()) return true;
    kol_ext.*chosen.state = before;
    return false;
}

}  // namespace

kol_result_t kol_period_list_cmd(const kol_line_t& line) {
    std::int32_t period = 0, base = 0;
    if (!kol_read_positive_time(line[3], period)) return kol_period_invalid;
    const bool with_base = line.nkeyword == 4;
    if (with_base && !kol_read_positive_time(line[4], base)) return base_invalid;
    kol_ext.list_period = period;
    if (with_base) kol_ext.list_base_time = base;
    tm_shell.redraw_results();
    return kol_accepted(kol_time_text(period) + (with_base ? " " + kol_time_text(base) : ""));
}

kol_result_t kol_period_trace_cmd(const kol_line_t& line) {
    std::int32_t period = 0;
    if (!kol_read_positive_time(line[3], period)) return kol_period_invalid;
    kol_ext.trace_period = period;
    kol_ext.trace_period_on = true;
    tm_shell.redraw_results();
    return kol_accepted(kol_time_text(period));
}

kol_result_t kol_scale_trace_time_cmd(const kol_line_t& line) {
    std::int32_t scale = 0;
    if (!kol_read_time(line[4], scale) || scale <= 0) return kol_time_scale_invalid;
    kol_ext.trace_scale = scale;
    tm_shell.redraw_results();
    return kol_accepted(kol_time_text(scale));
}

kol_result_t kol_scale_user_unit_cmd(const kol_line_t& line) {
    float factor = 0;
    bool error_found = false;
    tm_string_to_shortreal(line[4], factor, error_found);
    if (error_found || factor < 0) return unit_invalid;
    kol_ext.scale_user_unit = factor;
    tm_shell.redraw_results();
    tm_string_record_t text;
    tm_shortreal_to_string(factor, text);
    return kol_accepted(tm_view(text));
}

kol_result_t kol_switche_list_cmd(const kol_line_t& line) {
    const switch_t* const chosen = find_switch(line[3]);
    if (chosen == nullptr) return switch_invalid;
    if (!turn(*chosen)) return kol_list_too_wide;
    tm_shell.redraw_results();
    return kol_accepted(chosen->echo);
}

void kol_add_list_period(tm_string_record_t& entry) {
    kol_add_time(kol_ext.list_period, entry);
    if (kol_ext.list_period >= 0) kol_add_time(kol_ext.list_base_time, entry);
}

void kol_add_trace_period(tm_string_record_t& entry) { kol_add_time(kol_ext.trace_period, entry); }

void kol_add_trace_scale(tm_string_record_t& entry) { kol_add_time(kol_ext.trace_scale, entry); }

void kol_add_user_unit(tm_string_record_t& entry) { kol_add_factor(kol_ext.scale_user_unit, entry); }

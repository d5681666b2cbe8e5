// PERIOD LIST, PERIOD TRACE, SCALE TRACE TIME, SCALE USER UNIT and SWITCHE LIST.
#include "commands/handlers.h"
#include "commands/keyword.h"
#include "commands/view_rules.h"
#include "foundation/numbers.h"
#include "foundation/shell.h"
#include "kernel/say.h"
#include "results/list/layout.h"

namespace {

constexpr std::string_view period_list_words = " PERiod LISt ";
constexpr std::string_view period_trace_words = " PERiod TRAce ";
constexpr std::string_view trace_scale_words = " SCAle TRAce TIMe ";
constexpr std::string_view user_unit_words = " SCAle USEr UNIt ";
constexpr std::string_view switche_words = " SWItche LISt ";

constexpr kol_rejection_t period_invalid{"# !! Error : Invalid period_time "};
constexpr kol_rejection_t base_invalid{"# !! Error : Invalid base_time "};
constexpr kol_rejection_t scale_invalid{"# !! Error : Invalid time scale "};
constexpr kol_rejection_t unit_invalid{"# !! Error : Invalid scale user unit time "};
constexpr kol_rejection_t switch_invalid{
    "# !! Error : 3rd parameter invalid (should be :\"Cha\",\"Per\",\"Sta\",\"Val\")"};

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

void kol_period_list_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int32_t period = 0, base = 0;
    if (!kol_read_positive_time(kol_kw(keyword, 3), period))
        return kol_reject(period_list_words, 3, nkeyword, keyword, period_invalid);
    const bool with_base = nkeyword == 4;
    if (with_base && !kol_read_positive_time(kol_kw(keyword, 4), base))
        return kol_reject(period_list_words, 3, nkeyword, keyword, base_invalid);
    kol_ext.list_period = period;
    if (with_base) kol_ext.list_base_time = base;
    tm_shell.redraw_results();
    kol_show({period_list_words, kol_time_text(period), with_base ? " " + kol_time_text(base) : ""});
}

void kol_period_trace_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int32_t period = 0;
    if (!kol_read_positive_time(kol_kw(keyword, 3), period))
        return kol_reject(period_trace_words, 3, nkeyword, keyword, period_invalid);
    kol_ext.trace_period = period;
    kol_ext.trace_period_on = true;
    tm_shell.redraw_results();
    kol_show({period_trace_words, kol_time_text(period)});
}

void kol_scale_trace_time_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int32_t scale = 0;
    if (!kol_read_time(kol_kw(keyword, 4), scale) || scale <= 0)
        return kol_reject(trace_scale_words, 4, nkeyword, keyword, scale_invalid);
    kol_ext.trace_scale = scale;
    tm_shell.redraw_results();
    kol_show({trace_scale_words, kol_time_text(scale)});
}

void kol_scale_user_unit_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    float factor = 0;
    bool error_found = false;
    tm_string_to_shortreal(kol_kw(keyword, 4), factor, error_found);
    if (error_found || factor < 0) return kol_reject(user_unit_words, 4, nkeyword, keyword, unit_invalid);
    kol_ext.scale_user_unit = factor;
    tm_shell.redraw_results();
    tm_string_record_t text;
    tm_shortreal_to_string(factor, text);
    kol_show({user_unit_words, tm_view(text)});
}

void kol_switche_list_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const switch_t* const chosen = find_switch(kol_kw(keyword, 3));
    if (chosen == nullptr) {
        tm_display("# LIST ");
        tm_display(switch_invalid.error);
        return;
    }
    if (!turn(*chosen)) return kol_reject(switche_words, 3, nkeyword, keyword, kol_list_too_wide);
    tm_shell.redraw_results();
    kol_show({switche_words, chosen->echo});
}

// FORCE and CLOCK PERIOD.
#include "commands/stimulus/force.h"

#include "commands/language/entry_expansion.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/stimulus/handlers.h"
#include "kernel/lookup.h"
#include "kernel/say.h"
#include "kernel/state.h"
#include "kernel/stimuli.h"

namespace {

constexpr kol_rejection_t force_mode_invalid{
    "# !! Error : 2nd parameter invalid ( should be : \"Abs\" or \"Current\" ) "};
constexpr kol_rejection_t force_net_invalid{
    "# !! Error : 3rd parameter invalid ( should begin with letter or \"/\" ) "};
constexpr kol_force_words_t force_words{
    2,
    5,
    {"# !! Error : Invalid time  ( 5th parameter ) ", kol_form::quoted},
    {"# !! Error : Invalid stop_time  ( 7th parameter ) ", kol_form::quoted},
    {"# !! Error : 6th parameter Invalid ( should be : \"Once\" or \"Repeat\" ) ", kol_form::quoted}};

kol_rejection_t read_force(const kol_line_t& line, kol_read_force_t& force) {
    if (!kol_begins_with_one_of(line[2], "AC")) return force_mode_invalid;
    if (!kol_begins_like_signal(line[3])) return force_net_invalid;
    if (!kol_keyword_to_state(tm_view(line[4]), force.state)) return kol_state_invalid;
    if (const kol_rejection_t wrong = kol_read_force_times(line, force_words, force)) return wrong;
    // A whole bus takes no single state; its members do.
    if (kol_find_net(line[3], force.net) == 0 || force.net->net_type == YX_TSTD_BUS) return kol_net_not_found;
    if (force.repeat && kol_stimuli.clocks.empty()) return kol_no_clock_period;
    return {};
}

}  // namespace

kol_rejection_t kol_read_force_times(const kol_line_t& line, const kol_force_words_t& words,
                                     kol_read_force_t& force) {
    const auto once_or_repeat = static_cast<std::int16_t>(words.time + 1);
    const auto stop_time = static_cast<std::int16_t>(words.time + 2);
    const bool current = kol_begins_with_one_of(line[words.mode], "C");
    if (!kol_read_positive_time(line[words.time], force.time)) return words.time_invalid;
    if (line.nkeyword == stop_time) {
        if (!kol_read_positive_time(line[stop_time], force.stop_time)) return words.stop_time_invalid;
        if (current && !kol_count_from_now(force.stop_time)) return words.stop_time_invalid;
    }
    const bool has_mode = line.nkeyword >= once_or_repeat;
    if (has_mode && !kol_begins_with_one_of(line[once_or_repeat], "OR")) return words.repeat_invalid;
    force.repeat = has_mode && kol_begins_with_one_of(line[once_or_repeat], "R");
    if (!force.repeat && current && !kol_count_from_now(force.time)) return words.time_invalid;
    return {};
}

void kol_append_force(const kol_read_force_t& force) {
    (force.repeat ? kol_add_repeated_force : kol_add_force)(*force.net, force.state, force.time,
                                                            force.stop_time);
}

void kol_add_clock_period(tm_string_record_t& entry) {
    kol_add_time(kol_stimuli.clocks.empty() ? -1 : kol_stimuli.clocks.back().period, entry);
}

kol_result_t kol_force_cmd(const kol_line_t& line) {
    kol_read_force_t force;
    if (const kol_rejection_t wrong = read_force(line, force)) return wrong;
    kol_append_force(force);
    return {};
}

kol_result_t kol_clock_period_cmd(const kol_line_t& line) {
    std::int32_t period = 0;
    if (!kol_read_positive_time(line[3], period)) return kol_period_invalid;
    kol_add_clock(period, kol_ext.cur_time);
    return kol_accepted(kol_time_text(period));
}

// FORCE and CLOCK PERIOD.
#include "commands/stimulus/force.h"

#include "commands/language/entry_expansion.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/stimulus/handlers.h"
#include "foundation/list.h"
#include "kernel/lookup.h"
#include "kernel/say.h"
#include "kernel/state.h"

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

kol_rejection_t read_force(const kol_line_t& line, kol_force_rec_t& force, bool& repeat) {
    if (!kol_begins_with_one_of(line[2], "AC")) return force_mode_invalid;
    force.name = line[3];
    if (!kol_begins_like_signal(force.name)) return force_net_invalid;
    if (!kol_keyword_to_state(tm_view(line[4]), force.state)) return kol_state_invalid;
    if (const kol_rejection_t wrong = kol_read_force_times(line, force_words, force, repeat)) return wrong;
    force.net_type = kol_find_net(force.name, force.net);
    // A whole bus takes no single state; its members do.
    if (force.net_type == 0 || force.net->net_type == YX_TSTD_BUS) return kol_net_not_found;
    if (repeat && kol_ext.last_clock_force_blk == nullptr) return kol_no_clock_period;
    return {};
}

}  // namespace

kol_rejection_t kol_read_force_times(const kol_line_t& line, const kol_force_words_t& words,
                                     kol_force_rec_t& force, bool& repeat) {
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
    repeat = has_mode && kol_begins_with_one_of(line[once_or_repeat], "R");
    if (!repeat && current && !kol_count_from_now(force.time)) return words.time_invalid;
    return {};
}

void kol_append_force(const kol_force_rec_t& force, bool repeat) {
    auto record = std::make_unique<kol_force_rec_t>(force);
    if (repeat) {
        kol_forceblk_rec_t& block = *kol_ext.last_clock_force_blk;
        tm_list_append(std::move(record), block.start_force, block.last_force);
    } else {
        tm_list_append(std::move(record), kol_ext.start_force, kol_ext.last_force);
    }
}

void kol_add_clock_period(tm_string_record_t& entry) {
    const kol_forceblk_rec_t* const clock = kol_ext.last_clock_force_blk;
    kol_add_time(clock != nullptr ? clock->clock_period : -1, entry);
}

kol_result_t kol_force_cmd(const kol_line_t& line) {
    kol_force_rec_t force;
    bool repeat = false;
    if (const kol_rejection_t wrong = read_force(line, force, repeat)) return wrong;
    kol_append_force(force, repeat);
    return {};
}

kol_result_t kol_clock_period_cmd(const kol_line_t& line) {
    std::int32_t period = 0;
    if (!kol_read_positive_time(line[3], period)) return kol_period_invalid;
    auto& block = tm_list_append(std::make_unique<kol_forceblk_rec_t>(), kol_ext.start_clock_force_blk,
                                 kol_ext.last_clock_force_blk);
    block.clock_period = period;
    block.start_time = kol_ext.cur_time;
    return kol_accepted(kol_time_text(period));
}

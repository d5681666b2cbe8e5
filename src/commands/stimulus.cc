// FORCE, CLOCK PERIOD and RUN.
#include "commands/handlers.h"
#include "commands/keyword.h"
#include "commands/probe_displays.h"
#include "foundation/shell.h"
#include "kernel/lookup.h"
#include "kernel/run.h"
#include "kernel/say.h"
#include "kernel/state.h"

namespace {

constexpr std::string_view force_words = " FORCE ";
constexpr std::string_view clock_words = " CLOck PERiod ";
constexpr std::string_view run_words = " RUN ";

constexpr kol_rejection_t force_mode_invalid{
    "# !! Error : 2nd parameter invalid ( should be : \"Abs\" or \"Current\" ) "};
constexpr kol_rejection_t force_net_invalid{
    "# !! Error : 3rd parameter invalid ( should begin with letter or \"/\" ) "};
constexpr kol_rejection_t force_state_invalid{"# !! Error : state invalid ( 3rd parameter ) "};
constexpr kol_rejection_t force_time_invalid{"# !! Error : Invalid time  ( 5th parameter ) ", true};
constexpr kol_rejection_t force_stop_time_invalid{"# !! Error : Invalid stop_time  ( 7th parameter ) ", true};
constexpr kol_rejection_t force_repeat_invalid{
    "# !! Error : 6th parameter Invalid ( should be : \"Once\" or \"Repeat\" ) ", true};
constexpr kol_rejection_t net_not_found{"# !! Error : NET not found "};
constexpr kol_rejection_t no_clock_period{"# !! Error : No Clock Period already defined ? "};
constexpr kol_rejection_t period_invalid{"# !! Error : Invalid period_time "};
constexpr kol_rejection_t run_time_missing{"# !! Error : You should define the RUN TIME parameter ? "};
constexpr kol_rejection_t run_mode_invalid{"# !! Error :  time for force should be Abs or Current ? "};
constexpr kol_rejection_t run_time_invalid{"# !! Error :  Invalid time  ? ", true};
constexpr kol_rejection_t run_has_no_length{"# !! Warning :  end_time <= start_time , so NO action  ? ",
                                            true};
constexpr kol_rejection_t nothing_forced{
    "# !! Warning : No new FORCE stimuli have been applied to circuit ? "};

// The force that keywords 2.. describe, times absolute but for a repeated force.
kol_rejection_t read_force_times(std::int16_t nkeyword, kol_array_keyword_t& keyword, kol_force_rec_t& force,
                                 bool& repeat) {
    const bool current = kol_begins_with_one_of(kol_kw(keyword, 2), "C");
    if (!kol_read_positive_time(kol_kw(keyword, 5), force.time)) return force_time_invalid;
    if (nkeyword == 7) {
        if (!kol_read_positive_time(kol_kw(keyword, 7), force.stop_time)) return force_stop_time_invalid;
        if (current && !kol_count_from_now(force.stop_time)) return force_stop_time_invalid;
    }
    if (nkeyword >= 6 && !kol_begins_with_one_of(kol_kw(keyword, 6), "OR")) return force_repeat_invalid;
    repeat = nkeyword >= 6 && kol_begins_with_one_of(kol_kw(keyword, 6), "R");
    if (!repeat && current && !kol_count_from_now(force.time)) return force_time_invalid;
    return {};
}

kol_rejection_t read_force(std::int16_t nkeyword, kol_array_keyword_t& keyword, kol_force_rec_t& force,
                           bool& repeat) {
    if (!kol_begins_with_one_of(kol_kw(keyword, 2), "AC")) return force_mode_invalid;
    force.name = kol_kw(keyword, 3);
    if (!kol_begins_like_signal(force.name)) return force_net_invalid;
    if (!kol_keyword_to_state(tm_view(kol_kw(keyword, 4)), force.state)) return force_state_invalid;
    if (const kol_rejection_t wrong = read_force_times(nkeyword, keyword, force, repeat)) return wrong;
    force.net_type = kol_find_net(force.name, force.net);
    // A whole bus takes no single state; its members do.
    if (force.net_type == 0 || force.net->net_type == YX_TSTD_BUS) return net_not_found;
    if (repeat && kol_ext.last_clock_force_blk == nullptr) return no_clock_period;
    return {};
}

void append_force(const kol_force_rec_t& force, bool repeat) {
    auto* record = new kol_force_rec_t(force);
    if (repeat) {
        kol_forceblk_rec_t& block = *kol_ext.last_clock_force_blk;
        kol_append_record(record, block.start_force, block.last_force);
    } else {
        kol_append_record(record, kol_ext.start_force, kol_ext.last_force);
    }
}

kol_rejection_t read_end_time(std::int16_t nkeyword, kol_array_keyword_t& keyword, std::int32_t& end_time) {
    if (nkeyword == 1) {
        end_time = kol_ext.end_time;
        return kol_ext.time_breaked ? kol_rejection_t{} : run_time_missing;
    }
    if (nkeyword == 3 && !kol_begins_with_one_of(kol_kw(keyword, 3), "AC")) return run_mode_invalid;
    if (!kol_read_time(kol_kw(keyword, 2), end_time)) return run_time_invalid;
    const bool absolute = nkeyword == 3 && kol_begins_with_one_of(kol_kw(keyword, 3), "A");
    if (!absolute && !kol_count_from_now(end_time)) return run_time_invalid;
    return {};
}

void run_until(std::int32_t end_time, bool& no_event_found) {
    kol_ext.time_breaked = false;
    kol_ext.start_time = kol_ext.cur_time;
    kol_ext.end_time = end_time;
    kol_show({"#  RUN -> time_start: ", kol_time_text(kol_ext.start_time),
              " ->time_end: ", kol_time_text(end_time)});
    kol_exec_all_event(no_event_found);
}

}  // namespace

void kol_force_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    kol_force_rec_t force;
    bool repeat = false;
    if (const kol_rejection_t wrong = read_force(nkeyword, keyword, force, repeat)) {
        kol_reject(force_words, 2, nkeyword, keyword, wrong);
        return;
    }
    append_force(force, repeat);
    kol_echo(force_words, 2, nkeyword, keyword);
}

void kol_clock_period_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int32_t period = 0;
    if (!kol_read_positive_time(kol_kw(keyword, 3), period)) {
        kol_reject(clock_words, 3, nkeyword, keyword, period_invalid);
        return;
    }
    auto* block = new kol_forceblk_rec_t;
    block->clock_period = period;
    block->start_time = kol_ext.cur_time;
    kol_append_record(block, kol_ext.start_clock_force_blk, kol_ext.last_clock_force_blk);
    kol_show({clock_words, kol_time_text(period)});
}

void kol_run_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int32_t end_time = 0;
    if (const kol_rejection_t wrong = read_end_time(nkeyword, keyword, end_time)) {
        kol_reject(run_words, 2, nkeyword, keyword, wrong);
        return;
    }
    if (end_time <= kol_ext.cur_time) {
        kol_reject(run_words, 2, nkeyword, keyword, run_has_no_length);
        kol_show({"# start_time : ", kol_time_text(kol_ext.cur_time)});
        kol_show({"# end_time : ", kol_time_text(end_time)});
        return;
    }
    bool no_event_found = false;
    run_until(end_time, no_event_found);
    if (no_event_found)
        kol_reject(run_words, 2, nkeyword, keyword, nothing_forced);
    else
        kol_echo(run_words, 2, nkeyword, keyword);
    kol_redraw_states();
}

// RESET SIM TIME, HISTORY, REGENERATE and UPDATE: back to time 0.
#include "commands/handlers.h"
#include "commands/keyword.h"
#include "commands/probe_displays.h"
#include "foundation/shell.h"
#include "kernel/history.h"
#include "kernel/run.h"
#include "kernel/say.h"
#include "kernel/setup.h"
#include "results/entries/geometry.h"

namespace {

constexpr std::string_view reset_words = " RESet SIM TIMe ";
constexpr std::string_view history_words = " HISTory ";
constexpr std::string_view regenerate_words = " REGENerate ";
constexpr std::string_view update_words = " UPDAte ";

constexpr kol_rejection_t history_mode_invalid{
    "# !! Error : 2nd parameter invalid ( should be : \"Abs\" or \"Cur\" ) "};
constexpr kol_rejection_t history_time_invalid{"# !! Error : Invalid time "};
constexpr kol_rejection_t no_history{"# !! Error : No HISTORY have been defined before ? "};
constexpr kol_rejection_t update_view_invalid{
    "# !! Error :  2nd parameter incorrect : should be : List or Trace? "};
constexpr kol_rejection_t window_invalid{"# !! Error : invalid Start_time  and End_time ? "};
constexpr kol_rejection_t nothing_forced{"# !! Warning : No FORCE stimuli have been applied to circuit ? "};

void show_window(std::string_view words, std::int32_t start_time) {
    kol_show({"# ", words, "-> time_start: ", kol_time_text(start_time),
              " ->time_end: ", kol_time_text(kol_ext.end_time)});
}

void go_to_time_zero() {
    kol_ext.start_time = kol_ext.cur_time = 0;
    kol_ext.time_breaked = false;
}

// Stimuli, breaks and signals remain, so the next run repeats what was simulated.
void return_circuit_to_start() {
    kol_init_list_state();
    kol_init_net_state();
    kol_ext.cur_inst = nullptr;
    kol_ext.cur_pin = nullptr;
    kol_ext.cur_net = nullptr;
}

// False when there was nothing to simulate.
bool simulate_again() {
    go_to_time_zero();
    return_circuit_to_start();
    bool no_event_found = false;
    kol_exec_all_event(no_event_found);
    return !no_event_found;
}

std::int32_t history_start() {
    if (kol_ext.history_abs) return kol_ext.history;
    return kol_ext.history < kol_ext.end_time ? kol_ext.end_time - kol_ext.history : 0;
}

}  // namespace

void kol_reset_sim_time_cmd(std::int16_t /*nkeyword*/, kol_array_keyword_t& /*keyword*/) {
    go_to_time_zero();
    kol_ext.end_time = 0;
    return_circuit_to_start();
    kol_redraw_states();
    tm_display(reset_words);
}

void kol_history_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int32_t time = 0;
    if (nkeyword == 3 && !kol_begins_with_one_of(kol_kw(keyword, 3), "AC"))
        return kol_reject(history_words, 2, nkeyword, keyword, history_mode_invalid);
    if (!kol_read_positive_time(kol_kw(keyword, 2), time))
        return kol_reject(history_words, 2, nkeyword, keyword, history_time_invalid);
    kol_ext.history = time;
    kol_ext.history_abs = nkeyword == 3 && kol_begins_with_one_of(kol_kw(keyword, 3), "A");
    kol_echo(history_words, 2, nkeyword, keyword);
}

void kol_regenerate_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (kol_ext.history < 1) return kol_reject(regenerate_words, 2, nkeyword, keyword, no_history);
    const std::int32_t start_time = history_start();
    if (start_time >= kol_ext.end_time) {
        kol_reject(regenerate_words, 2, nkeyword, keyword, window_invalid);
        return show_window(regenerate_words, start_time);
    }
    show_window(regenerate_words, start_time);
    if (!simulate_again()) return kol_reject(regenerate_words, 2, nkeyword, keyword, nothing_forced);
    kol_ext.trace_cur_time = start_time;
    kol_ext.trace_scale = (kol_ext.end_time - start_time) / kol_trace_divisions;
    kol_redraw_states();
    tm_display(regenerate_words);
}

void kol_update_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (!kol_begins_with_one_of(kol_kw(keyword, 2), "LT"))
        return kol_reject(update_words, 2, nkeyword, keyword, update_view_invalid);
    kol_ext.list_or_trace = kol_begins_with_one_of(kol_kw(keyword, 2), "L");
    go_to_time_zero();
    const std::string_view view = kol_ext.list_or_trace ? " List " : " Trace ";
    if (kol_ext.end_time < 1) {
        kol_show({"#", update_words, view});
        tm_display(window_invalid.error);
        return show_window(update_words, kol_ext.start_time);
    }
    show_window(update_words, kol_ext.start_time);
    if (!simulate_again()) return kol_reject(update_words, 2, nkeyword, keyword, nothing_forced);
    kol_redraw_states();
    kol_show({update_words, view});
}

// RESET SIM TIME, HISTORY, REGENERATE and UPDATE: back to time 0.
#include "commands/shared/parameters.h"
#include "commands/stimulus/handlers.h"
#include "commands/stimulus/run.h"
#include "foundation/shell.h"
#include "kernel/history.h"
#include "kernel/run.h"
#include "kernel/say.h"
#include "kernel/setup.h"
#include "results/entries/geometry.h"

namespace {

constexpr kol_rejection_t history_mode_invalid{
    "# !! Error : 2nd parameter invalid ( should be : \"Abs\" or \"Cur\" ) "};
constexpr kol_rejection_t history_time_invalid{"# !! Error : Invalid time "};
constexpr kol_rejection_t no_history{"# !! Error : No HISTORY have been defined before ? "};
constexpr kol_rejection_t update_view_invalid{
    "# !! Error :  2nd parameter incorrect : should be : List or Trace? "};
constexpr kol_rejection_t window_invalid{"# !! Error : invalid Start_time  and End_time ? "};
constexpr kol_rejection_t nothing_forced{"# !! Warning : No FORCE stimuli have been applied to circuit ? "};

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

kol_result_t kol_reset_sim_time_cmd(const kol_line_t& /*line*/) {
    go_to_time_zero();
    kol_ext.end_time = 0;
    return_circuit_to_start();
    tm_shell.redraw_states();
    return {};
}

kol_result_t kol_history_cmd(const kol_line_t& line) {
    std::int32_t time = 0;
    if (line.nkeyword == 3 && !kol_begins_with_one_of(line[3], "AC")) return history_mode_invalid;
    if (!kol_read_positive_time(line[2], time)) return history_time_invalid;
    kol_ext.history = time;
    kol_ext.history_abs = line.nkeyword == 3 && kol_begins_with_one_of(line[3], "A");
    return {};
}

kol_result_t kol_regenerate_cmd(const kol_line_t& line) {
    if (kol_ext.history < 1) return no_history;
    const std::int32_t start_time = history_start();
    const std::string window = kol_window_text(line, start_time);
    if (start_time >= kol_ext.end_time) return kol_result_t(window_invalid).then({window});
    kol_show({window});
    if (!simulate_again()) return nothing_forced;
    kol_ext.trace_cur_time = start_time;
    kol_ext.trace_scale = (kol_ext.end_time - start_time) / kol_trace_divisions;
    tm_shell.redraw_states();
    return kol_accepted("");
}

kol_result_t kol_update_cmd(const kol_line_t& line) {
    if (!kol_begins_with_one_of(line[2], "LT")) return update_view_invalid;
    kol_ext.list_or_trace = kol_begins_with_one_of(line[2], "L");
    go_to_time_zero();
    const std::string_view view = kol_ext.list_or_trace ? " List " : " Trace ";
    const std::string window = kol_window_text(line, kol_ext.start_time);
    if (kol_ext.end_time < 1) return kol_result_t(window_invalid).showing(view).then({window});
    kol_show({window});
    if (!simulate_again()) return nothing_forced;
    tm_shell.redraw_states();
    return kol_accepted(view);
}

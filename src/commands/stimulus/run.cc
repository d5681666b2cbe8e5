// RUN.
#include "commands/stimulus/run.h"

#include "commands/shared/parameters.h"
#include "commands/stimulus/handlers.h"
#include "foundation/shell.h"
#include "kernel/run.h"
#include "kernel/say.h"

namespace {

constexpr kol_rejection_t run_time_missing{"# !! Error : You should define the RUN TIME parameter ? "};
constexpr kol_rejection_t run_mode_invalid{"# !! Error :  time for force should be Abs or Current ? "};
constexpr kol_rejection_t run_time_invalid{"# !! Error :  Invalid time  ? ", kol_form::quoted};
constexpr kol_rejection_t run_has_no_length{"# !! Warning :  end_time <= start_time , so NO action  ? ",
                                            kol_form::quoted};
constexpr kol_rejection_t nothing_forced{
    "# !! Warning : No new FORCE stimuli have been applied to circuit ? "};

kol_rejection_t read_end_time(const kol_line_t& line, std::int32_t& end_time) {
    if (line.nkeyword == 1) {
        end_time = kol_ext.end_time;
        return kol_ext.time_breaked ? kol_rejection_t{} : run_time_missing;
    }
    if (line.nkeyword == 3 && !kol_begins_with_one_of(line[3], "AC")) return run_mode_invalid;
    if (!kol_read_time(line[2], end_time)) return run_time_invalid;
    const bool absolute = line.nkeyword == 3 && kol_begins_with_one_of(line[3], "A");
    if (!absolute && !kol_count_from_now(end_time)) return run_time_invalid;
    return {};
}

void run_until(const kol_line_t& line, std::int32_t end_time, bool& no_event_found) {
    kol_ext.time_breaked = false;
    kol_ext.start_time = kol_ext.cur_time;
    kol_ext.end_time = end_time;
    kol_show({kol_window_text(line, kol_ext.start_time)});
    kol_exec_all_event(no_event_found);
}

}  // namespace

std::string kol_window_text(const kol_line_t& line, std::int32_t start_time) {
    return "# " + line.words() + "-> time_start: " + kol_time_text(start_time) +
           " ->time_end: " + kol_time_text(kol_ext.end_time);
}

kol_result_t kol_run_cmd(const kol_line_t& line) {
    std::int32_t end_time = 0;
    if (const kol_rejection_t wrong = read_end_time(line, end_time)) return wrong;
    if (end_time <= kol_ext.cur_time)
        return kol_result_t(run_has_no_length)
            .then({"# start_time : ", kol_time_text(kol_ext.cur_time)})
            .then({"# end_time : ", kol_time_text(end_time)});
    bool no_event_found = false;
    run_until(line, end_time, no_event_found);
    tm_shell.redraw_states();
    return no_event_found ? nothing_forced : kol_rejection_t{};
}

// The checks of timed inputs and the lines of their violations.
#include "models/timing_checks.h"

#include <algorithm>

#include "foundation/shell.h"
#include "kernel/say.h"
#include "kernel/time.h"

namespace {

constexpr std::string_view setup_violation = "# !! Setup Time Violation on pin:";
constexpr std::string_view hold_violation = "# !! Hold Time Violation on pin:";
constexpr std::string_view from_pin = "#    From pin:";

std::int32_t in_range(const std::int32_t (&limit)[3]) { return limit[kol_timind(kol_ext.cur_inst) - 1]; }

void show_time_line(std::int32_t from, std::int32_t to, std::int32_t limit) {
    tm_count_warning();
    kol_say("#  time:", kol_time_text(from), "-->", kol_time_text(to), "<->:", kol_time_text(to - from), "(<",
            kol_time_text(limit), ")");
}

std::string path_of(const kol_timing_role_t& role) {
    return kol_quoted_path(role.pin == nullptr ? 0 : role.pin->sim_path);
}

constexpr bool is_violated(std::int32_t limit, std::int32_t difference) {
    return limit != 0 && limit > difference;
}

// Nothing where the time is not violated.
void show_window(std::int32_t since, std::int32_t time, std::int32_t limit,
                 const kol_violation_t& violation) {
    if (!is_violated(limit, time - since)) return;
    kol_say(violation.text, path_of(violation.at), violation.from == nullptr ? " " : "");
    if (violation.from != nullptr) kol_say(from_pin, path_of(*violation.from));
    show_time_line(since, time, limit);
}

}  // namespace

void kol_check_pulse_width(const kol_timing_role_t& role, const kol_transition_t& transition) {
    const std::int32_t high = in_range(role.min_time_high);
    const std::int32_t low = in_range(role.min_time_low);
    struct {
        std::string_view text;
        std::int32_t limit;
    } const rules[] = {
        /* rising  */ {"# !! Min Time Low Violation on pin:", low},
        /* falling */ {"# !! Min Time High Violation on pin:", high},
        /* unknown */
        {"# !! Min Time Violation on pin:", high < 1  ? low
                                            : low < 1 ? high
                                                      : std::min(high, low)},
    };
    const auto& rule = rules[static_cast<std::size_t>(transition.change)];
    show_window(transition.opposite_time, transition.time, rule.limit, {rule.text, role, nullptr});
}

void kol_check_setup(const kol_timing_role_t& reference, const kol_transition_t& transition,
                     const kol_timing_role_t& input) {
    if (kol_is_active(reference.edge, transition.change))
        show_window(kol_reference_time(input), transition.time, in_range(input.setup),
                    {setup_violation, reference, &input});
}

void kol_check_hold(const kol_timing_role_t& input, const kol_transition_t& transition,
                    const kol_timing_role_t& reference) {
    if (kol_is_active(input.edge, transition.change))
        show_window(kol_reference_time(reference), transition.time, in_range(input.hold),
                    {hold_violation, input, &reference});
}

void kol_check_since(std::int32_t since, std::int32_t time, const std::int32_t (&limits)[3],
                     const kol_violation_t& violation) {
    if (since >= 0) show_window(since, time, in_range(limits), violation);
}

void kol_report_override(const kol_timing_role_t& reset, const kol_timing_role_t& set, std::int32_t time) {
    tm_count_warning();
    kol_say("# !! Reset Already  ON pin:", path_of(reset));
    kol_say("#   That Overide Set pin:", path_of(set));
    kol_say("#  time:", kol_time_text(time));
}

// LIST and TRACE.
#include "commands/observation/handlers.h"
#include "commands/observation/observed_signal.h"
#include "commands/shared/parameters.h"
#include "commands/shared/picking.h"
#include "commands/shared/rejections.h"
#include "foundation/list.h"
#include "foundation/shell.h"
#include "kernel/lookup.h"
#include "kernel/say.h"
#include "results/entries/options.h"
#include "results/entries/time_cursor.h"
#include "results/list/layout.h"

namespace {

constexpr kol_rejection_t radix_invalid{
    "# !! Error:2nd parameter invalid(should be:\"Hex\",\"Bin\",\"Dec\")"};
constexpr kol_rejection_t signal_not_found{"# !! Error : Signal NOT FOUND ? "};
constexpr kol_rejection_t trace_too_high{"# !! Error : too many rows in TRACe ( max : 1023 ) "};

struct view_t {
    std::int16_t first_name;                         // keyword
    yx_signal_rec_t* kol_defref_var_rec_t::*newest;  // entry
    bool (*fits)();
    kol_rejection_t too_large;
    kol_pick_words_t pick;
};
constexpr view_t list_view{
    3,
    &kol_defref_var_rec_t::list_signal,
    kol_list_fits,
    kol_list_too_wide,
    {{"# !! Error :  No level sheet VALID for LIST ? "}, {"# !! Error :  No sheet VALID for LIST ? "}}};
constexpr view_t trace_view{
    2,
    &kol_defref_var_rec_t::trace_signal,
    kol_trace_fits,
    trace_too_high,
    {{"# !! Error :  No level sheet VALID for TRACe ? "}, {"# !! Error :  No sheet VALID for TRACe ? "}}};

bool read_radix(const tm_string_record_t& keyword, std::int16_t& radix) {
    constexpr std::string_view letters = "HBD";  // in the order of the radix codes
    for (std::size_t code = 0; code < letters.size(); ++code) {
        if (!kol_begins_with_one_of(keyword, letters.substr(code, 1))) continue;
        radix = static_cast<std::int16_t>(code);
        return true;
    }
    return false;
}

kol_rejection_t show_found(const view_t& view, const kol_found_signal_t& found, std::int16_t radix) {
    yx_signal_rec_t*& newest = kol_ext.*view.newest;
    tm_list_append(kol_make_signal(found, radix), newest);
    if (view.fits()) return {};
    kol_drop_signal(tm_list_take(newest, newest));
    return view.too_large;
}

// Names are looked up without regard to case; the transcript holds what it always did.
void note_choice(const tm_string_record_t& name) {
    const std::string_view chosen = kol_chosen_among_cases(name);
    if (chosen.empty()) return;
    tm_shell.append_session("# \"" + std::string(chosen) +
                            "\" is taken, other names differ from it in case only ");
}

kol_rejection_t show_one(const view_t& view, const tm_string_record_t& name, std::int16_t radix) {
    if (!kol_begins_like_signal(name)) return kol_signal_name_invalid;
    kol_found_signal_t found;
    if (!kol_find_signal(name, found)) return signal_not_found;
    note_choice(name);
    return show_found(view, found, radix);
}

// The net of the wire or pin at the cursor, under its name on the sheet.
kol_result_t show_picked(const view_t& view, const kol_line_t& line, std::int16_t radix) {
    kol_picked_net_t picked;
    const auto no_point = static_cast<std::int16_t>(line.nkeyword + 1);
    kol_rejection_t wrong = kol_pick_net(view.pick, no_point, line, picked);
    kol_found_signal_t found;
    if (!wrong && kol_picked_by_path) picked.name = kol_name_of_net(*picked.net, picked.name);
    const bool is_known = !wrong && kol_find_signal(picked.name, found);
    if (is_known) wrong = show_found(view, found, radix);
    if (is_known) tm_shell.redraw_results();
    if (wrong.error != kol_not_in_design.error) return wrong;
    return kol_result_t(wrong).then({"# Net_name : \"", tm_view(picked.name), "\" "});
}

// What was not watched in the run is not known: a note for the user, which is no line of the session's
// record.
void note_late_histories(const view_t& view) {
    const yx_signal_rec_t* const newest = kol_ext.*view.newest;
    if (!rs_options.mark_unrecorded || newest == nullptr || kol_ext.cur_time < 1) return;
    const bool is_bus = newest->sig_bus;
    const std::int32_t from = rs_recorded_from({is_bus ? nullptr : kol_ext.*view.newest, newest->bus});
    if (from < 1) return;
    tm_shell.append_session("# recorded from " + kol_time_text(from) +
                            " on, not recorded before : UPDATE List or UPDATE Trace simulates again ");
}

kol_result_t show_signals(const view_t& view, const kol_line_t& line, std::int16_t radix) {
    if (line.nkeyword < view.first_name) return show_picked(view, line, radix);
    kol_rejection_t wrong;
    std::int16_t k = view.first_name;
    while (k <= line.nkeyword && !(wrong = show_one(view, line[k], radix))) ++k;
    if (k > view.first_name) tm_shell.redraw_results();
    note_late_histories(view);
    if (!wrong) return {};
    return kol_result_t(wrong).then(
        {wrong.error == kol_signal_name_invalid.error ? "# parameter : \"" : "# Signal : \"",
         tm_view(line[k]), "\" "});
}

}  // namespace

kol_result_t kol_list_cmd(const kol_line_t& line) {
    std::int16_t radix = kol_hexadecimal;
    if (!read_radix(line[2], radix)) return radix_invalid;
    return show_signals(list_view, line, radix);
}

kol_result_t kol_trace_cmd(const kol_line_t& line) { return show_signals(trace_view, line, kol_binary); }

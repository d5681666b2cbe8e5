// LIST and TRACE.
#include "commands/handlers.h"
#include "commands/keyword.h"
#include "commands/observed_signal.h"
#include "commands/picking.h"
#include "commands/view_rules.h"
#include "foundation/shell.h"
#include "results/list/layout.h"

namespace {

constexpr kol_rejection_t radix_invalid{
    "# !! Error:2nd parameter invalid(should be:\"Hex\",\"Bin\",\"Dec\")"};
constexpr kol_rejection_t name_invalid{
    "# !! Error : parameter invalid ( should begin with letter or \"/\") "};
constexpr kol_rejection_t signal_not_found{"# !! Error : Signal NOT FOUND ? "};
constexpr kol_rejection_t trace_too_high{"# !! Error : too many rows in TRACe ( max : 1023 ) "};

struct view_t {
    std::string_view words;
    std::int16_t first_name;                         // keyword
    yx_signal_rec_t* kol_defref_var_rec_t::*newest;  // entry
    bool (*fits)();
    kol_rejection_t too_large;
    kol_pick_words_t pick;
};
constexpr view_t list_view{
    " LIST ",
    3,
    &kol_defref_var_rec_t::list_signal,
    kol_list_fits,
    kol_list_too_wide,
    {{"# !! Error :  No level sheet VALID for LIST ? "}, {"# !! Error :  No sheet VALID for LIST ? "}}};
constexpr view_t trace_view{
    " TRACe ",
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
    yx_signal_rec_t* const entry = kol_make_signal(found, radix);
    kol_append_record(entry, newest);
    if (view.fits()) return {};
    kol_remove_record(entry, newest);
    kol_drop_signal(entry);
    return view.too_large;
}

kol_rejection_t show_one(const view_t& view, const tm_string_record_t& name, std::int16_t radix) {
    if (!kol_begins_like_signal(name)) return name_invalid;
    kol_found_signal_t found;
    return kol_find_signal(name, found) ? show_found(view, found, radix) : signal_not_found;
}

// The net of the wire or pin at the cursor, under its name on the sheet.
void show_picked(const view_t& view, std::int16_t nkeyword, kol_array_keyword_t& keyword,
                 std::int16_t radix) {
    kol_picked_net_t picked;
    const auto no_point = static_cast<std::int16_t>(nkeyword + 1);
    kol_rejection_t wrong = kol_pick_net(view.pick, no_point, nkeyword, keyword, picked);
    kol_found_signal_t found;
    const bool is_known = !wrong && kol_find_signal(picked.name, found);
    if (is_known) wrong = show_found(view, found, radix);
    if (is_known) tm_shell.redraw_results();
    if (!wrong) return kol_echo(view.words, 2, nkeyword, keyword);
    kol_reject(view.words, 2, nkeyword, keyword, wrong);
    if (wrong.error == kol_not_in_design.error) kol_show({"# Net_name : \"", tm_view(picked.name), "\" "});
}

void reject_name(const view_t& view, std::int16_t nkeyword, kol_array_keyword_t& keyword,
                 const tm_string_record_t& name, const kol_rejection_t& wrong) {
    kol_reject(view.words, 2, nkeyword, keyword, wrong);
    kol_show(
        {wrong.error == name_invalid.error ? "# parameter : \"" : "# Signal : \"", tm_view(name), "\" "});
}

void show_signals(const view_t& view, std::int16_t nkeyword, kol_array_keyword_t& keyword,
                  std::int16_t radix) {
    if (nkeyword < view.first_name) return show_picked(view, nkeyword, keyword, radix);
    kol_rejection_t wrong;
    std::int16_t k = view.first_name;
    while (k <= nkeyword && !(wrong = show_one(view, kol_kw(keyword, k), radix))) ++k;
    if (k > view.first_name) tm_shell.redraw_results();
    if (wrong)
        reject_name(view, nkeyword, keyword, kol_kw(keyword, k), wrong);
    else
        kol_echo(view.words, 2, nkeyword, keyword);
}

}  // namespace

void kol_list_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int16_t radix = kol_hexadecimal;
    if (!read_radix(kol_kw(keyword, 2), radix))
        return kol_reject(list_view.words, 2, nkeyword, keyword, radix_invalid);
    show_signals(list_view, nkeyword, keyword, radix);
}

void kol_trace_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    show_signals(trace_view, nkeyword, keyword, kol_binary);
}

// LIST.
#include "commands/handlers.h"
#include "commands/keyword.h"
#include "commands/observed_signal.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "results/list_view.h"

namespace {

constexpr std::string_view list_words = " LIST ";

constexpr kol_rejection_t radix_invalid{
    "# !! Error:2nd parameter invalid(should be:\"Hex\",\"Bin\",\"Dec\")"};
constexpr kol_rejection_t window_invalid{"# !! Error :  Invalid window ? "};
constexpr kol_rejection_t no_sheet{"# !! Error :  No sheet in Context window ? "};
constexpr kol_rejection_t name_invalid{
    "# !! Error : parameter invalid ( should begin with letter or \"/\") "};
constexpr kol_rejection_t signal_not_found{"# !! Error : Signal NOT FOUND ? "};
constexpr kol_rejection_t list_too_wide{"# !! Error : too many columns in LIST ( max : 1024 ) "};

constexpr std::int16_t context_page = 1;

bool read_radix(const tm_string_record_t& keyword, std::int16_t& radix) {
    constexpr std::string_view letters = "HBD";  // in the order of the radix codes
    for (std::size_t code = 0; code < letters.size(); ++code) {
        if (!kol_begins_with_one_of(keyword, letters.substr(code, 1))) continue;
        radix = static_cast<std::int16_t>(code);
        return true;
    }
    return false;
}

void append_entry(yx_signal_rec_t* entry) {
    entry->previous = kol_ext.list_signal;
    if (kol_ext.list_signal != nullptr) kol_ext.list_signal->next = entry;
    kol_ext.list_signal = entry;
}

void drop_newest_entry() {
    yx_signal_rec_t* entry = kol_ext.list_signal;
    kol_ext.list_signal = entry->previous;
    if (kol_ext.list_signal != nullptr) kol_ext.list_signal->next = nullptr;
    kol_drop_signal(entry);
}

kol_rejection_t list_one(const tm_string_record_t& name, std::int16_t radix) {
    if (!kol_begins_like_signal(name)) return name_invalid;
    kol_found_signal_t found;
    if (!kol_find_signal(name, found)) return signal_not_found;
    append_entry(kol_make_signal(found, radix));
    if (kol_list_fits()) return {};
    drop_newest_entry();
    return list_too_wide;
}

void reject_listed(std::int16_t nkeyword, kol_array_keyword_t& keyword, const tm_string_record_t& name,
                   const kol_rejection_t& wrong) {
    kol_reject(list_words, 2, nkeyword, keyword, wrong);
    kol_show(
        {wrong.error == name_invalid.error ? "# parameter : \"" : "# Signal : \"", tm_view(name), "\" "});
}

}  // namespace

void kol_list_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int16_t radix = kol_hexadecimal;
    if (!read_radix(kol_kw(keyword, 2), radix)) {
        kol_reject(list_words, 2, nkeyword, keyword, radix_invalid);
        return;
    }
    if (nkeyword == 2) {
        kol_reject(list_words, 2, nkeyword, keyword,
                   tm_vext.numpage != context_page ? window_invalid : no_sheet);
        return;
    }
    kol_rejection_t wrong;
    std::int16_t k = 3;
    while (k <= nkeyword && !(wrong = list_one(kol_kw(keyword, k), radix))) ++k;
    if (k > 3) tm_shell.redraw_results();
    if (wrong)
        reject_listed(nkeyword, keyword, kol_kw(keyword, k), wrong);
    else
        kol_echo(list_words, 2, nkeyword, keyword);
}

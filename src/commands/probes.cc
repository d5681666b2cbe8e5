// PROBE, STATUS PROBE and STATUS NET: nets of the sheet on the Context page.
#include "commands/handlers.h"
#include "commands/keyword.h"
#include "commands/report.h"
#include "commands/view_rules.h"
#include "foundation/shell.h"
#include "kernel/lookup.h"

namespace {

constexpr std::string_view probe_words = " PROBe ";
constexpr std::string_view status_words = " STAtus PROBe ";
constexpr std::string_view status_net_words = " STAtus NET ";

constexpr kol_rejection_t count_invalid{nb_par_invalid};
constexpr kol_rejection_t name_invalid{"# !! Error : 2nd parameter invalid ( should begin with letter ) "};
constexpr kol_rejection_t no_probe{"# !! Error : NO PROBE Exists ? "};
constexpr kol_rejection_t probe_unknown{"# !! Warning : PROBE does not Exists ? "};
constexpr kol_rejection_t no_context_sheet{"# !! No Sheet available in Context Window ?  "};

void report_probe(const kol_probe_signal_rec_t& probe) {
    kol_report_quoted("# PROBE          : ", tm_view(probe.probe_name));
    kol_report_quoted("# Probe sim_path : ", tm_view(probe.cur_sim_path));
    kol_report_net(*probe.net);
    kol_report_end();
}

}  // namespace

void kol_probe_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (nkeyword == 3) return kol_reject(probe_words, 2, nkeyword, keyword, count_invalid);
    if (kol_begins_with_letter(kol_kw(keyword, 2)))
        return kol_reject(probe_words, 2, nkeyword, keyword, kol_check_context_sheet());
    kol_reject(probe_words, 2, nkeyword, keyword, name_invalid);
    kol_show({"# parameter : \"", tm_view(kol_kw(keyword, 2)), "\" "});
}

void kol_status_probe_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const kol_probe_signal_rec_t* probe = kol_ext.start_probe_signal;
    kol_probe_signal_rec_t* named = nullptr;
    if (probe == nullptr) return kol_reject(status_words, 3, nkeyword, keyword, no_probe);
    if (nkeyword == 3 && kol_find_net_probe(kol_kw(keyword, 3), named) == 0)
        return kol_reject(status_words, 3, nkeyword, keyword, probe_unknown);
    if (named != nullptr) report_probe(*named);
    for (; named == nullptr && probe != nullptr; probe = probe->next) report_probe(*probe);
    kol_echo(status_words, 3, nkeyword, keyword);
}

void kol_status_net_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    kol_reject(status_net_words, 3, nkeyword, keyword, no_context_sheet);
}

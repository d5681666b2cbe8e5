// PROBE and STATUS PROBE: nets whose values the sheet shows.
#include "commands/handlers.h"
#include "commands/keyword.h"
#include "commands/picking.h"
#include "commands/probe_displays.h"
#include "commands/report.h"
#include "foundation/shell.h"
#include "kernel/lookup.h"

namespace {

constexpr std::string_view probe_words = " PROBe ";
constexpr std::string_view status_words = " STAtus PROBe ";

constexpr kol_rejection_t name_invalid{"# !! Error : 2nd parameter invalid ( should begin with letter ) "};
constexpr kol_rejection_t no_probe{"# !! Error : NO PROBE Exists ? "};
constexpr kol_rejection_t probe_unknown{"# !! Warning : PROBE does not Exists ? "};
constexpr kol_pick_words_t pick_words{{"# !! Error :  No level sheet VALID for PROBE ? "},
                                      {"# !! Error :  No sheet VALID for PROBE ? "}};

void report_probe(const kol_probe_signal_rec_t& probe) {
    kol_report_quoted("# PROBE          : ", tm_view(probe.probe_name));
    kol_report_quoted("# Probe sim_path : ", tm_view(probe.cur_sim_path));
    kol_report_net(*probe.net);
    kol_report_end();
}

void add_probe(const kol_picked_net_t& picked, const tm_string_record_t& name) {
    auto* probe = new kol_probe_signal_rec_t{picked.net, name, kol_ext.cur_sim_path};
    probe->object_id = picked.object_id;
    probe->vertex = picked.vertex;
    kol_append_record(probe, kol_ext.start_probe_signal, kol_ext.last_probe_signal);
    kol_hang_probes();
}

kol_rejection_t probe(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (nkeyword == 3) return kol_count_invalid;
    if (!kol_begins_with_letter(kol_kw(keyword, 2))) return name_invalid;
    kol_picked_net_t picked;
    const kol_rejection_t wrong = kol_pick_net(pick_words, 3, nkeyword, keyword, picked);
    if (!wrong) add_probe(picked, kol_kw(keyword, 2));
    return wrong;
}

}  // namespace

void kol_probe_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (const kol_rejection_t wrong = probe(nkeyword, keyword)) {
        kol_reject(probe_words, 2, nkeyword, keyword, wrong);
        if (wrong.error == name_invalid.error)
            kol_show({"# parameter : \"", tm_view(kol_kw(keyword, 2)), "\" "});
        return;
    }
    kol_echo(probe_words, 2, nkeyword, keyword);
    tm_shell.redraw_context();
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

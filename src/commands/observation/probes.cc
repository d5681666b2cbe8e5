// PROBE and STATUS PROBE: nets whose values the sheet shows.
#include "commands/observation/handlers.h"
#include "commands/shared/parameters.h"
#include "commands/shared/picking.h"
#include "commands/shared/probe_displays.h"
#include "commands/shared/report.h"
#include "foundation/list.h"
#include "foundation/shell.h"
#include "kernel/lookup.h"

namespace {

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
    auto& probe = tm_list_append(std::make_unique<kol_probe_signal_rec_t>(), kol_ext.start_probe_signal,
                                 kol_ext.last_probe_signal);
    probe.net = picked.net;
    probe.probe_name = name;
    probe.cur_sim_path = kol_ext.cur_sim_path;
    probe.object_id = picked.object_id;
    probe.vertex = picked.vertex;
    kol_hang_probes();
}

kol_result_t probe(const kol_line_t& line) {
    if (line.nkeyword == 3) return kol_count_invalid;
    if (!kol_begins_with_letter(line[2]))
        return kol_result_t(name_invalid).then({"# parameter : \"", tm_view(line[2]), "\" "});
    kol_picked_net_t picked;
    const kol_rejection_t wrong = kol_pick_net(pick_words, 3, line, picked);
    if (!wrong) add_probe(picked, line[2]);
    return wrong;
}

}  // namespace

kol_result_t kol_probe_cmd(const kol_line_t& line) {
    kol_result_t result = probe(line);
    if (!result) tm_shell.redraw_context();
    return result;
}

kol_result_t kol_status_probe_cmd(const kol_line_t& line) {
    const kol_probe_signal_rec_t* probe = kol_ext.start_probe_signal;
    kol_probe_signal_rec_t* named = nullptr;
    if (probe == nullptr) return no_probe;
    if (line.nkeyword == 3 && kol_find_net_probe(line[3], named) == 0) return probe_unknown;
    if (named != nullptr) report_probe(*named);
    for (; named == nullptr && probe != nullptr; probe = probe->next) report_probe(*probe);
    return {};
}

// BREAK and STATUS BREAK.
#include "commands/observation/breaks.h"

#include "commands/observation/bus_breaks.h"
#include "commands/observation/handlers.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/shared/report.h"
#include "foundation/list.h"
#include "foundation/shell.h"
#include "kernel/lookup.h"
#include "kernel/state.h"

namespace {

constexpr kol_rejection_t name_invalid{
    "# !! Error : 2nd parameter invalid ( should begin with letter or \"/\") "};
constexpr kol_rejection_t state_length_invalid{"# !! Error : state invalid : char number <> 1,2 "};
constexpr kol_rejection_t no_break{"# !! Error : NO BREAK Exists ? "};
constexpr kol_rejection_t break_unknown{"# !! Error : BREAK do not Exists ? "};

kol_result_t read_break(const kol_line_t& line, yx_break_signal_rec_t& record) {
    record.break_name = line[2];
    const std::string_view state = tm_view(line[3]);
    if (!kol_begins_like_signal(record.break_name))
        return kol_result_t(name_invalid).then({"# parameter : \"", tm_view(record.break_name), "\" "});
    if (state.empty() || state.size() > 2) return state_length_invalid;
    if (!kol_keyword_to_state(state, record.state)) return kol_state_invalid;
    record.net_type = kol_find_net(record.break_name, record.net);
    // A whole bus takes no single state; its members do.
    if (record.net_type == 0 || record.net->net_type == YX_TSTD_BUS) return kol_net_not_found;
    return {};
}

void append_break(const yx_break_signal_rec_t& values) {
    auto& record = tm_list_append(std::make_unique<yx_break_signal_rec_t>(values), kol_ext.break_signal);
    record.cur_sim_path = kol_ext.cur_sim_path;
    record.net->UU.U1.break_signal = &record;
}

yx_break_signal_rec_t* newest_break_of(const yx_net_record_t* net) {
    yx_break_signal_rec_t* record = kol_ext.break_signal;
    while (record != nullptr && record->net != net) record = record->previous;
    return record;
}

void report_break(const yx_break_signal_rec_t& record) {
    char state[2];
    kol_state_to_statechar(record.state, state);
    kol_report_quoted("# Break          : ", tm_view(record.break_name));
    kol_report_quoted("# Break sim_path : ", tm_view(record.cur_sim_path));
    kol_report_quoted("# Break state    : ", {state, 2});
    kol_report_net(*record.net);
    kol_report_end();
}

void report_breaks() {
    const yx_break_signal_rec_t* record = kol_ext.break_signal;
    while (record != nullptr && record->previous != nullptr) record = record->previous;
    for (; record != nullptr; record = record->next) report_break(*record);
}

}  // namespace

void kol_remove_break(yx_break_signal_rec_t* record) {
    const auto owned = tm_list_take(record, kol_ext.break_signal);
    yx_break_signal_rec_t*& tested = record->net->UU.U1.break_signal;
    if (tested == record) tested = newest_break_of(record->net);
}

void kol_remove_all_breaks() {
    while (yx_break_signal_rec_t* record = kol_ext.break_signal) {
        record->net->UU.U1.break_signal = nullptr;
        tm_list_take(record, kol_ext.break_signal);
    }
}

kol_result_t kol_break_cmd(const kol_line_t& line) {
    yx_break_signal_rec_t record;
    if (kol_result_t wrong = read_break(line, record)) return wrong;
    append_break(record);
    return {};
}

kol_result_t kol_status_break_cmd(const kol_line_t& line) {
    yx_break_signal_rec_t* record = nullptr;
    if (kol_ext.break_signal == nullptr && !kol_has_bus_break()) return no_break;
    if (line.nkeyword == 3 && kol_find_break_inrec(line[3], record) == 0)
        return kol_report_bus_breaks(&line[3]) ? kol_rejection_t{} : break_unknown;
    if (record != nullptr) {
        report_break(*record);
        return {};
    }
    report_breaks();
    kol_report_bus_breaks(nullptr);
    return {};
}

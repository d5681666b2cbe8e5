// CURSOR: times of the Results page that the user marks.
#include <algorithm>
#include <vector>

#include "commands/session/handlers.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "kernel/history.h"
#include "kernel/lookup.h"
#include "kernel/say.h"
#include "results/entries/time_cursor.h"
#include "results/pointed.h"

namespace {

constexpr kol_rejection_t time_invalid{"# !! Error : Invalid time "};
constexpr kol_rejection_t no_signal{"# !! Error : Signal is neither in LIST nor in TRACe ? "};
constexpr kol_rejection_t none_at_pointer{"# !! Error : No Signal at the pointer ? "};
constexpr kol_rejection_t no_change{"# !! Warning : no further change "};
constexpr kol_rejection_t switch_invalid{
    "# !! Error : 3rd parameter invalid ( should be : \"ON\" or \"OFF\" ) "};

std::vector<yx_net_record_t*> followed;  // nets of probes whose histories are kept to be shown

rs_pointed_t at_pointer() {
    return rs_pointed({tm_vext.pixel_pos.x, tm_vext.pixel_pos.y}, tm_vext.bitmap_size.xmax,
                      tm_vext.bitmap_size.ymax);
}

// The time at the pointer, or the one that is typed as keyword k.
kol_rejection_t read_time(std::int16_t k, const kol_line_t& line, std::int32_t& time) {
    if (line.nkeyword > k) return kol_count_invalid;
    if (line.nkeyword == k) return kol_read_positive_time(line[k], time) ? kol_rejection_t{} : time_invalid;
    if (tm_vext.numpage != tm_page::results) return kol_rejection_t{"# !! Error :  Invalid window ? "};
    time = at_pointer().time;
    return {};
}

kol_result_t set(rs_time_cursor_t& cursor, std::int16_t k, const kol_line_t& line) {
    std::int32_t time = 0;
    if (const kol_rejection_t wrong = read_time(k, line, time)) return wrong;
    cursor = {true, time};
    return kol_accepted((k > 2 ? "SECOND " : "") + kol_time_text(time) + " ");
}

rs_entry_t entry_of(const yx_signal_rec_t& record) {
    return record.sig_bus ? rs_entry_t{nullptr, record.bus}
                          : rs_entry_t{const_cast<yx_signal_rec_t*>(&record), nullptr};
}

// By the name that the view shows, whatever the simulation path is now.
yx_signal_rec_t* entry_named(const tm_string_record_t& name) {
    for (yx_signal_rec_t* entry : {kol_ext.trace_signal, kol_ext.list_signal})
        for (; entry != nullptr; entry = entry->previous)
            if (tm_string_iden_string(entry->name, name)) return entry;
    return nullptr;
}

kol_rejection_t find_entry(const kol_line_t& line, rs_entry_t& entry) {
    if (line.nkeyword > 3) return kol_count_invalid;
    if (line.nkeyword == 2) {
        if (tm_vext.numpage == tm_page::results) entry = at_pointer().entry;
        return entry ? kol_rejection_t{} : none_at_pointer;
    }
    yx_signal_rec_t* record = nullptr;
    if (kol_find_tracesig_inrec(line[3], record) == 0 && kol_find_listsig_inrec(line[3], record) == 0)
        record = entry_named(line[3]);
    if (record == nullptr) return no_signal;
    entry = entry_of(*record);
    return {};
}

// The view moves so that the cursor is in it.
void show_cursor() {
    const std::int32_t time = rs_cursors.first.time;
    const std::int64_t span = std::int64_t{kol_ext.trace_scale} * 20;
    const std::int64_t begin = kol_ext.trace_cur_time;
    if (time < begin || time > begin + span)
        kol_ext.trace_cur_time = static_cast<std::int32_t>(std::max<std::int64_t>(time - span / 2, 0));
    if (time < kol_ext.list_cur_time) kol_ext.list_cur_time = time;
}

kol_result_t step(bool forward, const kol_line_t& line) {
    rs_entry_t entry;
    if (const kol_rejection_t wrong = find_entry(line, entry)) return wrong;
    std::int32_t change = 0;
    const std::int32_t from = rs_cursors.first.is_set ? rs_cursors.first.time : kol_ext.trace_cur_time;
    const bool found =
        forward ? rs_next_change(entry, from, change) : rs_previous_change(entry, from, change);
    if (!found) return no_change;
    rs_cursors.first = {true, change};
    show_cursor();
    return kol_accepted(kol_time_text(change) + " ");
}

// Nets of probes get a history while they follow the cursor.
void follow(bool on) {
    for (yx_net_record_t* const net : followed) kol_forget_net(net);
    followed.clear();
    rs_cursors.probes_follow = on;
    for (auto* probe = kol_ext.start_probe_signal; on && probe != nullptr; probe = probe->next) {
        if (probe->net->net_type == YX_TSTD_BUS) continue;
        kol_observe_net(probe->net);
        followed.push_back(probe->net);
    }
}

kol_result_t set_probes(const kol_line_t& line) {
    if (line.nkeyword != 3) return kol_count_invalid;
    const bool on = tm_const_equal_string("ON", line[3]);
    if (!on && !tm_const_equal_string("OF", line[3])) return switch_invalid;
    follow(on);
    return {};
}

bool is_word(std::string_view word, const tm_string_record_t& typed) {
    return typed.len > 1 && tm_view(typed).size() <= word.size() &&
           std::ranges::equal(tm_view(typed), word.substr(0, tm_view(typed).size()), {}, tm_upper_case);
}

kol_result_t act(const kol_line_t& line) {
    if (line.nkeyword == 1) return set(rs_cursors.first, 2, line);
    const tm_string_record_t& word = line[2];
    if (is_word("NEXT", word)) return step(true, line);
    if (is_word("PREVIOUS", word)) return step(false, line);
    if (is_word("PROBES", word)) return set_probes(line);
    if (is_word("SECOND", word)) return set(rs_cursors.second, 3, line);
    if (!is_word("OFF", word)) return set(rs_cursors.first, 2, line);
    if (line.nkeyword > 2) return kol_count_invalid;
    rs_cursors.first = rs_cursors.second = {};
    return {};
}

}  // namespace

kol_result_t kol_cursor_cmd(const kol_line_t& line) {
    kol_result_t result = act(line);
    if (result) return result;
    tm_shell.redraw_results();
    if (rs_cursors.probes_follow || (line.nkeyword > 1 && is_word("PROBES", line[2])))
        tm_shell.redraw_context();
    return result;
}

// FORGET.
#include "commands/observation/breaks.h"
#include "commands/observation/bus_breaks.h"
#include "commands/observation/handlers.h"
#include "commands/observation/observed_signal.h"
#include "commands/shared/parameters.h"
#include "commands/shared/probe_displays.h"
#include "commands/shared/rejections.h"
#include "foundation/list.h"
#include "foundation/shell.h"
#include "kernel/lookup.h"

namespace {

constexpr kol_rejection_t kind_invalid{
    "# !! Error : 2rd parameter invalid (should be:\"A\",BU\",\"BR\",\"L\",\"P\",\"T\") "};

// ---- buses

bool has_bus() { return kol_ext.start_sim_bus != nullptr; }

void forget_buses() {
    while (kol_ext.start_sim_bus != nullptr) kol_forget_bus(kol_ext.start_sim_bus);
}

bool forget_bus(const tm_string_record_t& name) {
    yx_bus_rec_t* bus = nullptr;
    if (kol_find_sim_bus(name, bus) == 0) return false;
    kol_forget_bus(bus);
    return true;
}

// ---- breaks

bool has_break() { return kol_ext.break_signal != nullptr || kol_has_bus_break(); }

void forget_breaks() {
    kol_ext.time_breaked = false;
    kol_remove_all_breaks();
    kol_remove_bus_breaks();
}

bool forget_break(const tm_string_record_t& name) {
    yx_break_signal_rec_t* record = nullptr;
    if (kol_find_break_inrec(name, record) == 0) return kol_remove_bus_break(name);
    kol_remove_break(record);
    return true;
}

// ---- list and trace

void drop_entry(yx_signal_rec_t* entry, yx_signal_rec_t*& newest) {
    kol_drop_signal(tm_list_take(entry, newest));
}

void drop_entries(yx_signal_rec_t*& newest) {
    while (newest != nullptr) drop_entry(newest, newest);
    tm_shell.redraw_results();
}

bool has_listed() { return kol_ext.list_signal != nullptr; }

void forget_list() {
    kol_ext.list_cur_time = 0;
    kol_ext.list_cur_column = 1;
    kol_ext.list_period = 0;
    kol_ext.list_change_on = true;
    drop_entries(kol_ext.list_signal);
}

bool forget_listed(const tm_string_record_t& name) {
    yx_signal_rec_t* entry = nullptr;
    if (kol_find_listsig_inrec(name, entry) == 0) return false;
    drop_entry(entry, kol_ext.list_signal);
    tm_shell.redraw_results();
    return true;
}

bool has_traced() { return kol_ext.trace_signal != nullptr; }

void forget_trace() {
    kol_ext.trace_cur_time = 0;
    kol_ext.trace_period = 0;
    kol_ext.trace_period_on = false;
    drop_entries(kol_ext.trace_signal);
}

bool forget_traced(const tm_string_record_t& name) {
    yx_signal_rec_t* entry = nullptr;
    if (kol_find_tracesig_inrec(name, entry) == 0) return false;
    drop_entry(entry, kol_ext.trace_signal);
    tm_shell.redraw_results();
    return true;
}

// ---- probes

bool has_probe() { return kol_ext.start_probe_signal != nullptr; }

void drop_probe(kol_probe_signal_rec_t* probe) {
    tm_list_take(probe, kol_ext.start_probe_signal, kol_ext.last_probe_signal);
}

void show_probes_left() {
    kol_hang_probes();
    tm_shell.redraw_context();
}

void forget_probes() {
    tm_list_clear(kol_ext.start_probe_signal, kol_ext.last_probe_signal);
    show_probes_left();
}

// Names mean the oldest probe, but the newest of equal ones goes first.
bool forget_probe(const tm_string_record_t& name) {
    for (auto* probe = kol_ext.last_probe_signal; probe != nullptr; probe = probe->previous) {
        if (!tm_string_iden_string(probe->probe_name, name) ||
            !tm_string_iden_string(probe->cur_sim_path, kol_ext.cur_sim_path))
            continue;
        drop_probe(probe);
        show_probes_left();
        return true;
    }
    return false;
}

// ---- the command

struct kind_t {
    const char* prefix;
    std::string_view word, word_in_error;
    bool (*has_any)();
    void (*forget_all)();
    bool (*forget_one)(const tm_string_record_t& name);
};
constexpr kind_t kinds[] = {
    {"BU", "BUS", "Bus", has_bus, forget_buses, forget_bus},
    {"BR", "BREAK", "BREAK", has_break, forget_breaks, forget_break},
    {"L", "LIST", "LIST", has_listed, forget_list, forget_listed},
    {"P", "PROBE", "PROBE", has_probe, forget_probes, forget_probe},
    {"T", "TRACE", "TRACE", has_traced, forget_trace, forget_traced},
};

const kind_t* find_kind(const tm_string_record_t& keyword) {
    for (const kind_t& kind : kinds)
        if (tm_const_equal_string(kind.prefix, keyword)) return &kind;
    return nullptr;
}

bool is_star(const tm_string_record_t& name) { return tm_view(name) == "*"; }

std::int16_t first_wrong_name(const kol_line_t& line) {
    std::int16_t k = 3;
    while (k <= line.nkeyword && (kol_begins_like_signal(line[k]) || is_star(line[k]))) ++k;
    return k;
}

// Checks the kind and the names; the names behind A are checked and then ignored.
kol_result_t read_forget(const kol_line_t& line, bool& all, const kind_t*& kind) {
    all = kol_begins_with_one_of(line[2], "A");
    kind = find_kind(line[2]);
    const std::int16_t k = first_wrong_name(line);
    if (!all && kind == nullptr) return kind_invalid;
    if (!all && line.nkeyword == 2) return kol_count_invalid;
    if (k > line.nkeyword) return {};
    return kol_result_t(kol_signal_name_invalid).then({"# parameter : \"", tm_view(line[k]), "\" "});
}

kol_result_t forget_named(const kind_t& kind, const kol_line_t& line) {
    if (!kind.has_any()) return kol_rejected({"# !! Warning : NO ", kind.word, " signal available ? "});
    for (std::int16_t k = 3; k <= line.nkeyword; ++k)
        if (!kind.forget_one(line[k]))
            return kol_rejected({"# !! Error : ", kind.word_in_error, " signal NOT FOUND ? "});
    return {};
}

}  // namespace

kol_result_t kol_forget_cmd(const kol_line_t& line) {
    bool all = false;
    const kind_t* kind = nullptr;
    if (kol_result_t wrong = read_forget(line, all, kind)) return wrong;
    if (all) {
        for (const kind_t& each : kinds) each.forget_all();
        return {};
    }
    if (line.nkeyword > 3 || !is_star(line[3])) return forget_named(*kind, line);
    kind->forget_all();
    return kol_accepted("");
}

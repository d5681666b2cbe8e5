// SPIKE CHECK, SPIKE MIN and SPIKE MODEL.
#include "commands/language/entry_expansion.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/stimulus/handlers.h"
#include "foundation/shell.h"
#include "kernel/say.h"

namespace {

constexpr kol_rejection_t check_invalid{"# !! Error :  3rd parameter incorrect ? "};
constexpr kol_rejection_t width_invalid{kol_time_scale_invalid.error, kol_form::quoted};
constexpr kol_rejection_t model_invalid{
    "# !! Error :  3rd parameter incorrect (should be \"N\",\"S\",\"I\",\"P\") ? "};

struct check_row {
    const char* keyword;
    bool on;
    std::string_view echo;
};
constexpr check_row check_table[] = {
    {"ON", true, " ON "},
    {"OF", false, " OFF "},
};

struct model_row {
    std::string_view letter;
    kol_spike_models model;
    std::string_view echo;
};
constexpr model_row model_table[] = {
    {"N", kol_nosuppress, "Nosuppress "},
    {"S", kol_suppress, "Suppress "},
    {"I", kol_indgene, "Indgene "},
    {"P", kol_pessimistic, "Pessimistic "},
};

}  // namespace

void kol_add_spike_check(tm_string_record_t& entry) { tm_append(kol_ext.spike_on ? "ON" : "OFF", entry); }

// The width given last: the one valid from tspike_min on, or from the start.
void kol_add_spike_min(tm_string_record_t& entry) {
    kol_add_time(kol_ext.tspike_min > 0 ? kol_ext.spike_min_t : kol_ext.spike_min_t0, entry);
}

void kol_add_spike_model(tm_string_record_t& entry) {
    for (const model_row& row : model_table)
        if (row.model == kol_ext.spike_model) return tm_append(row.echo, entry);
    kol_add_text("***", entry);
}

kol_result_t kol_spike_check_cmd(const kol_line_t& line) {
    for (const check_row& row : check_table) {
        if (!tm_const_equal_string(row.keyword, line[3])) continue;
        kol_ext.spike_on = row.on;
        return kol_accepted(row.echo);
    }
    return check_invalid;
}

kol_result_t kol_spike_min_cmd(const kol_line_t& line) {
    std::int32_t width = 0;
    if (!kol_read_positive_time(line[3], width)) return width_invalid;
    if (kol_ext.cur_time < 1) {
        kol_ext.spike_min_t0 = width;
    } else {
        kol_ext.tspike_min = kol_ext.cur_time;
        kol_ext.spike_min_t = width;
    }
    return kol_accepted(kol_time_text(width));
}

kol_result_t kol_spike_model_cmd(const kol_line_t& line) {
    for (const model_row& row : model_table) {
        if (!kol_begins_with_one_of(line[3], row.letter)) continue;
        kol_ext.spike_model = row.model;
        return kol_accepted(row.echo);
    }
    return model_invalid;
}

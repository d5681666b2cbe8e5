// Command expansion: the entry becomes the command with its current values, ready to be edited.
#include "commands/command_line.h"
#include "commands/interpreter.h"
#include "commands/sheet.h"
#include "foundation/context.h"
#include "foundation/numbers.h"
#include "foundation/shell.h"
#include "kernel/time.h"

namespace {

constexpr std::string_view not_set = "*** ";

void add(std::string_view value, tm_string_record_t& entry) {
    tm_append(value, entry);
    tm_append(" ", entry);
}

void add_real(std::int32_t value, tm_string_record_t& entry) {
    tm_string_record_t text;
    tm_real_to_string(value, text);
    add(tm_view(text), entry);
}

void add_time(std::int32_t time, tm_string_record_t& entry) {
    if (time < 0) return tm_append(not_set, entry);
    tm_string_record_t text;
    kol_time_to_string(time, text);
    add(tm_view(text), entry);
}

void add_factor(float factor, tm_string_record_t& entry) {
    if (factor < 0) return tm_append(not_set, entry);
    tm_string_record_t text;
    tm_shortreal_to_string(factor, text);
    add(tm_view(text), entry);
}

void add_base_point(tm_string_record_t& entry) {
    add_real(tm_vext.base_point.x, entry);
    add_real(tm_vext.base_point.y, entry);
}

void add_clock_period(tm_string_record_t& entry) {
    const kol_forceblk_rec_t* const clock = kol_ext.last_clock_force_blk;
    add_time(clock != nullptr ? clock->clock_period : -1, entry);
}

void add_grid_step(tm_string_record_t& entry) {
    const tm_object_grid_rec_t* const grid = kol_sheet_grid();
    add_real(grid != nullptr ? grid->step_point : 0, entry);
}

void add_grid_state(tm_string_record_t& entry) {
    const tm_object_grid_rec_t* const grid = kol_sheet_grid();
    add(grid == nullptr || (tm_vext.grid_on && grid->grid_on) ? "ON" : "OFF", entry);
}

void add_list_period(tm_string_record_t& entry) {
    add_time(kol_ext.list_period, entry);
    if (kol_ext.list_period >= 0) add_time(kol_ext.list_base_time, entry);
}

void add_trace_period(tm_string_record_t& entry) { add_time(kol_ext.trace_period, entry); }

void add_trace_scale(tm_string_record_t& entry) { add_time(kol_ext.trace_scale, entry); }

void add_user_unit(tm_string_record_t& entry) { add_factor(kol_ext.scale_user_unit, entry); }

// The width given last: the one valid from tspike_min on, or from the start.
void add_spike_min(tm_string_record_t& entry) {
    add_time(kol_ext.tspike_min > 0 ? kol_ext.spike_min_t : kol_ext.spike_min_t0, entry);
}

void add_spike_model(tm_string_record_t& entry) {
    constexpr std::array<std::string_view, 4> models = {"Nosuppress", "Suppress", "Indgene", "Pessimistic"};
    const auto model = static_cast<std::size_t>(kol_ext.spike_model);
    add(model < models.size() ? models[model] : "***", entry);
}

void add_spike_check(tm_string_record_t& entry) { tm_append(kol_ext.spike_on ? "ON" : "OFF", entry); }

void add_coefficients(tm_string_record_t& entry) {
    for (const float coefficient :
         {kol_ext.tim_coef_delay, kol_ext.tim_coef_setup, kol_ext.tim_coef_hold, kol_ext.tim_coef_minpulse})
        add_factor(coefficient, entry);
}

struct expansion {
    std::array<const char*, 3> prefix;
    bool alone;  // exactly as many keywords as prefixes
    std::string_view command;
    void (*add_values)(tm_string_record_t& entry);
};

// clang-format off
constexpr expansion expansions[] = {
    {{"BASE"},              false, " BASEpoint Edit ",     add_base_point},
    {{"CLO", "PER"},        false, " CLOck PERiod ",       add_clock_period},
    {{"GRI", "ST"},         false, " GRId STep ",          add_grid_step},
    {{"GRI"},               true,  " GRId ",               add_grid_state},
    {{"PER", "LIS"},        false, " PERiod LISt ",        add_list_period},
    {{"PER", "TRA"},        false, " PERiod TRAce ",       add_trace_period},
    {{"SCA", "TRA", "TIM"}, false, " SCAle TRAce TIMe ",   add_trace_scale},
    {{"SCA", "USE", "UNI"}, false, " SCAle USEr UNIt ",    add_user_unit},
    {{"SPI", "MIN"},        false, " SPIke MIN ",          add_spike_min},
    {{"SPI", "MOD"},        false, " SPIke MODel ",        add_spike_model},
    {{"SPI", "CHE"},        false, " SPIke CHEck ",        add_spike_check},
    {{"TIM", "COE"},        false, " TIMing COEfficient ", add_coefficients},
};
// clang-format on

bool fits(const expansion& row, std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int16_t words = 0;
    for (const char* const prefix : row.prefix) {
        if (prefix == nullptr) break;
        if (++words > nkeyword || !tm_const_equal_string(prefix, kol_kw(keyword, words))) return false;
    }
    return !row.alone || nkeyword == words;
}

// The keywords of the entry before a comment; the '?' that asks for the expansion is none of them.
std::int16_t entry_keywords(const tm_string_record_t& text, kol_array_keyword_t& keyword) {
    std::string_view asked = tm_view(text);
    if (asked.ends_with('?')) asked.remove_suffix(1);
    const std::int16_t nkeyword = kol_split_keywords(tm_string(asked), keyword);
    for (std::int16_t k = 1; k <= nkeyword; ++k)
        if (kol_kw(keyword, k).char_[0] == '#') return static_cast<std::int16_t>(k - 1);
    return nkeyword;
}

}  // namespace

void kol_expand_cmd(const tm_string_record_t& text) {
    kol_array_keyword_t keyword;
    const std::int16_t nkeyword = entry_keywords(text, keyword);
    for (const expansion& row : expansions) {
        if (!fits(row, nkeyword, keyword)) continue;
        tm_string_record_t entry = tm_string(row.command);
        row.add_values(entry);
        return tm_display_cmd(entry);
    }
    tm_display("#  !! Unknown Command or not implemented for expand  ?? ");
    kol_show({"# cmd :  \"", tm_view(text)});
}

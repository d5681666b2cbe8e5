// Looks of nets by their states.
#include "commands/shared/net_looks.h"

#include <optional>
#include <unordered_map>

#include "commands/shared/picking.h"
#include "commands/shared/sheet_levels.h"
#include "kernel/state.h"
#include "results/entries/time_cursor.h"
#include "schematic/wire_look.h"

namespace {

// Nets of the design by their object on the sheet, for one sheet and simulation path.
struct known_nets_t {
    tm_file_index_t file = 0;
    std::string path;
    std::unordered_map<std::int16_t, yx_net_record_t*> net;
};
known_nets_t known;

yx_net_record_t* net_of(tm_file_index_t file, std::int16_t object) {
    if (known.file != file || known.path != tm_view(kol_ext.cur_sim_path))
        known = {file, std::string(tm_view(kol_ext.cur_sim_path)), {}};
    const auto [entry, is_new] = known.net.try_emplace(object);
    if (is_new) {
        tm_string_record_t name;
        kol_find_sheet_net(file, object, name, entry->second);
    }
    return entry->second;
}

tm_wire_look_t look_of_state(std::int8_t state) {
    constexpr tm_wire_look_t of_value[] = {
        /* i */ {tm_colour::red, tm_dash::dashed},
        /* 0 */ {tm_colour::green, tm_dash::solid},
        /* x */ {tm_colour::magenta, tm_dash::solid},
        /* 1 */ {tm_colour::yellow, tm_dash::solid},
    };
    constexpr std::int16_t undriven = 0, floating = 1;
    std::int16_t value = 0, drive = 0;
    kol_state_to_valdrive(state, value, drive);
    if (drive == floating || (drive == undriven && value != kol_vi))
        return {tm_colour::cyan, tm_dash::dashed};
    return of_value[value];
}

bool look_of_net(tm_file_index_t file, std::int16_t object, tm_wire_look_t& look) {
    const bool is_simulated = kol_ext.end_time > 0;  // before it all would be i
    if (!is_simulated || file != kol_level_file()) return false;
    const yx_net_record_t* const net = net_of(file, object);
    std::int8_t state = 0;
    if (net == nullptr || !rs_shown_state(*net, state)) return false;
    look = look_of_state(state);
    return true;
}

}  // namespace

void kol_show_states_on_sheets(bool on) { tm_wire_look_of = on ? look_of_net : nullptr; }
void kol_forget_net_looks() { known = {}; }

// The probes of the current level on its sheet.
#include "commands/shared/probe_displays.h"

#include <cstdlib>
#include <deque>
#include <string>

#include "commands/shared/picking.h"
#include "commands/shared/sheet_levels.h"
#include "kernel/state.h"
#include "results/entries/time_cursor.h"
#include "schematic/object_walk.h"
#include "schematic/pick.h"
#include "schematic/probe_display.h"

namespace {

struct hung_t {
    tm_file_index_t file = 0;
    std::int16_t net = 0;
    tm_probe_display_t display;
};
std::deque<hung_t> hung;  // the records keep their places

bool is_net(tm_file_index_t file, std::int16_t object) {
    return tm_is_file_open(file) && object >= 1 && object <= tm_file_header(file).object_id_max &&
           tm_object(file, object).object_type == tm_type_net;
}

void take_down() {
    for (const hung_t& each : hung)
        if (is_net(each.file, each.net)) tm_object_as<tm_type_net>(each.file, each.net).ptrto_probe = nullptr;
    hung.clear();
}

// A probe of another page of the sheet stands at a vertex that this page does not have, or on another net.
bool is_on_sheet(tm_file_index_t file, const kol_probe_signal_rec_t& probe) {
    if (!is_net(file, probe.object_id) || probe.vertex < 1 ||
        probe.vertex > tm_file_header(file).object_id_max || tm_net_of(file, probe.vertex) != probe.object_id)
        return false;
    tm_string_record_t name;
    yx_net_record_t* net = nullptr;
    kol_find_sheet_net(file, probe.object_id, name, net);
    return net == probe.net;
}

void add_state(const yx_net_record_t& net, std::string& text) {
    std::int8_t state = 0;
    if (!rs_shown_state(net, state)) {
        text += "?";
        return;
    }
    char shown[2];
    kol_state_to_statechar(state, shown);
    text.append(shown, 2);
}

// A bus shows the values of its members, the most significant first.
void add_bus(const yx_net_record_t& bus, std::string& text) {
    const std::int32_t members = std::abs(bus.UU.U2.net_bus_end - bus.UU.U2.net_bus_start) + 1;
    for (std::int32_t i = members; i-- > 0;) {
        std::int8_t state = 0;
        char shown[2] = {'?', ' '};
        if (rs_shown_state(*yx_ptrto_net_rec(bus.UU.U2.netind_start + i), state))
            kol_state_to_statechar(state, shown);
        text.push_back(shown[0]);
    }
}

std::string_view probe_text(const tm_probe_display_t& display) {
    static std::string text;
    const auto& probe = *static_cast<const kol_probe_signal_rec_t*>(display.owner);
    text = std::string(tm_view(display.name)) + " ";
    (probe.net->net_type == YX_TSTD_BUS ? add_bus : add_state)(*probe.net, text);
    return text;
}

void hang_up(tm_file_index_t file, kol_probe_signal_rec_t& probe) {
    hung.push_back({file, probe.object_id, {probe.vertex, probe.probe_name, &probe, probe_text, nullptr}});
    void*& first = tm_object_as<tm_type_net>(file, probe.object_id).ptrto_probe;
    hung.back().display.next = static_cast<tm_probe_display_t*>(first);
    first = &hung.back().display;
}

}  // namespace

void kol_hang_probes() {
    take_down();
    const tm_file_index_t file = kol_level_file();
    if (file == 0) return;
    for (auto* probe = kol_ext.start_probe_signal; probe != nullptr; probe = probe->next)
        if (tm_string_iden_string(probe->cur_sim_path, kol_ext.cur_sim_path) && is_on_sheet(file, *probe))
            hang_up(file, *probe);
}

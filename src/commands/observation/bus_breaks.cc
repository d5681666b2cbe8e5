// BREAK BUS.
#include "commands/observation/bus_breaks.h"

#include <algorithm>

#include "commands/observation/handlers.h"
#include "commands/shared/bus_value.h"
#include "commands/shared/report.h"
#include "kernel/watchers.h"

namespace {

std::vector<kol_bus_break_t>& breaks() { return kol_watchers.bus_breaks; }

}  // namespace

bool kol_has_bus_break() { return !breaks().empty(); }

void kol_remove_bus_breaks() {
    breaks().clear();
    kol_set_watchers();
}

bool kol_remove_bus_break(const tm_string_record_t& name) {
    const auto found = std::find_if(breaks().rbegin(), breaks().rend(), [&name](const kol_bus_break_t& bus) {
        return tm_string_iden_string(bus.name, name);
    });
    if (found == breaks().rend()) return false;
    breaks().erase(std::prev(found.base()));
    kol_set_watchers();
    return true;
}

bool kol_report_bus_breaks(const tm_string_record_t* name) {
    bool is_found = false;
    for (const kol_bus_break_t& bus : breaks()) {
        if (name != nullptr && !tm_string_iden_string(bus.name, *name)) continue;
        is_found = true;
        kol_report_quoted("# Break BUS      : ", tm_view(bus.name));
        kol_report_quoted("# Break sim_path : ", tm_view(bus.cur_sim_path));
        kol_report_quoted("# Break value    : ", bus.value);
        kol_report_end();
    }
    return is_found;
}

kol_result_t kol_break_bus_cmd(const kol_line_t& line) {
    kol_bus_value_t bus;
    if (const kol_rejection_t wrong = kol_read_bus_value(line[3], line[4], bus)) return wrong;
    breaks().push_back({line[3], kol_ext.cur_sim_path, std::string(tm_view(line[4])), std::move(bus.bits),
                        std::move(bus.value)});
    kol_set_watchers();
    return {};
}

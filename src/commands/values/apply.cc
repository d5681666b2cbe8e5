// APPLY TABLE and APPLY VCD: stimuli from data.
#include <algorithm>

#include "commands/files/file_path.h"
#include "commands/files/handlers.h"
#include "commands/values/handlers.h"
#include "commands/values/table_file.h"
#include "commands/values/vcd_reader.h"
#include "foundation/shell.h"
#include "kernel/stimuli.h"
#include "schematic/whole_file.h"

namespace {

constexpr std::size_t most_named = 10;  // unknown variables that are shown by name

void force(yx_net_record_t* net, std::int32_t time, std::int8_t state) {
    kol_add_force(*net, state, time, 0);
}

kol_result_t counted(std::size_t forces) {
    return kol_result_t().then({"#   forces : ", std::to_string(forces), " "});
}

}  // namespace

kol_result_t kol_apply_table_cmd(const kol_line_t& line) {
    kol_table_t table;
    if (kol_result_t wrong = kol_read_table_file(line, table)) return wrong;
    std::size_t forces = 0;
    for (const kol_table_value_t& value : table.values) {
        const std::vector<yx_net_record_t*>& bits = table.columns[value.column].bits;
        for (std::size_t k = 0; k < bits.size(); ++k) force(bits[k], value.time, table.states[value.at + k]);
        forces += bits.size();
    }
    return counted(forces);
}

kol_result_t kol_apply_vcd_cmd(const kol_line_t& line) {
    const tm_string_record_t path = kol_file_path(tm_view(line[3]));
    std::string text, error;
    if (!tm_read_whole(path, text, kol_value_file_max))
        return kol_result_t(kol_cannot_open).then({" !! \"", tm_view(path), "\" "});
    kol_vcd_read_t read;
    const std::string_view scope = line.nkeyword > 3 ? tm_view(line[4]) : std::string_view();
    if (!kol_read_vcd(text, scope, read, error)) return kol_rejected({"# !! Error : ", error, " "});
    if (read.variables == 0) return kol_rejected({"# !! Error : no variable has the name of a net ? "});
    for (const kol_vcd_force_t& each : read.forces)
        force(yx_ptrto_net_rec(static_cast<std::int32_t>(each.net)), each.time, each.state);
    kol_result_t result = counted(read.forces.size());
    const std::size_t named = std::min(read.unknown.size(), most_named), others = read.unknown.size() - named;
    for (std::size_t k = 0; k < named; ++k)
        result.behind.push_back("#   no net : \"" + read.unknown[k] + "\" ");
    if (others > 0) result.behind.push_back("#   no net : " + std::to_string(others) + " more ");
    return result;
}

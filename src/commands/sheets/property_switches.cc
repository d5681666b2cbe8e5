// CHANGE PROPERTY SWITCHES: which of the selected properties the sheet shows.
#include <string>

#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "commands/sheets/handlers.h"
#include "foundation/shell.h"
#include "schematic/object_walk.h"

namespace {

constexpr kol_rejection_t switch_invalid{
    "# !! Error : 4th parameter invalid (should be :\"Visible\",\"Novisible\")"};

// The sheet shows what is read from its file again when it is viewed anew.
bool change(tm_file_index_t file, std::int16_t id, bool visible) {
    if (!tm_inq_object_selected(file, id)) return false;
    tm_object_as<tm_type_property_2d>(file, id).visible = visible;
    tm_set_object_unvisible(file, id, !visible);
    return true;
}

}  // namespace

kol_result_t kol_change_prop_switches_cmd(const kol_line_t& line) {
    const tm_string_record_t& wanted = line[4];
    if (!kol_begins_with_one_of(wanted, "VN")) return switch_invalid;
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    std::int32_t changed = 0;
    for (const std::int16_t id : tm_walk::of_file(file, tm_type_property_2d))
        if (change(file, id, kol_begins_with_one_of(wanted, "V"))) ++changed;
    if (changed == 0) return kol_no_property_selected;
    tm_shell.redraw_context();
    return kol_result_t().then({"# ", std::to_string(changed), changed == 1 ? " property " : " properties "});
}

// CHANGE PROPERTY SWITCHES: which of the selected properties the sheet shows.
#include <string>

#include "commands/handlers.h"
#include "commands/sheet.h"
#include "foundation/shell.h"
#include "schematic/object_walk.h"

namespace {

constexpr std::string_view words = " CHAnge PROperty SWItches ";
constexpr kol_rejection_t switch_invalid{
    "# !! Error : 4th parameter invalid (should be :\"Visible\",\"Novisible\")"};
constexpr kol_rejection_t none_selected{"# !! Error : No property selected ? "};

// The sheet shows what is read from its file again when it is viewed anew.
bool change(tm_file_index_t file, std::int16_t id, bool visible) {
    if (!tm_inq_object_selected(file, id)) return false;
    tm_object_as<tm_type_property_2d>(file, id).visible = visible;
    tm_set_object_unvisible(file, id, !visible);
    return true;
}

}  // namespace

void kol_change_prop_switches_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const tm_string_record_t& wanted = kol_kw(keyword, 4);
    if (!kol_begins_with_one_of(wanted, "VN")) return kol_reject(words, 4, nkeyword, keyword, switch_invalid);
    const tm_file_index_t file = kol_sheet_or_reject(words, 4, nkeyword, keyword);
    if (file == 0) return;
    std::int32_t changed = 0;
    for (const std::int16_t id : tm_walk::of_file(file, tm_type_property_2d))
        if (change(file, id, kol_begins_with_one_of(wanted, "V"))) ++changed;
    if (changed == 0) return kol_reject(words, 4, nkeyword, keyword, none_selected);
    tm_shell.redraw_context();
    kol_echo(words, 4, nkeyword, keyword);
    kol_show({"# ", std::to_string(changed), changed == 1 ? " property " : " properties "});
}

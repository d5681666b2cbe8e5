// VIEW INSTANCE, VIEW NET and VIEW PIN: the sheet turns to what has the name.
#include <algorithm>

#include "commands/shared/context_sheet.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "commands/sheets/found_objects.h"
#include "commands/sheets/handlers.h"
#include "commands/sheets/hierarchy.h"
#include "commands/sheets/page_tags.h"
#include "commands/sheets/sheet_pages.h"
#include "foundation/shell.h"
#include "schematic/select.h"
#include "schematic/sheet_file.h"
#include "schematic/viewport.h"

namespace {

struct view_t {
    kol_find_objects_t find;
    kol_rejection_t not_found;
    int names = 1;  // of a path, which the sheet has at its end
};
constexpr view_t instance_view{kol_find_instances, {"# !! Error : Instance not found on this sheet ? "}};
constexpr view_t net_view{kol_find_nets, {"# !! Error : Net not found on this sheet ? "}};
constexpr view_t pin_view{kol_find_pins, kol_pin_not_found, 2};

bool is_on_page(const view_t& view, const kol_page_t& page, const tm_string_record_t& name) {
    tm_file_index_t file = 0;
    if (kol_read_sheet(tm_string(kol_page_directory(page)), file) != kol_sheet_found::yes) return false;
    const bool found = !view.find(file, name).empty();
    STATUS_T status;
    tm_file_close(file, false, status);
    return found;
}

// Turns to the next page of the level's sheet that has the thing, and behind the last begins with the first;
// false: no other has.
bool turn_to_page_with(const view_t& view, const tm_string_record_t& name) {
    if (kol_level_file() == 0 || kol_level_file() != kol_context_file()) return false;
    const kol_page_t shown = kol_page_of(kol_level_file());
    kol_page_t page = shown;
    do {
        ++page.number;
        if (!kol_page_exists(page)) page.number = 1;
        if (page.number == shown.number) return false;
    } while (!is_on_page(view, page, name));
    return kol_turn_page(page) == kol_sheet_found::yes;
}

// Whether the net, and nothing less of it, was shown last: then VIEW NET goes on to the next page.
bool is_shown_already(const kol_found_objects_t& found) {
    return std::all_of(found.begin(), found.end(), [](std::int16_t object) {
        return tm_inq_object_selected(kol_context_file(), object);
    });
}

// By a full path: the sheet below which it lies, then what is named there.  Where nothing is found the sheet
// stays.
kol_found_objects_t find_down(const view_t& view, std::string_view path) {
    const std::string before(tm_view(kol_ext.cur_sim_path));
    std::size_t slash = path.size();
    for (int i = 0; i < view.names && slash != std::string_view::npos && slash > 0; ++i)
        slash = path.rfind('/', slash - 1);
    if (!path.starts_with('/') || slash == std::string_view::npos) return {};
    if (!kol_go_to_path(path.substr(0, slash + 1))) return {};
    const tm_string_record_t name = tm_string(path.substr(slash + 1));
    kol_found_objects_t found = view.find(kol_context_file(), name);
    if (found.empty() && turn_to_page_with(view, name)) found = view.find(kol_context_file(), name);
    if (found.empty()) kol_go_to_path(before);
    return found;
}

kol_result_t view_named(const view_t& view, const tm_string_record_t& name, bool steps) {
    if (kol_context_file() == 0) return kol_no_sheet;
    kol_found_objects_t found = view.find(kol_context_file(), name);
    const bool turns = found.empty() || (steps && is_shown_already(found));
    if (turns && turn_to_page_with(view, name)) found = view.find(kol_context_file(), name);
    if (found.empty()) found = find_down(view, tm_view(name));
    if (found.empty()) return view.not_found;
    const tm_file_index_t file = kol_context_file();
    std::int32_t count = 0;
    tm_unselect_all(file, count);
    kol_select_found(file, found, true);
    kol_centre_on(file, found);
    tm_shell.redraw_context();
    return {};
}

// The net that is named, or that of the tag or wire at the pointer.
kol_result_t view_net(const kol_line_t& line) {
    if (line.nkeyword > 2) return view_named(net_view, line[3], true);
    const tm_file_index_t file = kol_context_file();
    const std::string name = file == 0 ? std::string() : kol_net_name_at(file, tm_vext.obj_pos);
    if (file != 0 && name.empty()) return net_view.not_found;
    return view_named(net_view, tm_string(name), true);
}

}  // namespace

kol_result_t kol_view_instance_cmd(const kol_line_t& line) {
    return view_named(instance_view, line[3], false);
}
kol_result_t kol_view_net_cmd(const kol_line_t& line) { return view_net(line); }
kol_result_t kol_view_pin_cmd(const kol_line_t& line) { return view_named(pin_view, line[3], false); }

// SELECT and UNSELECT.
#include <string>

#include "commands/shared/marks.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "commands/shared/sheet_points.h"
#include "commands/sheets/found_objects.h"
#include "commands/sheets/handlers.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "schematic/object_walk.h"
#include "schematic/pick.h"
#include "schematic/select.h"

namespace {

constexpr kol_rejection_t kind_invalid{
    "# !! Error : Invalid 3rd parameter (All,First,Inst,Vertex,Frame,Property,Net,Pin,Tag) ? "};
constexpr kol_rejection_t nothing_at_cursor{"# !! Error : No object found at the cursor ? "};
constexpr kol_rejection_t no_property{"# !! Error : Property not found on this sheet ? "};

struct kind_t {
    const char* prefix;
    tm_family family;
};
constexpr kind_t kinds[] = {
    {"A", tm_family::all},    {"FI", tm_family::first}, {"I", tm_family::instance},
    {"V", tm_family::vertex}, {"FR", tm_family::frame}, {"PR", tm_family::property},
    {"N", tm_family::net},    {"PI", tm_family::pin},   {"T", tm_family::tag},
};

const kind_t* find_kind(const tm_string_record_t& keyword) {
    for (const kind_t& kind : kinds)
        if (tm_const_equal_string(kind.prefix, keyword)) return &kind;
    return nullptr;
}

kol_result_t shown_count(std::int32_t count, bool on) {
    tm_shell.redraw_context();
    return kol_result_t().then({"# ", std::to_string(count), count == 1 ? " object " : " objects ",
                                on ? "selected " : "unselected "});
}

// ---- areas

// An area smaller than the pick aperture is a click on what is nearest.
bool is_click(const tm_viewport_t& viewport, const tm_bounds_t& area) {
    const tm_box_t box = tm_box(area);
    return box.xmax - box.xmin < viewport.units * tm_vext.pick_aperture.x &&
           box.ymax - box.ymin < viewport.units * tm_vext.pick_aperture.y;
}

std::int32_t select_in(tm_file_index_t file, tm_family family, const tm_bounds_t& area, bool on) {
    std::int32_t count = 0;
    const tm_viewport_t viewport = tm_viewport(file);
    if (!is_click(viewport, area)) {
        tm_select_area(file, family, area, on, count);
        return count;
    }
    const std::int16_t object = tm_nearest(file, family, viewport, {area.xmax, area.ymax});
    return object == 0 ? 0 : kol_select_found(file, {object}, on);
}

kol_result_t select_area(bool on, const kol_line_t& line) {
    tm_bounds_t area;
    const kol_rejection_t unmarked = kol_marked_area(area);  // marking is over, however this ends
    const kind_t* const kind = line.nkeyword < 3 ? kinds : find_kind(line[3]);
    if (kind == nullptr) return kind_invalid;
    if (const kol_rejection_t wrong = kol_check_context_sheet()) return wrong;
    if (unmarked) return unmarked;
    const std::int32_t count = select_in(kol_context_file(), kind->family, area, on);
    return shown_count(count, on);
}

// ---- by number, name or place

kol_result_t select_found(const kol_found_objects_t& found) {
    return shown_count(kol_select_found(kol_context_file(), found, true), true);
}

kol_result_t select_at_cursor(tm_family family) {
    if (const kol_rejection_t wrong = kol_check_context_sheet()) return wrong;
    const tm_file_index_t file = kol_context_file();
    const std::int16_t object = tm_nearest(file, family, tm_viewport(file), tm_vext.obj_pos);
    if (object == 0) return nothing_at_cursor;
    return select_found({object});
}

// The objects that keywords 3.. number; false when one of them is none of the sheet.
bool read_objects(tm_file_index_t file, const kol_line_t& line, kol_found_objects_t& objects) {
    for (std::int16_t k = 3; k <= line.nkeyword; ++k) {
        std::int16_t id = 0;
        if (!kol_read_number(line[k], tm_file_header(file).object_id_max, id)) return false;
        if (tm_inq_object_deleted(file, id)) return false;
        objects.push_back(id);
    }
    return true;
}

kol_found_objects_t find_properties(tm_file_index_t file, std::string_view name, std::string_view value) {
    kol_found_objects_t found;
    for (const std::int16_t id : tm_walk::of_file(file, tm_type_property_2d)) {
        const auto& property = tm_object_as<tm_type_property_2d>(file, id);
        if (kol_name_fits(name, tm_view(property.name)) && kol_name_fits(value, tm_view(property.nvalue)))
            found.push_back(id);
    }
    return found;
}

}  // namespace

kol_result_t kol_select_area_cmd(const kol_line_t& line) { return select_area(true, line); }

kol_result_t kol_unselect_area_cmd(const kol_line_t& line) { return select_area(false, line); }

kol_result_t kol_select_object_cmd(const kol_line_t& line) {
    if (line.nkeyword == 2) return select_at_cursor(tm_family::all);
    const tm_file_index_t file = kol_context_file();
    kol_found_objects_t objects;
    if (file == 0) return kol_no_sheet;
    if (!read_objects(file, line, objects)) return kol_object_invalid;
    return select_found(objects);
}

kol_result_t kol_select_pin_cmd(const kol_line_t& line) {
    if (line.nkeyword == 2) return select_at_cursor(tm_family::pin);
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    const kol_found_objects_t pins = kol_find_pins(file, line[3]);
    if (pins.empty()) return kol_pin_not_found;
    return select_found(pins);
}

kol_result_t kol_select_prop_cmd(const kol_line_t& line) {
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    const std::string_view value = line.nkeyword == 4 ? tm_view(line[4]) : "*";
    const kol_found_objects_t found = find_properties(file, tm_view(line[3]), value);
    if (found.empty()) return no_property;
    return select_found(found);
}

kol_result_t kol_unselect_all_cmd(const kol_line_t& /*line*/) {
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    std::int32_t count = 0;
    tm_unselect_all(file, count);
    return shown_count(count, false);
}

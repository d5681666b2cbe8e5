// SELECT and UNSELECT.
#include <string>

#include "commands/found_objects.h"
#include "commands/handlers.h"
#include "commands/marks.h"
#include "commands/sheet.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "schematic/object_walk.h"
#include "schematic/pick.h"
#include "schematic/select.h"

namespace {

constexpr std::string_view object_words = " SELect OBJect ";
constexpr std::string_view pin_words = " SELect PIN ";
constexpr std::string_view property_words = " SELect PROperty ";
constexpr std::string_view all_words = " UNSelect ALl ";

constexpr kol_rejection_t kind_invalid{
    "# !! Error : Invalid 3rd parameter (All,First,Inst,Vertex,Frame,Property,Net,Pin,Tag) ? "};
constexpr kol_rejection_t object_invalid{"# !! Error : No object of this number on the sheet ? "};
constexpr kol_rejection_t nothing_at_cursor{"# !! Error : No object found at the cursor ? "};
constexpr kol_rejection_t no_pin{"# !! Error : Pin not found on this sheet ? "};
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

void show_count(std::int32_t count, bool on) {
    tm_shell.redraw_context();
    kol_show({"# ", std::to_string(count), count == 1 ? " object " : " objects ",
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

void select_area(std::string_view words, bool on, std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    tm_bounds_t area;
    const kol_rejection_t unmarked = kol_marked_area(area);  // marking is over, however this ends
    const kind_t* const kind = nkeyword < 3 ? kinds : find_kind(kol_kw(keyword, 3));
    if (kind == nullptr) return kol_reject(words, 3, nkeyword, keyword, kind_invalid);
    if (const kol_rejection_t wrong = kol_check_context_sheet())
        return kol_reject(words, 3, nkeyword, keyword, wrong);
    if (unmarked) return kol_reject(words, 3, nkeyword, keyword, unmarked);
    const std::int32_t count = select_in(kol_context_file(), kind->family, area, on);
    kol_echo(words, 3, nkeyword, keyword);
    show_count(count, on);
}

// ---- by number, name or place

void select_found(std::string_view words, std::int16_t nkeyword, kol_array_keyword_t& keyword,
                  const kol_found_objects_t& found) {
    const std::int32_t count = kol_select_found(kol_context_file(), found, true);
    kol_echo(words, 3, nkeyword, keyword);
    show_count(count, true);
}

void select_at_cursor(std::string_view words, tm_family family, std::int16_t nkeyword,
                      kol_array_keyword_t& keyword) {
    if (const kol_rejection_t wrong = kol_check_context_sheet())
        return kol_reject(words, 3, nkeyword, keyword, wrong);
    const tm_file_index_t file = kol_context_file();
    const std::int16_t object = tm_nearest(file, family, tm_viewport(file), tm_vext.obj_pos);
    if (object == 0) return kol_reject(words, 3, nkeyword, keyword, nothing_at_cursor);
    select_found(words, nkeyword, keyword, {object});
}

// The objects that keywords 3.. number; false when one of them is none of the sheet.
bool read_objects(tm_file_index_t file, std::int16_t nkeyword, kol_array_keyword_t& keyword,
                  kol_found_objects_t& objects) {
    for (std::int16_t k = 3; k <= nkeyword; ++k) {
        std::int16_t id = 0;
        if (!kol_read_number(kol_kw(keyword, k), tm_file_header(file).object_id_max, id)) return false;
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

void kol_select_area_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    select_area(" SELect AREa ", true, nkeyword, keyword);
}

void kol_unselect_area_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    select_area(" UNSelect ARea ", false, nkeyword, keyword);
}

void kol_select_object_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (nkeyword == 2) return select_at_cursor(object_words, tm_family::all, nkeyword, keyword);
    const tm_file_index_t file = kol_sheet_or_reject(object_words, 3, nkeyword, keyword);
    kol_found_objects_t objects;
    if (file == 0) return;
    if (!read_objects(file, nkeyword, keyword, objects))
        return kol_reject(object_words, 3, nkeyword, keyword, object_invalid);
    select_found(object_words, nkeyword, keyword, objects);
}

void kol_select_pin_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (nkeyword == 2) return select_at_cursor(pin_words, tm_family::pin, nkeyword, keyword);
    const tm_file_index_t file = kol_sheet_or_reject(pin_words, 3, nkeyword, keyword);
    if (file == 0) return;
    const kol_found_objects_t pins = kol_find_pins(file, kol_kw(keyword, 3));
    if (pins.empty()) return kol_reject(pin_words, 3, nkeyword, keyword, no_pin);
    select_found(pin_words, nkeyword, keyword, pins);
}

void kol_select_prop_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const tm_file_index_t file = kol_sheet_or_reject(property_words, 3, nkeyword, keyword);
    if (file == 0) return;
    const std::string_view value = nkeyword == 4 ? tm_view(kol_kw(keyword, 4)) : "*";
    const kol_found_objects_t found = find_properties(file, tm_view(kol_kw(keyword, 3)), value);
    if (found.empty()) return kol_reject(property_words, 3, nkeyword, keyword, no_property);
    select_found(property_words, nkeyword, keyword, found);
}

void kol_unselect_all_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const tm_file_index_t file = kol_sheet_or_reject(all_words, 3, nkeyword, keyword);
    if (file == 0) return;
    std::int32_t count = 0;
    tm_unselect_all(file, count);
    kol_echo(all_words, 3, nkeyword, keyword);
    show_count(count, false);
}

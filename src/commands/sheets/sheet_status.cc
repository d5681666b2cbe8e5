// STATUS OBJECT, STATUS PROPERTY, LIST OBJECTS, SHOW FILE and SHOW LINK: what the sheet in the window is made
// of and where it comes from.
#include <algorithm>
#include <string>

#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "commands/shared/sheet_points.h"
#include "commands/sheets/found_objects.h"
#include "commands/sheets/handlers.h"
#include "commands/sheets/object_text.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "schematic/object_walk.h"
#include "schematic/sheet_file.h"

namespace {

constexpr kol_rejection_t none_selected{"# !! Error : No object selected ? "};
constexpr kol_rejection_t no_file{"# !! Error : No sheet open ? "};

std::string place_text(const tm_object_gene_rec_t& object) {
    return "origin = " + kol_point_text(object.origin);
}

void report_properties(tm_file_index_t file, std::int16_t id) {
    for (const std::int16_t property : tm_properties(file, id))
        kol_show({"#    property ", std::to_string(property), " : ",
                  kol_property_text(tm_object_as<tm_type_property_2d>(file, property))});
}

void report_object(tm_file_index_t file, std::int16_t id) {
    const tm_object_gene_rec_t& object = tm_object(file, id);
    kol_show({"#  OBJect : Handle = ", std::to_string(id), " ;  type = ", kol_type_text(object), "  "});
    kol_show({"#    ", place_text(object), ";  father = ", std::to_string(object.father),
              " ;  status =", kol_flags_text(object)});
    for (const std::string& line : kol_object_details(file, id)) kol_show({"#    ", line});
    report_properties(file, id);
}

bool is_asked_for(const tm_object_gene_rec_t& object, std::int16_t wanted) {
    if ((object.status & tm_object_is_deleted) != 0) return false;
    return wanted != 0 ? object.object_id == wanted : (object.status & tm_object_is_selected) != 0;
}

// Whether a property is selected itself or belongs to an object that is.
bool is_property_selected(tm_file_index_t file, std::int16_t id) {
    if (tm_inq_object_selected(file, id)) return true;
    for (std::int16_t holder = tm_object(file, id).father; holder != 0;
         holder = tm_object(file, holder).father)
        if (tm_inq_object_selected(file, holder)) return true;
    return false;
}

void list_object(const tm_object_gene_rec_t& object) {
    std::string id = std::to_string(object.object_id), type = kol_type_text(object);
    id.insert(0, id.size() < 6 ? 6 - id.size() : 0, ' ');
    type.resize(std::max<std::size_t>(type.size(), 18), ' ');
    kol_show({"#", id, "  ", type, " father = ", std::to_string(object.father),
              " ;  child = ", std::to_string(object.child1), " ;  next = ", std::to_string(object.following),
              " ;  ", place_text(object), kol_flags_text(object)});
}

void show_file(std::string_view label, tm_file_index_t file) {
    const tm_file_io_rec_t& record = tm_file_record(file);
    const bool is_shown = file == tm_vext.file_id_context;
    kol_show({"# ", label, is_shown ? " * " : "   ", "file ", std::to_string(file), " ;  version ",
              std::to_string(record.version), " ;  objects ",
              std::to_string(tm_file_header(file).object_id_max)});
    kol_show({"#    \"", tm_view(record.file_pathname), "\" "});
}

std::string level_text(std::int16_t level) { return "level " + std::to_string(level); }

}  // namespace

kol_result_t kol_status_object_cmd(const kol_line_t& line) {
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    const std::int16_t most = tm_file_header(file).object_id_max;
    std::int16_t wanted = 0;
    if (line.nkeyword == 3 && !kol_read_number(line[3], most, wanted)) return kol_object_invalid;
    bool any = false;
    for (const std::int16_t id : tm_walk::of_file(file, tm_type_nil)) {
        if (!is_asked_for(tm_object(file, id), wanted)) continue;
        any = true;
        report_object(file, id);
    }
    if (!any) return wanted != 0 ? kol_object_invalid : none_selected;
    return {};
}

kol_result_t kol_status_prop_cmd(const kol_line_t& line) {
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    const std::string_view name = line.nkeyword == 3 ? tm_view(line[3]) : "*";
    bool any = false;
    for (const std::int16_t id : tm_walk::of_file(file, tm_type_property_2d)) {
        const auto& property = tm_object_as<tm_type_property_2d>(file, id);
        if (!is_property_selected(file, id) || !kol_name_fits(name, tm_view(property.name))) continue;
        any = true;
        kol_show({"#  PROPERTY : Handle = ", std::to_string(id), " ;  ", kol_property_text(property)});
    }
    if (!any) return kol_no_property_selected;
    return {};
}

kol_result_t tm_object_list(const kol_line_t& /*line*/) {
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    const std::int16_t most = tm_file_header(file).object_id_max;
    for (std::int16_t id = 1; id <= most; ++id) list_object(tm_object(file, id));
    kol_show({"# ", std::to_string(most), most == 1 ? " object " : " objects "});
    return {};
}

kol_result_t kol_showfile_cmd(const kol_line_t& /*line*/) {
    bool any = false;
    for (std::int16_t level = 1; kol_is_level(level); ++level) {
        const tm_file_index_t file = kol_level(level).file_index;
        if (!kol_is_file(file)) continue;
        any = true;
        show_file(level_text(level), file);
    }
    if (kol_is_file(tm_vext.file_id_views)) {
        any = true;
        show_file("beside", static_cast<tm_file_index_t>(tm_vext.file_id_views));
    }
    if (!any) return no_file;
    return {};
}

kol_result_t kol_show_link_cmd(const kol_line_t& /*line*/) {
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    const tm_file_io_rec_t& record = tm_file_record(file);
    kol_show({"# link  : \"", tm_view(record.link_pathname), "\" "});
    kol_show({"# value : \"", tm_view(record.link_value), "\" "});
    kol_show({"# data  : \"", tm_view(record.file_pathname), "\" "});
    return {};
}

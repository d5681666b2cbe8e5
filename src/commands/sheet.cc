#include "commands/sheet.h"

#include <sys/stat.h>

#include "commands/probe_displays.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/numbers.h"
#include "foundation/shell.h"
#include "kernel/lookup.h"
#include "schematic/net_number.h"
#include "schematic/object_reader.h"
#include "schematic/object_walk.h"
#include "schematic/page_area.h"
#include "schematic/sheet_file.h"
#include "schematic/snap.h"

namespace {

constexpr kol_rejection_t window_invalid{"# !! Error :  Invalid window ? "};
constexpr kol_rejection_t point_invalid{"# !! Error : Invalid coordinate ? "};
constexpr kol_rejection_t cursor_outside{"# !! Error :  cursor  outside of page ? "};

bool is_directory(const std::string& path) {
    struct stat about {};
    return stat(path.c_str(), &about) == 0 && S_ISDIR(about.st_mode);
}

bool read_real(const tm_string_record_t& keyword, std::int32_t& real) {
    bool error_found = false;
    tm_string_to_real(keyword, real, error_found);
    return !error_found;
}

kol_sheet_found open_new(const tm_string_record_t& directory, tm_file_index_t& file) {
    STATUS_T status;
    tm_file_open(directory, tm_string("sheet"), file, status);
    if (status.all != all_is_ok) {
        file = 0;
        return kol_sheet_found::invalid;
    }
    const bool found = tm_file_record(file).version_found;
    if (found && tm_file_inq_primary_object(file) != 0) return kol_sheet_found::yes;
    tm_file_close(file, false, status);
    file = 0;
    return found ? kol_sheet_found::empty : kol_sheet_found::no_link;
}

kol_sheet_found open_again(const tm_string_record_t& directory, tm_file_index_t file) {
    const tm_file_io_rec_t before = tm_file_record(file);
    bool found = false;
    STATUS_T status;
    tm_file_reopen(directory, tm_string("sheet"), file, found, status);
    if (status.all != all_is_ok) return kol_sheet_found::invalid;
    if (!found) return kol_sheet_found::no_link;
    if (tm_file_inq_primary_object(file) != 0) return kol_sheet_found::yes;
    tm_file_record(file) = before;
    return kol_sheet_found::empty;
}

void hide_of(tm_file_index_t file, std::int16_t object) {
    for (const std::int16_t property : tm_properties(file, object))
        if (!tm_object_as<tm_type_property_2d>(file, property).visible)
            tm_set_object_unvisible(file, property, true);
}

void hide_of_all(tm_file_index_t file, const tm_walk& objects) {
    for (const std::int16_t object : objects) hide_of(file, object);
}

void hide_of_all_with_pins(tm_file_index_t file, const tm_walk& objects) {
    for (const std::int16_t object : objects) {
        hide_of(file, object);
        hide_of_all(file, tm_pins(file, object));
    }
}

void hide_properties(tm_file_index_t file) {
    hide_of_all_with_pins(file, tm_symbols(file));
    hide_of_all_with_pins(file, tm_instances(file));
    hide_of_all(file, tm_nets(file));
    hide_of_all(file, tm_frames(file));
}

std::int32_t level_max_object() {
    const tm_file_index_t file = kol_level_file();
    return file != 0 ? tm_highest_net_number(file) : 0;
}

}  // namespace

tm_file_index_t kol_context_file() {
    return kol_is_file(tm_vext.file_id_context) ? static_cast<tm_file_index_t>(tm_vext.file_id_context)
                                                : tm_file_index_t{0};
}

tm_object_grid_rec_t* kol_sheet_grid() {
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return nullptr;
    const std::int16_t id = tm_file_header(file).grid_obj_id;
    return tm_reader_t(file).record<tm_type_grid_2d>(id) != nullptr ? &tm_object_as<tm_type_grid_2d>(file, id)
                                                                    : nullptr;
}

kol_file_record_t& kol_level(std::int16_t level) {
    return kol_ext.arrayof_file[static_cast<std::size_t>(level - 1)];
}

tm_file_index_t kol_level_file() {
    if (!kol_is_level(kol_ext.file_level_cur)) return 0;
    const tm_file_index_t file = kol_level(kol_ext.file_level_cur).file_index;
    return kol_is_file(file) ? file : tm_file_index_t{0};
}

void kol_use_level_sheets() { kol_current_sheet_max_object = level_max_object; }

kol_sheet_found kol_read_sheet(const tm_string_record_t& directory, tm_file_index_t& file) {
    return kol_is_file(file) ? open_again(directory, file) : open_new(directory, file);
}

tm_string_record_t kol_sheet_directory(std::string_view directory) {
    const tm_string_record_t as_it_stands = tm_string(directory);
    if (directory.empty() || directory.starts_with('/') || directory.starts_with('$')) return as_it_stands;
    tm_string_record_t below = kol_ext.dir_path;
    tm_append("/", below);
    tm_append(directory, below);
    return is_directory(std::string(tm_view(below))) ? below : as_it_stands;
}

void kol_show_sheet(tm_file_index_t file) {
    tm_vext.file_id_context = file;
    hide_properties(file);
    kol_hang_probes();
    tm_shell.redraw_context();
}

kol_rejection_t kol_check_context_sheet() {
    if (tm_vext.numpage != tm_page::context) return window_invalid;
    return kol_context_file() == 0 ? kol_no_sheet : kol_rejection_t{};
}

kol_rejection_t kol_read_point(std::int16_t k, const kol_line_t& line, tm_point_t& point) {
    const bool is_typed = line.nkeyword >= k;
    if (is_typed && line.nkeyword != k + 1) return kol_count_invalid;
    if (!is_typed && tm_vext.numpage != tm_page::context) return window_invalid;
    if (kol_context_file() == 0) return kol_no_sheet;
    point = tm_vext.obj_pos;
    if (!is_typed) return {};
    const auto next = static_cast<std::int16_t>(k + 1);
    const bool is_point = read_real(line[k], point.x) && read_real(line[next], point.y);
    return is_point ? kol_rejection_t{} : point_invalid;
}

kol_rejection_t kol_snap_into_page(bool is_typed, tm_point_t& point) {
    point = tm_snapped(point);
    if (tm_inside_page(kol_context_file(), point)) return {};
    return is_typed ? kol_outside_page : cursor_outside;
}

std::string kol_point_text(const tm_point_t& point) {
    tm_string_record_t x, y;
    tm_real_to_string(point.x, x);
    tm_real_to_string(point.y, y);
    return std::string(tm_view(x)) + " " + std::string(tm_view(y)) + " ";
}

tm_string_record_t kol_keyword_text(const tm_string_record_t& keyword) {
    const std::string_view text = tm_view(keyword);
    const bool is_quoted = text.size() > 1 && (text[0] == '"' || text[0] == '\'') && text.back() == text[0];
    return is_quoted ? tm_string(text.substr(1, text.size() - 2)) : keyword;
}

bool kol_read_number(const tm_string_record_t& keyword, std::int32_t highest, std::int16_t& number) {
    std::int32_t read = 0;
    bool error_found = false;
    tm_string_to_int32(keyword, read, error_found);
    if (error_found || read < 1 || read > highest) return false;
    number = static_cast<std::int16_t>(read);
    return true;
}

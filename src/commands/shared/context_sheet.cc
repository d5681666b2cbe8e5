// How a sheet comes onto the Context page.
#include "commands/shared/context_sheet.h"

#include <sys/stat.h>

#include "commands/shared/net_looks.h"
#include "commands/shared/probe_displays.h"
#include "commands/shared/sheet_levels.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/shell.h"
#include "kernel/context.h"
#include "schematic/object_reader.h"
#include "schematic/object_walk.h"
#include "schematic/sheet_file.h"

namespace {

bool is_directory(const std::string& path) {
    struct stat about {};
    return stat(path.c_str(), &about) == 0 && S_ISDIR(about.st_mode);
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

}  // namespace

tm_object_grid_rec_t* kol_sheet_grid() {
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return nullptr;
    const std::int16_t id = tm_file_header(file).grid_obj_id;
    return tm_reader_t(file).record<tm_type_grid_2d>(id) != nullptr ? &tm_object_as<tm_type_grid_2d>(file, id)
                                                                    : nullptr;
}

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
    kol_forget_net_looks();
    kol_hang_probes();
    tm_shell.redraw_context();
}

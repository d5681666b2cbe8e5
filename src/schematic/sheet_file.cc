// Opening, making and closing sheet files.
#include "schematic/sheet_file.h"

#include <algorithm>
#include <string>

#include "foundation/files.h"
#include "schematic/link_file.h"
#include "schematic/object_pool.h"
#include "schematic/sheet_check.h"
#include "schematic/sheet_save.h"
#include "schematic/sheet_stream.h"
#include "schematic/whole_file.h"

namespace {

using sheet = std::shared_ptr<tm_file_gene_recf_t>;

[[noreturn]] void stop(const char* operation, const char* condition, std::int32_t code) {
    tm_trace(" ## error in %s ( %s )", operation, condition);
    tm_fatal(code);
}

tm_file_io_rec_t& entry(tm_file_index_t file_index) {
    return tm_vext.filear[static_cast<std::size_t>(file_index - 1)];
}

void check_ready(const char* operation) {
    if (!tm_vext.init_done) stop(operation, "init not done", init_not_done);
}

tm_file_index_t free_index(const tm_string_record_t& dirname) {
    const auto found = std::ranges::find(tm_vext.filear, false, &tm_file_io_rec_t::already_open_ok);
    if (found == tm_vext.filear.end()) {
        std::printf(" !! error in open file (too_many_files) = '%.*s'\n", dirname.len, dirname.char_);
        stop("tm_file_open", "too_many_files", too_many_files);
    }
    return static_cast<tm_file_index_t>(found - tm_vext.filear.begin() + 1);
}

void forget_open_objects() {
    tm_vext.open_obj_id = 0;
    tm_vext.cur_obj_level = 0;
}

void make_current(tm_file_index_t file_index) {
    forget_open_objects();
    tm_vext.cur_file = file_index;
    tm_vext.previous_obj_atlevel0 = entry(file_index).start_buf_ptr->last_child[0];
}

// A link that is there and cannot be read must not pass for a sheet that is new: saving would replace it.
std::int32_t describe(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                      tm_file_io_rec_t& file) {
    tm_copy_line(dirname, file.dirname);
    tm_copy_line(filetype, file.filetype);
    const bool is_read = tm_file_get_file_version(dirname, filetype, file.version, file.file_pathname,
                                                  file.link_pathname, file.link_value, file.version_found);
    if (is_read) return all_is_ok;
    ++tm_vext.num_errors;
    tm_trace("!!! file_open  link not read : \"%.*s\" \n", file.link_pathname.len, file.link_pathname.char_);
    return file_open_invalid;
}

sheet empty_sheet() {
    auto file = std::make_shared<tm_file_gene_recf_t>();
    file->software_revision = tm_software_revision;
    tm_get_date(file->day, file->month, file->year, file->hour, file->minute);
    file->fin = tm_fin_header;
    tm_pool_resize(*file, tm_pool_step);
    return file;
}

void take_slot(tm_file_index_t file_index, tm_file_io_rec_t file, sheet objects) {
    if (!entry(file_index).already_open_ok) ++tm_vext.num_file_open;
    file.already_open_ok = true;
    file.start_buf_ptr = std::move(objects);
    entry(file_index) = std::move(file);
    make_current(file_index);
}

// The last child of each object, and of the top level; the tree is sound.
void note_last_children(tm_file_gene_recf_t& file) {
    for (std::int16_t id = 1; id <= file.object_id_max; ++id) {
        const tm_object_gene_rec_t& object = *file.ar_objindex[static_cast<std::size_t>(id - 1)];
        if (object.father == 0 && object.following == 0) file.last_child[0] = id;
        std::int16_t last = object.child1;
        for (std::int16_t next = last; next != 0;) {
            last = next;
            next = file.ar_objindex[static_cast<std::size_t>(next - 1)]->following;
        }
        file.last_child[static_cast<std::size_t>(id)] = last;
    }
}

std::int32_t read_header(tm_sheet_input& in, const tm_string_record_t& path, tm_file_gene_recf_t& file) {
    readrectype(in, &file, tm_rec_header);
    if (in.fault != 0) return in.fault;
    file.ptr_to_ar_objindex = 0;
    if (file.software_revision != tm_software_revision) {
        std::printf("!! Software Revision Error:%f(instead of:%f) in open file = '%.*s'\n",
                    static_cast<double>(file.software_revision), static_cast<double>(tm_software_revision),
                    path.len, path.char_);
        return file_open_invalid;
    }
    const bool is_possible = file.object_id_max >= 0 && file.object_id_max <= tm_max_objects;
    return is_possible ? all_is_ok : file_open_invalid;
}

std::int32_t read_objects(tm_sheet_input& in, tm_file_gene_recf_t& file) {
    tm_pool_resize(file, static_cast<std::size_t>(file.object_id_max) + tm_pool_room_after_read);
    for (std::int16_t id = 1; id <= file.object_id_max; ++id) {
        tm_object_gene_rec_t* const object = readOneObject(in, file);
        if (object == nullptr) return in.fault;
        file.ar_objindex[static_cast<std::size_t>(id - 1)] = object;
    }
    return file.fin == tm_fin_header ? all_is_ok : file_open_invalid;
}

std::int32_t check_objects(tm_file_gene_recf_t& file) {
    std::string why;
    if (!tm_sheet_check(file, why)) {
        tm_trace("!!! file_open  ( %s )", why.c_str());
        return file_close_invalid;
    }
    for (std::int16_t id = 1; id <= file.object_id_max; ++id)
        file.ar_objindex[static_cast<std::size_t>(id - 1)]->status = 0;
    note_last_children(file);
    return all_is_ok;
}

// The sheet of a data file; null with a code.
sheet read_sheet(const tm_string_record_t& path, std::int32_t& code) {
    std::string bytes;
    code = file_open_invalid;
    if (!tm_read_whole(path, bytes)) {
        ++tm_vext.num_errors;
        tm_trace("!!! file_open  file not opened : \"%.*s\" \n", path.len, path.char_);
        return nullptr;
    }
    auto file = std::make_shared<tm_file_gene_recf_t>();
    tm_sheet_input in{bytes};
    code = read_header(in, path, *file);
    if (code == all_is_ok) code = read_objects(in, *file);
    if (code == all_is_ok) code = check_objects(*file);
    if (code == all_is_ok) return file;
    tm_trace("!!! file_open  file invalid : \"%.*s\"  status : %d  byte : %zu\n", path.len, path.char_, code,
             in.at);
    return nullptr;
}

void set_status(std::int32_t code, STATUS_T& status) {
    status.all = code == all_is_ok ? all_is_ok : tm_status_base + code;
}

void release(tm_file_index_t file_index) {
    entry(file_index) = {};
    --tm_vext.num_file_open;
    if (tm_vext.cur_file != file_index) return;
    forget_open_objects();
    tm_vext.cur_file = 0;
    tm_vext.previous_obj_atlevel0 = 0;
}

// Fills the target with what the source keeps; invalid objects end the program.
void fill_target(const tm_file_gene_recf_t& source, tm_file_gene_recf_t& target) {
    target.dot_width = source.dot_width;
    target.check_data_done = source.check_data_done;
    target.num_errors = tm_vext.num_errors;
    tm_copy_undeleted(source, target);
    std::string why;
    if (tm_sheet_check(target, why)) return;
    stop("tm_file_close", why.c_str(), file_close_invalid);
}

// The data file first, the link last: whatever happens between leaves the old version in use.
bool save(const tm_file_io_rec_t& source) {
    if (source.version_found && source.version == INT16_MAX) return false;
    tm_file_io_rec_t target;
    tm_file_create_bye(source, target);
    std::printf(" -- saving file :\"%.*s\" --\n", target.file_pathname.len, target.file_pathname.char_);
    fill_target(*source.start_buf_ptr, *target.start_buf_ptr);
    if (!tm_write_whole(target.file_pathname, tm_sheet_bytes(*target.start_buf_ptr))) {
        tm_trace("!!! file_close  file target not opened : \"%.*s\" \n", target.file_pathname.len,
                 target.file_pathname.char_);
        return false;
    }
    if (tm_add_tm_link(target.link_pathname, target.link_value)) return true;
    tm_trace("!!! file_close  link not written : \"%.*s\" \n", target.link_pathname.len,
             target.link_pathname.char_);
    return false;
}

}  // namespace

tm_file_io_rec_t& tm_file_record(tm_file_index_t file_index) {
    if (!tm_is_file_open(file_index)) stop("tm_file_record", "file not open", init_or_open_file_not_done);
    return entry(file_index);
}

void tm_file_open(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                  tm_file_index_t& file_index, STATUS_T& status) {
    check_ready("tm_file_open");
    file_index = free_index(dirname);
    tm_file_io_rec_t file;
    std::int32_t code = describe(dirname, filetype, file);
    sheet objects;
    if (code == all_is_ok)
        objects = file.version_found ? read_sheet(file.file_pathname, code) : empty_sheet();
    set_status(code, status);
    if (code == all_is_ok)
        take_slot(file_index, std::move(file), std::move(objects));
    else
        file_index = 0;
}

void tm_file_reopen(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                    tm_file_index_t file_index, bool& found, STATUS_T& status) {
    tm_file_record(file_index);
    tm_file_io_rec_t file;
    std::int32_t code = describe(dirname, filetype, file);
    found = file.version_found;
    sheet objects = found && code == all_is_ok ? read_sheet(file.file_pathname, code) : nullptr;
    set_status(code, status);
    if (objects != nullptr) take_slot(file_index, std::move(file), std::move(objects));
}

void tm_file_create_new(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                        tm_file_index_t& file_index, STATUS_T& status) {
    check_ready("tm_file_create_new");
    file_index = free_index(dirname);
    tm_file_io_rec_t file;
    const std::int32_t code = describe(dirname, filetype, file);
    set_status(code, status);
    if (code == all_is_ok)
        take_slot(file_index, std::move(file), empty_sheet());
    else
        file_index = 0;
}

void tm_file_create_bye(const tm_file_io_rec_t& source, tm_file_io_rec_t& target) {
    target = source;
    target.start_buf_ptr = empty_sheet();
    if (source.version_found) {
        tm_file_new_file_version(source.dirname, source.filetype, source.version, target.version,
                                 target.link_value, target.file_pathname);
    }
}

void tm_file_close(tm_file_index_t file_index, bool with_save, STATUS_T& status) {
    if (with_save && !save(tm_file_record(file_index))) {
        ++tm_vext.num_errors;
        set_status(file_open_invalid, status);
        return;
    }
    tm_file_record(file_index);
    release(file_index);
    set_status(all_is_ok, status);
}

void tm_file_select(tm_file_index_t file_index, STATUS_T& status) {
    tm_file_record(file_index);
    if (tm_vext.cur_file != file_index) make_current(file_index);
    set_status(all_is_ok, status);
}

std::int16_t tm_file_inq_primary_object(tm_file_index_t file_index) {
    return tm_file_header(file_index).primary_object;
}

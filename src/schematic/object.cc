// Objects of sheets: creating, opening, closing.
#include "schematic/object.h"

#include "schematic/object_pool.h"

namespace {

[[noreturn]] void stop(const char* operation, const char* condition, std::int32_t code) {
    tm_trace(" ## error in %s ( %s )", operation, condition);
    tm_fatal(code);
}

bool is_in_use(const tm_file_gene_recf_t& file, std::int16_t object_id) {
    return object_id >= 1 && object_id <= file.object_id_max;
}

tm_object_gene_rec_t& record_of(tm_file_gene_recf_t& file, std::int16_t object_id) {
    return *file.ar_objindex[static_cast<std::size_t>(object_id - 1)];
}

std::int16_t& level_entry(std::int16_t level) {
    return tm_vext.tm_curfamily[static_cast<std::size_t>(level)];
}

bool is_unfinished(const tm_object_gene_rec_t& object) {
    return (object.status & (tm_object_is_create | tm_object_is_open)) != 0;
}

tm_file_gene_recf_t& header_for(tm_file_index_t file_index, const char* operation) {
    if (!tm_vext.init_done) stop(operation, "init not done", init_or_open_file_not_done);
    if (!tm_is_file_open(file_index)) stop(operation, "file not open", init_or_open_file_not_done);
    return tm_file_header(file_index);
}

std::int16_t father_of_new(tm_file_gene_recf_t& file) {
    if (tm_vext.cur_obj_level >= tm_max_object_levels)
        stop("tm_object_create", "cur_obj_level > max", invalid_level);
    ++tm_vext.cur_obj_level;
    if (tm_vext.cur_obj_level < 2) return 0;
    const std::int16_t father = level_entry(static_cast<std::int16_t>(tm_vext.cur_obj_level - 1));
    if (!is_in_use(file, father) || !is_unfinished(record_of(file, father)))
        stop("tm_object_create", "father not open", object_create_invalid);
    return father;
}

void note_in_header(tm_file_gene_recf_t& file, const tm_object_gene_rec_t& object) {
    std::int16_t* const entry = object.object_type == tm_type_grid_2d ? &file.grid_obj_id
                                : object.object_type == tm_type_main  ? &file.primary_object
                                : object.object_type == tm_type_page  ? &file.page_obj_id
                                                                      : nullptr;
    if (entry != nullptr && *entry == 0) *entry = object.object_id;
}

// The last child of each object is kept, so that a long row of siblings costs no walk.
void append_to_siblings(tm_file_gene_recf_t& file, tm_object_gene_rec_t& object) {
    std::int16_t& last = file.last_child[static_cast<std::size_t>(object.father)];
    object.previous = object.father == 0 ? tm_vext.previous_obj_atlevel0 : last;
    if (object.previous != 0) record_of(file, object.previous).following = object.object_id;
    if (object.father == 0) {
        tm_vext.previous_obj_atlevel0 = object.object_id;
    } else if (record_of(file, object.father).child1 == 0) {
        record_of(file, object.father).child1 = object.object_id;
    }
    last = object.object_id;
}

std::int16_t ancestors(tm_file_gene_recf_t& file, const tm_object_gene_rec_t& object) {
    std::int16_t count = 0;
    for (std::int16_t id = object.father; id != 0; id = record_of(file, id).father) ++count;
    return count;
}

void make_current(tm_file_index_t file_index, const tm_file_gene_recf_t& file) {
    if (tm_vext.cur_file == file_index) return;
    tm_vext.cur_file = file_index;
    tm_vext.previous_obj_atlevel0 = file.last_child.empty() ? std::int16_t{0} : file.last_child[0];
}

}  // namespace

void tm_object_create(tm_file_index_t file_index, std::int16_t object_type, std::int32_t x, std::int32_t y,
                      std::int16_t& object_id, STATUS_T& status) {
    tm_file_gene_recf_t& file = header_for(file_index, "tm_object_create");
    if (tm_vext.cur_file != file_index) stop("tm_object_create", "file not current", file_id_invalid);
    if (object_type < tm_type_main || object_type >= tm_type_count)
        stop("tm_object_create", "object_type invalid", object_type_invalid);
    const std::int16_t father = father_of_new(file);
    if (file.object_id_max >= tm_max_objects)
        stop("tm_object_create", "object_id_max = 30000", too_many_objects);
    tm_pool_grow(file);
    object_id = ++file.object_id_max;
    tm_object_gene_rec_t& object = tm_pool_make(file, object_type);
    file.ar_objindex[static_cast<std::size_t>(object_id - 1)] = &object;
    object.object_id = object_id;
    object.object_type = object_type;
    object.origin = {x, y};
    object.status = tm_object_is_create;
    object.father = father;
    note_in_header(file, object);
    append_to_siblings(file, object);
    tm_vext.open_obj_id = object_id;
    level_entry(tm_vext.cur_obj_level) = object_id;
    tm_vext.pick_ap_new = true;
    status.all = all_is_ok;
}

void tm_object_open(tm_file_index_t file_index, std::int16_t object_id, std::int16_t& object_type,
                    STATUS_T& status) {
    tm_file_gene_recf_t& file = header_for(file_index, "tm_object_open");
    if (tm_vext.open_obj_id != 0) stop("tm_object_open", "open_obj_id <> 0", object_already_open);
    tm_object_gene_rec_t& object = tm_object(file_index, object_id);
    if ((object.status & tm_object_is_deleted) != 0 || is_unfinished(object))
        stop("tm_object_open", "deleted, in creation or open", object_open_invalid);
    object.status = static_cast<std::int16_t>(object.status | tm_object_is_open);
    make_current(file_index, file);
    tm_vext.cur_obj_level = static_cast<std::int16_t>(1 + ancestors(file, object));
    level_entry(tm_vext.cur_obj_level) = object_id;
    tm_vext.open_obj_id = object_id;
    tm_vext.pick_ap_new = true;
    object_type = object.object_type;
    status.all = all_is_ok;
}

void tm_object_close(tm_file_index_t file_index, std::int16_t object_id, STATUS_T& status) {
    header_for(file_index, "tm_object_close");
    tm_object_gene_rec_t& object = tm_object(file_index, object_id);
    if (!is_unfinished(object)) stop("tm_object_close", "neither open nor in creation", object_close_invalid);
    const std::int16_t flag =
        (object.status & tm_object_is_open) != 0 ? tm_object_is_open : tm_object_is_create;
    object.status = static_cast<std::int16_t>(object.status & ~flag);
    tm_vext.open_obj_id = 0;
    if (tm_vext.cur_obj_level > 0) --tm_vext.cur_obj_level;
    tm_vext.pick_ap_new = true;
    status.all = all_is_ok;
}

void tm_object_id_ptr(tm_file_index_t file_index, std::int16_t object_id, tm_object_gene_rec_t*& record,
                      STATUS_T& status) {
    record = &tm_object(file_index, object_id);
    status.all = all_is_ok;
}

void tm_object_inq_object_id_max(tm_file_index_t file_index, std::int16_t& id_max, STATUS_T& status) {
    id_max = tm_file_header(file_index).object_id_max;
    status.all = all_is_ok;
}

tm_file_gene_recf_t& tm_file_header(tm_file_index_t file_index) {
    if (!tm_is_file_open(file_index)) stop("tm_object_id_ptr", "file not open", init_or_open_file_not_done);
    return *tm_vext.filear[static_cast<std::size_t>(file_index - 1)].start_buf_ptr;
}

tm_object_gene_rec_t& tm_object(tm_file_index_t file_index, std::int16_t object_id) {
    tm_file_gene_recf_t& file = tm_file_header(file_index);
    if (object_id < 1 || object_id > tm_max_objects)
        stop("tm_object_id_ptr", "obj_id < 1 or > 30000", object_id_invalid);
    if (object_id > file.object_id_max) stop("tm_object_id_ptr", "obj_id > object_id_max", object_id_invalid);
    return record_of(file, object_id);
}

void tm_object_wrong_type(const tm_object_gene_rec_t& object, std::int16_t wanted) {
    tm_trace(" ## error in tm_object_as ( object %d is of type %d, wanted %d )", object.object_id,
             object.object_type, wanted);
    tm_fatal(object_type_invalid);
}

void tm_set_object_deleted(tm_file_index_t file_index, std::int16_t object_id, bool on) {
    tm_set_object_flag<tm_object_is_deleted>(file_index, object_id, on);
    tm_vext.filear[static_cast<std::size_t>(file_index - 1)].file_updated = true;
}

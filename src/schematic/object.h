// tm: the objects of the open sheet files.  Owns their creation, opening and closing, the way from an id to
// its record, and the flags of the status word.  A file is addressed by its file index 1..32, an object by
// its id 1..object_id_max of its file.  Every misuse of the protocol and every id out of range is an internal
// fault: a trace line, then the fatal exit with the code named here.  A status that comes back is therefore
// 0.
#pragma once

#include "foundation/status.h"
#include "schematic/object_records.h"

// Creates an object at the origin (x, y) as the last child of the object one level up and opens it; its
// constructor (object_make.h) comes next, then its children, then tm_object_close.  Needs the file open
// (init_or_open_file_not_done) and current (file_id_invalid), the father being created or open
// (object_create_invalid), fewer than 30,000 objects (too_many_objects), at most 64 levels (invalid_level), a
// type of 1..32 (object_type_invalid).
void tm_object_create(tm_file_index_t file_index, std::int16_t object_type, std::int32_t x, std::int32_t y,
                      std::int16_t& object_id, STATUS_T& status);
// Opens an existing object for change or for new children; its file becomes the current one.  No other object
// may be open (object_already_open), it must not be deleted, being created or open (object_open_invalid).
void tm_object_open(tm_file_index_t file_index, std::int16_t object_id, std::int16_t& object_type,
                    STATUS_T& status);
// Ends creation or change (object_id_invalid, object_close_invalid).
void tm_object_close(tm_file_index_t file_index, std::int16_t object_id, STATUS_T& status);

// Addressing: the file must be open (init_or_open_file_not_done), the id in use (object_id_invalid).
void tm_object_id_ptr(tm_file_index_t file_index, std::int16_t object_id, tm_object_gene_rec_t*& record,
                      STATUS_T& status);
void tm_object_inq_object_id_max(tm_file_index_t file_index, std::int16_t& id_max, STATUS_T& status);
// The same for use inside an expression.
tm_file_gene_recf_t& tm_file_header(tm_file_index_t file_index);
tm_object_gene_rec_t& tm_object(tm_file_index_t file_index, std::int16_t object_id);
[[noreturn]] void tm_object_wrong_type(const tm_object_gene_rec_t& object, std::int16_t wanted);
// As the record of its type; another type is object_type_invalid: tm_object_as<tm_type_net>(f, id).is_bus.
template <std::int16_t Type>
tm_record_of<Type>& tm_object_as(tm_file_index_t file_index, std::int16_t object_id) {
    tm_object_gene_rec_t& object = tm_object(file_index, object_id);
    if (object.object_type != Type) tm_object_wrong_type(object, Type);
    return static_cast<tm_record_of<Type>&>(object);
}
inline bool tm_is_file_open(tm_file_index_t file_index) {
    return file_index >= 1 && static_cast<std::size_t>(file_index) <= tm_max_open_files &&
           tm_vext.filear[static_cast<std::size_t>(file_index - 1)].already_open_ok;
}

template <std::int16_t Type>
void tm_typed_info_ptr(tm_file_index_t file_index, std::int16_t object_id, tm_record_of<Type>*& record,
                       STATUS_T& status) {
    record = &tm_object_as<Type>(file_index, object_id);
    status.all = all_is_ok;
}
// clang-format off
inline constexpr auto& tm_main_info_ptr             = tm_typed_info_ptr<tm_type_main>;
inline constexpr auto& tm_page_info_ptr             = tm_typed_info_ptr<tm_type_page>;
inline constexpr auto& tm_component_family_info_ptr = tm_typed_info_ptr<tm_type_component_family>;
inline constexpr auto& tm_instance_family_info_ptr  = tm_typed_info_ptr<tm_type_instance_family>;
inline constexpr auto& tm_symbol_family_info_ptr    = tm_typed_info_ptr<tm_type_symbol_family>;
inline constexpr auto& tm_net_family_info_ptr       = tm_typed_info_ptr<tm_type_net_family>;
inline constexpr auto& tm_component_info_ptr        = tm_typed_info_ptr<tm_type_component>;
inline constexpr auto& tm_instance_info_ptr         = tm_typed_info_ptr<tm_type_instance>;
inline constexpr auto& tm_symbol_info_ptr           = tm_typed_info_ptr<tm_type_symbol>;
inline constexpr auto& tm_bodpropfam_info_ptr       = tm_typed_info_ptr<tm_type_bodpropfam>;
inline constexpr auto& tm_pinpropfam_info_ptr       = tm_typed_info_ptr<tm_type_pinpropfam>;
inline constexpr auto& tm_net_info_ptr              = tm_typed_info_ptr<tm_type_net>;
inline constexpr auto& tm_vertex_family_info_ptr    = tm_typed_info_ptr<tm_type_vertex_family>;
inline constexpr auto& tm_segment_info_ptr          = tm_typed_info_ptr<tm_type_segment>;
inline constexpr auto& tm_body_info_ptr             = tm_typed_info_ptr<tm_type_body>;
inline constexpr auto& tm_pin_family_info_ptr       = tm_typed_info_ptr<tm_type_pin_family>;
inline constexpr auto& tm_tag_family_info_ptr       = tm_typed_info_ptr<tm_type_tag_family>;
inline constexpr auto& tm_frame_family_info_ptr     = tm_typed_info_ptr<tm_type_frame_family>;
inline constexpr auto& tm_frame_info_ptr            = tm_typed_info_ptr<tm_type_frame>;
inline constexpr auto& tm_pin_info_ptr              = tm_typed_info_ptr<tm_type_pin>;
inline constexpr auto& tm_graphics_info_ptr         = tm_typed_info_ptr<tm_type_graphics>;
inline constexpr auto& tm_property_family_info_ptr  = tm_typed_info_ptr<tm_type_property_family>;
inline constexpr auto& tm_tag_info_ptr              = tm_typed_info_ptr<tm_type_tag>;
inline constexpr auto& tm_vertex_info_ptr           = tm_typed_info_ptr<tm_type_vertex_2d>;
inline constexpr auto& tm_arc3p_info_ptr            = tm_typed_info_ptr<tm_type_arc3p_2d>;
inline constexpr auto& tm_circle_info_ptr           = tm_typed_info_ptr<tm_type_circle_2d>;
inline constexpr auto& tm_grid_info_ptr             = tm_typed_info_ptr<tm_type_grid_2d>;
inline constexpr auto& tm_line_info_ptr             = tm_typed_info_ptr<tm_type_line_2d>;
inline constexpr auto& tm_polyline5_info_ptr        = tm_typed_info_ptr<tm_type_polyline5_2d>;
inline constexpr auto& tm_polyline_info_ptr         = tm_typed_info_ptr<tm_type_polyline_2d>;
inline constexpr auto& tm_rectangle_info_ptr        = tm_typed_info_ptr<tm_type_rectangle_2d>;
inline constexpr auto& tm_property_info_ptr         = tm_typed_info_ptr<tm_type_property_2d>;

// Flags: tm_inq_object_selected(file_index, object_id), tm_set_object_selected(file_index, object_id, on).
template <std::int16_t Flag>
bool tm_inq_object_flag(tm_file_index_t file_index, std::int16_t object_id) {
    return (tm_object(file_index, object_id).status & Flag) != 0;
}
template <std::int16_t Flag>
void tm_set_object_flag(tm_file_index_t file_index, std::int16_t object_id, bool on) {
    std::int16_t& status = tm_object(file_index, object_id).status;
    status = static_cast<std::int16_t>(on ? status | Flag : status & ~Flag);
}
inline constexpr auto& tm_inq_object_selected  = tm_inq_object_flag<tm_object_is_selected>;
inline constexpr auto& tm_inq_object_temporary = tm_inq_object_flag<tm_object_is_temporary>;
inline constexpr auto& tm_inq_object_create    = tm_inq_object_flag<tm_object_is_create>;
inline constexpr auto& tm_inq_object_open      = tm_inq_object_flag<tm_object_is_open>;
inline constexpr auto& tm_inq_object_picked    = tm_inq_object_flag<tm_object_is_picked>;
inline constexpr auto& tm_inq_object_deleted   = tm_inq_object_flag<tm_object_is_deleted>;
inline constexpr auto& tm_inq_object_unvisible = tm_inq_object_flag<tm_object_is_unvisible>;
inline constexpr auto& tm_inq_object_fixed     = tm_inq_object_flag<tm_object_is_fixed>;
inline constexpr auto& tm_set_object_selected  = tm_set_object_flag<tm_object_is_selected>;
inline constexpr auto& tm_set_object_temporary = tm_set_object_flag<tm_object_is_temporary>;
inline constexpr auto& tm_set_object_picked    = tm_set_object_flag<tm_object_is_picked>;
inline constexpr auto& tm_set_object_unvisible = tm_set_object_flag<tm_object_is_unvisible>;
inline constexpr auto& tm_set_object_fixed     = tm_set_object_flag<tm_object_is_fixed>;
// clang-format on
// Deleting keeps the object and its id until the file is saved; it marks the file as updated.
void tm_set_object_deleted(tm_file_index_t file_index, std::int16_t object_id, bool on);

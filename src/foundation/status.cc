#include "foundation/status.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/shell.h"

const std::array<std::string_view, tm_error_count> tm_error_array = {
    "all_is_ok",
    "init_not_done",
    "config_invalid",
    "already_initialized",
    "display_mode_not_found",
    "display_mode_not_correct",
    "nb_of_plane_invalid",
    "no_gm_bitmap_exists",
    "init_or_open_file_not_done",
    "error_in_init",
    "file_creat_invalid",
    "file_open_invalid",
    "file_close_invalid",
    "current_file_invalid",
    "too_many_files",
    "file_name_not_found",
    "file_id_invalid",
    "file_read_invalid",
    "file_index_invalid",
    "file_data_invalid",
    "eof_file",
    "error_in_event_wait",
    "draw_text_invalid",
    "draw_cursor_invalid",
    "viewport_id_invalid",
    "viewport_bounds_invalid",
    "border_size_invalid",
    "draw_viewport_invalid",
    "drawing_viewport_impossible",
    "creating_viewport_impossible",
    "select_viewport_invalid",
    "viewport_doesnt_exist",
    "no_current_viewport",
    "too_many_viewports",
    "viewport_blocked",
    "nb_of_viewport_invalid",
    "nothing_displayed_in_viewport",
    "coordonate_conversion_overflow",
    "clipping_invalid",
    "display_cross_invalid",
    "no_current_object",
    "too_many_objects",
    "invalid_level",
    "object_id_invalid",
    "page_obj_id_invalid",
    "grid_obj_id_invalid",
    "object_structure_invalid",
    "cant_delete_instanced_object",
    "object_type_invalid",
    "object_family_invalid",
    "object_already_open",
    "object_create_invalid",
    "object_open_invalid",
    "object_close_invalid",
    "object_without_child",
    "cant_delete_main_object",
    "cant_delete_primary_object",
    "cant_move_main_object",
    "cant_move_primary_object",
    "invalid_instance_translate_2d",
    "invalid_arc3p_2d",
    "invalid_circle_2d",
    "invalid_grid_2d",
    "invalid_line_2d",
    "invalid_polyline_2d",
    "invalid_polyline5_2d",
    "invalid_rectangle_2d",
    "invalid_tag",
    "invalid_property_2d",
    "invalid_string",
    "invalid_text_height",
    "invalid_style",
    "attribute_color_invalid",
    "wrong_modelobj_mode",
    "too_many_displayed_object",
    "pick_aperture_size_invalid",
    "pick_aperture_invalid",
    "pick_mode_invalid",
    "pick_rule_invalid",
    "pick_object_not_found",
    "input_event_type_invalid",
    "wrong_display_mode",
    "illegal_color",
    "bounds_invalid",
    "name_length_invalid",
};

namespace {

constexpr std::string_view save_script = "/users/quillarn/bin/save_context ";
constexpr std::int32_t save_directory_max = 163;
constexpr std::int32_t directory_position = 2;

void print_error(std::int32_t code) {
    const bool known = code >= 0 && static_cast<std::size_t>(code) < tm_error_count;
    std::printf(" ?? error in tm_package  code : %d\n", code);
    std::printf(" ?? error  : %30s\n", known ? tm_error_array[static_cast<std::size_t>(code)].data() : "");
    std::fflush(stdout);
}

// Each step of the end clears its own condition first, so that a fault inside it cannot come back to it.
void hand_over_to_save_script() {
    if (!std::exchange(tm_vext.all_init_done, false)) return;
    tm_string_record_t directory;
    STATUS_T status;
    tm_get_arg(directory_position, directory, status);
    if (status.all != all_is_ok || directory.len < 1 || directory.len > save_directory_max) return;
    tm_string_record_t command = tm_string(save_script);
    tm_concat_line(directory, command);
    tm_trace(" !! cmd_system : \"%.*s\"\n", command.len, command.char_);
    tm_system(command);
}

void close_trace_file() {
    std::FILE* const file = std::exchange(tm_vext.debugfile, nullptr);
    if (file == nullptr) return;
    std::fflush(file);
    std::fclose(file);
}

void close_open_files() {
    if (tm_vext.num_file_open < 1 || tm_vext.num_file_open > 31) return;
    for (tm_file_io_rec_t& file : tm_vext.filear) {
        std::FILE* const stream = std::exchange(file.file_io_id, nullptr);
        if (std::exchange(file.already_open_ok, false) && stream != nullptr) std::fclose(stream);
    }
}

}  // namespace

void tm_set_status(std::int32_t error_code, STATUS_T& status) {
    status.all = tm_status_base + error_code;
    print_error(error_code);
    hand_over_to_save_script();
    close_trace_file();
    close_open_files();
    if (std::exchange(tm_vext.init_done, false)) tm_shell.abandon_display();
    std::fflush(stdout);
    std::abort();
}

void tm_fatal(std::int32_t error_code) {
    STATUS_T status;
    tm_set_status(error_code, status);
}

void _OutMem() {
    std::fputs(" \n!!  Error: _OutMem(tm_mod0) : Malloc Out of memory .\n", stderr);
    std::exit(1);
}

void tm_trace(const char* format, ...) {
    if (tm_vext.debugfile == nullptr) return;
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(tm_vext.debugfile, format, arguments);
    va_end(arguments);
    const std::size_t len = std::strlen(format);
    if (len == 0 || format[len - 1] != '\n') std::fputc('\n', tm_vext.debugfile);
}

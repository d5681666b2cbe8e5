// tm_vext: the record of the schematic package and the shell, one instance for the whole program: arguments,
// streams, display state, open sheet files, key and menu actions, the counts of errors and warnings.  Handles
// of the window system are opaque here; only the window knows their types.
#pragma once

#include <array>
#include <cstdio>
#include <memory>

#include "foundation/status.h"
#include "foundation/strings.h"

inline constexpr std::size_t tm_max_arguments = 40;
inline constexpr std::size_t tm_max_open_files = 32;
inline constexpr std::size_t tm_do_levels = 10;
inline constexpr std::int16_t tm_max_object_levels = 64;  // of nested sheet objects

struct tm_point_t {
    std::int32_t x = 0, y = 0;
};

struct tm_bounds_t {
    std::int32_t xmin = 0, ymin = 0, xmax = 0, ymax = 0;
};

using tm_file_index_t = std::int8_t;  // 1..32, 0 none
struct tm_file_gene_recf_t;           // header and objects of a sheet, see schematic/object_records.h

struct tm_file_io_rec_t {          // a sheet file that is or can be opened
    bool version_found = false;    // the link file was found
    bool already_open_ok = false;  // the entry is in use
    bool file_updated = false;     // an object was created or changed since opening
    tm_string_record_t dirname, filetype;
    std::int16_t version = 0;
    tm_string_record_t link_value;  // "_" and the version
    tm_string_record_t file_pathname, link_pathname;
    std::FILE* file_io_id = nullptr;                     // the data file while it is read
    std::shared_ptr<tm_file_gene_recf_t> start_buf_ptr;  // set exactly when already_open_ok
};

// The pages of the window, in the order of their tabs.
enum class tm_page : std::uint8_t { results, context };
inline constexpr std::size_t tm_pages = 2;

using tm_actions_12 = std::array<tm_string_record_t, 12>;
using tm_actions_4 = std::array<tm_string_record_t, 4>;

struct tm_defref_var_rec_t {
    std::int32_t argc_main = 0;
    char** argv_main = nullptr;
    std::FILE* debugfile = nullptr;    // trace file; null before start-up and after shutdown
    std::FILE* cursessfile = nullptr;  // session transcript
    tm_string_record_t cursessname;
    bool end_flag = false;       // the program is to end
    bool init_done = false;      // the display connection is open
    bool all_init_done = false;  // start-up is complete
    bool display_on = false;     // drawing is enabled
    bool transcript_state = false;
    std::int32_t file_id_edit = 0, file_id_context = 0, file_id_act = 0, file_id_views = 0;
    std::int8_t num_file_open = 0;
    tm_file_index_t cur_file = 0;                            // the current sheet file
    std::array<tm_file_io_rec_t, tm_max_open_files> filear;  // file index 1 is element 0
    std::int16_t open_obj_id = 0;                            // the object being created or opened
    std::int16_t previous_obj_atlevel0 = 0;                  // last object at the top level of cur_file
    std::int16_t cur_obj_level = 0;                          // depth of the chain of open objects
    std::array<std::int16_t, tm_max_object_levels + 1> tm_curfamily{};  // object ids by level, 1 the top
    bool pick_ap_new = false;        // the pick aperture is to be computed anew
    tm_point_t base_point, obj_pos;  // model units
    tm_point_t pixel_pos;            // pointer, pixels of the drawing area
    std::int16_t num_errors = 0, num_warnings = 0;
    tm_string_record_t str_cmd;  // text of the command entry
    std::int32_t nb_arg_comline = 0;
    std::array<tm_string_record_t, tm_max_arguments> argcomline;  // position 1 is the program name

    // Interpreter.
    std::int16_t do_ind = 0;  // depth of DO, 0..10
    std::array<std::FILE*, tm_do_levels> commandfile{};
    bool cmd_executing = false;

    // Window.
    tm_page numpage = tm_page::results;
    std::uint32_t keysym = 0, state = 0;
    tm_bounds_t bitmap_size;  // of the current drawing area, pixels
    tm_point_t pick_aperture;
    bool mark_rectangle_on = false, snap_on = false, smash_on = false, search_on = false;
    bool grid_on = true;
    tm_string_record_t search_path;

    // Texts bound to keys and buttons.
    tm_actions_12 action_f, action_fs, action_fc, action_fa;
    tm_actions_12 action_fup, action_fsup, action_fcup, action_faup;
    tm_actions_4 action_a, action_as, action_ac, action_aa;
    std::array<tm_string_record_t, 6> action_but;
    std::array<tm_string_record_t, 13> action_ck;
};

extern tm_defref_var_rec_t tm_vext;

// Stores the arguments as counted strings: each up to its first control byte, empty when it has none within
// its first 199 positions.
void tm_store_arg(std::int32_t argc, char** argv);
// The stored argument at a 1-based position; outside 1..nb_arg_comline an empty text and the status -1.
void tm_get_arg(std::int32_t position, tm_string_record_t& result, STATUS_T& status);

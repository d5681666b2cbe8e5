// The bindings that the program starts with, and the start values set together with them.
#include <unistd.h>

#include <string>

#include "commands/language/bindings.h"
#include "commands/language/interpreter.h"
#include "foundation/context.h"
#include "foundation/files.h"

namespace {

// clang-format off
constexpr const char* function_keys[12][8] = {
    // F1 .. F12, a pair of lines each: pressed and released; without modifier, with Shift, Control, Alt
    {"MARK RECT ", "MARK RECT ", "MARK RECT ", "MARK RECT ",
     "SELECT AREA ALL  ", "SELECT AREA INST ", "SELECT AREA VERTEX ", "SELECT AREA FRAME  "},
    {"UNSELECT ALL  ", "MARK RECT ", "MARK RECT ", "MARK RECT ",
     "", "UNSELECT AREA ALL  ", "UNSELECT AREA INST ", "UNSELECT AREA VERTEX "},
    {"MARK RECT ", "CHANGE PROPERTY POSITION ", "CHANGE PROPERTY SWITCH VISIBLE ", "CHANGE PROPERTY SWITCH NOVISIBLE ",
     "SELECT AREA PROPERTY ", "", "", ""},
    {"VIEW WINDOW TRACE ", "COMMAND \"SCALE TRACE TIME \" ", "SNAP ON ", "SNAP OFF ",
     "", "", "", ""},
    {"VIEW WINDOW LIST ", "COMMAND \"PROBE \"  ", "SMASH OFF ", "POP ",
     "", "", "", ""},
    {"COMMAND \"VIEW TIME TRACE \" ", "STATUS NET ", "STATUS OBJ ", "RESET SIM TIME ",
     "", "", "", ""},
    {"COMMAND \"VIEW TIME LIST \" ", "STATUS PROPERTY ", "CHECK SHEET ", "SMASH ON ",
     "", "", "", ""},
    {"VIEW DOWN ", "COMMAND \"SCALE USER UNIT \"  ", "COMMAND \"HISTORY \"  ", "MARK ",
     "", "", "", ""},
    {"VIEW UP ", "UPDATE List ", "BYE ", "QUIT ",
     "", "", "", ""},
    {"LIST Binary ", "UPDATE TRACE ", "REGEN LIST ", "REGEN TRACE ",
     "", "", "", ""},
    {"TRACE ", "BASEPoint ", "MARK ", "MARK ",
     "", "", "MOVe SIGnal List ", "MOVe SIGnal Trace "},
    {"MARK RECT ", "VIEW ALL ", "DISPLAY ON ", "DISPLAY OFF ",
     "VIEW AREA ", "", "", ""},
};

constexpr const char* arrows[4][4] = {
    // up, left, down, right; without modifier, with Shift, Control, Alt
    {"$CU1 ", "$VPTU5 ", "$CU4 ", "$VPTU20 "},
    {"$CL1 ", "$VPTL5 ", "$CL4 ", "$VPTL20 "},
    {"$CD1 ", "$VPTD5 ", "$CD4 ", "$VPTD20 "},
    {"$CR1 ", "$VPTR5 ", "$CR4 ", "$VPTR20 "},
};

constexpr const char* mouse_buttons[6] = {
    // 1, 2, 3, each pressed and released
    "MARK RECTANGLE ", "VIEW AREA ", "$DM1 ", "$XIM ", "MARK RECTANGLE ", "SELECT AREA ALL ",
};

constexpr const char* control_keys[13] = {
    // N     O   P   Q        R    S   T   U    V   W   X   Y       Z
    "QUIT ", "", "", "QUIT ", " ", "", "", " ", "", "", "", "BYE ", "",
};
// clang-format on

constexpr tm_point_t start_position = {512, 290};
constexpr std::int32_t start_aperture = 10;

tm_actions_12 tm_defref_var_rec_t::*const function_key_tables[8] = {
    &tm_defref_var_rec_t::action_f,    &tm_defref_var_rec_t::action_fs,   &tm_defref_var_rec_t::action_fc,
    &tm_defref_var_rec_t::action_fa,   &tm_defref_var_rec_t::action_fup,  &tm_defref_var_rec_t::action_fsup,
    &tm_defref_var_rec_t::action_fcup, &tm_defref_var_rec_t::action_faup,
};
tm_actions_4 tm_defref_var_rec_t::*const arrow_tables[4] = {
    &tm_defref_var_rec_t::action_a,
    &tm_defref_var_rec_t::action_as,
    &tm_defref_var_rec_t::action_ac,
    &tm_defref_var_rec_t::action_aa,
};

void set_default_bindings() {
    for (std::size_t key = 0; key < 12; ++key)
        for (std::size_t kind = 0; kind < 8; ++kind)
            (tm_vext.*function_key_tables[kind])[key] = tm_string(function_keys[key][kind]);
    for (std::size_t direction = 0; direction < 4; ++direction)
        for (std::size_t modifier = 0; modifier < 4; ++modifier)
            (tm_vext.*arrow_tables[modifier])[direction] = tm_string(arrows[direction][modifier]);
    for (std::size_t i = 0; i < std::size(mouse_buttons); ++i)
        tm_vext.action_but[i] = tm_string(mouse_buttons[i]);
    for (std::size_t i = 0; i < std::size(control_keys); ++i)
        tm_vext.action_ck[i] = tm_string(control_keys[i]);
}

void set_start_values() {
    tm_vext.pick_aperture = {start_aperture, start_aperture};
    tm_vext.mark_rectangle_on = tm_vext.snap_on = tm_vext.smash_on = tm_vext.search_on = false;
    tm_vext.search_path = {};
    kol_ext.save_to_do = false;
    tm_vext.end_flag = false;
    tm_vext.base_point = tm_vext.obj_pos = start_position;
    tm_vext.transcript_state = tm_vext.display_on = true;
}

void run_key_file() {
    const std::string path = tm_installation_root() + "/kolv/init_key";
    if (access(path.c_str(), F_OK) != 0) return;
    kol_array_param_t arg, var;
    kol_process_command(tm_string(" DO " + path), arg, var);
}

}  // namespace

void kol_init_menu_action() {
    set_start_values();
    set_default_bindings();
    run_key_file();
}

void tm_bind_wheel() {
    struct wheel_row {
        const char *key, *text;
    };
    constexpr wheel_row rows[] = {
        {"WU", "$VPTU5 "},  {"WD", "$VPTD5 "},  {"WL", "$VPTL5 "},           {"WR", "$VPTR5 "},
        {"WUS", "$VPTL5 "}, {"WDS", "$VPTR5 "}, {"WUC", "ZOOM IN POINTER "}, {"WDC", "ZOOM OUT POINTER "},
    };
    bool known = false;
    for (const wheel_row& row : rows) tm_set_key_action(tm_string(row.key), tm_string(row.text), known);
}

// kol: the start of a session and its run, the same for every program: stores the arguments, opens the trace
// files and the session transcript, lets the program make its pages, loads the design and sets it up, runs
// the initial command file.  A failure prints its line and ends the program, by exit or by the fatal exit;
// errors counted on the way skip the run.
#pragma once

#include <cstdint>
#include <string>

#include "foundation/context.h"

// What one program does its own way.
struct kol_program_t {
    tm_bounds_t (*open_pages)() =
        nullptr;                     // makes the drawing pages, returns their size; or ends the program
    void (*run_file)() = nullptr;    // runs kol_init_do_file (kol_run_command_file)
    void (*serve_user)() = nullptr;  // null: the session ends with the command file
    bool prints_banner = true;
    std::string transcript = {};  // empty: current_session in the schematic directory
};

// False: errors of the design have skipped the run.
bool kol_run_session(std::int32_t argc, char** argv, const kol_program_t& program);
// Runs the initial command file, if there is one, as DO does; its name is opened as it is.
void kol_run_command_file();

// tm: the shell interface.  One record of procedures through which everything below the window reaches the
// user and the window system.  The default record serves a program without a window: lines go to the session
// transcript only, no key ever waits.  The window installs its own record at start-up, tests install a
// recorder.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/strings.h"

struct tm_shell_t {
    void (*append_session)(std::string_view line);     // one line of the session text area
    void (*set_command_entry)(std::string_view text);  // replaces the text of the command entry
    void (*redraw_results)();                          // Results page: draw, then copy to the window
    void (*redraw_context)();                          // Context page: the same
    void (*redraw_states)();                           // whatever shows states of nets
    void (*show_other_page)();                         // Results page to Context page and back
    void (*copy_to_window)();                          // the current page's off-screen picture to the window
    void (*busy)(bool on);                             // busy or normal pointer
    void (*move_pointer)(std::int32_t x, std::int32_t y);  // to a pixel of the current drawing area
    bool (*take_control_key)(char letter);  // a waiting press of Control+letter is taken from the queue
    void (*program_failed)(int status);     // of SYSTEM or '!': what it ended with, other than 0
    void (*show_progress)();                // of a run, as often as the program has asked for it
    void (*flush)();                        // send what is buffered, look at the session text
    void (*abandon_display)();              // fatal end: destroy resources, synchronise, wait, close
    void (*finalize)();                     // orderly end: close files, print the summary
    void (*end_process)();                  // kill the own process group, then exit with status 0
};

extern const tm_shell_t tm_default_shell;
extern tm_shell_t tm_shell;

// Shows a line on the session area and writes it to the transcript; cut to 98 characters.
void tm_display_list(const tm_string_record_t& text);
// Replaces the text of the command entry and writes it to the transcript; cut to 100 characters; an empty
// text shows nothing.
void tm_display_cmd(const tm_string_record_t& text);
// The same for texts put together by our own code.
void tm_display(std::string_view text);

// Add 1 to the error or warning count of the session (tm_vext); the counts stay at their largest value.
void tm_count_error();
void tm_count_warning();
// How often both were called; it has no largest value, so a difference is what was counted in between.
std::int64_t tm_counted();

// The normal end of a session (BYE, QUIT, the window's Quit): finalize, close the display when it is open,
// flush every stream, end the process group.  Never returns in the program.  Both ends of the program clear
// tm_vext.init_done before they call abandon_display, so it is called once.
void motif_main_quit();

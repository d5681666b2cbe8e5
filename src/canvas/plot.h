// tm: plots.  Draws a picture on paper: into a file that the user names, or into the spool file that the
// print command takes.  The name's ending chooses the format: ".png", ".svg" and ".pdf" in either case, HP-GL
// for every other.  The picture is given as a drawing on a canvas of a stated size in pixels; outside it
// nothing is seen.  Paper is white: the colour black leaves it as it is, white is black ink, the other
// colours are inks that read well on white.  A plot takes its place when it is whole: after an error an older
// file stands as it was.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "canvas/canvas.h"
#include "canvas/plot_format.h"
#include "foundation/strings.h"

struct tm_plot_t {
    std::int32_t width = 0, height = 0;    // pixels, 1..tm_plot_largest
    std::function<void(tm_canvas&)> draw;  // may begin with clear
};

inline constexpr std::int32_t tm_plot_largest = 16384;

inline constexpr const char* tm_plot_spool_file = "/tmp/kolvplottemp";
inline constexpr std::string_view tm_plot_print_command =
    " lp_quil /tmp/kolvplottemp ; rm /tmp/kolvplottemp ";

// The bytes of a file of that format.  error: empty, or why there are none.
std::string tm_plot_bytes(const tm_plot_t& plot, tm_plot_format format, std::string& error);
// Writes the file; a leading "$QUILLARN" is the installation root.  error: as above.
void tm_plot_to_file(const tm_plot_t& plot, const tm_string_record_t& path, std::string& error);
// Writes HP-GL to the spool file and runs the print command.  The file is created anew with mode 0600 and no
// link is followed; a regular file of the same user that was left there is removed first, anything else under
// that name is an error.  Where commands may not run (tm_shell_commands_allowed) nothing is done.
void tm_plot_and_print(const tm_plot_t& plot, std::string& error);

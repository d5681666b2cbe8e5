// The window's part in a session.
#include "app/startup.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/window/leaving.h"
#include "app/window/options.h"
#include "app/window/pauses.h"
#include "app/window/shell_hooks.h"
#include "app/window/window.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "kernel/context.h"
#include "session/shutdown.h"
#include "session/startup.h"

namespace {

constexpr int status_no_window = 2;

tm_bounds_t create_window() {
    tm_string_record_t name = tm_string("kolv   ");
    tm_concat_line(kol_ext.dir_path, name);
    tm_bounds_t bitmap;
    std::int16_t planes = 0;
    STATUS_T status;
    std::string trouble;
    tm_init(name, bitmap, planes, status, trouble);
    if (status.all != 0) {
        tm_trace("!!!  INIT TM package impossible \n");
        std::fflush(nullptr);
        std::fprintf(stderr, "kolv: %s\n", trouble.c_str());
        std::exit(status_no_window);
    }
    tm_use_window();
    return bitmap;
}

// The pointer reaches as far on a fine screen as on a usual one.
void scale_aperture() {
    const auto scaled = [](std::int32_t length) {
        return static_cast<std::int32_t>(std::lround(length * window_page_scale()));
    };
    tm_vext.pick_aperture = {scaled(tm_vext.pick_aperture.x), scaled(tm_vext.pick_aperture.y)};
}

void serve_user() {
    scale_aperture();
    leaving_mark_saved();
    tm_win_flush();
    if (!tm_vext.end_flag) tm_win_main_loop();
}

}  // namespace

void kolv_root(std::int32_t argc, char** argv) {
    tm_shell.finalize = finalize;
    kol_run_session(argc, argv, {create_window, kol_run_command_file, serve_user});
    finalize();
}

void finalize() {
    kol_close_session(pause_at_close);
    const int errors = tm_vext.num_errors;
    const int warnings = tm_vext.num_warnings;
    std::printf("\n -- KOLV  Execution complete...%d %s, %d %s --\n", errors, errors < 2 ? "error" : "errors",
                warnings, warnings < 2 ? "warning" : "warnings");
}

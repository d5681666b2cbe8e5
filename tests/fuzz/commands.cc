// Command lines of any kind, in a session with a small design and the example sheets.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "commands/language/interpreter.h"
#include "commands/start_values.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/shell.h"
#include "fuzz/targets.h"
#include "support/design_build.h"
#include "support/places/places.h"

namespace {

constexpr std::size_t most_lines = 100;

// An unsound record where the line is long.
tm_string_record_t line_of(const std::string& text) {
    tm_string_record_t line;
    line.len = static_cast<std::int32_t>(text.size());
    std::copy_n(text.begin(), std::min(text.size(), sizeof line.all), line.all);
    return line;
}

void begin() {
    tst_build(
        "in a b clk; bus d 2; dff f Q:q = D:a CLKP:clk rise 2 fall 1; pin /f/D edge X;"
        "and g d.0-1 = q b rise 3 fall 2");
    kol_initparam_before();
    tm_shell = tm_default_shell;
    tm_shell.show_other_page = [] {
        tm_vext.numpage = tm_vext.numpage == tm_page::results ? tm_page::context : tm_page::results;
    };
    tm_shell.end_process = [] { tm_vext.init_done = true; };  // and it goes on
    static int looks = 0;
    tm_shell.take_control_key = [](char key) { return key == 's' && ++looks % 100'000 == 0; };
    tm_vext.nb_arg_comline = 2;
    tm_vext.argcomline[1] = tm_string(".");
    tm_shell_commands_allowed = false;
    tm_vext.init_done = tm_vext.display_on = true;
    tm_vext.bitmap_size = {0, 0, 800, 600};
    tm_vext.pick_aperture = {10, 10};
    kol_ext.dir_path = tm_string("sheets");
}

}  // namespace

void fz_feed_commands(const std::string& bytes) {
    static const int sheets = std::system((tst_program_dir() + "/example_sheets sheets > /dev/null").c_str());
    if (sheets != 0) std::abort();
    begin();
    std::istringstream lines(bytes);
    std::size_t count = 0;
    for (std::string line; count < most_lines && std::getline(lines, line); ++count) {
        tm_vext.end_flag = false;
        kol_process_command(line_of(line), kol_ext.ext_arg, kol_ext.top_var);
        if (tm_vext.cmd_executing || tm_vext.do_ind != 0) std::abort();
    }
}

void fz_seed_commands(const std::string& folder) {
    namespace fs = std::filesystem;
    fs::create_directories(folder);
    for (const char* place : {"/examples", "/tests/end-to-end/golden"})
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(tst_source_dir() + place))
            if (entry.path().extension() == ".cmd")
                fs::copy_file(entry.path(), folder + "/" + entry.path().filename().string(),
                              fs::copy_options::overwrite_existing);
}

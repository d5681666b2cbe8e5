// The way from the command line to the commands of the user.
#include "session/startup.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>

#include "commands/language/bindings.h"
#include "commands/language/interpreter.h"
#include "commands/start_values.h"
#include "foundation/context.h"
#include "foundation/ends.h"
#include "foundation/files.h"
#include "foundation/growing_file.h"
#include "foundation/platform.h"
#include "foundation/shell.h"
#include "foundation/transcript.h"
#include "kernel/model.h"
#include "kernel/setup.h"
#include "models/model_table.h"
#include "netlist/design_file.h"
#include "results/page.h"

namespace {

constexpr std::int32_t least_arguments = 2;
constexpr std::int32_t most_arguments = static_cast<std::int32_t>(tm_max_arguments);
constexpr std::string_view version_banner = "######   KOLV   version 2.02  22 mar 2004   ###### ";

// Stored positions of the arguments; the program name is 1.
enum argument : std::int32_t {
    arg_directory = 2,
    arg_timing_range = 3,
    arg_command_file = 4,
    arg_design_file = 5,
    arg_first_parameter = 6,
};

tm_string_record_t stored_argument(std::int32_t position) {
    tm_string_record_t text;
    STATUS_T status;
    tm_get_arg(position, text, status);
    return text;
}

int length_of(std::string_view text) { return static_cast<int>(text.size()); }

void store_arguments(std::int32_t argc, char** argv) {
    if (argc < least_arguments || argc > most_arguments) {
        std::printf(" !!! invalid usage  : arg number : %2d\n", argc);
        std::exit(0);
    }
    tm_store_arg(argc, argv);
}

void print_banner() {
    std::int16_t day = 0, month = 0, year = 0, hour = 0, minute = 0;
    tm_get_date(day, month, year, hour, minute);
    std::printf("%28s date : %d-%d-%d\n\n", "", day, month, year);
    std::printf("%23sLOGIC SIMULATOR  from QUILLARN \n", "");
}

bool open_trace_file(const std::string& path, std::FILE*& stream) {
    if (stream != nullptr) std::fclose(stream);
    stream = tm_create_log(path).release();
    if (stream != nullptr) return true;
    if (::access(path.c_str(), R_OK) == 0 && !std::filesystem::is_directory(path)) {
        std::printf("??  kolv_root : impossible to open debugfile_name :'%s' (for W)\n", path.c_str());
        std::exit(0);
    }
    ++tm_vext.num_errors;
    std::printf("!!! ( kolv_root ) impossible to open debugfile  : \"%.*s\" \n", length_of(path),
                path.c_str());
    return false;
}

void open_trace_files(const tm_string_record_t& directory) {
    if (!open_trace_file(std::string(tm_view(directory)) + "/debug_kolv", tm_vext.debugfile)) std::exit(1);
    if (!open_trace_file("debug_kolv2", kol_dbf)) tm_fatal(file_data_invalid);
    tm_repeat_trace_at_end(&tm_vext.debugfile);
    tm_repeat_trace_at_end(&kol_dbf);
}

void reset_counts() {
    tm_vext.num_errors = 0;
    tm_vext.num_warnings = 0;
    kol_ext.file_level_max = 0;
    kol_ext.file_level_cur = 0;
    tm_vext.file_id_edit = 0;
    tm_vext.file_id_act = 0;
    tm_vext.file_id_views = 0;
}

void take_directory() {
    const tm_string_record_t directory = stored_argument(arg_directory);
    tm_check_string(directory);
    tm_copy_line(directory, kol_ext.dir_path);
}

void empty_parameters() {
    tm_string_record_t empty;
    empty.char_[0] = ' ';
    kol_ext.ext_arg.fill(empty);
    kol_ext.top_var.fill(empty);
}

// The '!' escape finds the installation's own programs first.
void find_programs() {
    const std::string folder = tm_installation_root() + "/kolv/bin";
    if (::access(folder.c_str(), X_OK) != 0) return;
    const char* path = xgetenv("PATH");
    const std::string all = path != nullptr && path[0] != '\0' ? folder + ":" + path : folder;
    ::setenv("PATH", all.c_str(), 1);
}

void open_transcript(const std::string& chosen) {
    if (chosen.empty() ? tm_open_transcript(kol_ext.dir_path) : tm_open_transcript_at(chosen)) return;
    const tm_string_record_t& path = tm_vext.cursessname;
    constexpr const char* message =
        "!! ( INITIALIZE ) impossible to open current_session_file  : \"%.*s\" \n";
    ++tm_vext.num_errors;
    std::printf(message, path.len, path.char_);
    tm_trace(message, path.len, path.char_);
    tm_fatal(file_data_invalid);
}

// The coding of sim_range_type, 0 for a word that names no range.
std::int16_t timing_range(const tm_string_record_t& word) {
    struct range_row {
        std::string_view first_two;
        std::int16_t range;
    };
    static constexpr range_row ranges[] = {{"MI", 1}, {"TY", 2}, {"MA", 3}};
    for (const range_row& row : ranges)
        if (word.len >= 2 && tm_upper_case(word.char_[0]) == row.first_two[0] &&
            tm_upper_case(word.char_[1]) == row.first_two[1])
            return row.range;
    return 0;
}

void take_timing_range() {
    kol_ext.sim_range_type = 2;
    const tm_string_record_t word = stored_argument(arg_timing_range);
    if (word.len == 0) return;
    const std::int16_t range = timing_range(word);
    if (range == 0) {
        constexpr const char* message =
            " !!! error invalid parameter : should be : \"MIn\" or \"TYp\" or \"MAx\" ";
        std::printf("\n%s\n\n", message);
        tm_trace("%s", message);
        tm_fatal(invalid_string);
    }
    kol_ext.sim_range_type = range;
    kol_ext.timing_ar.fill(range);
}

std::int16_t add_count(std::int16_t count, std::int16_t more) {
    constexpr int most = std::numeric_limits<std::int16_t>::max();
    return static_cast<std::int16_t>(std::min(count + more, most));
}

// What is too long to be stored is stored empty; it must not pass for an absent name.
void refuse_long_design_name() {
    if (tm_vext.argc_main < arg_design_file) return;
    const std::string_view name = tm_vext.argv_main[arg_design_file - 1];
    if (name.size() < tm_string_max) return;
    std::printf(" !!! ERROR... invalid file type : \"%.*s\"\n", length_of(name), name.data());
    std::exit(1);
}

void open_design() {
    refuse_long_design_name();
    tm_string_record_t directory = stored_argument(arg_directory);
    tm_string_record_t file = stored_argument(arg_design_file);
    if (file.len == 0) file = tm_string("design_yx");
    STATUS_T status;
    yxi_init_dfi({directory.len, directory.char_}, {file.len, file.char_}, status);
    if (status.all != 0) {
        std::printf(" !!! ERROR...Design file open trouble.\n");
        std::exit(1);
    }
    tm_vext.num_errors = add_count(tm_vext.num_errors, yx_sext.general_info.num_errors);
    tm_vext.num_warnings = add_count(tm_vext.num_warnings, yx_sext.general_info.num_warnings);
    yx_sext.tm_graphics_used = true;
}

// Another program on the directory has the usual name.
void name_transcript() {
    const std::string_view transcript = tm_view(tm_vext.cursessname);
    const std::string_view name = transcript.substr(transcript.rfind('/') + 1);
    if (name != "current_session")
        tm_display("# !! another program runs here : this transcript is " + std::string(name) + " ");
}

void greet() {
    std::fill(std::begin(tm_vext.str_cmd.char_), std::end(tm_vext.str_cmd.char_) - 4, ' ');
    tm_vext.str_cmd.len = 0;
    tm_display_cmd(tm_vext.str_cmd);
    tm_display(version_banner);
}

void take_command_file() {
    kol_init_do_file = stored_argument(arg_command_file);
    if (kol_init_do_file.len == 0) return;
    kol_ext.nb_of_ext_arg = 0;
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(kol_max_parameters); ++i) {
        const tm_string_record_t parameter = stored_argument(arg_first_parameter + i);
        if (parameter.len == 0) return;
        tm_copy_line(parameter, kol_ext.ext_arg[static_cast<std::size_t>(i)]);
        ++kol_ext.nb_of_ext_arg;
    }
}

void initialize(const kol_program_t& program) {
    if (program.prints_banner)
        std::printf("\n%12s%.*s\n", "", length_of(version_banner), version_banner.data());
    tm_trace("\n%12s%.*s\n", "", length_of(version_banner), version_banner.data());
    reset_counts();
    take_directory();
    empty_parameters();
    kol_initparam_before();
    find_programs();
    const tm_bounds_t page = program.open_pages();
    open_transcript(program.transcript);
    kol_set_list_geometry(page.ymax);
    kol_init_menu_action();
    take_timing_range();
    open_design();
    greet();
    if (program.transcript.empty()) name_transcript();
    kol_set_models(kol_model_table());
    kol_init_object_ptr();
    take_command_file();
    tm_shell.busy(false);
}

void run_commands(const kol_program_t& program) {
    tm_vext.base_point = tm_vext.obj_pos;
    kol_ext.list_or_trace = true;
    tm_shell.redraw_results();
    program.run_file();
    tm_vext.all_init_done = true;
    if (program.serve_user != nullptr) program.serve_user();
}

// SYSTEM and '!' may be forbidden from outside.
void look_for_shell() {
    const char* const forbidden = xgetenv("KOLV_NO_SHELL");
    if (forbidden != nullptr && std::string_view(forbidden) == "1") tm_shell_commands_allowed = false;
}

}  // namespace

bool kol_run_session(std::int32_t argc, char** argv, const kol_program_t& program) {
    tm_vext.num_errors = 0;
    tm_vext.num_warnings = 0;
    tm_vext.end_flag = false;
    tm_vext.all_init_done = false;
    look_for_shell();
    store_arguments(argc, argv);
    const tm_string_record_t directory = stored_argument(arg_directory);
    if (directory.len == 0) {
        ++tm_vext.num_errors;
        std::printf("\n        !!! error no SHEET dir_name  \n\n");
        std::exit(1);
    }
    if (program.prints_banner) print_banner();
    open_trace_files(directory);
    initialize(program);
    if (tm_vext.num_errors != 0) return false;
    run_commands(program);
    return true;
}

void kol_run_command_file() {
    if (kol_init_do_file.len > 0)
        kol_process_command_file(kol_init_do_file, kol_ext.nb_of_ext_arg, kol_ext.ext_arg, kol_ext.top_var);
}

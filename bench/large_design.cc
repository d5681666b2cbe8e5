// kolv-large: loads a design of the working directory, sets it up, types the lines of a command file, and
// says what each took: seconds, seconds of the processor, and the most memory that the process has held until
// then.
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>

#include "commands/all_commands.h"
#include "commands/language/command_table.h"
#include "commands/language/interpreter.h"
#include "kernel/context.h"
#include "kernel/setup.h"
#include "models/model_table.h"
#include "netlist/design_file.h"

namespace {

struct moment {
    std::chrono::steady_clock::time_point at = std::chrono::steady_clock::now();
    std::clock_t processor = std::clock();
};

void say(const char* what, moment& since) {
    const moment now;
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    std::printf("%-8s %8.2f s %8.2f s %8ld MiB\n", what,
                std::chrono::duration<double>(now.at - since.at).count(),
                static_cast<double>(now.processor - since.processor) / CLOCKS_PER_SEC, used.ru_maxrss / 1024);
    since = now;
}

bool load(const char* name) {
    yxi_text_t here, file;
    yxi_copy_const(".", here);
    yxi_copy_const(name, file);
    STATUS_T status;
    yxi_init_dfi(here, file, status);
    return status.all == 0;
}

void type(const std::string& line) { kol_process_command(tm_string(line), kol_ext.ext_arg, kol_ext.top_var); }

}  // namespace

int main(int argc, char** argv) {
    moment since;
    if (argc != 3 || !load(argv[1])) return 1;
    say("load", since);
    kol_set_models(kol_model_table());
    kol_ext.cur_sim_path = tm_string("/");
    kol_ext.dir_path = tm_string(".");
    kol_init_object_ptr();
    say("set up", since);
    kol_use_commands(kol_all_commands());
    type(std::string("DO ") + argv[2]);
    say("run", since);
    std::printf("time %d\n", kol_ext.cur_time);
    return 0;
}

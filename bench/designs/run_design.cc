// run_design DESIGN STIMULI OUTPUTS PERIOD VECTORS [once] [spikes] [list N]: applies vectors to a design file
// and prints the signature of its outputs, the CPU seconds of loading and of the runs alone, and the peak of
// memory.
//
// STIMULI has lines of time, port and value; OUTPUTS names a port a line, in the order of the signature:
// before each next vector, for each output, s = rotl(s, 1) xor (value is 1).  With `spikes` spikes are looked
// for, with `list` the first N outputs have a history.
#include <sys/resource.h>

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "kernel/cell_records.h"
#include "kernel/history.h"
#include "kernel/lookup.h"
#include "kernel/run.h"
#include "kernel/setup.h"
#include "kernel/stimuli.h"
#include "models/model_table.h"
#include "netlist/design_file.h"

namespace {

constexpr std::int8_t state_0 = 17, state_1 = 19;

double cpu_seconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Of this program alone: getrusage counts what the process was before it began.
double peak_mib() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (double kib = 0; word == "VmHWM:" && status >> kib) return kib / 1024;
    return 0;
}

[[noreturn]] void fail(const std::string& what) {
    std::fprintf(stderr, "run_design: %s\n", what.c_str());
    std::exit(2);
}

void load(const std::filesystem::path& design) {
    std::filesystem::current_path(design.parent_path());
    yxi_text_t here, file;
    yxi_copy_const(".", here);
    yxi_copy_const(design.filename().c_str(), file);
    STATUS_T status;
    yxi_init_dfi(here, file, status);
    if (status.all != 0) fail("the design cannot be loaded");
    kol_set_models(kol_model_table());
    kol_ext.cur_sim_path = tm_string("/");
    kol_init_object_ptr();
    kol_prepare_cells();  // else a part of the first run
}

yx_net_record_t* net_named(const std::string& name) {
    yx_net_record_t* net = nullptr;
    if (kol_find_net(tm_string(name), net) == 0) fail("no net " + name);
    return net;
}

void add_force(std::int32_t time, const std::string& port, char value) {
    kol_add_force(*net_named(port), value == '1' ? state_1 : state_0, time, 0);
}

void read_stimuli(const std::string& path) {
    std::ifstream file(path);
    std::int32_t time = 0;
    std::string port;
    for (char value = 0; file >> time >> port >> value;) add_force(time, port, value);
    if (kol_stimuli.forces.empty()) fail("no stimuli in " + path);
}

std::vector<yx_net_record_t*> read_outputs(const std::string& path) {
    std::ifstream file(path);
    std::vector<yx_net_record_t*> outputs;
    for (std::string port; file >> port;) outputs.push_back(net_named(port));
    return outputs;
}

void run_until(std::int32_t time) {
    kol_ext.start_time = kol_ext.cur_time;
    kol_ext.end_time = time;
    bool no_event_found = false;
    kol_exec_all_event(no_event_found);
}

std::uint32_t sign(std::uint32_t signature, const std::vector<yx_net_record_t*>& outputs) {
    for (const yx_net_record_t* net : outputs)
        signature = std::rotl(signature, 1) ^ (net->UU.U1.cur_state.state == state_1 ? 1U : 0U);
    return signature;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 6) fail("arguments missing");
    const std::string stimuli = std::filesystem::absolute(argv[2]),
                      listed = std::filesystem::absolute(argv[3]);
    const double at_start = cpu_seconds();
    load(std::filesystem::absolute(argv[1]));
    const double loaded = cpu_seconds();
    read_stimuli(stimuli);
    const std::vector<yx_net_record_t*> outputs = read_outputs(listed);
    const std::int32_t period = std::atoi(argv[4]), vectors = std::atoi(argv[5]);
    kol_ext.spike_on = false;
    std::size_t observed = 0;
    bool once = false;
    for (int i = 6; i < argc; ++i) {
        if (argv[i] == std::string("once")) once = true;
        if (argv[i] == std::string("spikes")) kol_ext.spike_on = true;
        if (argv[i] == std::string("list") && i + 1 < argc) observed = std::strtoul(argv[++i], nullptr, 10);
    }
    for (std::size_t k = 0; k < observed && k < outputs.size(); ++k) kol_observe_net(outputs[k]);
    kol_ext.spike_min = kol_ext.spike_min_t0 = INT32_MAX;  // none is shown
    std::uint32_t signature = 0;
    const double forced = cpu_seconds();
    for (std::int32_t k = once ? vectors - 1 : -1; k < vectors; ++k) {
        run_until((k + 2) * period);
        if (k >= 0) signature = sign(signature, outputs);
    }
    std::printf("signature %08x load %.3f force %.3f run %.3f memory %.1f\n", signature, loaded - at_start,
                forced - loaded, cpu_seconds() - forced, peak_mib());
    return 0;
}

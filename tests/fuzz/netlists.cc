// What kolv-expand reads: netlists, and the delays and cells that come with them.  What it accepts is a
// design that loads and runs.
#include <cstdlib>
#include <filesystem>

#include "expand/expand.h"
#include "expand/sdf_annotate.h"
#include "expand/sdf_read.h"
#include "fuzz/targets.h"
#include "netlist/design_file.h"
#include "support/places/places.h"

namespace {

namespace fs = std::filesystem;

void expect_loads() {
    STATUS_T status;
    char here[] = ".", file[] = "expanded";
    yxi_init_dfi({1, here}, {static_cast<std::int32_t>(sizeof file - 1), file}, status);
    if (status.all != 0) std::abort();
    fz_use_design();
}

void expand_with(const xp_options& options) {
    xp_status status;
    xp_summary summary;
    xp_expand(options, summary, status);
    if (xp_ok(status)) expect_loads();
}

std::string seed(const char* name) { return fz_read(tst_source_dir() + "/tests/fuzz/seeds/" + name); }

xp_options options_for(const std::string& netlist) {
    fz_write("netlist.json", netlist);
    xp_options options;
    options.inputs = {"netlist.json"};
    options.output = "expanded";
    return options;
}

}  // namespace

void fz_feed_netlist(const std::string& bytes) {
    fs::remove_all("expanded_sheets");
    fs::create_directory("expanded_sheets");
    xp_options options = options_for(bytes);
    options.names = "names";
    options.sheets = bytes.size() % 4 == 0;
    expand_with(options);
}

void fz_feed_library(const std::string& bytes) {
    xp_library library;
    xp_parse_library(bytes, library);
    xp_library_stubs(library);
    static const std::string netlist = seed("netlist/cells");
    xp_netlist read;
    xp_hierarchy hierarchy;
    xp_flat flat;
    xp_status status;
    xp_parse_netlist("cells", netlist, read, status);
    hierarchy.library = &library;
    xp_choose_top(read, "", hierarchy, status);
    xp_map_modules(read, hierarchy, status);
    xp_flatten(read, hierarchy, flat, status);
}

void fz_feed_sdf(const std::string& bytes) {
    static xp_library library;
    static xp_netlist read;
    static xp_hierarchy hierarchy;
    static xp_flat flat;
    xp_status status;
    if (library.cells.empty()) {
        xp_parse_library(seed("library/small"), library);
        xp_parse_netlist("cells", seed("netlist/cells"), read, status);
        hierarchy.library = &library;
        xp_choose_top(read, "", hierarchy, status);
        xp_map_modules(read, hierarchy, status);
        xp_flatten(read, hierarchy, flat, status);
        if (!xp_ok(status)) std::abort();
    }
    xp_sdf sdf;
    xp_annotation annotation;
    sdf.path = "d.sdf";
    sdf.text = bytes;
    xp_parse_sdf(1e-10, sdf, status);
    xp_annotate(flat, sdf, annotation, status);
}

void fz_feed_timing(const std::string& bytes) {
    static const std::string netlist = fz_read(tst_source_dir() + "/examples/timing/capture.json");
    xp_options options = options_for(netlist);
    options.timing = "timing.json";
    fz_write(options.timing, bytes);
    expand_with(options);
}

void fz_feed_delays(const std::string& bytes) {
    static const std::string netlist = fz_read(tst_source_dir() + "/examples/timing/capture.json");
    xp_options options = options_for(netlist);
    options.delays = "delays.tsv";
    fz_write(options.delays, bytes);
    expand_with(options);
}

void fz_seed_netlists(const std::string& folder) {
    fs::create_directories(folder);
    for (const char* name : {"arbiter/arbiter", "counter/counter", "timing/capture"}) {
        const std::string text = fz_read(tst_source_dir() + "/examples/" + name + ".json");
        fz_write(folder + "/" + fs::path(name).filename().string(), text);
    }
}

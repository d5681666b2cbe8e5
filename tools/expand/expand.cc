// One run of the expander, and its files.
#include "expand/expand.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <vector>

#include "expand/buses_out.h"
#include "expand/design_out.h"
#include "expand/memories_out.h"
#include "expand/sdf_read.h"
#include "expand/sheets.h"
#include "expand/verilog.h"
#include "foundation/replacement.h"

namespace {

// A text on its way to a file: it takes its place at the end, or is gone.
class pending_file {
public:
    explicit pending_file(const std::string& path) : path_(path), file_(path) {}

    void write(std::string_view text, xp_status& status) {
        if (!xp_ok(status)) return;
        if (!file_.is_open()) return fail(status);
        std::fwrite(text.data(), 1, text.size(), file_.stream());
    }
    void keep(xp_status& status) {
        if (xp_ok(status) && !file_.take_place()) fail(status);
    }

private:
    void fail(xp_status& status) {
        xp_fail(status, xp_fault::cannot_write, path_, std::strerror(file_.error()));
    }

    std::string path_;
    tm_replacement file_;
};

void read_inputs(const xp_options& options, xp_library& library, xp_netlist& netlist, xp_timing& timing,
                 xp_status& status) {
    for (const std::string& path : options.libraries) xp_read_library(path, library, status);
    timing.library = &library;
    if (options.is_verilog)
        xp_read_verilog(options, library, netlist, status);
    else
        xp_read_netlist(options.inputs[0], netlist, status);
    if (!options.timing.empty()) xp_read_timing(options.timing, timing, status);
    if (!options.delays.empty()) xp_read_delays(options.delays, timing, status);
}

void write_design(const std::string& path, const yx_design_image_t& image, xp_status& status) {
    std::string why;
    if (xp_ok(status) && !yxw_write(image, path, why)) xp_fail(status, xp_fault::cannot_write, path, why);
}

// The texts first, under their temporary names: the design file appears when nothing else can fail but a
// rename.
void write_outputs(const xp_options& options, const xp_flat& flat, const xp_paths& paths,
                   const yx_design_image_t& image, xp_status& status) {
    if (!xp_ok(status)) return;
    pending_file buses(options.output + ".buses");
    std::optional<pending_file> names, memories;
    const std::string memories_text = xp_memories_text(flat, paths, image);
    if (!memories_text.empty()) memories.emplace(options.output + ".mem");
    if (!options.names.empty()) names.emplace(options.names);
    buses.write(xp_buses_text(flat), status);
    if (names) names->write(xp_name_map(flat, paths, image), status);
    if (memories) memories->write(memories_text, status);
    write_design(options.output, image, status);
    if (memories) memories->keep(status);
    buses.keep(status);
    if (names) names->keep(status);
}

}  // namespace

void xp_expand(const xp_options& options, xp_summary& summary, xp_status& status) {
    xp_library library;
    xp_netlist netlist;
    xp_hierarchy hierarchy;
    xp_flat flat;
    xp_timing timing;
    std::vector<xp_delays> delays;
    yx_design_image_t image;
    xp_paths paths;
    read_inputs(options, library, netlist, timing, status);
    hierarchy.library = &library;
    hierarchy.draws_sheets = options.sheets;
    // Of Verilog the recipe has marked the top, maybe under another name.
    xp_choose_top(netlist, options.is_verilog ? "" : options.top, hierarchy, status);
    xp_map_modules(netlist, hierarchy, status);
    xp_flatten(netlist, hierarchy, flat, status);
    xp_find_delays(flat, timing, delays, status);
    xp_sdf sdf;
    xp_annotation annotation;
    if (!options.sdf.empty()) {
        xp_read_sdf(options.sdf, options.time_step * 1e-9, sdf, status);
        xp_annotate(flat, sdf, annotation, status);
    }
    xp_sheets sheets(std::filesystem::path(options.output).parent_path());
    if (options.sheets) sheets.draw(netlist, hierarchy, flat, status);
    xp_build_design(flat, delays, annotation, options.time_step, image, paths, status);
    write_outputs(options, flat, paths, image, status);
    if (options.sheets) sheets.install(status);
    if (!xp_ok(status)) return;
    summary = {image.insts.size(), flat.nets.size(), image.macros.size(), sheets.pages};
}

// The orderly end: everything that is open is closed.
#include "session/shutdown.h"

#include <algorithm>
#include <cstdio>
#include <span>

#include "foundation/context.h"
#include "foundation/platform.h"
#include "foundation/shell.h"
#include "foundation/status.h"
#include "kernel/context.h"
#include "netlist/design_file.h"
#include "schematic/sheet_file.h"

namespace {

void close_design() {
    if (!yx_sext.open_file_ok) return;
    std::int32_t errors = 0;
    std::int32_t warnings = 0;
    yxi_close_dfi(errors, warnings);
}

void close_sheets() {
    if (!kol_ext.view_sheet_done) return;
    const auto levels = std::clamp<std::size_t>(kol_ext.file_level_max, 0, tm_vext.filear.size());
    for (tm_file_io_rec_t& sheet : std::span(tm_vext.filear).first(levels)) {
        if (!sheet.already_open_ok) continue;
        if (sheet.file_io_id != nullptr) std::fclose(sheet.file_io_id);
        sheet = {};
    }
}

void close_view_file() {
    const auto file = static_cast<tm_file_index_t>(tm_vext.file_id_views);
    STATUS_T status;
    if (kol_ext.view_sheetaux_done && tm_is_file_open(file)) tm_file_close(file, false, status);
}

void terminate_package(std::int32_t pause) {
    if (!tm_vext.init_done && tm_vext.num_file_open == 0) tm_fatal(init_or_open_file_not_done);
    if (!tm_vext.init_done) return;
    tm_shell.flush();
    xdelayms(pause);
}

void close_trace_file() {
    if (tm_vext.debugfile != nullptr) std::fclose(tm_vext.debugfile);
    tm_vext.debugfile = nullptr;
}

}  // namespace

void kol_close_session(std::int32_t pause) {
    close_design();
    close_sheets();
    close_view_file();
    terminate_package(pause);
    close_trace_file();
}

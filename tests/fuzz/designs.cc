// Design files, state files and the words of memories.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <limits>

#include "commands/language/interpreter.h"
#include "commands/start_values.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "fuzz/targets.h"
#include "kernel/clear.h"
#include "kernel/queue.h"
#include "kernel/resume.h"
#include "kernel/run.h"
#include "kernel/setup.h"
#include "models/mem_contents.h"
#include "models/model_table.h"
#include "netlist/design_file.h"
#include "support/design_build.h"
#include "support/session.h"

namespace {

constexpr std::int32_t last_time = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t run_time = 300;

// Every model, buses, sub-nets and delays at both ends of their range.
constexpr const char* designs[] = {
    "in a b clk; bus d 2; dff f Q:q = D:a CLKP:clk rise 2 fall 1; pin /f/D edge X; and g d.0-1 = q b rise 3 "
    "fall 2; xor h y = d.0 q rise 4",
    "in a e; sub a1 of a; child a name a path /x; tri t Y:y = A:a EP:e rise 1 fall 2; nand i z = a1 rise "
    "2147483647 fall 1:2:3",
    "in d e s; dlatch l Q:q QB:n = D:d EP:e rise 2 fall 1; pin /l/D setup 3; stable c = D:d CLKP:e; pin /l/D "
    "edge X; pin /c/D edge X; smos m = EP:e A:s B:d; pin /m/A io 4 rise 2 fall 3; pin /m/B io 4 rise 3 fall "
    "4",
    "mem m R0D0:p R0D1:q = R0A0:a R0A1:b W0A0:a W0A1:b W0D0:c W0D1:d W0E0:e W0E1:e W0CP:k rise 3; inst m "
    "words 0:3",
    "in a b c; lut l y = a b c rise 3 fall 2; inst l table 96; nand n x1 = a y rise 2; nand o y1 = x1 b rise "
    "1:2:3",
};

void start(const char* design) {
    tst_build(design);
    if (tm_vext.num_errors != 0) std::fputs(tst_take_text().c_str(), stderr), std::exit(1);
    kol_initparam_before();
    tm_shell = tm_default_shell;
    tm_vext.nb_arg_comline = 2;
    tm_vext.argcomline[1] = tm_string(".");  // the directory of the session's files
}

// Any event takes time, so that a ring of gates comes to an end.
void slow_down() {
    for (std::int32_t i = 1; i <= yx_sext.max_pin_cur; ++i) {
        yx_pin_record_t& pin = *yx_ptrto_pin_rec(i);
        for (std::int32_t& delay : pin.rise) delay = std::max(delay, 1);
        for (std::int32_t& delay : pin.fall) delay = std::max(delay, 1);
    }
}

void run_until(std::int32_t time) {
    bool no_event = false;
    kol_ext.start_time = kol_ext.cur_time;
    kol_ext.end_time = time;
    kol_ext.time_breaked = false;
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        yx_net_record_t* const net = yx_ptrto_net_rec(i);
        if (net->net_type != YX_TSTANDARD || net->first_pin_out_ind != 0) continue;
        kol_create_force_event(net, kol_ext.cur_time, static_cast<std::int8_t>(17 + 2 * (i & 1)));
        kol_create_force_event(net, time - run_time / 2, static_cast<std::int8_t>(19 - 2 * (i & 1)));
    }
    kol_exec_all_event(no_event);
}

}  // namespace

void fz_use_design() {
    kol_set_models(kol_model_table());
    kol_ext.cur_sim_path = tm_string("/");
    kol_ext.timing_ar.fill(kol_ext.sim_range_type);
    kol_init_object_ptr();
    if (tm_vext.num_errors != 0) return;  // the session ends
    slow_down();
    for (const std::int16_t model : {kol_indgene, kol_pessimistic, kol_suppress}) {
        kol_ext.spike_model = model;
        kol_ext.start_time = kol_ext.cur_time = 0;
        kol_init_net_state();
        run_until(run_time);
    }
    kol_resume_at(last_time - run_time);
    run_until(last_time);
}

void fz_feed_design(const std::string& bytes) {
    kol_context_clear();
    tm_vext = {};
    tm_shell = tm_default_shell;
    kol_initparam_before();
    fz_write("design_yx", bytes);
    char here[] = ".", file[] = "design_yx";
    STATUS_T status;
    yxi_init_dfi({1, here}, {9, file}, status);
    if (status.all == 0) fz_use_design();
}

void fz_feed_state(const std::string& bytes) {
    start(designs[bytes.size() % std::size(designs)]);
    fz_write("state", bytes);
    kol_process_command(tm_string("RESTORE STATE state"), kol_ext.ext_arg, kol_ext.top_var);
    if (kol_ext.end_time < last_time - run_time) run_until(kol_ext.end_time + run_time);
}

void fz_feed_words(const std::string& bytes) {
    kol_contents_t contents{0, 8, 5, std::vector<std::int8_t>(40)};
    std::string why;
    kol_read_words(bytes, contents, why);
    kol_split_memories(bytes);
}

void fz_seed_designs(const std::string& folder) {
    std::filesystem::create_directories(folder);
    char name = 'a';
    for (const char* text : designs) {
        std::string error;
        const yx_design_image_t image = tst_design(text, error);
        if (!error.empty() || !yxw_write(image, folder + "/" + name++, error)) {
            std::fprintf(stderr, "%s\n", error.c_str());
            std::exit(1);
        }
    }
}

void fz_seed_states(const std::string& folder) {
    std::filesystem::create_directories(folder);
    for (const char* text : designs) {
        start(text);
        run_until(run_time);
        kol_process_command(tm_string("SAVE STATE state"), kol_ext.ext_arg, kol_ext.top_var);
        std::string bytes = fz_read("state");
        for (int k = 0; k < 3; ++k)
            fz_write(folder + "/" + std::to_string(bytes.size()), bytes), bytes += '\n';
    }
}

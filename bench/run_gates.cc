// The run loop, the stimuli and the names on designs of 100,000 gates and more.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "kernel/clear.h"
#include "kernel/lookup.h"
#include "kernel/name_index.h"
#include "kernel/run.h"
#include "kernel/setup.h"
#include "kernel/stimuli.h"
#include "models/model_table.h"
#include "nand_properties.h"
#include "netlist/design_file.h"
#include "netlist/design_image.h"

namespace {

namespace fs = std::filesystem;

constexpr std::int32_t chain_length = 100;
constexpr std::int32_t names = 65536;  // more characters than these take do not fit the store

std::int32_t add_net(yx_design_image_t& design) {
    yx_net_record_t& net = design.nets.emplace_back();
    net.self = static_cast<std::int32_t>(design.nets.size());
    net.net_type = YX_TSTANDARD;
    net.sim_path = yxw_string(design, "/n" + std::to_string(net.self % names));
    return net.self;
}

void add_pin(yx_design_image_t& design, std::int32_t net, bool is_output) {
    yx_pin_record_t& pin = design.pins.emplace_back();
    yx_net_record_t& on = design.nets[static_cast<std::size_t>(net - 1)];
    pin.self = static_cast<std::int32_t>(design.pins.size());
    pin.io_type = is_output ? 2 : 1;
    pin.pin_hdl_priority = 1;
    pin.sim_path = on.sim_path;
    pin.instance_ind = static_cast<std::int32_t>(design.insts.size());
    pin.net_ind = net;
    pin.first_prop = 2;
    pin.nb_of_property = 2;
    (is_output ? on.first_pin_out_ind : on.first_pin_in_ind) = pin.self;
    ++(is_output ? on.nb_pin_out : on.nb_pin_in);
}

std::int32_t add_inverter(yx_design_image_t& design, std::int32_t from) {
    const std::int32_t to = add_net(design);
    yx_inst_record_t& inst = design.insts.emplace_back();
    inst.self = static_cast<std::int32_t>(design.insts.size());
    inst.sim_path = design.nets[static_cast<std::size_t>(to - 1)].sim_path;
    inst.nb_of_pin = 2;
    inst.first_pin_ind = 2 * inst.self - 1;
    inst.first_prop = inst.nb_of_property = 1;
    add_pin(design, to, true);
    add_pin(design, from, false);
    return to;
}

// Chains of inverters, one behind the other in the store; the head nets have no driver.
yx_design_image_t chains(std::int32_t gates) {
    yx_design_image_t design;
    design.info.time_step = 1;
    bench_add_properties(design, 1);
    for (std::int32_t chain = 0; chain < gates / chain_length; ++chain) {
        std::int32_t net = add_net(design);
        for (std::int32_t k = 0; k < chain_length; ++k) net = add_inverter(design, net);
    }
    return design;
}

// Loads and sets up a design of that many gates; says so when that fails.
bool build(std::int32_t gates, benchmark::State& state) {
    kol_context_clear();
    yx_store_clear();
    const fs::path directory = fs::temp_directory_path() / ("kolv_bench_" + std::to_string(getpid()));
    fs::create_directory(directory);
    fs::current_path(directory);
    std::string why;
    yxi_text_t here, file;
    yxi_copy_const(".", here);
    yxi_copy_const("design_yx", file);
    STATUS_T status;
    bool is_loaded = yxw_write(chains(gates), "design_yx", why);
    if (is_loaded) yxi_init_dfi(here, file, status);
    is_loaded = is_loaded && status.all == 0;
    if (!is_loaded) state.SkipWithError("the design cannot be loaded");
    fs::current_path(directory.parent_path());
    fs::remove_all(directory);
    if (!is_loaded) return false;
    kol_set_models(kol_model_table());
    kol_ext.cur_sim_path = tm_string("/");
    kol_init_object_ptr();
    return true;
}

void run_to(std::int32_t time) {
    kol_ext.start_time = kol_ext.cur_time;
    kol_ext.end_time = time;
    bool no_event_found = false;
    kol_exec_all_event(no_event_found);
}

// One change of every chain's head, followed to the chain's end.
void run_events(benchmark::State& state) {
    const auto gates = static_cast<std::int32_t>(state.range(0));
    if (!build(gates, state)) return;
    kol_ext.spike_on = state.range(1) != 0;
    std::int8_t value = 17;
    for (auto _ : state) {
        value = value == 17 ? 19 : 17;
        kol_clear_stimuli();
        for (std::int32_t chain = 0; chain < gates / chain_length; ++chain)
            kol_add_force(*yx_ptrto_net_rec(chain * (chain_length + 1) + 1), value, kol_ext.cur_time, 0);
        run_to(kol_ext.cur_time + 2 * chain_length + 10);
    }
    const std::int32_t last = gates / chain_length * (chain_length + 1);
    if (yx_ptrto_net_rec(last)->UU.U1.cur_state.state != value) state.SkipWithError("the last net is wrong");
    state.SetItemsProcessed(state.iterations() * last);  // an event for each net
}
BENCHMARK(run_events)->ArgsProduct({{1000, 10000, 100000}, {0, 1}})->Unit(benchmark::kMillisecond);

// Forces of one net, entered in no order of time, and the run over them.
void run_forces(benchmark::State& state) {
    if (!build(chain_length, state)) return;
    const auto count = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state) {
        kol_ext.cur_time = 0;
        kol_init_net_state();
        kol_clear_stimuli();
        for (std::int32_t k = 0; k < count; ++k)
            kol_add_force(*yx_ptrto_net_rec(1), static_cast<std::int8_t>(k % 2 == 0 ? 17 : 19),
                          static_cast<std::int32_t>(std::int64_t{k} * 7919 % count) * 3, 0);
        run_to(3 * count);
    }
    state.SetComplexityN(count);
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(run_forces)->RangeMultiplier(4)->Range(1000, 256000)->Complexity()->Unit(benchmark::kMillisecond);

// Short runs, with that many forces ahead of them.
void run_short_of_forces(benchmark::State& state) {
    if (!build(chain_length, state)) return;
    constexpr std::int32_t far = 1'000'000'000;
    kol_clear_stimuli();
    for (std::int32_t k = 0; k < state.range(0); ++k) kol_add_force(*yx_ptrto_net_rec(1), 17, far + k, 0);
    for (auto _ : state) {
        kol_add_force(*yx_ptrto_net_rec(1), 19, kol_ext.cur_time, 0);
        run_to(kol_ext.cur_time + 10);
    }
}
BENCHMARK(run_short_of_forces)->Arg(10)->Arg(100'000)->Unit(benchmark::kMicrosecond);

// Every net of a design looked up by its name once, the index of names included.
void find_names(benchmark::State& state) {
    if (!build(static_cast<std::int32_t>(state.range(0)), state)) return;
    std::vector<tm_string_record_t> asked;
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i)
        asked.push_back(tm_string("N" + std::to_string(i)));
    for (auto _ : state) {
        kol_forget_names();
        std::int32_t found = 0;
        yx_net_record_t* net = nullptr;
        for (const tm_string_record_t& name : asked) found += kol_find_net(name, net) != 0;
        if (found != yx_sext.max_net_cur) state.SkipWithError("a name was not found");
    }
    state.SetComplexityN(yx_sext.max_net_cur);
    state.SetItemsProcessed(state.iterations() * yx_sext.max_net_cur);
}
BENCHMARK(find_names)->RangeMultiplier(4)->Range(1000, 64000)->Complexity()->Unit(benchmark::kMillisecond);

}  // namespace

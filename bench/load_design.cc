// Loading a design file at the limits of the store: 500,000 pins on 125,000 instances and nets.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "nand_properties.h"
#include "netlist/design_file.h"
#include "netlist/design_image.h"

namespace {

constexpr std::int32_t gates = yx_max_index / 4;  // three inputs and an output each

void add_pin(yx_design_image_t& design, std::int32_t gate, std::int32_t net, bool is_output) {
    yx_pin_record_t& pin = design.pins.emplace_back();
    yx_net_record_t& on = design.nets[static_cast<std::size_t>(net - 1)];
    pin.self = static_cast<std::int32_t>(design.pins.size());
    pin.io_type = is_output ? 2 : 1;
    pin.sim_path = on.sim_path;
    pin.instance_ind = gate;
    pin.net_ind = net;
    pin.first_prop = 2;
    pin.nb_of_property = 2;
    std::int32_t& first = is_output ? on.first_pin_out_ind : on.first_pin_in_ind;
    (is_output ? pin.next_pin_out_ind : pin.next_pin_in_ind) = first;
    first = pin.self;
    ++(is_output ? on.nb_pin_out : on.nb_pin_in);
}

// Gate g drives net g and reads the nets of the gates before it.
yx_design_image_t largest_design() {
    yx_design_image_t design;
    bench_add_properties(design, 2);
    for (std::int32_t g = 1; g <= gates; ++g) {
        yx_net_record_t& net = design.nets.emplace_back();
        net.self = g;
        net.net_type = YX_TSTANDARD;
        net.sim_path = yxw_string(design, "/n" + std::to_string(g % 60000));
        yx_inst_record_t& inst = design.insts.emplace_back();
        inst.self = g;
        inst.sim_path = net.sim_path;
        inst.nb_of_pin = 4;
        inst.first_pin_ind = 4 * g - 3;
        inst.first_prop = 1;
        inst.nb_of_property = 1;
        for (std::int32_t k = 1; k <= 3; ++k) add_pin(design, g, g > k ? g - k : 1, false);
        add_pin(design, g, g, true);
    }
    return design;
}

void load_500000_pins(benchmark::State& state) {
    const auto directory =
        std::filesystem::temp_directory_path() / ("kolv_bench_" + std::to_string(getpid()));
    std::filesystem::create_directory(directory);
    std::filesystem::current_path(directory);
    std::string why;
    bool is_loaded = yxw_write(largest_design(), "design_yx", why);
    yxi_text_t here, file;
    yxi_copy_const(".", here);
    yxi_copy_const("design_yx", file);
    for (auto _ : state) {
        STATUS_T status;
        if (is_loaded) yxi_init_dfi(here, file, status);
        is_loaded = is_loaded && status.all == 0;
    }
    if (!is_loaded) state.SkipWithError("the design cannot be loaded");
    yx_store_clear();
    std::filesystem::current_path(directory.parent_path());
    std::filesystem::remove_all(directory);
}
BENCHMARK(load_500000_pins)->Unit(benchmark::kMillisecond);

}  // namespace

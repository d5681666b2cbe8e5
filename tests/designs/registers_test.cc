// Sequential benchmark circuits over a thousand clock cycles, against an independent cycle-based model; and
// the setup violations of a clock that is too fast, against the histories of the nets that they name.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "commands/language/interpreter.h"
#include "commands/start_values.h"
#include "cycle_model.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "kernel/clear.h"
#include "kernel/history.h"
#include "kernel/lookup.h"
#include "support/design_build.h"
#include "support/places/places.h"
#include "support/session.h"

namespace {

constexpr std::int8_t strong_0 = 17, strong_1 = 19;

// Expands the circuit with the options and brings the simulator to the start of a session.
void start(const std::string& circuit, const std::string& options = "") {
    std::string directory =
        std::filesystem::temp_directory_path() / ("kolv_designs_" + std::to_string(getpid()));
    std::filesystem::create_directories(directory);
    const std::string command = tst_program_dir() + "/kolv-expand " + options + " " + tst_source_dir() +
                                "/designs/iscas89/" + circuit + ".json -o " + directory + "/design_yx >" +
                                directory + "/log 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    yx_store_clear();
    kol_context_clear();
    tm_vext = {};
    kol_initparam_before();
    tst_record_session();
    tst_read(directory);
    tst_set_up();
    ASSERT_EQ(tm_vext.num_errors, 0) << ::testing::PrintToString(tst_take_lines());
    std::filesystem::remove_all(directory);
}

void type(const std::string& line) { kol_process_command(tm_string(line), kol_ext.ext_arg, kol_ext.top_var); }

yx_net_record_t* net_of(const std::string& name) {
    yx_net_record_t* net = nullptr;
    EXPECT_NE(kol_find_net(tm_string(name), net), 0) << name;
    return net;
}

struct watched_net {
    std::string name;
    std::size_t bit;  // of the model
    const yx_net_record_t* net;
};

std::vector<watched_net> outputs_and_registers(const tst_cycle_model& model) {
    std::vector<watched_net> watched;
    for (const std::string& name : model.outputs)
        watched.push_back({name, model.port.at(name), net_of(name)});
    for (const tst_register_t& r : model.registers) watched.push_back({r.net, r.q, net_of(r.net)});
    return watched;
}

// Drives the circuit: the clock falls with each new vector and rises half a period later; reset is active for
// the first two.  after_cycle(k) is called at the end of each cycle.
template <typename AfterCycle>
void drive(tst_cycle_model& model, int cycles, std::int32_t period, AfterCycle after_cycle) {
    std::uint32_t x = 0x12345678;
    for (int k = 0; k < cycles; ++k) {
        const std::string at = " " + std::to_string((k + 1) * period);
        std::uint32_t word = 0;
        for (std::size_t i = 0; i < model.inputs.size(); ++i) {
            if (i % 32 == 0) x ^= x << 13, x ^= x >> 17, word = x ^= x << 5;
            const bool bit = (word >> i % 32 & 1U) != 0;
            if (k == 0 || bit != model.value[model.port[model.inputs[i]]])
                type("FORCE A " + model.inputs[i] + (bit ? " 1" : " 0") + at);
            model.value[model.port[model.inputs[i]]] = bit;
        }
        if (k == 0 || k == 2) type(std::string("FORCE A RSTN ") + (k < 2 ? "0" : "1") + at);
        model.value[model.port["RSTN"]] = k >= 2;
        type("FORCE A CK 0" + at);
        type("FORCE A CK 1 " + std::to_string((k + 1) * period + period / 2));
        type("RUN " + std::to_string((k + 2) * period - 1) + " A");
        model.settle();
        model.clock();
        model.settle();
        after_cycle(k);
    }
}

struct circuit_row {
    const char* name;
    std::int32_t period;  // relaxed
};

class sequential_circuit : public ::testing::TestWithParam<circuit_row> {};

TEST_P(sequential_circuit, agrees_with_a_cycle_based_model_for_a_thousand_cycles) {
    tst_cycle_model model(tst_source_dir() + "/designs/iscas89/" + GetParam().name + ".json");
    start(GetParam().name);
    if (HasFatalFailure()) return;
    type("SPIKE CHECK OFF");
    const std::vector<watched_net> watched = outputs_and_registers(model);
    std::int64_t differences = 0;
    drive(model, 1000, GetParam().period, [&](int k) {
        for (const watched_net& w : watched)
            if (w.net->UU.U1.cur_state.state != (model.value[w.bit] ? strong_1 : strong_0) &&
                ++differences == 1)
                ADD_FAILURE() << "cycle " << k << " : " << w.name;
    });
    EXPECT_EQ(differences, 0);
    EXPECT_EQ(tm_vext.num_warnings, 0) << "violations at a relaxed clock";
    EXPECT_EQ(kol_ext.cur_time, 1001 * GetParam().period - 1);
}

INSTANTIATE_TEST_SUITE_P(iscas89, sequential_circuit,
                         ::testing::Values(circuit_row{"s27", 120}, circuit_row{"s298", 180},
                                           circuit_row{"s1423", 800}, circuit_row{"s5378", 360},
                                           circuit_row{"s38417", 560}),
                         [](const auto& row) { return std::string(row.param.name); });

struct violation {
    std::string clock_pin, data_pin;
    std::int32_t data_time = 0, clock_time = 0, limit = 0;
    auto operator<=>(const violation&) const = default;
};

std::multiset<violation> reported_violations(const std::vector<std::string>& lines) {
    std::multiset<violation> found;
    for (std::size_t i = 0; i + 2 < lines.size(); ++i) {
        char clock_pin[100] = "", data_pin[100] = "";
        float data_time = 0, clock_time = 0, difference = 0, limit = 0;
        if (std::sscanf(lines[i].c_str(), "# !! Setup Time Violation on pin:\"%99[^\"]", clock_pin) != 1)
            continue;
        EXPECT_EQ(std::sscanf(lines[i + 1].c_str(), "#    From pin:\"%99[^\"]", data_pin), 1);
        EXPECT_EQ(std::sscanf(lines[i + 2].c_str(), "#  time:%f-->%f<->:%f(<%f)", &data_time, &clock_time,
                              &difference, &limit),
                  4);
        EXPECT_EQ(difference, clock_time - data_time);
        found.insert({clock_pin, data_pin, static_cast<std::int32_t>(data_time),
                      static_cast<std::int32_t>(clock_time), static_cast<std::int32_t>(limit)});
    }
    return found;
}

// A clock below the critical path: the reported violations are those that the histories of clock and data
// nets show, no more and no less.
TEST(sequential_circuit, a_clock_that_is_too_fast_violates_setup_where_the_histories_say) {
    constexpr std::int32_t setup = 2;
    tst_cycle_model model(tst_source_dir() + "/designs/iscas89/s298.json");
    start("s298");
    if (HasFatalFailure()) return;
    type("SPIKE CHECK OFF");
    kol_observe_net(net_of("CK"));
    for (const tst_register_t& r : model.registers) kol_observe_net(net_of(r.data_net));
    std::multiset<violation> reported;
    drive(model, 60, 40, [&](int) { reported.merge(reported_violations(tst_take_lines())); });

    std::multiset<violation> expected;
    const kol_history_t& clock = *net_of("CK")->UU.U1.history;
    for (std::size_t edge = 0; edge < clock.size(); ++edge) {
        const std::int32_t time = clock[edge].time;
        if (clock[edge].state != strong_1) continue;
        for (const tst_register_t& r : model.registers) {
            const kol_history_t& data = *net_of(r.data_net)->UU.U1.history;
            const std::int32_t last = data[data.find(time)].time;
            if (time - last < setup)
                expected.insert({"/" + r.cell + "/CLKP", "/" + r.cell + "/D", last, time, setup});
        }
    }
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(reported, expected);
}

}  // namespace

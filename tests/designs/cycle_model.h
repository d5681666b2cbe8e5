// tst: an independent cycle-based model of a flat netlist of two-input gates and rising-edge flip-flops in
// Yosys' JSON format.  Knows nothing of the simulator: no delays, no states but 0 and 1, one evaluation a
// cycle.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct tst_gate_t {
    char function;  // '&', '|', '^', or '=' for a copy of a
    bool is_inverted;
    std::size_t a, b, y;
};

struct tst_register_t {
    std::string cell, net;  // names; the net is that of Q
    std::string data_net;
    std::size_t d, q;
};

struct tst_cycle_model {
    std::vector<std::string> inputs;  // ports in file order, clock and reset left out
    std::map<std::string, std::size_t> port;
    std::vector<std::string> outputs;
    std::vector<tst_register_t> registers;
    std::vector<tst_gate_t> gates;  // every driver before its readers
    std::vector<bool> value;        // by net

    explicit tst_cycle_model(const std::string& json_path);
    void settle();  // every gate output from inputs and registers
    void clock();   // every register takes its data
};

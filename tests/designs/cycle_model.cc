#include "cycle_model.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

namespace {

using json = nlohmann::json;

const std::map<std::string, std::pair<char, bool>> functions = {
    {"$_AND_", {'&', false}}, {"$_NAND_", {'&', true}}, {"$_OR_", {'|', false}},  {"$_NOR_", {'|', true}},
    {"$_XOR_", {'^', false}}, {"$_XNOR_", {'^', true}}, {"$_BUF_", {'=', false}}, {"$_NOT_", {'=', true}},
};

std::size_t bit(const json& pins, const char* name) { return pins.at(name).at(0).get<std::size_t>(); }

std::map<std::size_t, std::string> net_names(const json& module) {
    std::map<std::size_t, std::string> names;
    for (const auto& [name, net] : module["netnames"].items())
        names[net["bits"][0].get<std::size_t>()] = name;
    return names;
}

// Orders the gates by Kahn's rule: a gate follows when the last of its drivers stands.
void levelise(std::vector<tst_gate_t>& gates, std::size_t nets) {
    std::vector<std::vector<std::size_t>> readers(nets);
    std::vector<bool> is_driven(nets);
    std::vector<int> missing(gates.size());
    for (const tst_gate_t& gate : gates) is_driven[gate.y] = true;
    for (std::size_t g = 0; g < gates.size(); ++g)
        for (const std::size_t input : std::set{gates[g].a, gates[g].b}) {
            if (!is_driven[input]) continue;
            readers[input].push_back(g);
            ++missing[g];
        }
    std::vector<tst_gate_t> ordered;
    std::vector<std::size_t> ready;
    for (std::size_t g = 0; g < gates.size(); ++g)
        if (missing[g] == 0) ready.push_back(g);
    while (!ready.empty()) {
        ordered.push_back(gates[ready.back()]);
        ready.pop_back();
        for (const std::size_t reader : readers[ordered.back().y])
            if (--missing[reader] == 0) ready.push_back(reader);
    }
    if (ordered.size() != gates.size()) throw std::runtime_error("a loop of gates");
    gates = std::move(ordered);
}

}  // namespace

tst_cycle_model::tst_cycle_model(const std::string& json_path) {
    std::ifstream file(json_path);
    const nlohmann::ordered_json root = nlohmann::ordered_json::parse(file);
    const auto& module = root["modules"].front();
    std::size_t nets = 2;
    for (const auto& [name, p] : module["ports"].items()) {
        port[name] = p["bits"][0].get<std::size_t>();
        if (p["direction"] == "output")
            outputs.push_back(name);
        else if (name != "CK" && name != "RSTN")
            inputs.push_back(name);
    }
    const auto names = net_names(module);
    for (const auto& [name, index] : names) nets = std::max(nets, name + 1);
    for (const auto& [name, cell] : module["cells"].items()) {
        const json pins = cell["connections"];
        if (cell["type"] == "$_DFF_P_") {
            const std::size_t d = bit(pins, "D"), q = bit(pins, "Q");
            registers.push_back({name, names.at(q), names.at(d), d, q});
            continue;
        }
        const auto [function, is_inverted] = functions.at(cell["type"].get<std::string>());
        const std::size_t a = bit(pins, "A");
        gates.push_back({function, is_inverted, a, function == '=' ? a : bit(pins, "B"), bit(pins, "Y")});
    }
    value.resize(nets);
    levelise(gates, nets);
}

void tst_cycle_model::settle() {
    for (const tst_gate_t& gate : gates) {
        const bool a = value[gate.a], b = value[gate.b];
        const bool y = gate.function == '&'   ? a && b
                       : gate.function == '|' ? a || b
                       : gate.function == '^' ? a != b
                                              : a;
        value[gate.y] = y != gate.is_inverted;
    }
}

void tst_cycle_model::clock() {
    std::vector<bool> next;
    for (const tst_register_t& r : registers) next.push_back(value[r.d]);
    for (std::size_t i = 0; i < registers.size(); ++i) value[registers[i].q] = next[i];
}

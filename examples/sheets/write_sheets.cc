// Writes a full adder of two half adders: three levels of sheets and the expanded design.
#include <cstdio>
#include <filesystem>

#include "design.h"
#include "sheet_maker.h"

namespace {

constexpr std::string_view adder_path = "adder/sheet.tm_1", carry_path = "carry/sheet.tm_1";
constexpr std::string_view and_shape = "gates/nand/symbol.tm_1", xor_shape = "gates/xor/symbol.tm_1",
                           or_shape = "gates/or/symbol.tm_1", not_shape = "gates/not/symbol.tm_1";

void draw_inputs(std::int32_t to) {
    for (const std::int32_t y : {10000, -10000}) make_line({0, y}, {to, y});
}

void draw_nand() {
    draw_inputs(10000);
    make_polyline({{30000, 20000}, {10000, 20000}, {10000, -20000}, {30000, -20000}});
    make_arc({30000, -20000}, {50000, 0}, {30000, 20000});
    make_circle({53000, 0}, 3000, false);
    make_line({56000, 0}, {60000, 0});
}

void draw_or() {
    draw_inputs(13000);
    make_arc({10000, 20000}, {15000, 0}, {10000, -20000});
    make_arc({10000, 20000}, {35000, 13000}, {50000, 0});
    make_arc({50000, 0}, {35000, -13000}, {10000, -20000});
    make_line({50000, 0}, {60000, 0});
}

void draw_xor() {
    draw_or();
    make_arc({6000, 20000}, {11000, 0}, {6000, -20000});
}

void draw_not() {
    make_line({0, 0}, {10000, 0});
    make_polyline({{10000, 15000}, {10000, -15000}, {50000, 0}, {10000, 15000}});
    make_circle({53000, 0}, 3000, false);
    make_line({56000, 0}, {60000, 0});
}

void draw_module(std::initializer_list<std::int32_t> outputs) {
    make_rectangle({10000, -20000}, {70000, 20000}, false);
    make_rectangle({36000, 14000}, {44000, 18000}, true);
    for (const std::int32_t y : {10000, -10000}) make_line({0, y}, {10000, y});
    for (const std::int32_t y : outputs) make_line({70000, y}, {80000, y});
}

void draw_adder() { draw_module({10000, -10000}); }
void draw_carry() { draw_module({10000}); }

const std::vector<symbol_pin> gate_pins = {{"O", {60000, 0}}, {"I1", {0, 10000}}, {"I2", {0, -10000}}};
const std::vector<symbol_pin> not_pins = {{"O", {60000, 0}}, {"I1", {0, 0}}};

const symbol_look nand_look = {and_shape, "NAND", gate_pins, false, draw_nand};
const symbol_look or_look = {or_shape, "OR", gate_pins, false, draw_or};
const symbol_look xor_look = {xor_shape, "XOR", gate_pins, false, draw_xor};
const symbol_look not_look = {not_shape, "NAND", not_pins, false, draw_not};
const symbol_look adder_look = {
    adder_path,
    "",
    {{"A", {0, 10000}}, {"B", {0, -10000}}, {"S", {80000, 10000}}, {"C", {80000, -10000}}},
    true,
    draw_adder};
const symbol_look carry_look = {
    carry_path, "", {{"A", {0, 10000}}, {"B", {0, -10000}}, {"Y", {80000, 10000}}}, true, draw_carry};

// One of every shape in a corner of the border.
void draw_emblem() {
    make_line({300000, 20000}, {390000, 20000}, 1);
    make_line({300000, 15000}, {390000, 15000}, 4);
    make_arc({310000, 30000}, {330000, 30000}, {310000, 30000});  // a full circle
    make_circle({345000, 30000}, 6000, true);
    make_rectangle({355000, 24000}, {365000, 36000}, true);
    make_polyline({{370000, 25000},
                   {373000, 35000},
                   {376000, 25000},
                   {379000, 35000},
                   {382000, 25000},
                   {385000, 35000},
                   {388000, 25000}});
}

net_ids write_top(const std::string& directory) {
    sheet_maker sheet(directory, {400000, 300000});
    sheet.symbols({adder_look, or_look, not_look});
    sheet.begin_instances();
    sheet.instance(adder_path, "U1", {100000, 200000});
    sheet.instance(adder_path, "U2", {320000, 200000}, {-70000, 22000}, 0, true);
    sheet.instance(or_shape, "G1", {210000, 170000}, {24000, -30000}, 3);
    sheet.instance(not_shape, "G2", {190000, 100000}, {-35000, 18000}, 2);
    sheet.end_family();
    sheet.begin_nets();
    sheet.net("D", {{{40000, 200000}, {60000, 200000}, {60000, 210000}}, {{60000, 200000}, {60000, 190000}}},
              true, 1);
    sheet.net("D[0]", {{{60000, 210000}, {100000, 210000}}});
    sheet.net("D[1]", {{{60000, 190000}, {100000, 190000}}});
    sheet.net("CIN", {{{40000, 80000}, {350000, 80000}, {350000, 190000}, {320000, 190000}}});
    sheet.net("T", {{{180000, 210000},
                     {200000, 210000},
                     {200000, 240000},
                     {340000, 240000},
                     {340000, 210000},
                     {320000, 210000}}});
    sheet.net("SUM", {{{240000, 210000}, {220000, 210000}, {220000, 260000}, {360000, 260000}}});
    sheet.net("C1", {{{180000, 190000}, {200000, 190000}, {200000, 170000}}});
    sheet.net("C2", {{{240000, 190000}, {220000, 190000}, {220000, 170000}}});
    sheet.net("COUT",
              {{{210000, 110000}, {210000, 100000}, {360000, 100000}}, {{210000, 100000}, {190000, 100000}}});
    sheet.net("NCOUT", {{{130000, 100000}, {120000, 100000}, {120000, 60000}, {360000, 60000}}});
    sheet.end_family();
    sheet.begin_tags();
    sheet.tag("INPUT", "D", {40000, 200000});
    sheet.tag("INPUT", "CIN", {40000, 80000});
    sheet.tag("OUTPUT", "SUM", {360000, 260000});
    sheet.tag("INOUT", "COUT", {360000, 100000});
    sheet.tag("OUTPUT", "NCOUT", {360000, 60000});
    sheet.end_family();
    sheet.frame("FULL ADDER", draw_emblem);
    return sheet.finish();
}

net_ids write_adder(const std::string& directory) {
    sheet_maker sheet(directory, {300000, 200000});
    sheet.symbols({xor_look, carry_look});
    sheet.begin_instances();
    sheet.instance(xor_shape, "X1", {100000, 150000});
    sheet.instance(carry_path, "P1", {100000, 80000});
    sheet.end_family();
    sheet.begin_nets();
    sheet.net("A", {{{40000, 160000}, {60000, 160000}, {100000, 160000}},
                    {{60000, 160000}, {60000, 90000}, {100000, 90000}}});
    sheet.net("B", {{{40000, 140000}, {80000, 140000}, {100000, 140000}},
                    {{80000, 140000}, {80000, 70000}, {100000, 70000}}});
    sheet.net("S", {{{160000, 150000}, {230000, 150000}}});
    sheet.net("C", {{{180000, 90000}, {230000, 90000}}});
    sheet.end_family();
    sheet.begin_tags();
    sheet.tag("FROM_PAGE", "A", {40000, 160000});
    sheet.tag("FROM_PAGE", "B", {40000, 140000});
    sheet.tag("TO_PAGE", "S", {230000, 150000});
    sheet.tag("TO_PAGE", "C", {230000, 90000});
    sheet.end_family();
    sheet.frame("HALF ADDER", [] {});
    return sheet.finish();
}

net_ids write_carry(const std::string& directory) {
    sheet_maker sheet(directory, {300000, 200000});
    sheet.symbols({nand_look, not_look});
    sheet.begin_instances();
    sheet.instance(and_shape, "K1", {80000, 100000});
    sheet.instance(not_shape, "K2", {160000, 100000});
    sheet.end_family();
    sheet.begin_nets();
    sheet.net("A", {{{40000, 110000}, {80000, 110000}}});
    sheet.net("B", {{{40000, 90000}, {80000, 90000}}});
    sheet.net("M", {{{140000, 100000}, {160000, 100000}}});
    sheet.net("Y", {{{220000, 100000}, {250000, 100000}}});
    sheet.end_family();
    sheet.begin_tags();
    sheet.tag("FROM_PAGE", "A", {40000, 110000});
    sheet.tag("FROM_PAGE", "B", {40000, 90000});
    sheet.tag("TO_PAGE", "Y", {250000, 100000});
    sheet.end_family();
    sheet.frame("CARRY", [] {});
    return sheet.finish();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: example_sheets DIRECTORY\n");
        return 2;
    }
    const std::string directory = argv[1];
    std::error_code error;
    for (const char* below : {"adder", "carry"})
        std::filesystem::create_directories(directory + "/" + below, error);
    tm_vext.init_done = true;
    const net_ids top = write_top(directory), adder = write_adder(directory + "/adder"),
                  carry = write_carry(directory + "/carry");
    std::string why;
    if (write_design(directory, top, adder, carry, why)) return 0;
    std::fprintf(stderr, "%s\n", why.c_str());
    return 1;
}

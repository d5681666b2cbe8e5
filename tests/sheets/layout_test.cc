// The layout by itself, over random circuits: whatever it is given, it draws what is asked for.
#include <random>

#include "sheets/label.h"
#include "sheets/layout.h"
#include "wire_rules.h"

namespace {

constexpr std::int32_t gate_width = 50000;

struct circuit {
    std::mt19937 random;
    sg_graph graph;

    std::int32_t pick(std::int32_t below) {
        return static_cast<std::int32_t>(random() % static_cast<unsigned>(below));
    }
    void add_tag(sg_place place, std::int32_t net) {
        sg_box tag;
        tag.place = place;
        tag.above = tag.below = 5000;
        (place == sg_place::first ? tag.margin_left : tag.margin_right) = 20000;
        tag.pins.push_back({net, 0, place == sg_place::first});
        graph.boxes.push_back(tag);
    }
    // Inputs from any net, loops and nets without a driver included.
    void add_gate(std::int32_t inputs, std::int32_t output) {
        sg_box gate;
        gate.is_register = pick(5) == 0;
        gate.width = gate_width;
        gate.above = 24000;
        gate.below = inputs * sg_pitch;
        gate.can_flip = inputs == 2;
        for (std::int32_t i = 0; i < inputs; ++i)
            gate.pins.push_back({pick(8) == 0 ? -1 : pick(graph.net_count),
                                 (inputs == 2 ? 1 - 2 * i : -i) * sg_pitch, false});
        gate.pins.push_back({output, 0, true});
        graph.boxes.push_back(gate);
    }
};

circuit random_circuit(unsigned seed) {
    circuit c{std::mt19937(seed), {}};
    const std::int32_t gates = c.pick(45), inputs = 1 + c.pick(12);
    c.graph.net_count = gates + inputs;
    for (std::int32_t i = 0; i < inputs; ++i) c.add_tag(sg_place::first, i);
    for (std::int32_t i = 0; i < gates; ++i) c.add_gate(1 + c.pick(4), inputs + i);
    for (std::int32_t i = c.pick(6); i > 0; --i) c.add_tag(sg_place::last, c.pick(c.graph.net_count));
    return c;
}

std::vector<sg_rectangle> bodies_of(const sg_graph& graph, const sg_layout& layout) {
    std::vector<sg_rectangle> bodies;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        const sg_box& box = graph.boxes[i];
        const sg_point& at = layout.origins[i];
        bodies.push_back({at.x, at.y - box.below, at.x + box.width, at.y + box.above});
    }
    return bodies;
}

// Every pin of a net is at an end of its wires, which hang together without a ring.
void expect_trees(const sg_graph& graph, const sg_layout& layout, const std::string& where) {
    std::vector<std::set<sg_point>> pins(layout.wires.size());
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        for (const sg_box_pin& pin : graph.boxes[i].pins)
            if (pin.net >= 0)
                pins[static_cast<std::size_t>(pin.net)].insert(
                    {layout.origins[i].x + (pin.is_right ? graph.boxes[i].width : 0),
                     layout.origins[i].y + (layout.is_flipped[i] ? -pin.y : pin.y)});
    for (std::size_t net = 0; net < pins.size(); ++net) {
        joined_points joined;
        std::set<sg_point> ends, roots;
        for (const sg_wire& wire : layout.wires[net]) {
            EXPECT_NE(joined.root(wire.from), joined.root(wire.to)) << where << "ring in net " << net;
            joined.join(wire.from, wire.to);
            ends.insert({wire.from, wire.to});
        }
        for (const sg_point& pin : pins[net]) {
            EXPECT_TRUE(pins[net].size() == 1 || ends.contains(pin)) << where << "pin of net " << net;
            roots.insert(joined.root(pin));
        }
        EXPECT_LE(roots.size(), 1U) << where << "net " << net << " is in pieces";
    }
}

TEST(layout, of_random_circuits_joins_what_it_should_and_nothing_else) {
    for (unsigned seed = 1; seed <= 120 && !HasFailure(); ++seed) {
        const circuit c = random_circuit(seed);
        const std::string where = "seed " + std::to_string(seed) + ": ";
        sg_layout layout;
        sg_lay_out(c.graph, layout);
        std::vector<net_wire> wires;
        for (std::size_t net = 0; net < layout.wires.size(); ++net)
            for (const sg_wire& wire : layout.wires[net]) {
                wires.push_back({wire, static_cast<std::int32_t>(net)});
                EXPECT_EQ((wire.from.x | wire.from.y | wire.to.x | wire.to.y) % 2, 0);
                for (const std::int32_t part : {wire.from.x, wire.from.y, wire.to.x, wire.to.y})
                    EXPECT_EQ(part % sg_pitch, 0) << where << "off the grid";
            }
        expect_trees(c.graph, layout, where);
        expect_only_crossings(wires, where);
        expect_clear(wires, bodies_of(c.graph, layout), where);
    }
}

TEST(layout, sets_gates_behind_their_drivers_and_cuts_loops_behind_registers) {
    // in -> gate -> register -> gate again
    circuit c{std::mt19937(1), {}};
    c.graph.net_count = 4;
    c.add_tag(sg_place::first, 0);
    for (const bool is_register : {false, true}) {
        sg_box box;
        box.is_register = is_register;
        box.width = gate_width;
        box.above = box.below = 15000;
        box.pins = is_register ? std::vector<sg_box_pin>{{1, 0, false}, {2, 0, true}}
                               : std::vector<sg_box_pin>{{0, 10000, false}, {2, -10000, false}, {1, 0, true}};
        c.graph.boxes.push_back(box);
    }
    c.add_tag(sg_place::last, 2);
    sg_layout layout;
    sg_lay_out(c.graph, layout);
    for (std::size_t i = 1; i < layout.origins.size(); ++i)
        EXPECT_LT(layout.origins[i - 1].x, layout.origins[i].x) << i;
    EXPECT_EQ(layout.origins[1].y, layout.origins[2].y) << "the wire between them is straight";
}

TEST(layout, finds_room_for_a_name_above_the_longest_free_wire) {
    const std::vector<sg_wire> wires = {
        {{0, 0}, {30000, 0}}, {{30000, 0}, {30000, 50000}}, {{30000, 50000}, {90000, 50000}}};
    const auto placed = [&](const sg_obstacles& obstacles) {
        const sg_label label = sg_place_label(wires, 20000, 7000, obstacles);
        return label.found ? std::to_string(label.at.x) + "," + std::to_string(label.at.y) : "none";
    };
    EXPECT_EQ(placed({}), "30000,51000");
    EXPECT_EQ(placed({{}, {{{35000, 40000}, {35000, 90000}}}}), "40000,51000");
    EXPECT_EQ(placed({{{0, 52000, 100000, 60000}}, {}}), "0,1000");
    EXPECT_EQ(placed({{{0, 0, 100000, 60000}}, {}}), "none");
}

}  // namespace

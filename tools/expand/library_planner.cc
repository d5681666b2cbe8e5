// The gates of library cells: which gate a function is, and what stands in front of registers.
#include "expand/library_planner.h"

#include <algorithm>
#include <bit>

namespace {

using kind = enum xp_plan_source::kind;

constexpr xp_model dff = xp_model_named("DFF"), latch = xp_model_named("DLATCH"), tri = xp_model_named("TRI"),
                   lut = xp_model_named("LUT"), one_input_and = xp_model_named("AND");

// ---- functions

struct gate_row {
    xp_model model;
    bool (*value)(std::size_t ones, std::size_t inputs);
};
constexpr gate_row gate_rows[] = {
    {xp_model_named("AND"), [](std::size_t ones, std::size_t inputs) { return ones == inputs; }},
    {xp_model_named("NAND"), [](std::size_t ones, std::size_t inputs) { return ones != inputs; }},
    {xp_model_named("OR"), [](std::size_t ones, std::size_t) { return ones != 0; }},
    {xp_model_named("NOR"), [](std::size_t ones, std::size_t) { return ones == 0; }},
    {xp_model_named("XOR"), [](std::size_t ones, std::size_t) { return ones % 2 == 1; }},
};

bool is_gate(const gate_row& row, const xp_function& f) {
    for (std::size_t place = 0; place < f.table.size(); ++place)
        if (f.table[place] != row.value(static_cast<std::size_t>(std::popcount(place)), f.inputs.size()))
            return false;
    return true;
}

struct planner {
    xp_library_cell& cell;
    xp_plan_part part;
};

xp_plan_source source_of(std::int32_t input) {
    return input < xp_first_state ? xp_plan_source{kind::port, input}
                                  : xp_plan_source{kind::state, input - xp_first_state};
}

std::string name_of(const planner& p, std::int32_t input) {
    return input < xp_first_state ? p.cell.pins[static_cast<std::size_t>(input)].name
                                  : p.cell.registers[static_cast<std::size_t>(input - xp_first_state)].name;
}

std::vector<xp_plan_pin> pins_of(const planner& p, const xp_function& f) {
    std::vector<xp_plan_pin> pins;
    for (std::size_t i = 0; i < f.inputs.size(); ++i)
        pins.push_back({name_of(p, f.inputs[i]), source_of(f.inputs[i]), xp_sense_of(f, i)});
    return pins;
}

xp_plan_gate gate_of(const planner& p, const xp_function& f) {
    if (f.inputs.empty()) return {one_input_and, "", {{"A", {kind::constant, f.table[0] ? 1 : 0}, 1}}};
    for (const gate_row& row : gate_rows)
        if (is_gate(row, f)) return {row.model, "", pins_of(p, f)};
    return {lut, xp_table_text(f.table), pins_of(p, f)};
}

xp_function half_of(const xp_function& f, bool high) {
    xp_function half = f;
    half.inputs.pop_back();
    const auto middle = f.table.begin() + static_cast<std::ptrdiff_t>(f.table.size() / 2);
    half.table.assign(high ? middle : f.table.begin(), high ? f.table.end() : middle);
    return xp_function_joined(half, {}, xp_function_join::any);  // without inputs that no longer count
}

xp_plan_source inner_gate(planner& p, xp_plan_gate gate) {
    p.part.gates.push_back(std::move(gate));
    return {kind::gate, static_cast<std::int32_t>(p.part.gates.size() - 1)};
}

xp_plan_source value_of(planner& p, const xp_function& f);

// The gate whose output is the function; the highest input chooses between the halves of one that no table
// holds.
xp_plan_gate last_gate(planner& p, const xp_function& f) {
    if (f.inputs.size() <= kol_lut_max_inputs) return gate_of(p, f);
    const xp_plan_source low = value_of(p, half_of(f, false));
    const xp_plan_source high = value_of(p, half_of(f, true));
    const std::size_t chooser = f.inputs.size() - 1;
    return {lut,
            "CA",
            {{"LOW", low, 1},
             {"HIGH", high, 1},
             {name_of(p, f.inputs[chooser]), source_of(f.inputs[chooser]), xp_sense_of(f, chooser)}}};
}

xp_plan_source value_of(planner& p, const xp_function& f) {
    if (f.inputs.empty()) return {kind::constant, f.table[0] ? 1 : 0};
    if (xp_is_literal(f) && !xp_is_inverted_literal(f)) return source_of(f.inputs[0]);
    return inner_gate(p, last_gate(p, f));
}

// ---- registers

// A pin whose name says by which level it acts.
xp_plan_pin control_pin(planner& p, const std::string& role, const xp_function& f) {
    if (xp_is_inverted_literal(f)) return {role + "N", source_of(f.inputs[0]), 1};
    return {role + "P", value_of(p, f), 1};
}

xp_function and_not(const xp_function& a, const xp_function& b) {
    return xp_function_joined(a, xp_function_not(b), xp_function_join::all);
}

void add_clear_and_preset(planner& p, const xp_library_register& r, xp_plan_gate& gate) {
    xp_function clear = r.clear, preset = r.preset;
    if (r.has_clear && r.has_preset && r.is_set_dominant)
        clear = and_not(clear, preset);
    else if (r.has_clear && r.has_preset && !r.is_latch)
        preset = and_not(preset, clear);  // so that it acts when clear ends first
    if (r.has_clear) gate.pins.push_back(control_pin(p, "R", clear));
    if (r.has_preset) gate.pins.push_back(control_pin(p, "S", preset));
}

xp_plan_gate register_gate(planner& p, const xp_library_register& r) {
    xp_plan_gate gate{r.is_latch ? latch : dff, "", {}};
    if (r.has_data) {
        gate.pins.push_back({"D", value_of(p, r.data), 1});
        gate.pins.push_back(control_pin(p, r.is_latch ? "E" : "CLK", r.control));
    }
    add_clear_and_preset(p, r, gate);
    return gate;
}

void finish(planner& p, xp_plan_gate last) {
    p.part.gates.push_back(std::move(last));
    p.cell.parts.push_back(std::move(p.part));
    p.part = {};
}

// ---- cells

bool reads(const xp_function& f, std::int32_t input) {
    return std::ranges::find(f.inputs, input) != f.inputs.end();
}

// Whether the pin shows the register as it is, inverted or not.
bool shows(const xp_library_pin& pin, std::int32_t state) {
    return xp_is_output(pin) && !pin.is_tristate && xp_is_literal(pin.function) &&
           pin.function.inputs[0] == state;
}

// Whether anything but such a pin reads the state of a register.
bool needs_net(const xp_library_cell& cell, std::int32_t state) {
    for (const xp_library_pin& pin : cell.pins)
        if (xp_is_output(pin) && !shows(pin, state) &&
            (reads(pin.function, state) || (pin.is_tristate && reads(pin.enable, state))))
            return true;
    for (const xp_library_register& r : cell.registers)
        for (const xp_function* f : {&r.data, &r.control, &r.clear, &r.preset})
            if (reads(*f, state)) return true;
    return false;
}

bool has_true_output(const xp_library_cell& cell, std::int32_t state) {
    return std::ranges::any_of(cell.pins, [&](const xp_library_pin& pin) {
        return shows(pin, state) && !xp_is_inverted_literal(pin.function);
    });
}

void plan_hidden_registers(planner& p) {
    for (std::size_t i = 0; i < p.cell.registers.size(); ++i) {
        const std::int32_t state = xp_first_state + static_cast<std::int32_t>(i);
        if (!needs_net(p.cell, state) || has_true_output(p.cell, state)) continue;
        p.part.state = static_cast<std::int32_t>(i);
        p.part.suffix = "." + p.cell.registers[i].name;
        p.part.output = "Q";
        finish(p, register_gate(p, p.cell.registers[i]));
    }
}

// A register repeated for each pin that shows it, so that each has delays of its own.
void plan_register(planner& p, std::size_t place, bool is_inverted) {
    const auto state = static_cast<std::int32_t>(place);
    const auto is_of_state = [&](const xp_plan_part& part) { return part.state == state; };
    p.part.is_checked = std::ranges::none_of(p.cell.parts, is_of_state);
    p.part.state = state;
    p.part.output = is_inverted ? "QB" : "Q";
    finish(p, register_gate(p, p.cell.registers[place]));
}

void plan_tristate(planner& p, const xp_library_pin& pin) {
    xp_plan_gate gate{tri, "", {}};
    gate.pins.push_back(control_pin(p, "E", pin.enable));
    gate.pins.push_back({"A", value_of(p, pin.function), 1});
    finish(p, std::move(gate));
}

void plan_output(planner& p, std::size_t index) {
    const xp_library_pin& pin = p.cell.pins[index];
    p.part.pin = static_cast<std::int32_t>(index);
    p.part.output = pin.name;
    const bool is_first = std::ranges::none_of(p.cell.parts, [](const auto& part) { return part.pin >= 0; });
    if (!is_first) p.part.suffix = "." + pin.name;
    if (pin.is_tristate) return plan_tristate(p, pin);
    if (xp_is_literal(pin.function) && pin.function.inputs[0] >= xp_first_state) {
        const auto place = static_cast<std::size_t>(pin.function.inputs[0] - xp_first_state);
        const bool is_hidden = std::ranges::any_of(p.cell.parts, [&](const xp_plan_part& part) {
            return part.pin < 0 && part.state == static_cast<std::int32_t>(place);
        });
        if (!is_hidden) return plan_register(p, place, xp_is_inverted_literal(pin.function));
    }
    finish(p, last_gate(p, pin.function));
}

}  // namespace

void xp_plan_library_cell(xp_library_cell& cell) {
    planner p{cell, {}};
    plan_hidden_registers(p);
    for (std::size_t i = 0; i < cell.pins.size(); ++i)
        if (xp_is_output(cell.pins[i])) plan_output(p, i);
}

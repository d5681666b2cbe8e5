// The shapes of gates, multiplexers, switches and boxes.
#include "sheets/symbol.h"

#include <algorithm>

namespace {

constexpr std::int32_t gate_width = 50000;
constexpr std::int32_t back = 10000, tip = 40000, half = 15000;  // of a gate's outline
constexpr std::int32_t bubble = 2500;
constexpr std::int32_t inst_room = 12000, gap = 1000;

struct artist {
    const sg_symbol_kind& kind;
    sg_symbol& s;
};

void line(artist& a, sg_point from, sg_point to, bool is_bus = false) {
    a.s.lines.push_back({from, to, is_bus});
}

void path(artist& a, std::initializer_list<sg_point> points) {
    for (auto p = points.begin(); p + 1 != points.end(); ++p) line(a, *p, *(p + 1));
}

// Rows of n pins about row 0, from the top, none on row 0 when their number is even.
std::int32_t pin_row(std::int32_t index, std::int32_t count) {
    const std::int32_t from_middle = count / 2 - index;
    return (count % 2 == 0 && from_middle <= 0 ? from_middle - 1 : from_middle) * sg_pitch;
}

std::int32_t input_count(const sg_symbol_kind& kind) {
    return static_cast<std::int32_t>(
        std::count_if(kind.pins.begin(), kind.pins.end(),
                      [](const sg_pin_kind& pin) { return !pin.is_right && !pin.is_control; }));
}

// The lead of an input from its pin to the outline, with a bubble when it is inverted.
void lead_in(artist& a, const sg_pin_kind& pin, std::int32_t y, std::int32_t to) {
    if (!pin.is_low) return line(a, {0, y}, {to, y}, pin.is_bus);
    line(a, {0, y}, {to - 2 * bubble, y}, pin.is_bus);
    a.s.circles.push_back({{to - bubble, y}, bubble});
}

void lead_out(artist& a, const sg_pin_kind& pin, std::int32_t from, std::int32_t y) {
    if (a.kind.is_inverted) {
        a.s.circles.push_back({{from + bubble, y}, bubble});
        from += 2 * bubble;
    }
    line(a, {from, y}, {a.s.width, y}, pin.is_bus);
}

// ---- gates

std::int32_t or_back(std::int32_t y) {  // of the arc over (10000, +-15000) and (15000, 0), in thousands exact
    constexpr std::int32_t at[] = {15000, 14490, 12910, 10000};  // every 5000 of y
    return at[std::min(std::abs(y) / 5000, 3)];
}

void and_outline(artist& a) {
    path(a, {{25000, half}, {back, half}, {back, -half}, {25000, -half}});
    a.s.arcs.push_back({{25000, -half}, {tip, 0}, {25000, half}});
}

void or_outline(artist& a) {
    a.s.arcs.push_back({{back, half}, {back + 5000, 0}, {back, -half}});
    a.s.arcs.push_back({{back, half}, {29000, 9500}, {tip, 0}});
    a.s.arcs.push_back({{back, -half}, {29000, -9500}, {tip, 0}});
}

void xor_outline(artist& a) {
    or_outline(a);
    a.s.arcs.push_back({{back - 4000, half}, {back + 1000, 0}, {back - 4000, -half}});
}

void buffer_outline(artist& a) { path(a, {{back, 12000}, {back, -12000}, {tip, 0}, {back, 12000}}); }

// More inputs than the outline has room for stand at a bar behind it.
void input_bar(artist& a, std::int32_t reach) {
    if (reach <= half) return;
    line(a, {back, half}, {back, reach - 5000});
    line(a, {back, -half}, {back, 5000 - reach});
}

void draw_gate(artist& a) {
    const std::int32_t count = input_count(a.kind);
    const std::int32_t reach = std::max(half, count == 0 ? 0 : pin_row(0, count) + 5000);
    const bool is_or = a.kind.form == sg_form::or_gate || a.kind.form == sg_form::xor_gate;
    const std::int32_t shift = a.kind.form == sg_form::xor_gate ? 4000 : 0;
    a.s.width = gate_width;
    std::int32_t index = 0;
    for (const sg_pin_kind& pin : a.kind.pins) {
        const std::int32_t y = pin.is_right ? 0 : pin_row(index++, count);
        a.s.pin_at.push_back({pin.is_right ? gate_width : 0, y});
        a.s.pin_name.push_back({{pin.is_right ? tip : gap, y + gap}, 4000, false});
        if (pin.is_right)
            lead_out(a, pin, tip, y);
        else
            lead_in(a, pin, y, is_or ? or_back(y) - shift : back);
    }
    switch (a.kind.form) {
        case sg_form::and_gate:
            and_outline(a);
            break;
        case sg_form::or_gate:
            or_outline(a);
            break;
        case sg_form::xor_gate:
            xor_outline(a);
            break;
        default:
            buffer_outline(a);
            break;
    }
    input_bar(a, reach);
    a.s.is_even = true;
    a.s.above = reach + inst_room;
    a.s.below = reach;
    a.s.inst = {{back, reach + gap}, sg_text, true};
    a.s.model = a.s.type = {{back + 6000, -2000}, 4000, false};
}

std::size_t longest_name(const sg_symbol_kind& kind, bool is_right) {
    std::size_t longest = 0;
    for (const sg_pin_kind& pin : kind.pins)
        if (pin.is_right == is_right) longest = std::max(longest, pin.name.size() + (pin.is_clock ? 1 : 0));
    return longest;
}

std::int32_t up_to_pitch(std::int32_t size) { return (size + sg_pitch - 1) / sg_pitch * sg_pitch; }

// ---- multiplexers and switches

// The lower edges of the outlines.
std::int32_t mux_edge(const artist& a, std::int32_t x, std::int32_t reach) {
    return -reach + sg_pitch * (x - back) / (a.s.width - 2 * back);
}
std::int32_t triangle_edge(const artist&, std::int32_t x, std::int32_t) {
    return -12000 + (x - back) * 12 / 30;
}

// Controls come from the left below the outline and turn up into it.
std::int32_t draw_controls(artist& a, std::int32_t row, std::int32_t left,
                           std::int32_t (*edge)(const artist&, std::int32_t x, std::int32_t reach),
                           std::int32_t reach) {
    std::int32_t x = left;
    for (std::size_t i = 0; i < a.kind.pins.size(); ++i) {
        const sg_pin_kind& pin = a.kind.pins[i];
        if (!pin.is_control) continue;
        a.s.pin_at[i] = {0, row};
        a.s.pin_name[i] = {{gap, row + gap}, 4000, false};
        line(a, {0, row}, {x, row}, pin.is_bus);
        const std::int32_t to = edge(a, x, reach);
        line(a, {x, row}, {x, pin.is_low ? to - 2 * bubble : to}, pin.is_bus);
        if (pin.is_low) a.s.circles.push_back({{x, to - bubble}, bubble});
        x -= 7000;
        row -= sg_pitch;
    }
    return row + sg_pitch;
}

void draw_multiplexer(artist& a) {
    const std::int32_t count = input_count(a.kind), reach = pin_row(0, count) + 10000;
    const std::int32_t names = sg_text_width(longest_name(a.kind, false) + 2, sg_pin_text);
    const std::int32_t edge = back + std::max(tip - back, up_to_pitch(names));
    a.s.width = edge + back;
    a.s.pin_at.resize(a.kind.pins.size());
    a.s.pin_name.resize(a.kind.pins.size());
    std::int32_t index = 0;
    for (std::size_t i = 0; i < a.kind.pins.size(); ++i) {
        const sg_pin_kind& pin = a.kind.pins[i];
        if (pin.is_control) continue;
        const std::int32_t y = pin.is_right ? 0 : pin_row(index++, count);
        a.s.pin_at[i] = {pin.is_right ? a.s.width : 0, y};
        a.s.pin_name[i] = {
            {pin.is_right ? edge : back + gap, y - sg_pin_text / 2}, sg_pin_text, !pin.is_right};
        if (pin.is_right)
            lead_out(a, pin, edge, y);
        else
            lead_in(a, pin, y, back);
    }
    path(a, {{back, reach}, {back, -reach}, {edge, 10000 - reach}, {edge, reach - 10000}, {back, reach}});
    const std::int32_t low = draw_controls(a, -reach - 10000, 31000, mux_edge, reach);
    a.s.above = reach + inst_room;
    a.s.below = -low + 5000;
    a.s.inst = {{back, reach + gap}, sg_text, true};
    a.s.model = a.s.type = {{back + 8000, -2000}, 4000, false};
}

void draw_tristate(artist& a) {
    a.s.width = gate_width;
    a.s.pin_at.resize(a.kind.pins.size());
    a.s.pin_name.resize(a.kind.pins.size());
    for (std::size_t i = 0; i < a.kind.pins.size(); ++i) {
        const sg_pin_kind& pin = a.kind.pins[i];
        if (pin.is_control) continue;
        a.s.pin_at[i] = {pin.is_right ? gate_width : 0, 0};
        a.s.pin_name[i] = {{pin.is_right ? tip : gap, gap}, 4000, false};
        if (pin.is_right)
            lead_out(a, pin, tip, 0);
        else
            lead_in(a, pin, 0, back);
    }
    buffer_outline(a);
    const std::int32_t low = draw_controls(a, -20000, 25000, triangle_edge, 0);
    a.s.above = half + inst_room;
    a.s.below = -low + 5000;
    a.s.inst = {{back, half + gap}, sg_text, true};
    a.s.model = a.s.type = {{back + 2000, -2000}, 4000, false};
}

// ---- boxes

void draw_box_pin(artist& a, const sg_pin_kind& pin, std::int32_t y, std::int32_t edge) {
    const std::int32_t size = sg_text_width(pin.name.size(), sg_pin_text);
    std::int32_t text = pin.is_right ? edge - 2000 - size : back + 2000;
    a.s.pin_at.push_back({pin.is_right ? a.s.width : 0, y});
    if (pin.is_clock) {
        path(a, {{back, y + 4000}, {back + 5000, y}, {back, y - 4000}});
        text += 5000;
    }
    a.s.pin_name.push_back({{text, y - sg_pin_text / 2}, sg_pin_text, true});
    if (!pin.is_right) return lead_in(a, pin, y, back);
    line(a, {edge, y}, {a.s.width, y}, pin.is_bus);
}

// The heads of tables and memories, between the name and the pins.
constexpr std::int32_t head = 4700, word_width = 4000;
constexpr std::int32_t words_beside = 3;

void draw_head(artist& a, std::int32_t edge, std::int32_t top) {
    if (a.kind.form == sg_form::box) return;
    line(a, {back, head}, {edge, head});
    if (a.kind.form != sg_form::memory) return;
    for (std::int32_t word = 1; word <= words_beside; ++word)
        for (const std::int32_t x : {back + word * word_width, edge - word * word_width})
            line(a, {x, head}, {x, top});
}

void draw_box(artist& a) {
    const std::int32_t names =
        sg_text_width(longest_name(a.kind, false) + longest_name(a.kind, true) + 2, sg_pin_text);
    const std::string& shown = a.kind.type.empty() ? a.kind.model : a.kind.type;
    const std::int32_t title = sg_text_width(shown.size() + 1, sg_pin_text) +
                               (a.kind.form == sg_form::memory ? 2 * words_beside * word_width : 0);
    const std::int32_t inner = up_to_pitch(std::max({names + 4000, title, 30000}));
    const std::int32_t edge = back + inner, top = 15000;
    a.s.width = edge + back;
    std::int32_t left = 0, right = 0;
    for (const sg_pin_kind& pin : a.kind.pins)
        draw_box_pin(a, pin, -sg_pitch * (pin.is_right ? right++ : left++), edge);
    const std::int32_t bottom = -sg_pitch * (std::max({left, right, 1}) - 1) - 8000;
    path(a, {{back, top}, {edge, top}, {edge, bottom}, {back, bottom}, {back, top}});
    draw_head(a, edge, top);
    a.s.above = top + inst_room;
    a.s.below = -bottom + 2000;
    a.s.inst = {{back, top + gap}, sg_text, true};
    const sg_point at{back + (inner - sg_text_width(shown.size(), sg_pin_text)) / 2, 5000};
    a.s.model = {at, sg_pin_text, a.kind.type.empty()};
    a.s.type = {at, sg_pin_text, true};
}

// ---- joints

// The parts stand at one side, row under row, the word at the other, amid them; what lies between is drawn as
// wires.
void draw_joint(artist& a) {
    const auto parts = static_cast<std::int32_t>(a.kind.pins.size()) - 1;
    const std::int32_t text = 7000,
                       names = sg_text_width(longest_name(a.kind, a.kind.pins[0].is_right), text);
    a.s.width = up_to_pitch(names + 4000);
    for (std::int32_t i = 0; i <= parts; ++i) {
        const bool is_right = a.kind.pins[static_cast<std::size_t>(i)].is_right;
        const std::int32_t y = -sg_pitch * (i < parts ? i : (parts - 1) / 2);
        a.s.pin_at.push_back({is_right ? a.s.width : 0, y});
        a.s.pin_name.push_back({{2000, y + gap}, text, i < parts});
    }
    a.s.above = sg_pitch;
    a.s.below = sg_pitch * (parts - 1) + 5000;
}

}  // namespace

void sg_draw_symbol(const sg_symbol_kind& kind, sg_symbol& symbol) {
    artist a{kind, symbol};
    switch (kind.form) {
        case sg_form::multiplexer:
            return draw_multiplexer(a);
        case sg_form::tristate:
            return draw_tristate(a);
        case sg_form::box:
        case sg_form::table:
        case sg_form::memory:
            return draw_box(a);
        case sg_form::joint:
            return draw_joint(a);
        default:
            return draw_gate(a);
    }
}

std::string sg_key(const sg_symbol_kind& kind) {
    std::string key = std::to_string(static_cast<int>(kind.form)) + (kind.is_inverted ? "!" : ":") +
                      kind.model + "/" + kind.type + "/" + kind.module;
    for (const sg_pin_kind& pin : kind.pins) {
        (key += '|') += pin.name;
        for (const bool flag : {pin.is_right, pin.is_bus, pin.is_clock, pin.is_low, pin.is_control})
            key += flag ? '1' : '0';
    }
    return key;
}

// From the entries of a cell to the times of its pins.
#include <algorithm>
#include <cmath>

#include "expand/sdf_annotate.h"

namespace {

constexpr std::size_t rise = 0, fall = 1;

// ---- entries

void take_larger(xp_sdf_value& into, const xp_sdf_value& value, xp_sdf_counts& counts) {
    if (!value.is_given) return;
    if (into.is_given && into.steps != value.steps) ++counts.merged;
    for (std::size_t k = 0; k < 3; ++k)
        into.steps[k] = into.is_given ? std::max(into.steps[k], value.steps[k]) : value.steps[k];
    into.is_given = true;
}

void add(xp_sdf_value& into, const xp_sdf_value& value) {
    if (!value.is_given) return;
    for (std::size_t k = 0; k < 3; ++k) into.steps[k] += value.steps[k];
    into.is_given = true;
}

void take_delay(xp_sdf_delay& into, const xp_sdf_entry& entry, xp_sdf_counts& counts) {
    const bool is_one_of_several = entry.is_conditional || entry.from.edge != 0;
    for (const std::size_t edge : {rise, fall})
        if (entry.is_increment)
            add(into.edges[edge], entry.values[edge]);
        else if (is_one_of_several)
            take_larger(into.edges[edge], entry.values[edge], counts);
        else if (entry.values[edge].is_given)
            into.edges[edge] = entry.values[edge];
}

std::size_t pin_of(const xp_library_cell& type, std::string_view name) {
    return static_cast<std::size_t>(std::ranges::find(type.pins, name, &xp_library_pin::name) -
                                    type.pins.begin());
}

bool take_path(const xp_sdf_entry& entry, xp_cell_timing& cell, xp_sdf_counts& counts) {
    const std::size_t count = cell.type->pins.size();
    const bool is_device = entry.kind == xp_sdf_kind::device;
    const std::size_t from = is_device ? count : pin_of(*cell.type, entry.from.name);
    const std::size_t to = pin_of(*cell.type, is_device ? entry.from.name : entry.to.name);
    if ((from == count && !is_device) || (to == count && !(is_device && entry.from.name.empty())))
        return false;
    for (std::size_t output = 0; output < count; ++output)
        for (std::size_t input = 0; input < count; ++input)
            if ((to == count || output == to) && (from == count || input == from))
                take_delay(cell.paths[output * count + input], entry, counts);
    return true;
}

bool reads(const xp_function& f, std::size_t pin) {
    return std::ranges::count(f.inputs, static_cast<std::int32_t>(pin)) > 0;
}

bool is_control(const xp_library_cell& type, std::size_t pin) {
    return std::ranges::any_of(type.registers, [&](const auto& r) { return reads(r.control, pin); });
}

bool is_data(const xp_library_cell& type, std::size_t pin) {
    return std::ranges::any_of(type.registers, [&](const auto& r) { return reads(r.data, pin); });
}

bool is_set_or_reset(const xp_library_cell& type, std::size_t pin) {
    return std::ranges::any_of(type.registers,
                               [&](const auto& r) { return reads(r.clear, pin) || reads(r.preset, pin); });
}

// The limits that a window of two sides has, and what a kind of entry gives of them.
struct window_row {
    xp_sdf_kind kind;
    xp_sdf_value xp_pin_limits::*first;  // of the first value
    xp_sdf_value xp_pin_limits::*second;
};
constexpr window_row window_rows[] = {
    {xp_sdf_kind::setup, &xp_pin_limits::setup, nullptr},
    {xp_sdf_kind::hold, &xp_pin_limits::hold, nullptr},
    {xp_sdf_kind::setup_hold, &xp_pin_limits::setup, &xp_pin_limits::hold},
    {xp_sdf_kind::recovery, &xp_pin_limits::recovery, nullptr},
    {xp_sdf_kind::removal, &xp_pin_limits::removal, nullptr},
    {xp_sdf_kind::recovery_removal, &xp_pin_limits::recovery, &xp_pin_limits::removal},
};

bool take_window(const xp_sdf_entry& entry, xp_cell_timing& cell, xp_sdf_counts& counts) {
    const std::size_t pin = pin_of(*cell.type, entry.from.name), clock = pin_of(*cell.type, entry.to.name);
    const auto* row = std::ranges::find(window_rows, entry.kind, &window_row::kind);
    const bool is_of_data = row->first == &xp_pin_limits::setup || row->first == &xp_pin_limits::hold;
    if (!(is_of_data ? is_data(*cell.type, pin) : is_set_or_reset(*cell.type, pin)) ||
        !is_control(*cell.type, clock))
        return false;
    take_larger(cell.limits[pin].*row->first, entry.values[0], counts);
    if (row->second != nullptr) take_larger(cell.limits[pin].*row->second, entry.values[1], counts);
    return true;
}

bool take_period(const xp_sdf_entry& entry, xp_cell_timing& cell, xp_sdf_counts& counts) {
    const std::size_t pin = pin_of(*cell.type, entry.from.name);
    if (!is_control(*cell.type, pin)) return false;
    take_larger(cell.limits[pin].period, entry.values[0], counts);
    return true;
}

bool take_width(const xp_sdf_entry& entry, xp_cell_timing& cell, xp_sdf_counts& counts) {
    const std::size_t pin = pin_of(*cell.type, entry.from.name);
    if (!is_control(*cell.type, pin) && !is_set_or_reset(*cell.type, pin)) return false;
    if (entry.from.edge != 'F') take_larger(cell.limits[pin].high, entry.values[0], counts);
    if (entry.from.edge != 'R') take_larger(cell.limits[pin].low, entry.values[0], counts);
    return true;
}

// ---- pins

// What of a cell's pin reaches a pin of a gate.
struct way {
    std::size_t pin = 0;
    int sense = 1;
    std::int32_t depth = 0;
};

void find_ways(const xp_plan_part& part, const xp_plan_pin& pin, int sense, std::int32_t depth,
               std::vector<way>& ways) {
    if (pin.source.kind == xp_plan_source::kind::port)
        ways.push_back({static_cast<std::size_t>(pin.source.index), sense, depth});
    if (pin.source.kind != xp_plan_source::kind::gate) return;
    for (const xp_plan_pin& inner : part.gates[static_cast<std::size_t>(pin.source.index)].pins)
        find_ways(part, inner, sense * inner.sense, depth + 1, ways);
}

// The wire in front of a pin, for an edge of what stands behind it.
double wire(const xp_cell_timing& cell, const way& w, std::size_t edge, std::size_t k) {
    const xp_sdf_delay& delay = cell.wires[w.pin];
    if (w.sense == 0) return std::max(delay.edges[rise].steps[k], delay.edges[fall].steps[k]);
    return delay.edges[w.sense > 0 ? edge : 1 - edge].steps[k];
}

std::int32_t rounded(double steps) {
    return static_cast<std::int32_t>(
        std::clamp(std::floor(steps + 0.5), -double{xp_delay_max}, double{xp_delay_max}));
}

struct part_timer {
    const xp_cell_timing& cell;
    const xp_plan_part& part;
    xp_sdf_counts& counts;

    bool is_register() const { return xp_is_register(part.gates.back().model); }

    double path(const way& w, std::size_t edge, std::size_t k) const {
        if (part.pin < 0) return 0;
        const xp_sdf_delay& delay =
            cell.paths[static_cast<std::size_t>(part.pin) * cell.type->pins.size() + w.pin];
        const xp_sdf_value& own = delay.edges[edge];
        return own.is_given ? own.steps[k] : delay.edges[1 - edge].steps[k];
    }

    // The edge at a control by which it acts on the output.
    static std::size_t active_edge(const xp_plan_pin& pin) { return pin.name.ends_with('N') ? fall : rise; }

    void set_delays(const xp_plan_pin& pin, const std::vector<way>& ways, xp_pin_timing& timing) const {
        const bool is_edge =
            (is_register() && pin.name != "D") || (pin.name.starts_with('E') && pin.name.size() == 2);
        for (const std::size_t edge : {rise, fall})
            for (std::size_t k = 0; k < 3; ++k) {
                std::int32_t most = 1;
                for (const way& w : ways)
                    most = std::max(most, rounded(path(w, edge, k) +
                                                  wire(cell, w, is_edge ? active_edge(pin) : edge, k)) -
                                              w.depth);
                (edge == rise ? timing.rise : timing.fall)[k] = most;
            }
    }

    // The two sides of a window around the clock's edge, before and behind it.  Wires in front of the clock
    // move it back, those in front of the pin move it forward.
    struct window {
        xp_sdf_value xp_pin_limits::*before_limit;
        xp_sdf_value xp_pin_limits::*behind_limit;
        xp_delay xp_pin_timing::*before;
        xp_delay xp_pin_timing::*behind;
    };
    static constexpr window of_data = {&xp_pin_limits::setup, &xp_pin_limits::hold, &xp_pin_timing::setup,
                                       &xp_pin_timing::hold};
    static constexpr window of_release = {&xp_pin_limits::recovery, &xp_pin_limits::removal,
                                          &xp_pin_timing::recovery, &xp_pin_timing::removal};

    void set_window(const window& sides, const std::vector<way>& ways, const std::vector<way>& clocks,
                    xp_pin_timing& timing) const {
        for (std::size_t k = 0; k < 3; ++k) {
            const double clock = clocks.empty() ? 0 : wire(cell, clocks[0], rise, k);
            double before = 0, behind = 0;
            for (const way& w : ways) {
                const way any_edge{w.pin, 0, w.depth};
                const double pin = wire(cell, any_edge, rise, k) - clock - w.depth;
                const xp_sdf_value& first = cell.limits[w.pin].*sides.before_limit;
                const xp_sdf_value& second = cell.limits[w.pin].*sides.behind_limit;
                if (first.is_given) before = std::max(before, first.steps[k] + pin);
                if (second.is_given) behind = std::max(behind, second.steps[k] - pin);
            }
            (timing.*sides.before)[k] = std::max(rounded(before), 0);
            (timing.*sides.behind)[k] = std::max(rounded(behind), 0);
        }
    }

    // A flip-flop measures its clock's other pulse by a limit of its own; a latch measures both alike.
    void set_widths(const xp_plan_pin& pin, const std::vector<way>& ways, xp_pin_timing& timing) const {
        const bool is_low = pin.name.ends_with('N'), is_clock = pin.name.starts_with("CLK"),
                   is_enable = pin.name.starts_with('E');
        const auto take = [](const xp_sdf_value& width, xp_delay& limit) {
            for (std::size_t k = 0; width.is_given && k < 3; ++k)
                limit[k] = std::max(rounded(width.steps[k]), limit[k]);
        };
        for (const way& w : ways) {
            const xp_pin_limits& limits = cell.limits[w.pin];
            const bool acts_low = is_low != (w.sense < 0);
            const xp_sdf_value &acting = acts_low ? limits.low : limits.high,
                               &other = acts_low ? limits.high : limits.low;
            take(acting, is_low ? timing.min_low : timing.min_high);
            if (is_enable) take(other, is_low ? timing.min_high : timing.min_low);
            if (is_clock) take(other, timing.idle);
            if (is_clock || is_enable) take(limits.period, timing.period);
        }
    }

    // The ways to set or reset from pins that are its own, not from those of the other in front of it.
    std::vector<way> own_ways(const xp_plan_pin& pin, const std::vector<way>& ways) const {
        std::vector<way> own;
        for (const way& w : ways)
            if (std::ranges::any_of(cell.type->registers, [&](const xp_library_register& r) {
                    return reads(pin.name.starts_with('R') ? r.clear : r.preset, w.pin);
                }))
                own.push_back(w);
        return own;
    }
};

}  // namespace

bool xp_take_entry(const xp_sdf_entry& entry, xp_cell_timing& cell, xp_sdf_counts& counts) {
    switch (entry.kind) {
        case xp_sdf_kind::iopath:
        case xp_sdf_kind::device:
            return take_path(entry, cell, counts);
        case xp_sdf_kind::setup:
        case xp_sdf_kind::hold:
        case xp_sdf_kind::setup_hold:
        case xp_sdf_kind::recovery:
        case xp_sdf_kind::removal:
        case xp_sdf_kind::recovery_removal:
            return take_window(entry, cell, counts);
        case xp_sdf_kind::width:
            return take_width(entry, cell, counts);
        case xp_sdf_kind::period:
            return take_period(entry, cell, counts);
        default:
            return false;
    }
}

void xp_time_part(const xp_cell_timing& cell, const xp_plan_part& part, xp_sdf_counts& counts,
                  std::vector<xp_pin_timing>& pins) {
    const part_timer timer{cell, part, counts};
    const xp_plan_gate& last = part.gates.back();
    std::vector<std::vector<way>> ways(last.pins.size());
    std::size_t clock = last.pins.size();
    for (std::size_t i = 0; i < last.pins.size(); ++i) {
        find_ways(part, last.pins[i], last.pins[i].sense, 0, ways[i]);
        if (timer.is_register() && last.pins[i].name.starts_with(last.model->clock)) clock = i;
    }
    for (std::size_t i = 0; i < last.pins.size(); ++i) {
        xp_pin_timing& timing = pins.emplace_back();
        timer.set_delays(last.pins[i], ways[i], timing);
        if (!timer.is_register() || !part.is_checked) continue;
        const std::vector<way> clocks = clock < ways.size() ? ways[clock] : std::vector<way>{};
        if (last.pins[i].name == "D") {
            timer.set_window(part_timer::of_data, ways[i], clocks, timing);
            continue;
        }
        timer.set_widths(last.pins[i], ways[i], timing);
        if (i != clock)
            timer.set_window(part_timer::of_release, timer.own_ways(last.pins[i], ways[i]), clocks, timing);
    }
    pins.emplace_back();
}

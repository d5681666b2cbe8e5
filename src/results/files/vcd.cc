// Header and value lines.
#include "results/files/vcd.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "kernel/bus_bits.h"

namespace {

constexpr std::string_view top_scope = "top";

// ---- the scale of time

constexpr int finest = -15;  // power of ten of a second: a femtosecond

std::string unit_text(int power) {
    constexpr std::array<std::string_view, 6> units = {"fs", "ps", "ns", "us", "ms", "s"};
    const int above = power - finest;
    const auto unit = std::min(static_cast<std::size_t>(above / 3), units.size() - 1);
    std::string text = "1";
    text.append(static_cast<std::size_t>(above) - unit * 3, '0');
    return text.append(units[unit]);
}

// ---- scopes

std::vector<std::string_view> scopes_of(std::string_view path) {
    std::vector<std::string_view> scopes;
    for (path.remove_prefix(path.starts_with('/') ? 1 : 0);;) {
        const std::size_t slash = path.find('/');
        if (slash == path.npos) return scopes;
        scopes.push_back(path.substr(0, slash));
        path.remove_prefix(slash + 1);
    }
}

std::string_view name_of(std::string_view path) { return path.substr(path.rfind('/') + 1); }

struct placed_t {
    std::vector<std::string_view> scopes;
    const rs_vcd_variable_t* variable;
};

// Leaves and enters scopes until those of the next variable are open.
void change_scope(const std::vector<std::string_view>& from, const std::vector<std::string_view>& to,
                  std::string& text) {
    const auto [left, entered] = std::ranges::mismatch(from, to);
    for (auto scope = left; scope != from.end(); ++scope) text += "$upscope $end\n";
    for (auto scope = entered; scope != to.end(); ++scope)
        text.append("$scope module ").append(*scope).append(" $end\n");
}

// ---- strengths

// By drive: U, Z, R, W, S.
constexpr std::string_view strength_digits = "00536";
// By value: i, 0, x, 1.
constexpr std::string_view port_letters = "?LXH";

struct port_value_t {
    char letter, zero, one;
};

port_value_t port_value_of(std::int8_t state) {
    std::int16_t value = 0, drive = 0;
    kol_state_to_valdrive(state, value, drive);
    const char strength = strength_digits[static_cast<std::size_t>(drive)];
    if (drive == 1) return {'T', '0', '0'};
    return {port_letters[static_cast<std::size_t>(value)], value == kol_v1 ? '0' : strength,
            value == kol_v0 ? '0' : strength};
}

void add_port_value(const std::vector<std::int8_t>& states, std::string_view code, std::string& text) {
    std::string zeros, ones;
    text += 'p';
    for (const std::int8_t state : states) {
        const port_value_t value = port_value_of(state);
        text += value.letter;
        zeros += value.zero;
        ones += value.one;
    }
    text.append(" ").append(zeros).append(" ").append(ones).append(" ").append(code) += '\n';
}

}  // namespace

double rs_nanoseconds_of(float time_step) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", static_cast<double>(time_step));
    return std::strtod(text, nullptr);
}

rs_vcd_scale_t rs_vcd_scale_of(float time_step) {
    constexpr int digits = 6, nanosecond = -9, coarsest = 2;
    if (!(time_step > 0)) return {"1ns", 1};
    int power = static_cast<int>(std::floor(std::log10(time_step))) - digits;
    auto factor = std::llround(static_cast<double>(time_step) * std::pow(10.0, -power));
    for (; factor % 10 == 0 && power + nanosecond < coarsest; ++power) factor /= 10;
    for (; power + nanosecond > coarsest; --power) factor *= 10;
    for (; power + nanosecond < finest; ++power) factor = (factor + 5) / 10;
    return {unit_text(power + nanosecond), std::max<std::int64_t>(factor, 1)};
}

std::string rs_vcd_code(std::uint32_t code) {
    constexpr std::uint32_t first = '!', count = '~' - '!' + 1;
    std::string text;
    for (++code; code > 0; code /= count) {
        --code;
        text += static_cast<char>(first + code % count);
    }
    return text;
}

std::string rs_vcd_header(std::vector<rs_vcd_variable_t> variables, const rs_vcd_scale_t& scale,
                          bool has_strengths) {
    std::string text = "$version kolv $end\n$timescale " + scale.unit + " $end\n$scope module ";
    text.append(top_scope).append(" $end\n");
    std::vector<placed_t> placed;
    for (const rs_vcd_variable_t& variable : variables)
        placed.push_back({scopes_of(variable.path), &variable});
    std::ranges::stable_sort(placed, {}, &placed_t::scopes);
    std::vector<std::string_view> open;
    for (const placed_t& place : placed) {
        const rs_vcd_variable_t& variable = *place.variable;
        change_scope(open, place.scopes, text);
        open = place.scopes;
        text.append(has_strengths ? "$var port " : "$var wire ").append(std::to_string(variable.width));
        text.append(" ").append(rs_vcd_code(variable.code)).append(" ").append(name_of(variable.path));
        text.append(variable.range.empty() ? "" : " ").append(variable.range).append(" $end\n");
    }
    change_scope(open, {}, text);
    return text += "$upscope $end\n$enddefinitions $end\n";
}

void rs_vcd_add_value(const std::vector<std::int8_t>& states, std::string_view code, bool has_strengths,
                      std::string& text) {
    if (has_strengths) return add_port_value(states, code, text);
    if (states.size() > 1) text += 'b';
    for (const std::int8_t state : states) text += kol_bit_of_state(state);
    if (states.size() > 1) text += ' ';
    text.append(code) += '\n';
}

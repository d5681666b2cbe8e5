// The delay rules of cell types and the delays of single cells, read from their files.
#include "expand/delays.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <vector>

#include "expand/cell_table.h"
#include "expand/netlist_json.h"
#include "expand/timed_cells.h"

namespace {

using nlohmann::json;

constexpr double factor_max = 1000;

std::int32_t nearest_step(double delay) {
    return static_cast<std::int32_t>(std::clamp(std::floor(delay + 0.5 + 1e-9), 1.0, double{xp_delay_max}));
}

xp_delay spread(const xp_timing& timing, std::int32_t typical) {
    return {nearest_step(timing.minimum * typical), typical, nearest_step(timing.maximum * typical)};
}

// ---- timing file

struct timing_reader {
    const std::string& path;
    xp_status& status;
};

void refuse(timing_reader& r, const std::string& place, std::string_view what) {
    xp_fail(r.status, xp_fault::bad_timing, r.path + (place.empty() ? "" : ": ") + place, what);
}

template <typename Owner>
struct number_row {
    std::string_view key;
    double Owner::*value;
};

constexpr number_row<xp_rule> rule_rows[] = {
    {"base", &xp_rule::base},
    {"per_input", &xp_rule::per_input},
    {"per_load", &xp_rule::per_load},
    {"load_cap", &xp_rule::load_cap},
};
constexpr number_row<xp_timing> factor_rows[] = {
    {"minimum", &xp_timing::minimum},
    {"maximum", &xp_timing::maximum},
};

struct edge_row {
    std::string_view key;
    xp_rule xp_cell_rule::*rule;
};
constexpr edge_row edge_rows[] = {{"rise", &xp_cell_rule::rise}, {"fall", &xp_cell_rule::fall}};

template <typename Owner, std::size_t Count>
void read_numbers(timing_reader& r, const json& object, const std::string& place,
                  const number_row<Owner> (&rows)[Count], double most, Owner& owner) {
    if (!object.is_object()) return refuse(r, place, "expected an object");
    for (const auto& [key, value] : object.items()) {
        const auto row =
            std::find_if(std::begin(rows), std::end(rows), [&](const auto& x) { return x.key == key; });
        if (row == std::end(rows)) return refuse(r, place, "unknown key " + xp_quoted(key));
        const double number = value.is_number() ? value.template get<double>() : -1;
        if (!(number >= 0 && number <= most))
            return refuse(r, place + "/" + key, "expected a number from 0 on");
        owner.*row->value = number;
    }
}

struct limit_row {
    std::string_view key;
    xp_delay xp_limits::*limit;
};
constexpr limit_row limit_rows[] = {
    {"setup", &xp_limits::setup},
    {"hold", &xp_limits::hold},
    {"min_high", &xp_limits::min_high},
    {"min_low", &xp_limits::min_low},
};

bool is_limit(const json& value) {
    return value.is_number_unsigned() && value.get<std::uint64_t>() <= std::uint64_t{xp_delay_max};
}

// A whole number of steps for all three, or an array of minimum, typical and maximum.
void read_limit(timing_reader& r, const json& value, const std::string& place, xp_delay& limit) {
    const bool is_triple =
        value.is_array() && value.size() == 3 && std::all_of(value.begin(), value.end(), is_limit);
    if (!is_triple && !is_limit(value))
        return refuse(r, place, "expected a whole number of steps from 0 on, or three");
    for (std::size_t i = 0; i < 3; ++i) limit[i] = (is_triple ? value[i] : value).get<std::int32_t>();
}

void read_cell_rule(timing_reader& r, const json& object, const std::string& place, bool has_limits,
                    xp_cell_rule& rule) {
    if (!object.is_object()) return refuse(r, place, "expected an object");
    for (const auto& [key, value] : object.items()) {
        const auto has_key = [&](const auto& x) { return x.key == key; };
        const auto edge = std::find_if(std::begin(edge_rows), std::end(edge_rows), has_key);
        const auto limit = std::find_if(std::begin(limit_rows), std::end(limit_rows), has_key);
        if (edge != std::end(edge_rows))
            read_numbers(r, value, place + "/" + key, rule_rows, xp_delay_max, rule.*edge->rule);
        else if (has_limits && limit != std::end(limit_rows))
            read_limit(r, value, place + "/" + key, rule.limits.*limit->limit);
        else
            return refuse(r, place, "unknown key " + xp_quoted(key));
    }
}

void read_cell_rules(timing_reader& r, const json& object, xp_timing& timing) {
    if (!object.is_object()) return refuse(r, "cells", "expected an object");
    for (const auto& [type, value] : object.items()) {
        const xp_library_cell* cell = xp_find_library_cell(timing.library, type);
        if (xp_find_cell_type(type) == nullptr && !xp_is_timed(type) && cell == nullptr)
            return refuse(r, "cells", "unknown cell type " + xp_quoted(type));
        xp_cell_rule& rule = timing.by_type[type] = timing.general;
        const bool has_limits =
            xp_is_timed(type) || type == "$mem_v2" || (cell != nullptr && !cell->registers.empty());
        read_cell_rule(r, value, "cells/" + type, has_limits, rule);
    }
}

// ---- delay file

bool read_step(std::string_view text, std::int32_t& step) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), step);
    return error == std::errc{} && end == text.data() + text.size() && step >= 1 && step <= xp_delay_max;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(separator, at), text.size());
        parts.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

// A typical delay, or minimum:typical:maximum in rising order.
bool read_delay(const xp_timing& timing, std::string_view text, xp_delay& delay) {
    const std::vector<std::string_view> parts = split(text, ':');
    if (parts.size() == 1) {
        std::int32_t typical = 0;
        if (!read_step(parts[0], typical)) return false;
        delay = spread(timing, typical);
        return true;
    }
    if (parts.size() != 3) return false;
    for (std::size_t i = 0; i < 3; ++i)
        if (!read_step(parts[i], delay[i])) return false;
    return std::is_sorted(delay.begin(), delay.end());
}

void read_delay_line(const std::string& where, std::string_view line, std::int32_t number, xp_timing& timing,
                     xp_status& status) {
    const std::vector<std::string_view> columns = split(line, '\t');
    if (columns.size() != 3 || columns[0].empty())
        return xp_fail(status, xp_fault::bad_delay, where, "expected cell, rise and fall between tabs");
    xp_timing::single single{{}, number, false};
    if (!read_delay(timing, columns[1], single.delays.rise) ||
        !read_delay(timing, columns[2], single.delays.fall))
        return xp_fail(status, xp_fault::bad_delay, where,
                       "a delay is a whole number of steps from 1 on, or minimum:typical:maximum");
    const std::string_view cell = columns[0].substr(columns[0][0] == '/' ? 1 : 0);
    if (!timing.by_cell.emplace(cell, single).second)
        xp_fail(status, xp_fault::bad_delay, where, "cell " + xp_quoted(cell) + " again");
}

}  // namespace

void xp_read_timing(const std::string& path, xp_timing& timing, xp_status& status) {
    std::string text;
    xp_read_file(path, text, status);
    xp_parse_timing(path, text, timing, status);
}

void xp_parse_timing(const std::string& path, std::string_view text, xp_timing& timing, xp_status& status) {
    if (!xp_ok(status)) return;
    timing_reader r{path, status};
    const json root = json::parse(text.begin(), text.end(), nullptr, false);
    if (root.is_discarded()) return xp_fail(status, xp_fault::bad_json, path);
    if (!root.is_object()) return xp_fail(status, xp_fault::bad_timing, path, "expected an object");
    for (const auto& [key, value] : root.items())
        if (key != "factors" && key != "default" && key != "cells")
            return refuse(r, "", "unknown key " + xp_quoted(key));
    if (root.contains("factors"))
        read_numbers(r, root["factors"], "factors", factor_rows, factor_max, timing);
    if (root.contains("default")) read_cell_rule(r, root["default"], "default", true, timing.general);
    if (root.contains("cells")) read_cell_rules(r, root["cells"], timing);
    if (timing.minimum > 1 || timing.maximum < 1)
        refuse(r, "factors", "minimum is at most 1 and maximum at least 1");
}

void xp_read_delays(const std::string& path, xp_timing& timing, xp_status& status) {
    std::string text;
    xp_read_file(path, text, status);
    xp_parse_delays(path, text, timing, status);
}

void xp_parse_delays(const std::string& path, std::string_view text, xp_timing& timing, xp_status& status) {
    std::int32_t number = 0;
    for (std::string_view line : split(text, '\n')) {
        ++number;
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.empty() || !xp_ok(status)) continue;
        read_delay_line(path + ": line " + std::to_string(number), line, number, timing, status);
    }
}

const xp_cell_rule& xp_rule_of(const xp_timing& timing, std::string_view type) {
    const auto found = timing.by_type.find(type);
    return found == timing.by_type.end() ? timing.general : found->second;
}

xp_delays xp_delays_of(const xp_timing& timing, const xp_cell_rule& rule, std::int32_t inputs,
                       std::int32_t loads) {
    const auto typical = [&](const xp_rule& edge) {
        return nearest_step(edge.base + edge.per_input * inputs +
                            edge.per_load * std::min<double>(loads, edge.load_cap));
    };
    return {spread(timing, typical(rule.rise)), spread(timing, typical(rule.fall)), nullptr};
}

xp_delays xp_last_gate_delays(const xp_delays& cell, std::int32_t depth) {
    xp_delays last = cell;
    for (xp_delay* delay : {&last.rise, &last.fall})
        for (std::int32_t& step : *delay) step = std::max(1, step - depth);
    return last;
}

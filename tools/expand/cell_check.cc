// The walk over the modules, and the table of next steps.
#include "expand/cell_check.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <vector>

#include "expand/cell_table.h"
#include "expand/timed_cells.h"

namespace {

struct next_step {
    std::string_view types;  // the type, or with a "*" its beginning
    std::string_view text;
};

constexpr std::string_view is_formal = "a cell of formal proofs: give the design without it";

// The first row that fits.
// clang-format off
constexpr next_step next_steps[] = {
    {"$memrd*",     "run memory_collect behind proc"},
    {"$memwr*",     "run memory_collect behind proc"},
    {"$meminit*",   "run memory_collect behind proc"},
    {"$mem*",       "run memory_unpack, then memory_collect"},
    {"$fsm",        "run fsm_map, or synth, which does"},
    {"$ff",         "it has no clock: leave clk2fflogic and async2sync away"},
    {"$_FF_",       "it has no clock: leave clk2fflogic and async2sync away"},
    {"$any*",       is_formal},
    {"$all*",       is_formal},
    {"$initstate",  is_formal},
    {"$equiv",      is_formal},
    {"$specify*",   "leave -specify of read_verilog away"},
    {"$specrule",   "leave -specify of read_verilog away"},
    {"$paramod*",   "its module is not in the netlist: write_json without -selected"},
    {"$array:*",    "run hierarchy, or synth, which does"},
    {"$_*",         "no gate that is known: map it with techmap"},
    {"$*",          "run techmap or synth"},
    {"*",           "it has no contents: read its Verilog before synth, or give its library with --liberty"},
};
// clang-format on

constexpr bool fits(std::string_view row, std::string_view type) {
    return row.ends_with('*') ? type.starts_with(row.substr(0, row.size() - 1)) : row == type;
}

std::string_view next_step_of(std::string_view type) {
    return std::find_if(std::begin(next_steps), std::end(next_steps),
                        [&](const next_step& row) { return fits(row.types, type); })
        ->text;
}

struct cell_group {
    std::size_t count = 0;
    std::string first;  // path of the first one
};
using cell_groups = std::map<std::string_view, cell_group>;  // by type

struct census {
    const xp_netlist& netlist;
    const xp_library* library;
    std::unordered_map<std::string_view, std::uint32_t> modules;
    std::vector<std::pair<std::uint32_t, std::string>> reached;  // with the path of the first instance
    std::vector<bool> is_reached;
    cell_groups unknown, left_out;
};

void reach(census& c, std::uint32_t module, const std::string& path) {
    if (c.is_reached[module]) return;
    c.is_reached[module] = true;
    c.reached.emplace_back(module, path);
}

cell_groups groups_of(const xp_module& module, const std::string& path) {
    std::unordered_map<std::string_view, cell_group> groups;
    for (const xp_cell& cell : module.cells)
        if (cell_group& group = groups[cell.type]; group.count++ == 0)
            group.first = path + std::string(cell.name);
    return {groups.begin(), groups.end()};
}

void add(cell_groups& groups, std::string_view type, const cell_group& group) {
    cell_group& all = groups[type];
    if (all.count == 0) all.first = group.first;
    all.count += group.count;
}

void judge(census& c, std::string_view type, const cell_group& group) {
    if (const xp_cell_type* row = xp_find_cell_type(type); row != nullptr) {
        if (row->shape == xp_shape::ignored && type != "$scopeinfo") add(c.left_out, type, group);
        return;
    }
    if (xp_is_timed(type)) return;
    if (const xp_library_cell* cell = xp_find_library_cell(c.library, type); cell != nullptr) {
        if (!cell->fault.empty()) add(c.unknown, type, group);
        return;
    }
    const auto module = c.modules.find(type);
    if (module == c.modules.end() || c.netlist.modules[module->second].black_box)
        return add(c.unknown, type, group);
    reach(c, module->second, group.first + "/");
}

void take_census(census& c, std::uint32_t top) {
    for (std::uint32_t i = 0; i < c.netlist.modules.size(); ++i)
        c.modules.emplace(c.netlist.modules[i].name, i);
    c.is_reached.resize(c.netlist.modules.size());
    reach(c, top, "/");
    for (std::size_t i = 0; i < c.reached.size(); ++i) {
        const auto [module, path] = c.reached[i];
        for (const auto& [type, group] : groups_of(c.netlist.modules[module], path)) judge(c, type, group);
    }
}

std::string count_text(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " cell" : " cells");
}

std::string what_to_do(const census& c, std::string_view type) {
    const xp_library_cell* cell = xp_find_library_cell(c.library, type);
    return cell != nullptr ? cell->fault : std::string(next_step_of(type));
}

void refuse_unknown(const census& c, xp_status& status) {
    if (c.unknown.empty()) return;
    std::string text;
    for (const auto& [type, group] : c.unknown)
        text += "\n  " + std::string(type) + ": " + count_text(group.count) +
                (group.count == 1 ? ", " : ", the first ") + group.first + ": " + what_to_do(c, type);
    xp_fail(status, xp_fault::unknown_cell, "", text);
}

void note_left_out(const census& c, xp_status& status) {
    if (c.left_out.empty()) return;
    std::string text;
    for (const auto& [type, group] : c.left_out)
        text += (text.empty() ? "" : ", ") + std::to_string(group.count) + " " + std::string(type);
    xp_note(status, "left out, since they check or print only: " + text);
}

}  // namespace

void xp_check_cells(const xp_netlist& netlist, std::uint32_t top, const xp_library* library,
                    xp_status& status) {
    if (!xp_ok(status)) return;
    census c{netlist, library, {}, {}, {}, {}, {}};
    take_census(c, top);
    refuse_unknown(c, status);
    note_left_out(c, status);
}

// The top module, and the bodies of all that it reaches.
#include "expand/hierarchy.h"

#include <algorithm>
#include <unordered_map>

#include "expand/cell_check.h"
#include "expand/naming.h"

namespace {

using module_index = std::unordered_map<std::string_view, std::uint32_t>;

module_index index_of(const xp_netlist& netlist) {
    module_index index;
    for (std::size_t i = 0; i < netlist.modules.size(); ++i)
        index.emplace(netlist.modules[i].name, static_cast<std::uint32_t>(i));
    return index;
}

std::string names_of(const xp_netlist& netlist, const std::vector<std::uint32_t>& modules) {
    std::string text;
    for (const std::uint32_t module : modules)
        text += (text.empty() ? "" : ", ") + xp_quoted(netlist.modules[module].name);
    return text;
}

// Modules with contents that no module instantiates.
std::vector<std::uint32_t> uncontained(const xp_netlist& netlist) {
    const module_index index = index_of(netlist);
    std::vector<bool> is_contained(netlist.modules.size());
    for (const xp_module& module : netlist.modules)
        for (const xp_cell& cell : module.cells)
            if (const auto found = index.find(cell.type); found != index.end())
                is_contained[found->second] = true;
    std::vector<std::uint32_t> free;
    for (std::uint32_t i = 0; i < netlist.modules.size(); ++i)
        if (!is_contained[i] && !netlist.modules[i].black_box) free.push_back(i);
    return free;
}

std::vector<std::uint32_t> marked(const xp_netlist& netlist) {
    std::vector<std::uint32_t> tops;
    for (std::uint32_t i = 0; i < netlist.modules.size(); ++i)
        if (netlist.modules[i].top) tops.push_back(i);
    return tops;
}

struct walk {
    xp_netlist& netlist;
    xp_hierarchy& hierarchy;
    xp_status& status;
    module_index index;
    std::vector<bool> is_open;  // modules on the way down
};

void map_module(walk& w, std::uint32_t module, const std::string& path, std::size_t depth);

void map_instance(walk& w, xp_mapping& m, std::uint32_t cell, std::uint32_t contents, std::size_t depth) {
    const std::string where = m.path + std::string(m.module.cells[cell].name);
    if (w.is_open[contents])
        return xp_fail(w.status, xp_fault::recursive_module, where,
                       "module " + xp_quoted(w.netlist.modules[contents].name) + " contains itself");
    map_module(w, contents, where + "/", depth + 1);
    if (xp_ok(w.status))
        xp_bind_child(m, cell, contents, w.hierarchy.bodies[contents], w.netlist.modules[contents]);
}

void map_one_cell(walk& w, xp_mapping& m, std::uint32_t cell, std::size_t depth) {
    const xp_cell& c = m.module.cells[cell];
    if (const xp_cell_type* type = xp_find_cell_type(c.type); type != nullptr)
        return type->shape == xp_shape::memory ? xp_map_memory(m, cell) : xp_map_cell(m, cell, *type);
    if (xp_timed_form form; xp_find_timed(c.type, form) != nullptr) return xp_map_timed(m, cell, form);
    if (const xp_library_cell* type = xp_find_library_cell(w.hierarchy.library, c.type); type != nullptr)
        return xp_map_library_cell(m, cell, *type);
    map_instance(w, m, cell, w.index.at(c.type), depth);
}

void map_module(walk& w, std::uint32_t module, const std::string& path, std::size_t depth) {
    xp_body& body = w.hierarchy.bodies[module];
    if (body.is_made) return;
    if (depth > xp_depth_max)
        return xp_fail(w.status, xp_fault::too_deep, path,
                       "at most " + std::to_string(xp_depth_max) + " levels");
    w.is_open[module] = true;
    xp_mapping m{w.netlist, w.netlist.modules[module], body, path, w.status, {}};
    xp_name_module(m);
    for (std::uint32_t cell = 0; cell < m.module.cells.size() && xp_ok(w.status); ++cell)
        map_one_cell(w, m, cell, depth);
    if (xp_ok(w.status)) xp_name_remaining_nets(m);
    w.is_open[module] = false;
    body.is_made = true;
}

}  // namespace

void xp_choose_top(const xp_netlist& netlist, const std::string& wanted, xp_hierarchy& hierarchy,
                   xp_status& status) {
    if (!xp_ok(status)) return;
    if (!wanted.empty()) {
        const module_index index = index_of(netlist);
        const auto found = index.find(wanted);
        if (found == index.end())
            return xp_fail(status, xp_fault::missing_module, "--top", xp_quoted(wanted));
        hierarchy.top = found->second;
        return;
    }
    std::vector<std::uint32_t> tops = marked(netlist);
    if (tops.empty()) tops = uncontained(netlist);
    if (tops.empty()) return xp_fail(status, xp_fault::no_top, "", "every module is contained in another");
    if (tops.size() > 1)
        return xp_fail(status, xp_fault::no_top, "", "choose with --top among " + names_of(netlist, tops));
    hierarchy.top = tops[0];
}

void xp_map_modules(xp_netlist& netlist, xp_hierarchy& hierarchy, xp_status& status) {
    if (!xp_ok(status)) return;
    hierarchy.bodies.resize(netlist.modules.size());
    const xp_module& top = netlist.modules[hierarchy.top];
    if (top.black_box) return xp_fail(status, xp_fault::black_box, "/", xp_quoted(top.name));
    xp_check_cells(netlist, hierarchy.top, hierarchy.library, status);
    if (!xp_ok(status)) return;
    walk w{netlist, hierarchy, status, index_of(netlist), std::vector<bool>(netlist.modules.size())};
    map_module(w, hierarchy.top, "/", 0);
}

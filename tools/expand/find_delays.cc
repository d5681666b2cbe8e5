// The delays of every part of the design, by rule or by name.
#include "expand/design_out.h"

namespace {

struct finder {
    const xp_flat& flat;
    xp_timing& timing;
    std::unordered_map<std::string_view, const xp_cell_rule*> rules;
};

const xp_cell_rule& rule_of(finder& f, std::string_view type) {
    const auto [known, is_new] = f.rules.try_emplace(type, nullptr);
    if (is_new) known->second = &xp_rule_of(f.timing, type);
    return *known->second;
}

xp_timing::single* single_of(finder& f, const std::string& scope_path, const xp_cell& cell) {
    if (f.timing.by_cell.empty()) return nullptr;
    const auto found = f.timing.by_cell.find(scope_path.substr(1) + std::string(cell.name));
    if (found == f.timing.by_cell.end()) return nullptr;
    found->second.used = true;
    return &found->second;
}

xp_delays delays_of(finder& f, const xp_scope& scope, const std::string& scope_path, const xp_part& part) {
    const xp_body& body = xp_body_of(f.flat, scope);
    const xp_cell& cell = xp_module_of(f.flat, scope).cells[part.cell];
    const xp_cell_rule& rule = rule_of(f, cell.type);
    if (const xp_timing::single* single = single_of(f, scope_path, cell))
        return {single->delays.rise, single->delays.fall, &rule.limits};
    const xp_gate& last = body.gates[part.first_gate + part.gate_count - 1];
    const bool is_timed =
        xp_is_register(last.model) || xp_is_tristate(last.model) || xp_is_memory(last.model);
    const std::int32_t inputs = is_timed ? 1 : static_cast<std::int32_t>(part.leaf_count);
    const std::int32_t loads =
        f.flat.nets[static_cast<std::size_t>(xp_net_at(f.flat, scope, last.output))].loads;
    xp_delays delays = xp_delays_of(f.timing, rule, inputs, loads);
    delays.limits = &rule.limits;
    return delays;
}

// The delay line that stands first in its file and names no cell.
void refuse_unused(const xp_timing& timing, xp_status& status) {
    const std::pair<const std::string, xp_timing::single>* first = nullptr;
    for (const auto& entry : timing.by_cell)
        if (!entry.second.used && (first == nullptr || entry.second.line < first->second.line))
            first = &entry;
    if (first != nullptr)
        xp_fail(status, xp_fault::bad_delay, "--delays: line " + std::to_string(first->second.line),
                "no cell " + xp_quoted(first->first));
}

}  // namespace

void xp_find_delays(const xp_flat& flat, xp_timing& timing, std::vector<xp_delays>& delays,
                    xp_status& status) {
    if (!xp_ok(status)) return;
    finder f{flat, timing, {}};
    delays.reserve(flat.part_count);
    for (std::size_t scope = 0; scope < flat.scopes.size(); ++scope) {
        const std::string path = timing.by_cell.empty() ? "/" : xp_raw_scope_path(flat, scope);
        for (const xp_part& part : xp_body_of(flat, flat.scopes[scope]).parts)
            delays.push_back(delays_of(f, flat.scopes[scope], path, part));
    }
    refuse_unused(timing, status);
}

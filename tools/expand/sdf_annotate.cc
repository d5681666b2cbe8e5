// Finding the instances and pins that SDF entries name, and telling what was not found.
#include "expand/sdf_annotate.h"

#include <algorithm>
#include <unordered_map>

namespace {

constexpr std::size_t lines_told = 20, names_told = 3;

struct instance {
    std::uint32_t first_gate = 0, first_part = 0;  // of the design; of the module's body
    std::uint32_t scope = 0;
    bool is_named = false;  // the file has entries for it
    xp_cell_timing timing;
};

struct annotator {
    const xp_flat& flat;
    const xp_sdf& sdf;
    xp_status& status;
    std::vector<instance> instances;
    std::unordered_map<std::string, std::size_t> by_path;  // without its first "/"
    std::unordered_map<std::string, bool> scopes;
    std::unordered_map<std::string, std::int32_t> nets;  // by path; found on demand
    std::vector<std::vector<std::pair<std::size_t, std::size_t>>>
        readers;  // by net: instance and pin; on demand
    xp_sdf_counts counts;
    std::size_t without_place = 0;
    std::map<std::string, std::size_t, std::less<>> left_out;
};

// ---- instances

xp_cell_timing timing_of(const xp_library_cell& type) {
    const std::size_t pins = type.pins.size();
    xp_cell_timing timing;
    timing.type = &type;
    timing.paths.resize(pins * pins);
    timing.wires.resize(pins);
    timing.limits.resize(pins);
    return timing;
}

void add_scope(annotator& a, std::uint32_t number) {
    const xp_scope& scope = a.flat.scopes[number];
    const xp_body& body = xp_body_of(a.flat, scope);
    const xp_module& module = xp_module_of(a.flat, scope);
    const std::string path = xp_raw_scope_path(a.flat, number).substr(1);
    a.scopes.emplace(path.empty() ? path : path.substr(0, path.size() - 1), true);
    for (std::uint32_t part = 0; part < body.parts.size(); ++part) {
        const std::uint32_t cell = body.parts[part].cell;
        if (part > 0 && body.parts[part - 1].cell == cell) continue;
        const xp_library_cell* type =
            xp_find_library_cell(a.flat.hierarchy->library, module.cells[cell].type);
        if (type == nullptr) continue;
        a.by_path.emplace(path + std::string(module.cells[cell].name), a.instances.size());
        a.instances.push_back({scope.first_gate, part, number, false, timing_of(*type)});
    }
}

// The net of a pin, -1 for an open one.
std::int32_t net_of(const annotator& a, const instance& i, std::size_t pin) {
    const xp_scope& scope = a.flat.scopes[i.scope];
    const xp_module& module = xp_module_of(a.flat, scope);
    const xp_cell& cell = module.cells[xp_body_of(a.flat, scope).parts[i.first_part].cell];
    const xp_connection* c = xp_find_connection(module, cell, i.timing.type->pins[pin].name);
    return c == nullptr || c->bits.count == 0 ? -1 : xp_net_at(a.flat, scope, module.bits[c->bits.first]);
}

// ---- nets, for those that NETDELAY names

void add_nets_of(annotator& a, std::uint32_t number) {
    const xp_scope& scope = a.flat.scopes[number];
    const xp_module& module = xp_module_of(a.flat, scope);
    const std::string path = xp_raw_scope_path(a.flat, number).substr(1);
    for (const xp_netname& name : module.netnames)
        for (std::uint32_t k = 0; k < name.bits.count; ++k) {
            const auto step = static_cast<std::int32_t>(name.upto ? name.bits.count - 1 - k : k);
            const bool is_bit = name.bits.count == 1 && name.offset == 0;
            a.nets.emplace(path + std::string(name.name) +
                               (is_bit ? "" : "[" + std::to_string(name.offset + step) + "]"),
                           xp_net_at(a.flat, scope, module.bits[name.bits.first + k]));
        }
}

void find_readers(annotator& a) {
    a.readers.resize(a.flat.nets.size());
    for (std::size_t i = 0; i < a.instances.size(); ++i)
        for (std::size_t pin = 0; pin < a.instances[i].timing.type->pins.size(); ++pin)
            if (xp_is_input(a.instances[i].timing.type->pins[pin]))
                if (const std::int32_t net = net_of(a, a.instances[i], pin); net >= 0)
                    a.readers[static_cast<std::size_t>(net)].emplace_back(i, pin);
}

// ---- messages

std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t corner = row[0]++;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t changed = corner + (a[i - 1] != b[j - 1] ? 1 : 0);
            corner = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[b.size()];
}

std::string nearest(const annotator& a, std::string_view path) {
    std::vector<std::pair<std::size_t, std::string_view>> near;
    for (const auto& [name, place] : a.by_path)
        if (name.size() + 3 >= path.size() && path.size() + 3 >= name.size())
            if (const std::size_t d = distance(path, name); d <= 3) near.emplace_back(d, name);
    std::sort(near.begin(), near.end());
    std::string text;
    for (std::size_t i = 0; i < near.size() && i < names_told; ++i)
        text += (i == 0 ? ", nearest " : ", ") + xp_quoted(near[i].second);
    return text;
}

void tell(annotator& a, std::int32_t line, std::string_view what) {
    if (++a.without_place <= lines_told)
        xp_warn(a.status, a.sdf.path + ": line " + std::to_string(line), what);
}

// ---- entries

// Instance and pin of "u1/A" below a scope.
instance* find_pin(annotator& a, std::string_view scope, std::string_view name, std::size_t& pin) {
    const std::size_t slash = name.rfind('/');
    if (slash == std::string_view::npos) return nullptr;
    const std::string path =
        (scope.empty() ? "" : std::string(scope) + "/") + std::string(name.substr(0, slash));
    const auto found = a.by_path.find(path);
    if (found == a.by_path.end()) return nullptr;
    instance& i = a.instances[found->second];
    const auto& pins = i.timing.type->pins;
    const auto at = std::ranges::find(pins, name.substr(slash + 1), &xp_library_pin::name);
    pin = static_cast<std::size_t>(at - pins.begin());
    return at == pins.end() ? nullptr : &i;
}

void take_wire(const xp_sdf_entry& entry, xp_sdf_delay& wire, xp_sdf_counts& counts) {
    for (std::size_t edge = 0; edge < 2; ++edge) {
        const xp_sdf_value& value = entry.values[edge];
        xp_sdf_value& into = wire.edges[edge];
        if (!value.is_given) continue;
        if (into.is_given && !entry.is_increment && into.steps != value.steps) ++counts.merged;
        for (std::size_t k = 0; k < 3; ++k)
            into.steps[k] =
                entry.is_increment ? into.steps[k] + value.steps[k] : std::max(into.steps[k], value.steps[k]);
        into.is_given = true;
    }
}

// The net of a path below the scope: that of a pin, or one by its name, "u1/n5" or "bus[3]".
std::int32_t find_net(annotator& a, std::string_view scope, std::string_view name) {
    std::size_t pin = 0;
    if (const instance* driver = find_pin(a, scope, name, pin); driver != nullptr)
        return net_of(a, *driver, pin);
    if (a.nets.empty())
        for (std::uint32_t s = 0; s < a.flat.scopes.size(); ++s) add_nets_of(a, s);
    const auto found = a.nets.find((scope.empty() ? "" : std::string(scope) + "/") + std::string(name));
    return found == a.nets.end() ? -1 : found->second;
}

// Every input pin on the net.
void take_net(annotator& a, const xp_sdf_cell& cell, const xp_sdf_entry& entry) {
    const std::int32_t net = find_net(a, cell.instance, entry.from.name);
    if (net < 0) return tell(a, entry.line, "no pin or net " + xp_quoted(entry.from.name));
    if (a.readers.empty()) find_readers(a);
    for (const auto& [reader, pin] : a.readers[static_cast<std::size_t>(net)])
        take_wire(entry, a.instances[reader].timing.wires[pin], a.counts);
    ++a.counts.annotated;
}

void take_interconnect(annotator& a, const xp_sdf_cell& cell, const xp_sdf_entry& entry) {
    const std::string_view to = entry.kind == xp_sdf_kind::port ? entry.from.name : entry.to.name;
    std::size_t pin = 0;
    if (instance* i = find_pin(a, cell.instance, to, pin); i != nullptr) {
        take_wire(entry, i->timing.wires[pin], a.counts);
        ++a.counts.annotated;
    } else if (to.find('/') == std::string_view::npos) {
        ++a.left_out["to ports"];
    } else {
        tell(a, entry.line, "no pin " + xp_quoted(to) + nearest(a, to.substr(0, to.rfind('/'))));
    }
}

std::string_view keyword_of(xp_sdf_kind kind) {
    constexpr std::string_view words[] = {"IOPATH", "INTERCONNECT", "PORT",      "NETDELAY", "DEVICE",
                                          "SETUP",  "HOLD",         "SETUPHOLD", "RECOVERY", "REMOVAL",
                                          "RECREM", "WIDTH",        "PERIOD"};
    return words[static_cast<std::size_t>(kind)];
}

bool has_pins(const xp_library_cell& type, const xp_sdf_entry& entry) {
    const auto has = [&](std::string_view name) {
        return name.empty() || std::ranges::count(type.pins, name, &xp_library_pin::name) > 0;
    };
    return has(entry.from.name) && has(entry.to.name);
}

void take_own(annotator& a, instance& i, const xp_sdf_entry& entry) {
    i.is_named = true;
    if (xp_take_entry(entry, i.timing, a.counts))
        ++a.counts.annotated;
    else if (has_pins(*i.timing.type, entry))
        ++a.left_out[std::string(keyword_of(entry.kind))];
    else
        tell(a, entry.line,
             "cell " + xp_quoted(i.timing.type->name) + " has no pin " + xp_quoted(entry.from.name) +
                 (entry.to.name.empty() ? "" : " or " + xp_quoted(entry.to.name)));
}

// The cells that are meant.  Null in front: none, and it has been told.
std::vector<instance*> find_instances(annotator& a, const xp_sdf_cell& cell) {
    std::vector<instance*> found;
    if (cell.instance == "*") {
        for (instance& i : a.instances)
            if (i.timing.type->name == cell.type) found.push_back(&i);
        return found;
    }
    const auto at = a.by_path.find(std::string(cell.instance));
    if (at == a.by_path.end()) {
        tell(a, cell.line, "no cell " + xp_quoted(cell.instance) + nearest(a, cell.instance));
        return found;
    }
    instance& i = a.instances[at->second];
    if (!cell.type.empty() && i.timing.type->name != cell.type)
        xp_warn(a.status, a.sdf.path + ": line " + std::to_string(cell.line),
                xp_quoted(cell.instance) + " is a " + xp_quoted(i.timing.type->name) + ", not a " +
                    xp_quoted(cell.type));
    found.push_back(&i);
    return found;
}

void take_cell(annotator& a, const xp_sdf_cell& cell) {
    const std::span entries(a.sdf.entries.data() + cell.first_entry, cell.entry_count);
    const bool is_module = a.scopes.contains(std::string(cell.instance));
    std::vector<instance*> instances;
    if (!is_module) instances = find_instances(a, cell);
    for (const xp_sdf_entry& entry : entries) {
        if (entry.kind == xp_sdf_kind::net_delay)
            take_net(a, cell, entry);
        else if (is_module && (entry.kind == xp_sdf_kind::interconnect || entry.kind == xp_sdf_kind::port))
            take_interconnect(a, cell, entry);
        else if (is_module)
            ++a.left_out[std::string(keyword_of(entry.kind))];
        else
            for (instance* i : instances) {
                if (entry.kind == xp_sdf_kind::port) {
                    const auto& pins = i->timing.type->pins;
                    const auto at = std::ranges::find(pins, entry.from.name, &xp_library_pin::name);
                    if (at == pins.end()) {
                        tell(a, entry.line, "no pin " + xp_quoted(entry.from.name));
                        continue;
                    }
                    take_wire(entry, i->timing.wires[static_cast<std::size_t>(at - pins.begin())], a.counts);
                    ++a.counts.annotated;
                } else {
                    take_own(a, *i, entry);
                }
            }
    }
}

// ---- results

bool is_constant(const annotator& a, const instance& i, std::size_t pin) {
    const std::int32_t net = net_of(a, i, pin);
    return net >= 0 && a.flat.nets[static_cast<std::size_t>(net)].constant != 0;
}

// A constant arrives at time 0, which is no pulse and no change that a limit is about; what a gate in front
// of set makes of a constant reset neither.
void drop_limits_of_constants(const annotator& a, instance& i) {
    for (std::size_t pin = 0; pin < i.timing.type->pins.size(); ++pin)
        if (is_constant(a, i, pin)) i.timing.limits[pin] = {};
    const auto is_constant_pin = [&](std::int32_t pin) {
        return pin < xp_first_state && is_constant(a, i, static_cast<std::size_t>(pin));
    };
    for (const xp_library_register& r : i.timing.type->registers)
        if (std::ranges::any_of(r.clear.inputs, is_constant_pin))
            for (const std::int32_t pin : r.preset.inputs)
                if (pin < xp_first_state) i.timing.limits[static_cast<std::size_t>(pin)] = {};
}

void time_instance(annotator& a, instance& i, xp_annotation& annotation) {
    const xp_body& body = xp_body_of(a.flat, a.flat.scopes[i.scope]);
    drop_limits_of_constants(a, i);
    for (std::size_t k = 0; k < i.timing.type->parts.size(); ++k) {
        const xp_part& part = body.parts[i.first_part + k];
        annotation.first[i.first_gate + part.first_gate + part.gate_count - 1] =
            static_cast<std::int32_t>(annotation.pins.size());
        xp_time_part(i.timing, i.timing.type->parts[k], a.counts, annotation.pins);
    }
}

void report(annotator& a) {
    const auto without =
        static_cast<std::size_t>(std::ranges::count(a.instances, false, &instance::is_named));
    std::string text = a.sdf.path + ": " + std::to_string(a.counts.annotated) + " of " +
                       std::to_string(a.sdf.entries.size()) + " entries annotated, " +
                       std::to_string(without) + " of " + std::to_string(a.instances.size()) +
                       " cells without entries";
    if (a.without_place > 0) text += ", " + std::to_string(a.without_place) + " lines found nothing";
    if (a.counts.merged > 0)
        text += ", the larger of differing values " + std::to_string(a.counts.merged) + " times";
    xp_note(a.status, text);
    for (const auto& [word, count] : a.sdf.left_out) a.left_out[word] += count;
    text.clear();
    for (const auto& [word, count] : a.left_out)
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + word;
    if (!text.empty()) xp_note(a.status, a.sdf.path + ": left out: " + text);
}

}  // namespace

void xp_annotate(const xp_flat& flat, const xp_sdf& sdf, xp_annotation& annotation, xp_status& status) {
    if (!xp_ok(status)) return;
    annotator a{flat, sdf, status, {}, {}, {}, {}, {}, {}, 0, {}};
    for (std::uint32_t scope = 0; scope < flat.scopes.size(); ++scope) add_scope(a, scope);
    for (const xp_sdf_cell& cell : sdf.cells) take_cell(a, cell);
    annotation.first.assign(flat.gate_count, -1);
    for (instance& i : a.instances)
        if (i.is_named) time_instance(a, i, annotation);
    report(a);
}

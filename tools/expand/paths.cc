#include "expand/paths.h"

#include <algorithm>

namespace {

// clang-format off
constexpr xp_economy economies[] = {
    // name       short   share  derive     short    no own
    //            hidden  pins   instances  visible  names
    {"full",      false,  false, false,     false,   false},
    {"hidden",    true,   false, false,     false,   false},
    {"pins",      true,   true,  false,     false,   false},
    {"derived",   true,   true,  true,      false,   false},
    {"short",     true,   true,  true,      true,    false},
    {"unnamed",   true,   true,  true,      true,    true},
};
// clang-format on

constexpr int family_size = 8;  // nets whose short names lie in the same characters

struct maker {
    const xp_flat& flat;
    const xp_economy& economy;
    yx_design_image_t& image;
    xp_paths& paths;
    std::vector<std::string> scope_paths;  // too long for any name below it: cut
    std::size_t short_count = 0;
    std::int32_t family = 0;  // string of all names of the family in use
    std::size_t stem_size = 0;
    int family_used = family_size;
};

bool fits(std::string_view text) { return text.size() <= xp_text_max; }

std::string base_36(std::size_t number) {
    std::string text;
    for (; number > 0; number /= 36) text.insert(0, 1, "0123456789abcdefghijklmnopqrstuvwxyz"[number % 36]);
    return text;
}

// A string that lies in the characters of another one.
std::int32_t part(maker& m, std::int32_t whole, std::size_t from, std::size_t size) {
    yx_string_record_t string = m.image.strings[static_cast<std::size_t>(whole - 1)];
    string.index += static_cast<std::int32_t>(from);
    string.len = static_cast<std::int8_t>(size);
    m.image.strings.push_back(string);
    return static_cast<std::int32_t>(m.image.strings.size());
}

// What stands behind the last "/" of a path, as a string of its own.
std::int32_t own_name(maker& m, std::int32_t path) {
    if (m.economy.no_own_names) return 0;
    const std::string_view text = xp_string_text(m.image, path);
    const std::size_t from = text.rfind('/') + 1;
    return part(m, path, from, text.size() - from);
}

bool is_free(const maker& m, std::size_t scope, std::string_view name) {
    return !xp_is_taken(xp_body_of(m.flat, m.flat.scopes[scope]).taken, name);
}

// A short path in the scope, or at the top where the path of the scope is long.
std::string short_text(maker& m, std::size_t scope, char letter) {
    for (;;) {
        const std::string name = letter + base_36(++m.short_count);
        const std::size_t home = fits(m.scope_paths[scope] + name) ? scope : 0;
        if (is_free(m, home, name)) return m.scope_paths[home] + name;
    }
}

// ---- families of short names

std::string family_text(std::string stem) {
    for (int i = 1; i < family_size; ++i) stem += "_" + std::to_string(i);
    return stem + "_";
}

std::size_t slot_size(const maker& m, int slot) { return m.stem_size + 2 * static_cast<std::size_t>(slot); }

bool is_family_free(const maker& m, const std::string& text, std::size_t stem_size) {
    for (std::size_t size = stem_size; size <= text.size(); ++size)
        if (!is_free(m, 0, std::string_view(text).substr(1, size - 1))) return false;
    return true;
}

void begin_family(maker& m) {
    for (;;) {
        const std::string stem = "/w" + base_36(++m.short_count), text = family_text(stem);
        if (!is_family_free(m, text, stem.size())) continue;
        m.family = yxw_string(m.image, text);
        m.stem_size = stem.size();
        m.family_used = 0;
        return;
    }
}

struct net_and_gate {
    std::int32_t net = 0, gate = 0;
};

net_and_gate next_of_family(maker& m, bool with_net, bool with_gate) {
    if (m.family_used == family_size) begin_family(m);
    const std::size_t size = slot_size(m, m.family_used++);
    return {with_net ? part(m, m.family, 0, size) : 0, with_gate ? part(m, m.family, 0, size + 1) : 0};
}

// ---- nets

std::string net_text(const maker& m, const xp_net_ref& ref) {
    const xp_net_name& name = xp_name_of(m.flat, ref);
    return m.scope_paths[ref.scope] + std::string(name.name) + xp_bit_suffix(name, ref.bit);
}

bool keeps_name(const maker& m, const xp_net_ref& ref) {
    const xp_net_name& name = xp_name_of(m.flat, ref);
    if (m.economy.short_visible) return ref.scope == 0 && name.is_port;
    return !(name.hidden && m.economy.short_hidden);
}

// The gate that drives a net takes the net's path with a "_", unless that is a name already.
bool names_its_gate(const maker& m, const xp_flat_net& net) {
    const xp_net_name& name = xp_name_of(m.flat, net.name);
    const std::string own = std::string(name.name) + xp_bit_suffix(name, net.name.bit);
    return m.economy.derive_instances && net.drivers > 0 && is_free(m, net.name.scope, own + "_");
}

net_and_gate kept_strings(maker& m, const xp_flat_net& net, const std::string& text) {
    if (!names_its_gate(m, net)) return {yxw_string(m.image, text), 0};
    const std::int32_t both = yxw_string(m.image, text + "_");
    return {part(m, both, 0, text.size()), both};
}

void add_net(maker& m, std::size_t index) {
    const xp_flat_net& net = m.flat.nets[index];
    const std::string text = net_text(m, net.name);
    const bool keeps = (keeps_name(m, net.name) || net.constant != 0) && text.size() < xp_text_max;
    const net_and_gate strings =
        keeps ? kept_strings(m, net, text)
        : m.economy.derive_instances
            ? next_of_family(m, true, net.drivers > 0)
            : net_and_gate{yxw_string(m.image, short_text(m, net.name.scope, 'n')), 0};
    m.paths.net_path[index] = strings.net;
    m.paths.net_name[index] = own_name(m, strings.net);
    if (strings.gate != 0) m.paths.gate_path[net.driver] = strings.gate;
}

void add_buses(maker& m) {
    for (const xp_bus& bus : m.flat.buses) {
        const xp_net_name& name = xp_name_of(m.flat, {bus.scope, bus.name, 0});
        const std::string text = m.scope_paths[bus.scope] + std::string(name.name) + xp_range_suffix(name);
        const bool is_written = keeps_name(m, {bus.scope, bus.name, 0}) && fits(text);
        const std::int32_t path = is_written ? yxw_string(m.image, text) : 0;
        m.paths.bus_path.push_back(path);
        m.paths.bus_name.push_back(is_written ? own_name(m, path) : 0);
    }
}

bool keeps_alias(const maker& m, const xp_alias& alias) {
    const bool is_top_port = alias.name.scope == 0 && xp_name_of(m.flat, alias.name).is_port;
    const bool is_constant = m.flat.nets[static_cast<std::size_t>(alias.net)].constant != 0;
    return is_top_port || (keeps_name(m, alias.name) && !(is_constant && m.economy.short_hidden));
}

void add_children(maker& m) {
    for (std::uint32_t index = 0; index < m.flat.aliases.size() && xp_strings_fit(m.image); ++index) {
        const xp_alias& alias = m.flat.aliases[index];
        const std::string text = net_text(m, alias.name);
        if (!keeps_alias(m, alias) || !fits(text)) continue;
        const std::int32_t path = yxw_string(m.image, text);
        m.paths.children.push_back({index, path, own_name(m, path)});
    }
}

void add_object_ids(maker& m) {
    for (const xp_object_id& object : m.flat.object_ids) {
        const std::string& scope = m.scope_paths[object.scope];
        const std::string text = scope + "N_" + std::to_string(object.id),
                          name = scope + std::string(object.name);
        m.paths.object_path.push_back(fits(text) ? yxw_string(m.image, text) : 0);
        m.paths.object_alias.push_back(object.name.empty() || !fits(name) ? 0 : yxw_string(m.image, name));
        if (!xp_strings_fit(m.image)) return;
    }
}

// ---- gates, pins and macros

bool is_hidden(const maker& m, const xp_scope& scope, std::uint32_t gate) {
    const xp_body& body = xp_body_of(m.flat, scope);
    return !xp_is_last_gate(body, gate) ||
           xp_module_of(m.flat, scope).cells[body.parts[body.gates[gate].part].cell].hidden;
}

void add_shared_pins(maker& m, const xp_gate& gate, std::int32_t path) {
    m.paths.pin_path.insert(m.paths.pin_path.end(), gate.pin_count + 1, path);
}

// The first pin's path holds the gate's own in its first characters.
std::int32_t add_gate_with_pins(maker& m, const xp_body& body, const xp_gate& gate, const std::string& text) {
    std::int32_t first = 0;
    for (std::uint32_t i = 0; i <= gate.pin_count; ++i) {
        const std::string_view pin =
            i < gate.pin_count ? body.pins[gate.first_pin + i].name : gate.model->output;
        const std::int32_t path = yxw_string(m.image, text + "/" + std::string(pin));
        m.paths.pin_path.push_back(path);
        if (i == 0) first = path;
    }
    return part(m, first, 0, text.size());
}

// The path of a gate that is not derived from its net.
std::string gate_text(maker& m, std::size_t scope, std::uint32_t index) {
    const xp_gate& gate = xp_body_of(m.flat, m.flat.scopes[scope]).gates[index];
    const std::string text = m.scope_paths[scope] + std::string(gate.name);
    const bool is_shortened = m.economy.short_hidden && is_hidden(m, m.flat.scopes[scope], index);
    return is_shortened || !fits(text) ? short_text(m, scope, 'g') : text;
}

std::int32_t add_gate(maker& m, std::size_t scope, std::uint32_t index) {
    constexpr std::size_t longest_pin = 9;  // "/A[32766]"
    const xp_body& body = xp_body_of(m.flat, m.flat.scopes[scope]);
    const xp_gate& gate = body.gates[index];
    std::int32_t path = m.paths.gate_path[m.flat.scopes[scope].first_gate + index];
    if (m.economy.derive_instances) {
        if (path == 0) path = next_of_family(m, false, true).gate;
    } else {
        const std::string text = gate_text(m, scope, index);
        if (!m.economy.share_pins && text.size() + longest_pin <= xp_text_max)
            return add_gate_with_pins(m, body, gate, text);
        path = yxw_string(m.image, text);
    }
    add_shared_pins(m, gate, path);
    return path;
}

bool add_gates(maker& m) {
    for (std::size_t scope = 0; scope < m.flat.scopes.size(); ++scope) {
        const auto count = static_cast<std::uint32_t>(xp_body_of(m.flat, m.flat.scopes[scope]).gates.size());
        for (std::uint32_t gate = 0; gate < count; ++gate) {
            const std::int32_t path = add_gate(m, scope, gate);
            m.paths.gate_path[m.flat.scopes[scope].first_gate + gate] = path;
            m.paths.gate_name[m.flat.scopes[scope].first_gate + gate] = own_name(m, path);
            if (!xp_strings_fit(m.image)) return false;
        }
    }
    return true;
}

bool add_nets(maker& m) {
    for (std::size_t net = 0; net < m.flat.nets.size(); ++net) {
        add_net(m, net);
        if (!xp_strings_fit(m.image)) return false;
    }
    return true;
}

void add_macros(maker& m) {
    m.paths.macro_path.assign(m.flat.scopes.size(), 0);
    m.paths.macro_name.assign(m.flat.scopes.size(), 0);
    for (std::size_t scope = 1; scope < m.flat.scopes.size() && xp_strings_fit(m.image); ++scope) {
        const std::string text = m.scope_paths[scope].substr(0, m.scope_paths[scope].size() - 1);
        const std::int32_t path = yxw_string(m.image, fits(text) ? text : short_text(m, 0, 'm'));
        m.paths.macro_path[scope] = path;
        m.paths.macro_name[scope] = own_name(m, path);
    }
}

void add_scope_paths(maker& m) {
    for (const xp_scope& scope : m.flat.scopes) {
        if (scope.parent < 0) {
            m.scope_paths.emplace_back("/");
            continue;
        }
        const auto parent = static_cast<std::size_t>(scope.parent);
        std::string path = m.scope_paths[parent];
        if (fits(path))
            path += std::string(xp_body_of(m.flat, m.flat.scopes[parent]).children[scope.child].name) + "/";
        m.scope_paths.push_back(std::move(path));
    }
}

// ---- the map

struct map_writer {
    const xp_flat& flat;
    const yx_design_image_t& image;
    std::string map;
    std::size_t scope = 0;
    std::string scope_path = "/";  // of that scope, as in the netlist
};

void add_line(map_writer& w, std::int32_t path, std::size_t scope, std::string_view raw, const char* kind) {
    if (scope != w.scope) w.scope_path = xp_raw_scope_path(w.flat, scope);
    w.scope = scope;
    const std::string full = w.scope_path + std::string(raw);
    const std::string_view text = xp_string_text(w.image, path);
    if (text == full) return;
    w.map += text;
    (w.map += '\t') += full;
    ((w.map += '\t') += kind) += '\n';
}

void add_net_line(map_writer& w, std::int32_t path, const xp_net_ref& ref) {
    const xp_net_name& name = xp_name_of(w.flat, ref);
    add_line(w, path, ref.scope, std::string(name.raw) + xp_bit_suffix(name, ref.bit), "net");
}

// The aliases with a path of their own, and those that have lost it but for a hidden name's.
void add_alias_lines(map_writer& w, const xp_paths& paths) {
    auto child = paths.children.begin();
    for (std::uint32_t index = 0; index < w.flat.aliases.size(); ++index) {
        const xp_alias& alias = w.flat.aliases[index];
        if (child != paths.children.end() && child->alias == index)
            add_net_line(w, (child++)->path, alias.name);
        else if (!xp_name_of(w.flat, alias.name).hidden)
            add_net_line(w, paths.net_path[static_cast<std::size_t>(alias.net)], alias.name);
    }
}

}  // namespace

std::span<const xp_economy> xp_economies() { return economies; }

bool xp_make_paths(const xp_flat& flat, const xp_economy& economy, bool with_object_ids,
                   yx_design_image_t& image, xp_paths& paths) {
    image.chars.clear();
    image.strings.clear();
    image.string_index.clear();
    paths = {};
    paths.economy = &economy;
    paths.net_path.resize(flat.nets.size());
    paths.net_name.resize(flat.nets.size());
    paths.gate_path.resize(flat.gate_count);
    paths.gate_name.resize(flat.gate_count);
    maker m{flat, economy, image, paths, {}};
    add_scope_paths(m);
    if (!add_nets(m)) return false;
    add_buses(m);
    add_macros(m);
    add_children(m);
    if (with_object_ids) add_object_ids(m);
    return xp_strings_fit(image) && add_gates(m);
}

bool xp_strings_fit(const yx_design_image_t& image) {
    return image.chars.size() <= yx_max_index && image.strings.size() <= yx_max_index;
}

std::string_view xp_string_text(const yx_design_image_t& image, std::int32_t string) {
    const yx_string_record_t& record = image.strings[static_cast<std::size_t>(string - 1)];
    return std::string_view(image.chars)
        .substr(static_cast<std::size_t>(record.index - 1), static_cast<std::size_t>(record.len));
}

std::string xp_name_map(const xp_flat& flat, const xp_paths& paths, const yx_design_image_t& image) {
    map_writer w{flat, image, {}};
    for (std::size_t net = 0; net < flat.nets.size(); ++net)
        add_net_line(w, paths.net_path[net], flat.nets[net].name);
    add_alias_lines(w, paths);
    for (std::size_t scope = 0; scope < flat.scopes.size(); ++scope) {
        const xp_body& body = xp_body_of(flat, flat.scopes[scope]);
        for (std::size_t gate = 0; gate < body.gates.size(); ++gate)
            add_line(w, paths.gate_path[flat.scopes[scope].first_gate + gate], scope, body.gates[gate].raw,
                     "instance");
    }
    return w.map;
}

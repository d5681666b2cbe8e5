// How paths are put together, and the map of those that differ from the netlist.
#include "expand/paths.h"

#include <algorithm>

namespace {

struct maker {
    const xp_flat& flat;
    yx_design_image_t& image;
    xp_paths& paths;
    std::vector<std::string> scope_paths;  // too long for any name below it: cut
    std::size_t short_count = 0;
};

bool fits(std::string_view text) { return text.size() <= xp_text_max; }

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
    const std::string_view text = xp_string_text(m.image, path);
    const std::size_t from = text.rfind('/') + 1;
    return part(m, path, from, text.size() - from);
}

bool is_free(const maker& m, std::size_t scope, std::string_view name) {
    return !xp_is_taken(xp_body_of(m.flat, m.flat.scopes[scope]).taken, name);
}

// Instead of a path that is too long: a short one in the scope, or at the top where the scope's is long.
std::string short_text(maker& m, std::size_t scope, char letter) {
    for (;;) {
        const std::string name = letter + std::to_string(++m.short_count);
        const std::size_t home = fits(m.scope_paths[scope] + name) ? scope : 0;
        if (is_free(m, home, name)) return m.scope_paths[home] + name;
    }
}

// ---- nets

std::string net_text(const maker& m, const xp_net_ref& ref) {
    const xp_net_name& name = xp_name_of(m.flat, ref);
    return m.scope_paths[ref.scope] + std::string(name.name) + xp_bit_suffix(name, ref.bit);
}

void add_net(maker& m, std::size_t index) {
    const xp_flat_net& net = m.flat.nets[index];
    const std::string text = net_text(m, net.name);
    const std::int32_t path = yxw_new_string(m.image, fits(text) ? text : short_text(m, net.name.scope, 'n'));
    m.paths.net_path[index] = path;
    m.paths.net_name[index] = own_name(m, path);
}

void add_buses(maker& m) {
    for (const xp_bus& bus : m.flat.buses) {
        const xp_net_name& name = xp_name_of(m.flat, {bus.scope, bus.name, 0});
        const std::string text = m.scope_paths[bus.scope] + std::string(name.name) + xp_range_suffix(name);
        const std::int32_t path = fits(text) ? yxw_new_string(m.image, text) : 0;
        m.paths.bus_path.push_back(path);
        m.paths.bus_name.push_back(path != 0 ? own_name(m, path) : 0);
    }
}

void add_children(maker& m) {
    for (std::uint32_t index = 0; index < m.flat.aliases.size(); ++index) {
        const std::string text = net_text(m, m.flat.aliases[index].name);
        if (!fits(text)) continue;
        const std::int32_t path = yxw_new_string(m.image, text);
        m.paths.children.push_back({index, path, own_name(m, path)});
    }
}

void add_object_ids(maker& m) {
    for (const xp_object_id& object : m.flat.object_ids) {
        const std::string& scope = m.scope_paths[object.scope];
        const std::string text = scope + "N_" + std::to_string(object.id),
                          name = scope + std::string(object.name);
        m.paths.object_path.push_back(fits(text) ? yxw_new_string(m.image, text) : 0);
        m.paths.object_alias.push_back(object.name.empty() || !fits(name) ? 0
                                                                          : yxw_new_string(m.image, name));
    }
}

// ---- gates, pins and macros

void add_shared_pins(maker& m, const xp_gate& gate, std::int32_t path) {
    m.paths.pin_path.insert(m.paths.pin_path.end(), gate.pin_count + 1, path);
}

// The first pin's path holds the gate's own in its first characters.
std::int32_t add_gate_with_pins(maker& m, const xp_body& body, const xp_gate& gate, std::string text) {
    std::int32_t first = 0;
    const std::size_t size = text.size();
    text += '/';
    for (std::uint32_t i = 0; i <= gate.pin_count; ++i) {
        text.resize(size + 1);
        text += i < gate.pin_count ? body.pins[gate.first_pin + i].name : xp_output_name(gate);
        const std::int32_t path = yxw_new_string(m.image, text);
        m.paths.pin_path.push_back(path);
        if (i == 0) first = path;
    }
    return part(m, first, 0, size);
}

std::int32_t add_gate(maker& m, std::size_t scope, const xp_gate& gate) {
    constexpr std::size_t longest_pin = 9;  // "/A[32766]"
    const xp_body& body = xp_body_of(m.flat, m.flat.scopes[scope]);
    const std::string text = m.scope_paths[scope] + std::string(gate.name);
    if (text.size() + longest_pin <= xp_text_max) return add_gate_with_pins(m, body, gate, text);
    const std::int32_t path = yxw_new_string(m.image, fits(text) ? text : short_text(m, scope, 'g'));
    add_shared_pins(m, gate, path);
    return path;
}

void add_gates(maker& m) {
    for (std::size_t scope = 0; scope < m.flat.scopes.size(); ++scope) {
        std::uint32_t number = m.flat.scopes[scope].first_gate;
        for (const xp_gate& gate : xp_body_of(m.flat, m.flat.scopes[scope]).gates) {
            const std::int32_t path = add_gate(m, scope, gate);
            m.paths.gate_path[number] = path;
            m.paths.gate_name[number++] = own_name(m, path);
        }
    }
}

void add_macros(maker& m) {
    m.paths.macro_path.assign(m.flat.scopes.size(), 0);
    m.paths.macro_name.assign(m.flat.scopes.size(), 0);
    for (std::size_t scope = 1; scope < m.flat.scopes.size(); ++scope) {
        const std::string text = m.scope_paths[scope].substr(0, m.scope_paths[scope].size() - 1);
        const std::int32_t path = yxw_new_string(m.image, fits(text) ? text : short_text(m, 0, 'm'));
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

void xp_make_paths(const xp_flat& flat, yx_design_image_t& image, xp_paths& paths) {
    paths.net_path.resize(flat.nets.size());
    paths.net_name.resize(flat.nets.size());
    paths.gate_path.resize(flat.gate_count);
    paths.gate_name.resize(flat.gate_count);
    paths.pin_path.reserve(flat.pin_count);
    image.strings.reserve(2 * (flat.nets.size() + flat.gate_count) + flat.pin_count +
                          2 * flat.aliases.size());
    maker m{flat, image, paths, {}};
    add_scope_paths(m);
    for (std::size_t net = 0; net < flat.nets.size(); ++net) add_net(m, net);
    add_buses(m);
    add_macros(m);
    add_children(m);
    add_object_ids(m);
    add_gates(m);
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

// xp_body: a module on the simulator's primitives.  Owns what one module becomes, before the hierarchy is
// flattened: its net names in typeable form, a gate for every primitive, and for every module instance the
// nets that its ports join.  Nets and constants are numbered as in the module; nets inside cells come behind
// them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "expand/cell_table.h"
#include "expand/message.h"
#include "expand/names.h"
#include "expand/netlist_json.h"
#include "expand/timed_cells.h"

struct xp_library_cell;

struct xp_pin {  // pin of a gate, beside its output
    std::string_view name;
    std::int32_t net = 0;
    bool is_output = false;     // a further one
    std::string_view values{};  // its property VALUES
};

struct xp_gate {
    xp_model model = nullptr;
    std::string_view raw, name;
    std::string_view config;         // TABLE of a LUT, WORDS of a memory
    std::string_view output_values;  // VALUES of its output
    std::int32_t output = 0;
    std::uint32_t part = 0;
    std::uint32_t first_pin = 0, pin_count = 0;
    std::string_view output_name = {};  // empty: as the model says
    bool is_checked = true;             // a register with limits
};

inline std::string_view xp_output_name(const xp_gate& gate) {
    return gate.output_name.empty() ? gate.model->output : gate.output_name;
}

// One output bit of a cell: the gates that make it, the last of which drives it.
struct xp_part {
    std::uint32_t cell = 0;
    std::uint32_t first_gate = 0, gate_count = 0;
    std::uint32_t first_leaf = 0, leaf_count = 0;  // input pins of the cell that this bit depends on
    std::int32_t depth = 0;                        // gates on the longest way to the last one
};

struct xp_binding {  // a port bit of a module instance
    std::int32_t inside = 0, outside = 0;
};

struct xp_child {  // a module instance
    std::uint32_t cell = 0, module = 0;
    std::string_view name;
    std::uint32_t first_binding = 0, binding_count = 0;
};

struct xp_body {
    bool is_made = false;
    std::vector<xp_net_name> names;  // ports first
    std::vector<std::string_view> cell_names;
    std::unordered_map<std::string_view, std::uint32_t> port_index;  // by name of the netlist, into names
    std::vector<xp_gate> gates;
    std::vector<xp_pin> pins;
    std::vector<std::int32_t> leaves;  // nets
    std::vector<xp_part> parts;
    std::vector<xp_child> children;
    std::vector<xp_binding> bindings;
    xp_taken_names taken;
};

inline bool xp_is_last_gate(const xp_body& body, std::uint32_t gate) {
    const xp_part& part = body.parts[body.gates[gate].part];
    return gate == part.first_gate + part.gate_count - 1;
}

// What the steps of mapping one module share.
struct xp_mapping {
    xp_netlist& netlist;
    xp_module& module;
    xp_body& body;
    std::string path;  // of the instance by which the module was met first, with a "/" at its end
    xp_status& status;
    std::vector<std::uint32_t> leaf_part;  // by place in module.bits: 1 + the part that last read that bit
};

// The gates of one cell of a type of the table.
void xp_map_cell(xp_mapping& m, std::uint32_t cell, const xp_cell_type& type);
// The same of a type that becomes flip-flops, latches or switches.
void xp_map_timed(xp_mapping& m, std::uint32_t cell, const xp_timed_form& form);
// The same of a cell of a library.
void xp_map_library_cell(xp_mapping& m, std::uint32_t cell, const xp_library_cell& type);
// The memory of a cell.
void xp_map_memory(xp_mapping& m, std::uint32_t cell);

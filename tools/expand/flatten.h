// xp_flat: the flattened design.  Owns the module instances ("scopes", the top first, then level by level),
// the nets that their bits join to, the names that each net has, and the vectors that became buses.  Net i of
// the design file is element i - 1 of the nets.  A net takes its name from the highest level at which it has
// one: there from a port, else from a vector, else from a scalar, hidden names last; every other name is an
// alias. The members of a bus are consecutive nets, least significant first.  Refuses joined constants, two
// drivers without drive strengths, initial values that differ and designs over the limits of the design file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "expand/hierarchy.h"

struct xp_scope {
    std::int32_t parent = -1;  // none for the top
    std::uint32_t module = 0;
    std::uint32_t child = 0;  // which instance of the parent's module it is
    std::uint32_t depth = 0;
    std::size_t first_bit = 0;     // of xp_flat::net_of
    std::uint32_t first_gate = 0;  // numbers of its gates in the whole design
    std::uint32_t first_part = 0;  // numbers of its parts
};

struct xp_net_ref {  // a name: bit k of a net name of a scope's module
    std::uint32_t scope = 0, name = 0, bit = 0;
};

struct xp_flat_net {
    xp_net_ref name;
    std::int32_t constant = 0;                 // xp_const_0 ..., 0 for an ordinary net
    bool is_input = false, is_output = false;  // ports of the top module
    bool is_clock = false;                     // clock of a flip-flop or enable of a latch
    std::int32_t initial = 0;                  // xp_const_0 or xp_const_1, 0 for none
    std::int32_t loads = 0;                    // input pins of cells and output ports
    std::int32_t drivers = 0;
    std::uint32_t driver = 0;  // gate of the design that drives it first
    std::int32_t bus = -1;     // of xp_flat::buses
};

struct xp_alias {
    std::int32_t net = 0;
    xp_net_ref name;
};

struct xp_bus {
    std::int32_t first_net = 0;
    std::uint32_t scope = 0, name = 0;
};

// A net of a sheet: the scope in which it is drawn and its number there.
struct xp_object_id {
    std::uint32_t scope = 0;
    std::int32_t net = 0;   // of a bus its first member
    std::int32_t bus = -1;  // of xp_flat::buses
    std::int32_t id = 0;
    std::string_view name;  // one that is no alias yet, empty for none
};

struct xp_flat {
    const xp_netlist* netlist = nullptr;
    const xp_hierarchy* hierarchy = nullptr;
    std::vector<xp_scope> scopes;
    std::vector<std::int32_t> net_of;  // by scope and bit of its module; -1: a bit that nothing uses
    std::int32_t constant_net[xp_constants] = {-1, -1, -1, -1};
    std::vector<xp_flat_net> nets;
    std::vector<xp_alias> aliases;  // grouped by net
    std::vector<xp_bus> buses;
    // Of sheets; empty without them.
    std::vector<xp_object_id> object_ids;
    std::vector<std::vector<std::int16_t>> cell_ids;  // object id by module and cell
    std::uint32_t gate_count = 0, part_count = 0, pin_count = 0;
};

void xp_flatten(xp_netlist& netlist, xp_hierarchy& hierarchy, xp_flat& flat, xp_status& status);

// The names of a module in the order in which nets take them.
std::vector<std::uint32_t> xp_naming_order(const xp_body& body);
// Whether a flip-flop or latch drives the net.
bool xp_is_register_net(const xp_flat& flat, const xp_flat_net& net);
const xp_body& xp_body_of(const xp_flat& flat, const xp_scope& scope);
const xp_module& xp_module_of(const xp_flat& flat, const xp_scope& scope);
const xp_child& xp_child_of(const xp_flat& flat, const xp_scope& scope);  // below the top
const xp_net_name& xp_name_of(const xp_flat& flat, const xp_net_ref& ref);
// The net of a bit of a scope's module: a net of the module or a constant; -1 when nothing uses it.
std::int32_t xp_net_at(const xp_flat& flat, const xp_scope& scope, std::int32_t bit);
// "/", or the instance names of the netlist down to the scope with a "/" behind each.
std::string xp_raw_scope_path(const xp_flat& flat, std::size_t scope);

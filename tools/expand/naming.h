// xp_name: the names within a module.  Gives ports, nets and cells their names in typeable form and binds the
// ports of module instances.
#pragma once

#include "expand/body.h"

// Gives ports, nets and cells their names: ports first, then what is not hidden, then the rest, which becomes
// n1, n2 ... (nets) and g1, g2 ... (cells).
void xp_name_module(xp_mapping& m);
// Adds a name of one bit for a net that came with none.
void xp_add_net_name(xp_mapping& m, std::int32_t net, std::string_view raw, std::string_view wanted);
// The bindings of a module instance; the body of its module is made.
void xp_bind_child(xp_mapping& m, std::uint32_t cell, std::uint32_t module, const xp_body& body,
                   const xp_module& contents);
// Names for the nets that neither the netlist nor a cell named.
void xp_name_remaining_nets(xp_mapping& m);

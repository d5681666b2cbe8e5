// xp_sheet_plan: what stands on the sheets of a module.  Owns its cells as symbols with the nets of their
// pins, its ports, its nets, and the pages that they are shared out to; knows no coordinates.
//
// A pin of several bits that is connected to one whole vector, which in every instance of the module is a bus
// of the design, is one pin at a bus; any other becomes one pin a bit.  The bits of a bus that pins of one
// bit read or drive are nets of their own, joined to the bus by name.
#pragma once

#include <string>
#include <vector>

#include "expand/flatten.h"
#include "sheets/symbol.h"

inline constexpr std::size_t xp_page_most = 64;   // cells of a page
inline constexpr std::size_t xp_page_cells = 45;  // of each of several pages, about

struct xp_sheet_net {
    std::string name;
    bool is_bus = false, is_hidden = false;  // hidden: the netlist has no name for it
    std::int16_t start = 0, end = 0;         // of a bus
    std::int32_t bit = 0;                    // of the module, or a constant
    std::uint32_t vector = 0;                // of a bus: which name of the module
    bool is_read_elsewhere = false;          // by name: as bit of a bus, or as bus by its bits
    bool is_driven_elsewhere = false;
    std::int32_t first_page = -1, last_page = -1;
    std::int32_t number = 0;  // on every page of the module
};

struct xp_sheet_cell {
    std::uint32_t cell = 0;  // of the module
    std::string name;
    bool is_hidden = false;
    std::int32_t module = -1;  // contents, -1 for a primitive
    sg_symbol_kind kind;
    bool is_register = false;
    std::vector<std::int32_t> nets;  // by pin, -1 for none
    std::int32_t page = 0;
};

struct xp_sheet_port {
    std::string name;
    xp_direction direction = xp_direction::none;
    std::int32_t net = -1;
};

struct xp_sheet_plan {
    std::string title;
    std::vector<xp_sheet_net> nets;
    std::vector<xp_sheet_cell> cells;
    std::vector<xp_sheet_port> ports;
    std::vector<std::vector<std::int32_t>> ports_at;               // by net
    std::vector<std::vector<std::int32_t>> page_cells, page_nets;  // by page, in ascending order
    std::int32_t page_count() const { return static_cast<std::int32_t>(page_cells.size()); }
};

// By module and name: whether the vector is a whole bus of the design wherever the module stands.
using xp_bus_table = std::vector<std::vector<bool>>;
xp_bus_table xp_find_buses(const xp_flat& flat);

// constant_names: of 0, 1, x and z in this module.
void xp_plan_sheet(const xp_flat& flat, const xp_bus_table& buses, std::uint32_t module,
                   const std::string constant_names[xp_constants], xp_sheet_plan& plan);
// Shares the cells out to pages by their fan-in cones, and numbers the nets page by page.
void xp_share_pages(xp_sheet_plan& plan);
void xp_number_nets(xp_sheet_plan& plan, std::int32_t first_number);

// The symbol of a primitive cell type; pins in the order of the symbol, without their connections.
struct xp_cell_look {
    sg_form form = sg_form::box;
    bool is_inverted = false;
    std::string type;  // what it is called
};
xp_cell_look xp_look_of(std::string_view type, std::size_t input_bits);

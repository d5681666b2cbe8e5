// xp_sheet_plan: what stands on the sheets of a module.  Owns its cells as symbols with the nets of their
// pins, its ports, its nets, and the pages that they are shared out to; knows no coordinates.
//
// A pin of several bits is one pin at a thick wire.  Bits and parts of a vector that other pins read or drive
// are nets of their own, joined to it by name; a thick wire of unlike bits is joined to them by a joint,
// which stands among the cells.
#pragma once

#include <algorithm>
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
    std::vector<std::int32_t> bits;          // of the module, or constants, the lowest first
    std::int32_t vector = -1;                // of a bus: the name of the module that has these bits
    bool is_mixture = false;                 // of a bus: joined to other nets by joints only
    bool is_read_elsewhere = false;          // by name: as part of a bus, or as bus by its parts
    bool is_driven_elsewhere = false;
    std::vector<std::int32_t> joined;  // the nets with which it is
    std::int32_t first_page = -1, last_page = -1;
    std::vector<std::int32_t> read_pages, driven_pages;  // in ascending order
    std::int32_t number = 0;                             // on every page of the module
};

struct xp_sheet_cell {
    std::uint32_t cell = 0;  // of the module; of no meaning for a joint
    std::string name;
    bool is_hidden = false;
    std::int32_t module = -1;  // contents, -1 for a primitive
    sg_symbol_kind kind;
    bool is_register = false;
    std::vector<std::int32_t> nets;  // by pin, -1 for none
    std::int32_t vector = -1;        // of a register of one bit: the name of the module whose bit it stores
    std::uint32_t vector_bit = 0;
    std::int32_t column = -1;  // registers of one column stand in it in their order
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
    std::vector<std::vector<std::int32_t>> page_cells, page_nets;  // by page; nets in ascending order
    std::int32_t page_count() const { return static_cast<std::int32_t>(page_cells.size()); }
};

inline bool xp_is_joint(const xp_sheet_cell& cell) { return cell.kind.form == sg_form::joint; }
inline bool xp_is_constant(const xp_sheet_net& net) {
    return std::all_of(net.bits.begin(), net.bits.end(), [](std::int32_t bit) { return bit < 0; });
}

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
// The same of a cell of a library: the shape of the gate that it is, else a box.
xp_cell_look xp_look_of_library(const xp_library_cell& cell);

// xp_pager: a page in the making.  Owns what the page's nets join and how they look, the boxes for the layout
// (cells and joints, then tags) and the drawing that comes of them.
#pragma once

#include <deque>

#include "expand/sheet_plan.h"
#include "sheets/drawing.h"
#include "sheets/layout.h"

inline constexpr std::int32_t xp_tag_half = 5000;  // of a pennant's height

struct xp_pin_ref {
    std::int32_t cell = 0, pin = 0;  // cell of the page's list
};

enum class xp_net_style : std::uint8_t { none, alone, wires, tags };

// A net as far as the page shows it.
struct xp_page_net {
    std::vector<xp_pin_ref> drivers, readers;
    std::vector<std::int32_t> ports;
    bool is_control = false;  // of registers: clocks, sets and resets
    bool wants_from = false, wants_to = false;
    std::string from_pages, to_pages;  // what stands beside its tags
    xp_net_style look = xp_net_style::none;
};

struct xp_box_tag {  // a tag that is a box of the layout
    sg_tag_kind kind = sg_tag_kind::input;
    std::int32_t net = 0;
    std::string port;       // when its name is not the net's
    std::int32_t box = -1;  // of the layout; -1: in the block of unused ports
};

struct xp_pager {
    const xp_sheet_plan& plan;
    std::int32_t page;
    sg_drawing& drawing;
    int thrift;                     // with wires: 1 none for what no cell of the page drives, 2 few elsewhere
    std::vector<xp_page_net> nets;  // as in the plan's list of them, like the graph's and the drawing's
    std::deque<sg_drawn_symbol> joints;
    std::vector<sg_drawn_instance> placed;  // by cell; a joint's symbol is -1 - its place in joints
    std::vector<xp_box_tag> tags;
    sg_graph graph;
    sg_layout layout;

    const std::vector<std::int32_t>& cells() const { return plan.page_cells[static_cast<std::size_t>(page)]; }
    const xp_sheet_cell& cell(std::size_t i) const {
        return plan.cells[static_cast<std::size_t>(cells()[i])];
    }
    const xp_sheet_net& planned(std::size_t net) const {
        return plan.nets[static_cast<std::size_t>(plan.page_nets[static_cast<std::size_t>(page)][net])];
    }
    const sg_drawn_symbol& symbol(std::size_t i) const {
        const std::int32_t index = placed[i].symbol;
        return index >= 0 ? drawing.symbols[static_cast<std::size_t>(index)]
                          : joints[static_cast<std::size_t>(-1 - index)];
    }
};

constexpr bool xp_points_right(sg_tag_kind kind) {  // stands left of the net
    return kind == sg_tag_kind::input || kind == sg_tag_kind::from_page;
}
// Beside a tag, for a text of its own.
inline std::int32_t xp_room_beside(const std::string& text) {
    return text.empty() ? 0 : sg_text_width(text.size() + 1, sg_tag_text);
}
inline const std::string& xp_pages_beside(const xp_page_net& net, sg_tag_kind kind) {
    static const std::string none;
    return kind == sg_tag_kind::from_page ? net.from_pages
           : kind == sg_tag_kind::to_page ? net.to_pages
                                          : none;
}

// Everything that follows from the layout.
void xp_draw_layout(xp_pager& p);

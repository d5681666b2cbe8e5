// A page: how its nets look, and the boxes for the layout.
#include "expand/sheet_page.h"

#include <algorithm>
#include <map>

#include "expand/sheet_pager.h"
#include "schematic/object_records.h"
#include "sheets/place_of.h"
#include "sheets/write.h"

namespace {

// Of a page whose names are read when the window, as it opens on a usual screen, shows the whole.
constexpr int thrift_most = 3;  // how sparing a page may be with wires
constexpr std::size_t thrifty_pins = 3;
constexpr double readable_width = 2.5e6, readable_height = 9.6e5;
constexpr std::size_t shown_name = 24;  // longer INST names are not shown

// The page's number of a net of the plan.
std::int32_t local(const xp_pager& p, std::int32_t net) {
    const std::vector<std::int32_t>& nets = p.plan.page_nets[sg_at(p.page)];
    return static_cast<std::int32_t>(std::lower_bound(nets.begin(), nets.end(), net) - nets.begin());
}

// ---- nets

bool is_control_pin(const xp_sheet_cell& cell, const sg_pin_kind& pin) {
    return cell.is_register && !pin.is_right && !pin.is_bus && !pin.name.starts_with('D');
}

bool is_at_port(const xp_pager& p, const xp_page_net& net, bool as_driver) {
    return std::any_of(net.ports.begin(), net.ports.end(), [&](std::int32_t port) {
        const xp_direction direction = p.plan.ports[sg_at(port)].direction;
        return direction != (as_driver ? xp_direction::output : xp_direction::input);
    });
}

void gather_nets(xp_pager& p) {
    p.nets.resize(p.plan.page_nets[sg_at(p.page)].size());
    for (std::size_t i = 0; i < p.cells().size(); ++i) {
        const xp_sheet_cell& cell = p.plan.cells[sg_at(p.cells()[i])];
        for (std::size_t pin = 0; pin < cell.nets.size(); ++pin) {
            if (cell.nets[pin] < 0) continue;
            xp_page_net& net = p.nets[sg_at(local(p, cell.nets[pin]))];
            const xp_pin_ref ref{static_cast<std::int32_t>(i), static_cast<std::int32_t>(pin)};
            (cell.kind.pins[pin].is_right ? net.drivers : net.readers).push_back(ref);
            net.is_control |= is_control_pin(cell, cell.kind.pins[pin]);
        }
    }
}

// A port stands on every page that its net is on; one that drives nothing there only if a cell drives it.
void gather_ports(xp_pager& p) {
    for (std::size_t i = 0; i < p.nets.size(); ++i) {
        xp_page_net& net = p.nets[i];
        const xp_sheet_net& planned = p.planned(i);
        const bool is_used = !net.drivers.empty() || !net.readers.empty();
        const bool is_only_here = planned.first_page == planned.last_page;
        for (const std::int32_t port : p.plan.ports_at[sg_at(p.plan.page_nets[sg_at(p.page)][i])]) {
            const bool is_output = p.plan.ports[sg_at(port)].direction == xp_direction::output;
            if (is_only_here || (is_output ? !net.drivers.empty() : is_used)) net.ports.push_back(port);
        }
    }
}

xp_net_style style_of(const xp_pager& p, const xp_page_net& net, const xp_sheet_net& planned) {
    const std::size_t pins = net.drivers.size() + net.readers.size();
    const bool is_driven = !net.drivers.empty() || is_at_port(p, net, true);
    const std::size_t ends = pins + net.ports.size() + (net.wants_to ? 1 : 0) + (net.wants_from ? 1 : 0);
    if (pins + net.ports.size() == 0) return xp_net_style::none;
    if (xp_is_constant(planned)) return xp_net_style::tags;
    if (ends == 1) return xp_net_style::alone;
    if (pins > xp_wired_most || (net.is_control && pins > 2)) return xp_net_style::tags;
    if (p.thrift > 0 && net.drivers.empty() && !net.readers.empty()) return xp_net_style::tags;
    if (p.thrift > 1 && pins + static_cast<std::size_t>(p.thrift) > thrifty_pins + 2)
        return xp_net_style::tags;
    if (!is_driven && net.readers.size() <= xp_tagged_most) return xp_net_style::tags;
    if (net.readers.empty() && net.ports.empty() && net.drivers.size() == 1) return xp_net_style::tags;
    return xp_net_style::wires;
}

// "->7", "<-3", "->2,5,9", "->2,5...": the pages that are not this one.
std::string pages_text(const xp_pager& p, const std::vector<std::int32_t>& pages, const char* sign) {
    constexpr std::size_t shown = 3;
    std::string text;
    std::size_t count = 0;
    if (std::binary_search(pages.begin(), pages.end(), p.page)) return text;
    for (const std::int32_t page : pages)
        if (++count <= (pages.size() > shown ? shown - 1 : shown))
            text += (text.empty() ? sign : ",") + std::to_string(page + 1);
    return pages.size() > shown ? text + "..." : text;
}

// Of the net and those that are joined to it by name.
std::vector<std::int32_t> pages_of(const xp_pager& p, const xp_sheet_net& net,
                                   std::vector<std::int32_t> xp_sheet_net::*own) {
    std::vector<std::int32_t> pages = net.*own;
    for (const std::int32_t other : net.joined) {
        const std::vector<std::int32_t>& more = p.plan.nets[sg_at(other)].*own;
        pages.insert(pages.end(), more.begin(), more.end());
    }
    std::sort(pages.begin(), pages.end());
    pages.erase(std::unique(pages.begin(), pages.end()), pages.end());
    return pages;
}

void style_nets(xp_pager& p) {
    for (std::size_t i = 0; i < p.nets.size(); ++i) {
        xp_page_net& net = p.nets[i];
        const xp_sheet_net& planned = p.planned(i);
        const bool is_elsewhere = planned.first_page != planned.last_page;
        const bool is_driven = !net.drivers.empty() || is_at_port(p, net, true);
        net.wants_from = !is_driven && (is_elsewhere || planned.is_driven_elsewhere);
        net.wants_to = !net.drivers.empty() && (is_elsewhere || planned.is_read_elsewhere);
        net.look = style_of(p, net, planned);
        if (net.wants_from)
            net.from_pages = pages_text(p, pages_of(p, planned, &xp_sheet_net::driven_pages), "<-");
        if (!net.wants_to) continue;
        std::vector<std::int32_t> readers = pages_of(p, planned, &xp_sheet_net::read_pages);
        std::erase(readers, p.page);
        net.to_pages = pages_text(p, readers, "->");
    }
}

// ---- boxes

bool shows_name(const xp_sheet_cell& cell) { return cell.name.size() <= shown_name && !xp_is_joint(cell); }

std::int32_t tag_room(const xp_pager& p, std::int32_t net, bool is_right) {
    const xp_page_net& own = p.nets[sg_at(net)];
    return sg_tag_room(p.planned(sg_at(net)).name.size()) +
           xp_room_beside(is_right ? own.to_pages : own.from_pages);
}

sg_box box_of_cell(xp_pager& p, const xp_sheet_cell& cell, const sg_symbol& shape) {
    sg_box box;
    box.is_register = cell.is_register || cell.module >= 0;
    box.can_flip = shape.is_even;
    box.column = cell.column;
    box.width = shape.width;
    box.above = shape.above;
    box.below = shape.below;
    if (shows_name(cell))
        box.margin_right =
            std::max(0, shape.inst.at.x + sg_text_width(cell.name.size(), sg_text) - shape.width);
    for (std::size_t pin = 0; pin < cell.nets.size(); ++pin) {
        const bool is_right = cell.kind.pins[pin].is_right;
        const std::int32_t net = cell.nets[pin] < 0 ? -1 : local(p, cell.nets[pin]);
        const xp_net_style look = net < 0 ? xp_net_style::none : p.nets[sg_at(net)].look;
        box.pins.push_back({look == xp_net_style::wires ? net : -1, shape.pin_at[pin].y, is_right});
        if (look != xp_net_style::tags) continue;
        std::int32_t& margin = is_right ? box.margin_right : box.margin_left;
        margin = std::max(margin, tag_room(p, net, is_right));
        box.above = std::max(box.above, shape.pin_at[pin].y + xp_tag_half);
        box.below = std::max(box.below, xp_tag_half - shape.pin_at[pin].y);
    }
    return box;
}

sg_drawn_symbol drawn_symbol(const xp_sheet_cell& cell, const std::string& path) {
    sg_drawn_symbol symbol{cell.kind, {}, path};
    sg_draw_symbol(symbol.kind, symbol.shape);
    return symbol;
}

std::int32_t symbol_of(xp_pager& p, const xp_sheet_cell& cell, const std::string& path,
                       std::map<std::string, std::int32_t>& known) {
    if (xp_is_joint(cell)) {
        p.joints.push_back(drawn_symbol(cell, path));
        return -static_cast<std::int32_t>(p.joints.size());
    }
    const auto [found, is_new] =
        known.try_emplace(sg_key(cell.kind) + path, static_cast<std::int32_t>(p.drawing.symbols.size()));
    if (is_new) p.drawing.symbols.push_back(drawn_symbol(cell, path));
    return found->second;
}

void add_cells(xp_pager& p, const std::vector<std::string>& paths) {
    std::map<std::string, std::int32_t> known;
    for (std::size_t i = 0; i < p.cells().size(); ++i) {
        const xp_sheet_cell& cell = p.cell(i);
        sg_drawn_instance& instance = p.placed.emplace_back();
        instance.symbol = symbol_of(p, cell, paths[sg_at(p.cells()[i])], known);
        instance.name = cell.name;
        instance.shows_name = shows_name(cell);
        for (const std::int32_t net : cell.nets)
            instance.pin_net.push_back(net < 0 ? std::int16_t{0}
                                               : static_cast<std::int16_t>(sg_first_net_id + local(p, net)));
        p.graph.boxes.push_back(box_of_cell(p, cell, p.symbol(i).shape));
    }
}

// A port that nothing on the sheets has to do with.
bool is_unused(const xp_pager& p, std::int32_t net) {
    const xp_page_net& own = p.nets[sg_at(net)];
    const xp_sheet_net& planned = p.planned(sg_at(net));
    return own.ports.size() == 1 && own.drivers.empty() && own.readers.empty() &&
           !planned.is_read_elsewhere && !planned.is_driven_elsewhere;
}

void add_tag_box(xp_pager& p, sg_tag_kind kind, std::int32_t net, const std::string& port = {}) {
    const std::string& name = p.planned(sg_at(net)).name;
    const std::string other = port == name ? "" : port;
    const bool is_source = xp_points_right(kind);
    p.tags.push_back({kind, net, other, -1});
    if (is_unused(p, net)) return;
    sg_box box;
    box.place = is_source ? sg_place::first : kind == sg_tag_kind::to_page ? sg_place::inner : sg_place::last;
    box.above = box.below = box.place == sg_place::inner ? xp_tag_half + 1000 : xp_tag_half;
    (is_source ? box.margin_left : box.margin_right) =
        sg_tag_room(name.size()) + xp_room_beside(other) +
        xp_room_beside(xp_pages_beside(p.nets[sg_at(net)], kind));
    box.pins.push_back({p.nets[sg_at(net)].look == xp_net_style::wires ? net : -1, 0, is_source});
    p.tags.back().box = static_cast<std::int32_t>(p.graph.boxes.size());
    p.graph.boxes.push_back(box);
}

sg_tag_kind kind_of(xp_direction direction) {
    return direction == xp_direction::input    ? sg_tag_kind::input
           : direction == xp_direction::output ? sg_tag_kind::output
                                               : sg_tag_kind::inout;
}

void add_tags(xp_pager& p) {
    std::vector<std::pair<std::int32_t, std::int32_t>> ports;  // with their nets, in the order of the ports
    for (std::size_t net = 0; net < p.nets.size(); ++net)
        for (const std::int32_t port : p.nets[net].ports) ports.emplace_back(port, net);
    std::sort(ports.begin(), ports.end());
    for (const auto& [port, net] : ports) {
        const xp_sheet_port& planned = p.plan.ports[sg_at(port)];
        add_tag_box(p, kind_of(planned.direction), net, planned.name);
    }
    for (std::size_t net = 0; net < p.nets.size(); ++net) {
        if (p.nets[net].look != xp_net_style::wires) continue;
        const auto index = static_cast<std::int32_t>(net);
        if (p.nets[net].wants_from) add_tag_box(p, sg_tag_kind::from_page, index);
        if (p.nets[net].wants_to) add_tag_box(p, sg_tag_kind::to_page, index);
    }
}

void draw(xp_pager& p, const std::vector<std::string>& symbol_paths) {
    p.drawing.title = p.plan.title;
    p.drawing.page = p.page + 1;
    p.drawing.page_count = p.plan.page_count();
    gather_nets(p);
    gather_ports(p);
    style_nets(p);
    add_cells(p, symbol_paths);
    if (sg_count_objects(p.drawing) > static_cast<std::size_t>(tm_max_objects)) return;
    add_tags(p);
    p.graph.net_count = static_cast<std::int32_t>(p.nets.size());
    for (std::size_t net = 0; net < p.nets.size(); ++net) p.graph.is_wide.push_back(p.planned(net).is_bus);
    sg_lay_out(p.graph, p.layout);
    xp_draw_layout(p);
}

// How large the page is, as a part of what can be read when it is seen whole.
double size_of(const sg_drawing& drawing) {
    const sg_rectangle& e = drawing.extent;
    return std::max((static_cast<double>(e.xmax) - e.xmin) / readable_width,
                    (static_cast<double>(e.ymax) - e.ymin) / readable_height);
}

}  // namespace

void xp_draw_page(const xp_sheet_plan& plan, std::int32_t page, const std::vector<std::string>& symbol_paths,
                  sg_drawing& drawing) {
    for (int thrift = 0; thrift <= thrift_most; ++thrift) {
        sg_drawing tried;
        xp_pager p{plan, page, tried, thrift, {}, {}, {}, {}, {}, {}};
        draw(p, symbol_paths);
        if (thrift == 0 || size_of(tried) < size_of(drawing)) drawing = std::move(tried);
        if (size_of(drawing) <= 1) return;
    }
}

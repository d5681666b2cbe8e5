// The drawing of a page: its nets as wires or tags, boxes for the layout, and what the layout says.
#include "expand/sheet_page.h"

#include <algorithm>
#include <map>

#include "schematic/object_records.h"
#include "sheets/label.h"
#include "sheets/layout.h"
#include "sheets/write.h"

namespace {

constexpr std::int32_t tag_lead = 5000;  // wire between a pin and its tag
constexpr std::int32_t tag_half = 5000;  // of a pennant's height
constexpr std::int32_t page_margin = 20000;
constexpr std::size_t shown_name = 24;  // longer INST names are not shown

std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

struct pin_ref {
    std::int32_t cell = 0, pin = 0;  // cell of the page's list
};

enum class style : std::uint8_t { none, alone, wires, tags };

// A net as far as the page shows it.
struct page_net {
    std::vector<pin_ref> drivers, readers;
    std::vector<std::int32_t> ports;
    bool is_control = false;  // of registers: clocks, sets and resets
    bool wants_from = false, wants_to = false;
    style look = style::none;
};

struct box_tag {  // a tag that is a box of the layout
    sg_tag_kind kind = sg_tag_kind::input;
    std::int32_t net = 0;
    std::string port;  // when its name is not the net's
};

struct pager {
    const xp_sheet_plan& plan;
    std::int32_t page;
    sg_drawing& drawing;
    std::vector<page_net> nets;  // as in the plan's list of them, like the graph's and the drawing's
    std::vector<box_tag> tags;
    sg_graph graph;  // cells, then tags
    sg_layout layout;
    const std::vector<std::int32_t>& cells() const { return plan.page_cells[at(page)]; }
    const xp_sheet_net& planned(std::int32_t net) const {
        return plan.nets[at(plan.page_nets[at(page)][at(net)])];
    }
};

// The page's number of a net of the plan.
std::int32_t local(const pager& p, std::int32_t net) {
    const std::vector<std::int32_t>& nets = p.plan.page_nets[at(p.page)];
    return static_cast<std::int32_t>(std::lower_bound(nets.begin(), nets.end(), net) - nets.begin());
}

// ---- nets

bool is_control_pin(const xp_sheet_cell& cell, const sg_pin_kind& pin) {
    return cell.is_register && !pin.is_right && !pin.is_bus && !pin.name.starts_with('D');
}

bool is_at_port(const pager& p, const page_net& net, bool as_driver) {
    return std::any_of(net.ports.begin(), net.ports.end(), [&](std::int32_t port) {
        const xp_direction direction = p.plan.ports[at(port)].direction;
        return direction != (as_driver ? xp_direction::output : xp_direction::input);
    });
}

void gather_nets(pager& p) {
    p.nets.resize(p.plan.page_nets[at(p.page)].size());
    for (std::size_t i = 0; i < p.cells().size(); ++i) {
        const xp_sheet_cell& cell = p.plan.cells[at(p.cells()[i])];
        for (std::size_t pin = 0; pin < cell.nets.size(); ++pin) {
            if (cell.nets[pin] < 0) continue;
            page_net& net = p.nets[at(local(p, cell.nets[pin]))];
            const pin_ref ref{static_cast<std::int32_t>(i), static_cast<std::int32_t>(pin)};
            (cell.kind.pins[pin].is_right ? net.drivers : net.readers).push_back(ref);
            net.is_control |= is_control_pin(cell, cell.kind.pins[pin]);
        }
    }
}

// A port stands on every page that its net is on; one that drives nothing there only if a cell drives it.
void gather_ports(pager& p) {
    for (std::size_t i = 0; i < p.nets.size(); ++i) {
        page_net& net = p.nets[i];
        const xp_sheet_net& planned = p.planned(static_cast<std::int32_t>(i));
        const bool is_used = !net.drivers.empty() || !net.readers.empty();
        const bool is_only_here = planned.first_page == planned.last_page;
        for (const std::int32_t port : p.plan.ports_at[at(p.plan.page_nets[at(p.page)][i])]) {
            const bool is_output = p.plan.ports[at(port)].direction == xp_direction::output;
            if (is_only_here || (is_output ? !net.drivers.empty() : is_used)) net.ports.push_back(port);
        }
    }
}

style style_of(const pager& p, const page_net& net, const xp_sheet_net& planned) {
    const std::size_t pins = net.drivers.size() + net.readers.size();
    const bool is_driven = !net.drivers.empty() || is_at_port(p, net, true);
    const std::size_t ends = pins + net.ports.size() + (net.wants_to ? 1 : 0) + (net.wants_from ? 1 : 0);
    if (pins + net.ports.size() == 0) return style::none;
    if (!planned.is_bus && planned.bit < 0) return style::tags;
    if (ends == 1) return style::alone;
    if (pins > xp_wired_most || (net.is_control && pins > 2)) return style::tags;
    if (!is_driven && net.readers.size() <= xp_tagged_most) return style::tags;
    if (net.readers.empty() && net.ports.empty() && net.drivers.size() == 1) return style::tags;
    return style::wires;
}

void style_nets(pager& p) {
    for (std::size_t i = 0; i < p.nets.size(); ++i) {
        page_net& net = p.nets[i];
        const xp_sheet_net& planned = p.planned(static_cast<std::int32_t>(i));
        const bool is_elsewhere = planned.first_page != planned.last_page;
        const bool is_driven = !net.drivers.empty() || is_at_port(p, net, true);
        net.wants_from = !is_driven && (is_elsewhere || planned.is_driven_elsewhere);
        net.wants_to = !net.drivers.empty() && (is_elsewhere || planned.is_read_elsewhere);
        net.look = style_of(p, net, planned);
    }
}

// ---- boxes

bool shows_name(const xp_sheet_cell& cell) { return cell.name.size() <= shown_name; }

sg_box box_of_cell(pager& p, const xp_sheet_cell& cell, const sg_symbol& shape) {
    sg_box box;
    box.is_register = cell.is_register || cell.module >= 0;
    box.can_flip = shape.is_even;
    box.width = shape.width;
    box.above = shape.above;
    box.below = shape.below;
    if (shows_name(cell))
        box.margin_right =
            std::max(0, shape.inst.at.x + sg_text_width(cell.name.size(), sg_text) - shape.width);
    for (std::size_t pin = 0; pin < cell.nets.size(); ++pin) {
        const bool is_right = cell.kind.pins[pin].is_right;
        const std::int32_t net = cell.nets[pin] < 0 ? -1 : local(p, cell.nets[pin]);
        const style look = net < 0 ? style::none : p.nets[at(net)].look;
        box.pins.push_back({look == style::wires ? net : -1, shape.pin_at[pin].y, is_right});
        if (look != style::tags) continue;
        std::int32_t& margin = is_right ? box.margin_right : box.margin_left;
        margin = std::max(margin, tag_lead + sg_tag_room(p.planned(net).name.size()));
        box.above = std::max(box.above, shape.pin_at[pin].y + tag_half);
        box.below = std::max(box.below, tag_half - shape.pin_at[pin].y);
    }
    return box;
}

std::int32_t symbol_of(pager& p, const xp_sheet_cell& cell, const std::string& path,
                       std::map<std::string, std::int32_t>& known) {
    const auto [found, is_new] =
        known.try_emplace(sg_key(cell.kind) + path, static_cast<std::int32_t>(p.drawing.symbols.size()));
    if (is_new) {
        sg_drawn_symbol symbol{cell.kind, {}, path};
        sg_draw_symbol(symbol.kind, symbol.shape);
        p.drawing.symbols.push_back(std::move(symbol));
    }
    return found->second;
}

std::int16_t id_of(std::int32_t net) { return static_cast<std::int16_t>(sg_first_net_id + net); }

void add_cells(pager& p, const std::vector<std::string>& paths) {
    std::map<std::string, std::int32_t> known;
    for (const std::int32_t index : p.cells()) {
        const xp_sheet_cell& cell = p.plan.cells[at(index)];
        sg_drawn_instance instance;
        instance.symbol = symbol_of(p, cell, paths[at(index)], known);
        instance.name = cell.name;
        instance.shows_name = shows_name(cell);
        for (const std::int32_t net : cell.nets)
            instance.pin_net.push_back(net < 0 ? std::int16_t{0} : id_of(local(p, net)));
        p.graph.boxes.push_back(box_of_cell(p, cell, p.drawing.symbols[at(instance.symbol)].shape));
        p.drawing.instances.push_back(std::move(instance));
    }
}

constexpr bool points_right(sg_tag_kind kind) {  // stands left of the net
    return kind == sg_tag_kind::input || kind == sg_tag_kind::from_page;
}

// Beside a tag, for the name of a port that is not its net's.
std::int32_t port_room(const std::string& port) {
    return port.empty() ? 0 : sg_text_width(port.size() + 1, sg_tag_text);
}

void add_tag_box(pager& p, sg_tag_kind kind, std::int32_t net, const std::string& port = {}) {
    const std::string& name = p.planned(net).name;
    const std::string other = port == name ? "" : port;
    sg_box box;
    const bool is_source = points_right(kind);
    box.place = is_source ? sg_place::first : kind == sg_tag_kind::to_page ? sg_place::inner : sg_place::last;
    box.above = box.below = box.place == sg_place::inner ? tag_half + 1000 : tag_half;
    (is_source ? box.margin_left : box.margin_right) = sg_tag_room(name.size()) + port_room(other);
    box.pins.push_back({p.nets[at(net)].look == style::wires ? net : -1, 0, is_source});
    p.graph.boxes.push_back(box);
    p.tags.push_back({kind, net, other});
}

sg_tag_kind kind_of(xp_direction direction) {
    return direction == xp_direction::input    ? sg_tag_kind::input
           : direction == xp_direction::output ? sg_tag_kind::output
                                               : sg_tag_kind::inout;
}

void add_tags(pager& p) {
    std::vector<std::pair<std::int32_t, std::int32_t>> ports;  // with their nets, in the order of the ports
    for (std::size_t net = 0; net < p.nets.size(); ++net)
        for (const std::int32_t port : p.nets[net].ports) ports.emplace_back(port, net);
    std::sort(ports.begin(), ports.end());
    for (const auto& [port, net] : ports) {
        const xp_sheet_port& planned = p.plan.ports[at(port)];
        add_tag_box(p, kind_of(planned.direction), net, planned.name);
    }
    for (std::size_t net = 0; net < p.nets.size(); ++net) {
        if (p.nets[net].look != style::wires) continue;
        const auto index = static_cast<std::int32_t>(net);
        if (p.nets[net].wants_from) add_tag_box(p, sg_tag_kind::from_page, index);
        if (p.nets[net].wants_to) add_tag_box(p, sg_tag_kind::to_page, index);
    }
}

// ---- the drawing

sg_point pin_place(const pager& p, const pin_ref& ref) {
    const sg_drawn_instance& instance = p.drawing.instances[at(ref.cell)];
    return sg_pin_place(instance, p.drawing.symbols[at(instance.symbol)], at(ref.pin));
}

void draw_tags(pager& p, std::size_t index, sg_drawn_net& drawn) {
    const page_net& net = p.nets[index];
    for (const bool is_right : {false, true})
        for (const pin_ref& ref : is_right ? net.drivers : net.readers) {
            const sg_point pin = pin_place(p, ref), end{pin.x + (is_right ? tag_lead : -tag_lead), pin.y};
            drawn.wires.push_back(is_right ? sg_wire{pin, end} : sg_wire{end, pin});
            p.drawing.tags.push_back(
                {is_right ? sg_tag_kind::to_page : sg_tag_kind::from_page, end, drawn.name});
        }
}

void add_port_name(sg_drawn_net& net, const sg_drawn_tag& tag, const std::string& port) {
    if (port.empty()) return;
    const std::int32_t tag_room = sg_tag_room(tag.name.size()), gap = sg_tag_text * 3 / 10;
    const std::int32_t x =
        tag.at.x + (points_right(tag.kind) ? gap - tag_room - port_room(port) : tag_room + gap);
    net.ports.push_back({port, {{x, tag.at.y - sg_tag_text / 2}, sg_tag_text, true}});
}

void draw_box_tags(pager& p) {
    for (std::size_t i = 0; i < p.tags.size(); ++i) {
        const sg_point origin = p.layout.origins[p.cells().size() + i];
        sg_drawn_net& net = p.drawing.nets[at(p.tags[i].net)];
        p.drawing.tags.push_back({p.tags[i].kind, origin, net.name});
        add_port_name(net, p.drawing.tags.back(), p.tags[i].port);
        if (p.nets[at(p.tags[i].net)].look != style::wires) net.points.push_back(origin);
    }
}

void draw_nets(pager& p) {
    p.drawing.nets.resize(p.nets.size());
    for (std::size_t i = 0; i < p.nets.size(); ++i) {
        const xp_sheet_net& planned = p.planned(static_cast<std::int32_t>(i));
        sg_drawn_net& drawn = p.drawing.nets[i];
        drawn.id = id_of(static_cast<std::int32_t>(i));
        drawn.number = planned.number;
        drawn.name = planned.name;
        drawn.is_bus = planned.is_bus;
        drawn.start = planned.start;
        drawn.end = planned.end;
        drawn.wires = p.layout.wires[i];
        drawn.ties = p.layout.ties[i];
        if (p.nets[i].look == style::tags) draw_tags(p, i, drawn);
    }
}

// ---- names of nets

sg_rectangle tag_rectangle(const sg_drawn_tag& tag) {
    const std::int32_t room = sg_tag_room(tag.name.size());
    return points_right(tag.kind)
               ? sg_rectangle{tag.at.x - room, tag.at.y - tag_half, tag.at.x, tag.at.y + tag_half}
               : sg_rectangle{tag.at.x, tag.at.y - tag_half, tag.at.x + room, tag.at.y + tag_half};
}

sg_obstacles obstacles_of(const pager& p) {
    sg_obstacles obstacles;
    for (std::size_t i = 0; i < p.cells().size(); ++i) {
        const sg_box& box = p.graph.boxes[i];
        const sg_point& origin = p.layout.origins[i];
        const sg_symbol& shape = p.drawing.symbols[at(p.drawing.instances[i].symbol)].shape;
        obstacles.rectangles.push_back(
            {origin.x, origin.y - shape.below, origin.x + box.width, origin.y + shape.above});
        if (p.drawing.instances[i].shows_name)
            obstacles.rectangles.push_back(
                {origin.x, origin.y + shape.inst.at.y,
                 origin.x + shape.inst.at.x + sg_text_width(p.drawing.instances[i].name.size(), sg_text),
                 origin.y + shape.above});
    }
    for (const sg_drawn_tag& tag : p.drawing.tags) obstacles.rectangles.push_back(tag_rectangle(tag));
    for (const sg_drawn_net& net : p.drawing.nets)
        obstacles.wires.insert(obstacles.wires.end(), net.wires.begin(), net.wires.end());
    return obstacles;
}

void label_nets(pager& p) {
    sg_obstacles obstacles = obstacles_of(p);
    for (std::size_t i = 0; i < p.nets.size(); ++i) {
        if (p.nets[i].look != style::wires) continue;
        sg_drawn_net& net = p.drawing.nets[i];
        net.label.height = sg_pin_text;
        const std::int32_t width = sg_text_width(net.name.size(), sg_pin_text);
        const bool is_named_by_tag = !p.nets[i].ports.empty() || p.nets[i].wants_from || p.nets[i].wants_to;
        const sg_label label =
            is_named_by_tag ? sg_label{} : sg_place_label(net.wires, width, sg_pin_text, obstacles);
        net.label.is_visible = label.found;
        net.label.at = label.found ? label.at : net.wires.front().from;
        if (label.found)
            obstacles.rectangles.push_back(
                {label.at.x, label.at.y, label.at.x + width, label.at.y + sg_pin_text});
    }
}

void hide_other_labels(pager& p) {
    for (sg_drawn_net& net : p.drawing.nets) {
        if (net.label.height != 0) continue;
        net.label.height = sg_pin_text;
        net.label.is_visible = false;
        if (!net.wires.empty())
            net.label.at = net.wires.front().from;
        else if (!net.points.empty())
            net.label.at = net.points.front();
    }
}

}  // namespace

void xp_draw_page(const xp_sheet_plan& plan, std::int32_t page, const std::vector<std::string>& symbol_paths,
                  sg_drawing& drawing) {
    pager p{plan, page, drawing, {}, {}, {}, {}};
    drawing.title = plan.title;
    drawing.page = page + 1;
    drawing.page_count = plan.page_count();
    gather_nets(p);
    gather_ports(p);
    style_nets(p);
    add_cells(p, symbol_paths);
    if (sg_count_objects(drawing) > static_cast<std::size_t>(tm_max_objects)) return;
    add_tags(p);
    p.graph.net_count = static_cast<std::int32_t>(p.nets.size());
    sg_lay_out(p.graph, p.layout);
    for (std::size_t i = 0; i < drawing.instances.size(); ++i) {
        drawing.instances[i].at = p.layout.origins[i];
        drawing.instances[i].is_flipped = p.layout.is_flipped[i];
    }
    draw_nets(p);
    draw_box_tags(p);
    label_nets(p);
    hide_other_labels(p);
    const sg_rectangle& e = p.layout.extent;
    drawing.extent = {e.xmin - page_margin, e.ymin - page_margin, e.xmax + page_margin, e.ymax + page_margin};
}

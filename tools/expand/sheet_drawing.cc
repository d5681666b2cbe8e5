// A page after its layout: wires, joints, tags, the unused ports, and the names of nets.
#include <algorithm>

#include "expand/sheet_pager.h"
#include "sheets/label.h"
#include "sheets/place_of.h"
#include "sheets/wires.h"

namespace {

constexpr std::int32_t page_margin = 20000;

sg_point pin_place(const xp_pager& p, const xp_pin_ref& ref) {
    return sg_pin_place(p.placed[sg_at(ref.cell)], p.symbol(sg_at(ref.cell)), sg_at(ref.pin));
}

void place_cells(xp_pager& p) {
    for (std::size_t i = 0; i < p.placed.size(); ++i) {
        p.placed[i].at = p.layout.origins[i];
        p.placed[i].is_flipped = p.layout.is_flipped[i];
    }
}

// ---- tags

sg_rectangle tag_rectangle(const sg_drawn_tag& tag) {
    const std::int32_t room = sg_tag_room(tag.name.size());
    return xp_points_right(tag.kind)
               ? sg_rectangle{tag.at.x - room, tag.at.y - xp_tag_half, tag.at.x, tag.at.y + xp_tag_half}
               : sg_rectangle{tag.at.x, tag.at.y - xp_tag_half, tag.at.x + room, tag.at.y + xp_tag_half};
}

// A text at the blunt end of a tag.
void add_text_beside(sg_drawn_net& net, const sg_drawn_tag& tag, const char* property,
                     const std::string& text) {
    if (text.empty()) return;
    const std::int32_t tag_room = sg_tag_room(tag.name.size()), gap = sg_tag_text * 3 / 10;
    const std::int32_t x =
        tag.at.x + (xp_points_right(tag.kind) ? gap - tag_room - xp_room_beside(text) : tag_room + gap);
    net.texts.push_back({property, text, {{x, tag.at.y - sg_tag_text / 2}, sg_tag_text, true}});
}

void add_tag(xp_pager& p, std::int32_t net, const sg_drawn_tag& tag) {
    p.drawing.tags.push_back(tag);
    add_text_beside(p.drawing.nets[sg_at(net)], tag, "PAGE", xp_pages_beside(p.nets[sg_at(net)], tag.kind));
}

void draw_pin_tags(xp_pager& p, std::int32_t index) {
    const xp_page_net& net = p.nets[sg_at(index)];
    for (const bool is_right : {false, true})
        for (const xp_pin_ref& ref : is_right ? net.drivers : net.readers)
            add_tag(p, index,
                    {is_right ? sg_tag_kind::to_page : sg_tag_kind::from_page, pin_place(p, ref),
                     p.drawing.nets[sg_at(index)].name});
}

void draw_box_tags(xp_pager& p) {
    for (const xp_box_tag& tag : p.tags) {
        if (tag.box < 0) continue;
        const sg_point origin = p.layout.origins[sg_at(tag.box)];
        sg_drawn_net& net = p.drawing.nets[sg_at(tag.net)];
        add_tag(p, tag.net, {tag.kind, origin, net.name});
        add_text_beside(net, p.drawing.tags.back(), "PORT", tag.port);
        if (p.nets[sg_at(tag.net)].look != xp_net_style::wires) net.points.push_back(origin);
    }
}

// Unused ports stand by themselves below the rest, in columns of equal tags.
void draw_unused_ports(xp_pager& p) {
    constexpr std::int32_t row = 12000, column_gap = 20000, distance = 20000;
    sg_rectangle& extent = p.layout.extent;
    std::vector<const xp_box_tag*> tags;
    std::int32_t room = 0;
    for (const xp_box_tag& tag : p.tags) {
        if (tag.box >= 0) continue;
        tags.push_back(&tag);
        room = std::max(room,
                        sg_tag_room(p.drawing.nets[sg_at(tag.net)].name.size()) + xp_room_beside(tag.port));
    }
    if (tags.empty()) return;
    const std::int32_t pitch = (room + column_gap + sg_pitch - 1) / sg_pitch * sg_pitch;
    const std::int32_t columns = std::max(1, (extent.xmax - extent.xmin) / pitch);
    const auto count = static_cast<std::int32_t>(tags.size());
    const std::int32_t rows = (count + columns - 1) / columns;
    const auto down = [](std::int32_t y) { return (y - sg_pitch) / sg_pitch * sg_pitch; };
    const std::int32_t top = down(extent.ymin - distance), left = down(extent.xmin);
    for (std::int32_t i = 0; i < count; ++i) {
        const xp_box_tag& tag = *tags[sg_at(i)];
        const bool is_source = xp_points_right(tag.kind);
        const sg_point origin{
            left + i / rows * pitch + (is_source ? pitch - column_gap / 2 / sg_pitch * sg_pitch : 0),
            top - i % rows * row / 2000 * 2000};
        sg_drawn_net& net = p.drawing.nets[sg_at(tag.net)];
        add_tag(p, tag.net, {tag.kind, origin, net.name});
        add_text_beside(net, p.drawing.tags.back(), "PORT", tag.port);
        net.points.push_back(origin);
        extent.xmax = std::max(extent.xmax, left + (i / rows + 1) * pitch);
    }
    extent.ymin = top - rows * row;
}

// ---- joints

// The bar with its taps: each part comes to it on its row, the word leaves from it.
void draw_joint(xp_pager& p, std::size_t i) {
    const xp_sheet_cell& cell = p.cell(i);
    const std::vector<std::int16_t>& nets = p.placed[i].pin_net;
    const auto word_pin = static_cast<std::int32_t>(nets.size()) - 1;
    const auto drawn = [&](std::int32_t pin) -> sg_drawn_net& {
        return p.drawing.nets[sg_at(nets[sg_at(pin)] - sg_first_net_id)];
    };
    const auto here = static_cast<std::int32_t>(i);
    const sg_point word = pin_place(p, {here, word_pin});
    std::vector<std::int32_t> rows{word.y};
    for (std::int32_t pin = 0; pin < word_pin; ++pin) {
        const sg_point end = pin_place(p, {here, pin});
        drawn(pin).wires.push_back({end, {word.x, end.y}});
        rows.push_back(end.y);
        sg_words label = p.symbol(i).shape.pin_name[sg_at(pin)];
        label.at = {p.placed[i].at.x + label.at.x, p.placed[i].at.y + label.at.y};
        drawn(word_pin).texts.push_back({"BITS", cell.kind.pins[sg_at(pin)].name, label});
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    sg_drawn_net& bus = drawn(word_pin);
    for (std::size_t k = 1; k < rows.size(); ++k)
        bus.bars.push_back({{word.x, rows[k - 1]}, {word.x, rows[k]}});
    if (rows.size() == 1) bus.points.push_back(word);
    if (word.y != rows.front() && word.y != rows.back() && !bus.wires.empty()) bus.ties.push_back(word);
}

void draw_joints(xp_pager& p) {
    for (std::size_t i = 0; i < p.placed.size(); ++i)
        if (p.placed[i].symbol < 0) draw_joint(p, i);
    for (sg_drawn_net& net : p.drawing.nets) {
        std::vector<sg_point> ties;
        sg_normalise(net.wires, ties);
        net.ties.insert(net.ties.end(), ties.begin(), ties.end());
        net.wires.insert(net.wires.end(), net.bars.begin(), net.bars.end());
    }
}

// ---- nets

void begin_nets(xp_pager& p) {
    p.drawing.nets.resize(p.nets.size());
    for (std::size_t i = 0; i < p.nets.size(); ++i) {
        const xp_sheet_net& planned = p.planned(i);
        sg_drawn_net& drawn = p.drawing.nets[i];
        drawn.id = static_cast<std::int16_t>(sg_first_net_id + static_cast<std::int32_t>(i));
        drawn.number = planned.number;
        drawn.name = planned.name;
        drawn.is_bus = planned.is_bus;
        drawn.start = planned.start;
        drawn.end = planned.end;
        drawn.wires = p.layout.wires[i];
    }
}

void draw_tags(xp_pager& p) {
    for (std::size_t i = 0; i < p.nets.size(); ++i)
        if (p.nets[i].look == xp_net_style::tags) draw_pin_tags(p, static_cast<std::int32_t>(i));
    draw_box_tags(p);
    draw_unused_ports(p);
}

// ---- names of nets

sg_obstacles obstacles_of(const xp_pager& p) {
    sg_obstacles obstacles;
    const auto add = [&](const sg_words& words, std::size_t characters) {
        obstacles.rectangles.push_back({words.at.x, words.at.y,
                                        words.at.x + sg_text_width(characters, words.height),
                                        words.at.y + words.height});
    };
    for (std::size_t i = 0; i < p.placed.size(); ++i) {
        const sg_point& origin = p.placed[i].at;
        const sg_symbol& shape = p.symbol(i).shape;
        obstacles.rectangles.push_back(
            {origin.x, origin.y - shape.below, origin.x + shape.width, origin.y + shape.above});
        if (p.placed[i].shows_name)
            obstacles.rectangles.push_back(
                {origin.x, origin.y + shape.inst.at.y,
                 origin.x + shape.inst.at.x + sg_text_width(p.placed[i].name.size(), sg_text),
                 origin.y + shape.above});
    }
    for (const sg_drawn_tag& tag : p.drawing.tags) obstacles.rectangles.push_back(tag_rectangle(tag));
    for (const sg_drawn_net& net : p.drawing.nets) {
        obstacles.wires.insert(obstacles.wires.end(), net.wires.begin(), net.wires.end());
        for (const sg_drawn_text& text : net.texts) add(text.words, text.text.size());
    }
    return obstacles;
}

bool is_named_by_tag(const xp_page_net& net) { return !net.ports.empty() || net.wants_from || net.wants_to; }

void label_net(sg_drawn_net& net, bool wants_label, sg_obstacles& obstacles) {
    const std::int32_t width = sg_text_width(net.name.size(), sg_pin_text);
    const sg_label label =
        wants_label ? sg_place_label(net.wires, width, sg_pin_text, obstacles) : sg_label{};
    net.label = {label.at, sg_pin_text, label.found};
    if (label.found)
        obstacles.rectangles.push_back(
            {label.at.x, label.at.y, label.at.x + width, label.at.y + sg_pin_text});
    else if (!net.wires.empty())
        net.label.at = net.wires.front().from;
    else if (!net.points.empty())
        net.label.at = net.points.front();
}

void label_nets(xp_pager& p) {
    sg_obstacles obstacles = obstacles_of(p);
    for (std::size_t i = 0; i < p.nets.size(); ++i)
        label_net(p.drawing.nets[i], p.nets[i].look == xp_net_style::wires && !is_named_by_tag(p.nets[i]),
                  obstacles);
}

}  // namespace

void xp_draw_layout(xp_pager& p) {
    place_cells(p);
    begin_nets(p);
    draw_tags(p);
    draw_joints(p);
    label_nets(p);
    for (sg_drawn_instance& instance : p.placed)
        if (instance.symbol >= 0) p.drawing.instances.push_back(std::move(instance));
    const sg_rectangle& e = p.layout.extent;
    p.drawing.extent = {e.xmin - page_margin, e.ymin - page_margin, e.xmax + page_margin,
                        e.ymax + page_margin};
}

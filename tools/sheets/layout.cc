// The layout from boxes to wires: columns, origins, the shape of the page.
#include "sheets/layout.h"

#include <algorithm>
#include <map>

#include "sheets/layered.h"
#include "sheets/place_of.h"
#include "sheets/wires.h"

namespace {

constexpr double page_shapes[] = {0.7, 0.45, 0.3, 0.2};  // tried in turn
constexpr double window_shape = 2.2;                     // width to height of where sheets are shown

struct drafting {
    const sg_layered& l;
    sg_layout& layout;
    std::vector<std::vector<sg_track>> tracks;  // by channel
    std::vector<std::int32_t> rank_x;           // of the left pins of a rank
    std::vector<std::int32_t> channel_x;        // of column 0 of a channel
};

void choose_columns(drafting& d) {
    std::int32_t x = 0;
    for (std::int32_t rank = 0; rank < d.l.rank_count; ++rank) {
        std::int32_t left = 0, right = 0;
        for (const std::int32_t node : d.l.ranks[sg_at(rank)]) {
            if (d.l.nodes[sg_at(node)].box < 0) continue;
            const sg_box& box = d.l.graph.boxes[sg_at(d.l.nodes[sg_at(node)].box)];
            left = std::max(left, box.margin_left);
            right = std::max(right, box.width + box.margin_right);
        }
        const auto up = [](std::int32_t size) { return (size + sg_pitch - 1) / sg_pitch * sg_pitch; };
        d.rank_x.push_back(x + up(left));
        x += up(left) + up(right);
        if (rank + 1 == d.l.rank_count) return;
        const std::int32_t columns = sg_route_channel(d.l, d.l.channels[sg_at(rank)], d.tracks[sg_at(rank)]);
        d.channel_x.push_back(x + sg_pitch);
        x += (columns + 1) * sg_pitch;
    }
}

// Boxes of the last rank and their pins stand at its left side, those of the first at its right.
std::int32_t box_x(const drafting& d, std::int32_t box) {
    const std::int32_t rank = d.l.rank_of_box[sg_at(box)];
    return d.rank_x[sg_at(rank)];
}

void place_boxes(drafting& d) {
    d.layout.origins.resize(d.l.graph.boxes.size());
    d.layout.is_flipped.resize(d.l.graph.boxes.size());
    for (const sg_node& node : d.l.nodes) {
        if (node.box < 0) continue;
        d.layout.origins[sg_at(node.box)] = {box_x(d, node.box), -node.y};
        d.layout.is_flipped[sg_at(node.box)] = node.is_flipped;
    }
}

// The x where a wire from a column of a channel ends at a terminal.
std::int32_t end_x(const drafting& d, const sg_terminal& terminal, bool is_left_side, std::size_t channel) {
    const sg_node& node = d.l.nodes[sg_at(terminal.node)];
    if (node.box < 0) return is_left_side ? d.channel_x[channel] - sg_pitch : d.rank_x[channel + 1];
    return box_x(d, node.box) + (is_left_side ? d.l.graph.boxes[sg_at(node.box)].width : 0);
}

// The column of the track that takes a net's wire on that side and row.
std::int32_t column_x(const drafting& d, std::size_t channel, std::int32_t net, bool is_left_side,
                      std::int32_t row) {
    for (const sg_track& track : d.tracks[channel]) {
        const std::vector<std::int32_t>& rows = is_left_side ? track.left : track.right;
        if (track.net == net && std::find(rows.begin(), rows.end(), row) != rows.end())
            return d.channel_x[channel] + track.column * sg_pitch;
    }
    return d.channel_x[channel];
}

void draw_terminals(drafting& d, std::size_t channel, bool is_left_side) {
    const sg_channel& c = d.l.channels[channel];
    for (const sg_terminal& terminal : is_left_side ? c.left : c.right) {
        const std::int32_t row = sg_row(d.l, terminal);
        const std::int32_t to = column_x(d, channel, terminal.net, is_left_side, row);
        d.layout.wires[sg_at(terminal.net)].push_back(
            {{end_x(d, terminal, is_left_side, channel), -row}, {to, -row}});
    }
}

void draw_track(drafting& d, std::size_t channel, const sg_track& track) {
    std::vector<std::int32_t> rows = track.left;
    rows.insert(rows.end(), track.right.begin(), track.right.end());
    if (track.has_link) rows.push_back(track.link);
    const auto [low, high] = std::minmax_element(rows.begin(), rows.end());
    const std::int32_t x = d.channel_x[channel] + track.column * sg_pitch;
    d.layout.wires[sg_at(track.net)].push_back({{x, -*high}, {x, -*low}});
}

// The row between the two tracks of a net that was split.
void draw_links(drafting& d, std::size_t channel) {
    std::map<std::int32_t, std::int32_t> first;  // column by net
    for (const sg_track& track : d.tracks[channel]) {
        if (!track.has_link) continue;
        const auto [known, is_new] = first.emplace(track.net, track.column);
        if (is_new) continue;
        const std::int32_t x = d.channel_x[channel];
        d.layout.wires[sg_at(track.net)].push_back(
            {{x + known->second * sg_pitch, -track.link}, {x + track.column * sg_pitch, -track.link}});
    }
}

void draw_rows(drafting& d) {
    for (const sg_node& node : d.l.nodes)
        if (node.box < 0)
            d.layout.wires[sg_at(node.net)].push_back(
                {{d.rank_x[sg_at(node.rank)], -node.y}, {d.channel_x[sg_at(node.rank)] - sg_pitch, -node.y}});
}

void draw_wires(drafting& d) {
    d.layout.wires.resize(sg_at(d.l.graph.net_count));
    d.layout.ties.resize(sg_at(d.l.graph.net_count));
    for (std::size_t channel = 0; channel < d.tracks.size(); ++channel) {
        draw_terminals(d, channel, true);
        draw_terminals(d, channel, false);
        for (const sg_track& track : d.tracks[channel]) draw_track(d, channel, track);
        draw_links(d, channel);
    }
    draw_rows(d);
    for (std::size_t net = 0; net < d.layout.wires.size(); ++net)
        sg_normalise(d.layout.wires[net], d.layout.ties[net]);
}

void add_point(sg_rectangle& extent, std::int32_t x, std::int32_t y) {
    extent.xmin = std::min(extent.xmin, x);
    extent.xmax = std::max(extent.xmax, x);
    extent.ymin = std::min(extent.ymin, y);
    extent.ymax = std::max(extent.ymax, y);
}

void find_extent(sg_layout& layout, const sg_graph& graph) {
    layout.extent = {INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN};
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        const sg_box& box = graph.boxes[i];
        const sg_point& origin = layout.origins[i];
        add_point(layout.extent, origin.x - box.margin_left, origin.y - box.below);
        add_point(layout.extent, origin.x + box.width + box.margin_right, origin.y + box.above);
    }
    for (const std::vector<sg_wire>& wires : layout.wires)
        for (const sg_wire& wire : wires) {
            add_point(layout.extent, wire.from.x, wire.from.y);
            add_point(layout.extent, wire.to.x, wire.to.y);
        }
    if (graph.boxes.empty()) layout.extent = {0, 0, 0, 0};
}

void lay_out_ranks(sg_layered& l, sg_layout& layout) {
    sg_make_nodes(l);
    sg_order_ranks(l);
    sg_place_nodes(l);
    drafting d{l, layout, std::vector<std::vector<sg_track>>(l.channels.size()), {}, {}};
    choose_columns(d);
    place_boxes(d);
    draw_wires(d);
    find_extent(layout, l.graph);
}

// What decides how large a page is shown: its width, or its height as far as that asks for more.
double size_shown(const sg_layout& layout) {
    const sg_rectangle& e = layout.extent;
    return std::max(static_cast<double>(e.xmax) - e.xmin,
                    window_shape * (static_cast<double>(e.ymax) - e.ymin));
}

}  // namespace

void sg_lay_out(const sg_graph& graph, sg_layout& layout) {
    std::int32_t last_count = 0;
    for (const double shape : page_shapes) {
        sg_layered l{graph, {}, 0, {}, {}, {}};
        sg_choose_ranks(l, shape);
        if (l.rank_count == last_count) continue;
        last_count = l.rank_count;
        sg_layout tried;
        lay_out_ranks(l, tried);
        if (layout.origins.empty() || size_shown(tried) < size_shown(layout)) layout = std::move(tried);
    }
}

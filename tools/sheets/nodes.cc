// The nodes of a layout, the ends of nets beside its channels, and which of them a wire joins.
#include <algorithm>
#include <span>

#include "sheets/layered.h"

#include "sheets/place_of.h"

namespace {

constexpr std::int32_t row_room = 4000;  // above and below a wire that passes a rank

struct span {
    std::int32_t low = INT32_MAX, high = INT32_MIN;  // channels
};

std::int32_t add_node(sg_layered& l, const sg_node& node) {
    l.nodes.push_back(node);
    const auto index = static_cast<std::int32_t>(l.nodes.size() - 1);
    l.ranks[sg_at(node.rank)].push_back(index);
    return index;
}

// The channels that each net has a pin in.
std::vector<span> spans_of(const sg_layered& l) {
    std::vector<span> spans(sg_at(l.graph.net_count));
    for (std::size_t box = 0; box < l.graph.boxes.size(); ++box)
        for (const sg_box_pin& pin : l.graph.boxes[box].pins) {
            if (pin.net < 0) continue;
            const std::int32_t channel = l.rank_of_box[box] - (pin.is_right ? 0 : 1);
            spans[sg_at(pin.net)].low = std::min(spans[sg_at(pin.net)].low, channel);
            spans[sg_at(pin.net)].high = std::max(spans[sg_at(pin.net)].high, channel);
        }
    return spans;
}

std::vector<std::int32_t> pin_counts(const sg_graph& graph) {
    std::vector<std::int32_t> counts(sg_at(graph.net_count));
    for (const sg_box& box : graph.boxes)
        for (const sg_box_pin& pin : box.pins)
            if (pin.net >= 0) ++counts[sg_at(pin.net)];
    return counts;
}

// A net of one pin has no wire.
void add_boxes(sg_layered& l) {
    const std::vector<std::int32_t> counts = pin_counts(l.graph);
    for (std::size_t index = 0; index < l.graph.boxes.size(); ++index) {
        const sg_box& box = l.graph.boxes[index];
        const std::int32_t rank = l.rank_of_box[index];
        const std::int32_t node =
            add_node(l, {static_cast<std::int32_t>(index), -1, rank, box.above, box.below, 0});
        for (const sg_box_pin& pin : box.pins) {
            if (pin.net < 0 || counts[sg_at(pin.net)] < 2) continue;
            std::vector<sg_terminal>& side =
                pin.is_right ? l.channels[sg_at(rank)].left : l.channels[sg_at(rank - 1)].right;
            side.push_back({pin.net, node, -pin.y});
        }
    }
}

void add_rows(sg_layered& l) {  // none for a net without pins
    const std::vector<span> spans = spans_of(l);
    for (std::int32_t net = 0; net < l.graph.net_count; ++net)
        for (std::int32_t rank = spans[sg_at(net)].low; rank < spans[sg_at(net)].high; ++rank) {
            const std::int32_t node = add_node(l, {-1, net, rank + 1, row_room, row_room, 0});
            l.channels[sg_at(rank)].right.push_back({net, node, 0});
            l.channels[sg_at(rank + 1)].left.push_back({net, node, 0});
        }
}

// The terminals of a side, those of a net together.
std::vector<sg_terminal> by_net(std::vector<sg_terminal> side) {
    std::stable_sort(side.begin(), side.end(),
                     [](const sg_terminal& a, const sg_terminal& b) { return a.net < b.net; });
    return side;
}

void add_reaches(std::span<const sg_terminal> own, std::span<const sg_terminal> far,
                 std::vector<std::vector<sg_reach>>& reaches) {
    for (const sg_terminal& a : own)
        for (const sg_terminal& b : far)
            reaches[sg_at(a.node)].push_back(
                {a.net, a.offset, b.node, b.offset, static_cast<std::int32_t>(far.size())});
}

std::span<const sg_terminal> take_net(std::span<const sg_terminal>& side, std::int32_t net) {
    std::size_t count = 0;
    while (count < side.size() && side[count].net == net) ++count;
    const std::span<const sg_terminal> taken = side.first(count);
    side = side.subspan(count);
    return taken;
}

}  // namespace

sg_reaches sg_find_reaches(const sg_layered& l) {
    sg_reaches reaches{std::vector<std::vector<sg_reach>>(l.nodes.size()),
                       std::vector<std::vector<sg_reach>>(l.nodes.size())};
    for (const sg_channel& channel : l.channels) {
        const std::vector<sg_terminal> left_side = by_net(channel.left), right_side = by_net(channel.right);
        std::span<const sg_terminal> left(left_side), right(right_side);
        while (!left.empty() && !right.empty()) {
            const std::int32_t net = std::min(left.front().net, right.front().net);
            const auto from = take_net(left, net), to = take_net(right, net);
            add_reaches(from, to, reaches.to_right);
            add_reaches(to, from, reaches.to_left);
        }
    }
    return reaches;
}

void sg_make_nodes(sg_layered& l) {
    l.ranks.resize(sg_at(l.rank_count));
    l.channels.resize(sg_at(l.rank_count - 1));
    add_boxes(l);
    add_rows(l);
}

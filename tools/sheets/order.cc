// The order of the nodes within their ranks, in which few wires cross.
#include <algorithm>
#include <cmath>
#include <map>

#include "sheets/layered.h"

#include "sheets/place_of.h"

namespace {

constexpr int sweeps = 16;

struct ordering {
    sg_layered& l;
    sg_reaches reaches;
};

std::int32_t column_of(const sg_layered& l, std::int32_t node) {
    const std::int32_t box = l.nodes[sg_at(node)].box;
    return box < 0 ? -1 : l.graph.boxes[sg_at(box)].column;
}

// Gives the boxes of a column one key, so that they stand together.
void join_columns(const sg_layered& l, const std::vector<std::int32_t>& nodes, std::vector<double>& key) {
    std::map<std::int32_t, std::pair<double, int>> sums;
    for (const std::int32_t node : nodes)
        if (const std::int32_t column = column_of(l, node); column >= 0) {
            sums[column].first += key[sg_at(node)];
            ++sums[column].second;
        }
    for (const std::int32_t node : nodes)
        if (const std::int32_t column = column_of(l, node); column >= 0)
            key[sg_at(node)] = sums[column].first / sums[column].second;
}

// Whether a must stand above b: in a column by their order, beside it as the keys say.
bool is_above(const sg_layered& l, const std::vector<double>& key, std::int32_t a, std::int32_t b) {
    if (key[sg_at(a)] != key[sg_at(b)]) return key[sg_at(a)] < key[sg_at(b)];
    const std::int32_t column_a = column_of(l, a), column_b = column_of(l, b);
    if (column_a != column_b) return column_a < column_b;
    return column_a >= 0 && l.nodes[sg_at(a)].box < l.nodes[sg_at(b)].box;
}

void sort_rank(ordering& o, std::int32_t rank, const std::vector<std::vector<sg_reach>>& reaches) {
    std::vector<std::int32_t>& nodes = o.l.ranks[sg_at(rank)];
    std::vector<double> key(o.l.nodes.size());
    for (const std::int32_t node : nodes) {
        double sum = 0;
        for (const sg_reach& r : reaches[sg_at(node)])
            sum += sg_far_row(o.l, r) - sg_offset(o.l, node, r.own);
        key[sg_at(node)] = reaches[sg_at(node)].empty()
                               ? o.l.nodes[sg_at(node)].y
                               : sum / static_cast<double>(reaches[sg_at(node)].size());
    }
    join_columns(o.l, nodes, key);
    std::stable_sort(nodes.begin(), nodes.end(),
                     [&](std::int32_t a, std::int32_t b) { return is_above(o.l, key, a, b); });
    std::vector<double> wanted;
    wanted.reserve(nodes.size());
    for (const std::int32_t node : nodes) wanted.push_back(key[sg_at(node)]);
    sg_spread_rank(o.l, nodes, wanted, std::vector<double>(nodes.size(), 1));
}

std::int64_t crossings_of_pair(const ordering& o, const std::vector<sg_reach>& upper,
                               const std::vector<sg_reach>& lower) {
    std::int64_t count = 0;
    for (const sg_reach& a : upper)
        for (const sg_reach& b : lower)
            if (a.net != b.net && sg_far_row(o.l, a) > sg_far_row(o.l, b)) ++count;
    return count;
}

std::int64_t crossings(const ordering& o) {
    std::int64_t count = 0;
    std::vector<std::pair<std::int32_t, std::int32_t>> wires;  // rows at the left and the right
    for (std::size_t rank = 0; rank + 1 < o.l.ranks.size(); ++rank) {
        wires.clear();
        for (const std::int32_t node : o.l.ranks[rank])
            for (const sg_reach& r : o.reaches.to_right[sg_at(node)])
                wires.emplace_back(o.l.nodes[sg_at(node)].y + sg_offset(o.l, node, r.own),
                                   sg_far_row(o.l, r));
        std::sort(wires.begin(), wires.end());
        for (std::size_t a = 0; a < wires.size(); ++a)
            for (std::size_t b = a + 1; b < wires.size(); ++b)
                if (wires[a].first < wires[b].first && wires[a].second > wires[b].second) ++count;
    }
    return count;
}

// Wires to the left of a box that cross: those from its upper pins that go below others, less those that do
// not.
std::int32_t twists(const ordering& o, std::int32_t node) {
    std::int32_t count = 0;
    for (const sg_reach& a : o.reaches.to_left[sg_at(node)])
        for (const sg_reach& b : o.reaches.to_left[sg_at(node)])
            if (sg_offset(o.l, node, a.own) < sg_offset(o.l, node, b.own) &&
                sg_far_row(o.l, a) != sg_far_row(o.l, b))
                count += sg_far_row(o.l, a) > sg_far_row(o.l, b) ? 1 : -1;
    return count;
}

// Turns boxes upside down where that saves crossings.
void flip_boxes(ordering& o, const std::vector<std::int32_t>& nodes) {
    for (const std::int32_t index : nodes) {
        sg_node& node = o.l.nodes[sg_at(index)];
        if (node.box >= 0 && o.l.graph.boxes[sg_at(node.box)].can_flip && twists(o, index) > 0)
            node.is_flipped = !node.is_flipped;
    }
}

// Exchanges neighbours while that saves crossings.
void exchange_neighbours(ordering& o) {
    for (int pass = 0; pass < 6; ++pass) {
        bool is_changed = false;
        for (std::vector<std::int32_t>& nodes : o.l.ranks) {
            for (std::size_t i = 0; i + 1 < nodes.size(); ++i) {
                const auto cost = [&](std::int32_t upper, std::int32_t lower) {
                    return crossings_of_pair(o, o.reaches.to_left[sg_at(upper)],
                                             o.reaches.to_left[sg_at(lower)]) +
                           crossings_of_pair(o, o.reaches.to_right[sg_at(upper)],
                                             o.reaches.to_right[sg_at(lower)]);
                };
                if (column_of(o.l, nodes[i]) >= 0 || column_of(o.l, nodes[i + 1]) >= 0) continue;
                if (cost(nodes[i + 1], nodes[i]) >= cost(nodes[i], nodes[i + 1])) continue;
                std::swap(nodes[i], nodes[i + 1]);
                is_changed = true;
            }
            std::vector<double> wanted;
            wanted.reserve(nodes.size());
            for (const std::int32_t node : nodes) wanted.push_back(o.l.nodes[sg_at(node)].y);
            std::sort(wanted.begin(), wanted.end());
            sg_spread_rank(o.l, nodes, wanted, std::vector<double>(nodes.size(), 1));
        }
        if (!is_changed) return;
    }
}

}  // namespace

void sg_order_ranks(sg_layered& l) {
    ordering o{l, sg_find_reaches(l)};
    for (const std::vector<std::int32_t>& nodes : l.ranks)
        sg_spread_rank(l, nodes, std::vector<double>(nodes.size()), std::vector<double>(nodes.size(), 1));
    std::vector<std::vector<std::int32_t>> best = l.ranks;
    std::vector<sg_node> best_nodes = l.nodes;
    std::int64_t fewest = crossings(o);
    for (int sweep = 0; sweep < sweeps; ++sweep) {
        for (std::int32_t k = 1; k < l.rank_count; ++k)
            if (sweep % 2 == 0)
                sort_rank(o, k, o.reaches.to_left);
            else
                sort_rank(o, l.rank_count - 1 - k, o.reaches.to_right);
        if (sweep >= sweeps / 2) exchange_neighbours(o);
        for (const std::vector<std::int32_t>& nodes : l.ranks) flip_boxes(o, nodes);
        if (const std::int64_t count = crossings(o); count < fewest) {
            fewest = count;
            best = l.ranks;
            best_nodes = l.nodes;
        }
    }
    l.ranks = std::move(best);
    l.nodes = std::move(best_nodes);
}

#include <algorithm>
#include <cmath>

#include "sheets/layered.h"

namespace {

constexpr int passes = 24;
constexpr double row_weight = 6, box_weight = 1;  // a row that passes a rank wants to be straight most

std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

std::int32_t to_row(double y) { return static_cast<std::int32_t>(std::lround(y / sg_pitch)) * sg_pitch; }

std::int32_t gap(const sg_node& upper, const sg_node& lower) {
    const std::int32_t room = upper.below + lower.above;
    return (room + sg_pitch - 1) / sg_pitch * sg_pitch;
}

// Nodes that lie against each other and move as one.
struct block {
    double sum = 0, weight = 0;
    std::size_t count = 0;
    double place() const { return sum / weight; }
};

// Where each node wants to be so that its wires to the given sides are straight: the rows of the other ends.
struct pull {
    double row = 0, weight = 0;
};

void add_pulls(const sg_layered& l, const std::vector<sg_terminal>& own,
               const std::vector<sg_terminal>& other, std::vector<std::vector<pull>>& pulls) {
    std::vector<std::vector<const sg_terminal*>> others(at(l.graph.net_count));
    for (const sg_terminal& terminal : other) others[at(terminal.net)].push_back(&terminal);
    for (const sg_terminal& terminal : own) {
        const double count = static_cast<double>(others[at(terminal.net)].size());
        for (const sg_terminal* far : others[at(terminal.net)]) {
            const bool both_rows = l.nodes[at(terminal.node)].box < 0 && l.nodes[at(far->node)].box < 0;
            pulls[at(terminal.node)].push_back({static_cast<double>(sg_row(l, *far) - terminal.offset),
                                                (both_rows ? row_weight : box_weight) / count});
        }
    }
}

// The weighted median: of two pulls it is one of them, so that one wire is straight.
double median(std::vector<pull>& pulls, double absent) {
    if (pulls.empty()) return absent;
    std::sort(pulls.begin(), pulls.end(), [](const pull& a, const pull& b) { return a.row < b.row; });
    double total = 0, sum = 0;
    for (const pull& p : pulls) total += p.weight;
    for (const pull& p : pulls)
        if ((sum += p.weight) >= total / 2) return p.row;
    return pulls.back().row;
}

enum sides { from_left = 1, from_right = 2 };

void place_rank(sg_layered& l, std::int32_t rank, int which) {
    const std::vector<std::int32_t>& nodes = l.ranks[at(rank)];
    std::vector<std::vector<pull>> pulls(l.nodes.size());
    if ((which & from_left) != 0 && rank > 0)
        add_pulls(l, l.channels[at(rank - 1)].right, l.channels[at(rank - 1)].left, pulls);
    if ((which & from_right) != 0 && rank + 1 < l.rank_count)
        add_pulls(l, l.channels[at(rank)].left, l.channels[at(rank)].right, pulls);
    std::vector<double> wanted, weight;
    for (const std::int32_t node : nodes) {
        wanted.push_back(median(pulls[at(node)], l.nodes[at(node)].y));
        weight.push_back(pulls[at(node)].empty()     ? 0.01
                         : l.nodes[at(node)].box < 0 ? row_weight
                                                     : box_weight);
    }
    sg_spread_rank(l, nodes, wanted, weight);
}

}  // namespace

// Pools what would overlap: the least sum of squares under the order.
void sg_spread_rank(sg_layered& l, const std::vector<std::int32_t>& rank, const std::vector<double>& wanted,
                    const std::vector<double>& weight) {
    std::vector<block> blocks;
    std::vector<double> offset;
    for (std::size_t i = 0; i < rank.size(); ++i) {
        offset.push_back(i == 0 ? 0 : offset.back() + gap(l.nodes[at(rank[i - 1])], l.nodes[at(rank[i])]));
        blocks.push_back({(wanted[i] - offset[i]) * weight[i], weight[i], 1});
        while (blocks.size() > 1 && blocks[blocks.size() - 2].place() > blocks.back().place()) {
            const block last = blocks.back();
            blocks.pop_back();
            blocks.back().sum += last.sum;
            blocks.back().weight += last.weight;
            blocks.back().count += last.count;
        }
    }
    std::size_t i = 0;
    for (const block& b : blocks)
        for (std::size_t k = 0; k < b.count; ++k, ++i)
            l.nodes[at(rank[i])].y = to_row(b.place()) + static_cast<std::int32_t>(offset[i]);
}

void sg_place_nodes(sg_layered& l) {
    for (int pass = 0; pass < passes; ++pass) {
        const int which = pass >= passes - 4 ? from_left | from_right
                          : pass % 2 == 0    ? from_left
                                             : from_right;
        for (std::int32_t k = 0; k < l.rank_count; ++k)
            place_rank(l, pass % 2 == 0 ? k : l.rank_count - 1 - k, which);
    }
}

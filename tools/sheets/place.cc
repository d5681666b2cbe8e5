// The rows on which the nodes stand: wires as straight as the order allows.
#include <algorithm>
#include <cmath>

#include "sheets/layered.h"

#include "sheets/place_of.h"

namespace {

constexpr int passes = 24, straightening_passes = 8;
constexpr double row_weight = 6, box_weight = 1;  // a row that passes a rank wants to be straight most

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

struct placing {
    sg_layered& l;
    sg_reaches reaches;
    std::vector<std::vector<pull>> pulls;  // by node
};

void add_pulls(const sg_layered& l, std::int32_t node, const std::vector<sg_reach>& reaches,
               std::vector<pull>& pulls) {
    for (const sg_reach& reach : reaches) {
        const bool both_rows = l.nodes[sg_at(node)].box < 0 && l.nodes[sg_at(reach.far_node)].box < 0;
        pulls.push_back({static_cast<double>(sg_far_row(l, reach) - sg_offset(l, node, reach.own)),
                         (both_rows ? row_weight : box_weight) / reach.ends});
    }
}

double mean(const std::vector<pull>& pulls) {
    double sum = 0, weight = 0;
    for (const pull& p : pulls) {
        sum += p.row * p.weight;
        weight += p.weight;
    }
    return sum / weight;
}

// The weighted median, so that one wire is straight: of two in the middle the one nearer to where the node
// is.
double median(std::vector<pull>& pulls, double now) {
    std::sort(pulls.begin(), pulls.end(), [](const pull& a, const pull& b) { return a.row < b.row; });
    double total = 0, sum = 0;
    for (const pull& p : pulls) total += p.weight;
    for (std::size_t i = 0; i < pulls.size(); ++i) {
        sum += pulls[i].weight;
        if (sum > total / 2) return pulls[i].row;
        if (sum == total / 2 && i + 1 < pulls.size())
            return std::abs(pulls[i].row - now) <= std::abs(pulls[i + 1].row - now) ? pulls[i].row
                                                                                    : pulls[i + 1].row;
    }
    return now;
}

enum sides { from_left = 1, from_right = 2 };

void find_pulls(placing& p, std::int32_t rank, int which) {
    for (const std::int32_t node : p.l.ranks[sg_at(rank)]) {
        std::vector<pull>& pulls = p.pulls[sg_at(node)];
        pulls.clear();
        if ((which & from_left) != 0) add_pulls(p.l, node, p.reaches.to_left[sg_at(node)], pulls);
        if ((which & from_right) != 0) add_pulls(p.l, node, p.reaches.to_right[sg_at(node)], pulls);
    }
}

double middle(const sg_layered& l) {
    double sum = 0;
    for (const sg_node& node : l.nodes) sum += node.y;
    return sum / static_cast<double>(l.nodes.size());
}

// Where a node that nothing pulls goes: beside the one above it, else the first below it that is pulled, else
// to the middle of the page.
double beside_others(const sg_layered& l, const std::vector<std::int32_t>& nodes,
                     const std::vector<double>& wanted, const std::vector<std::vector<pull>>& pulls) {
    if (!wanted.empty()) return wanted.back();
    for (const std::int32_t node : nodes)
        if (!pulls[sg_at(node)].empty()) return mean(pulls[sg_at(node)]);
    return middle(l);
}

void place_rank(placing& p, std::int32_t rank, int which) {
    const std::vector<std::int32_t>& nodes = p.l.ranks[sg_at(rank)];
    std::vector<double> wanted, weight;
    find_pulls(p, rank, which);
    for (const std::int32_t node : nodes) {
        const double now = p.l.nodes[sg_at(node)].y;
        std::vector<pull>& own = p.pulls[sg_at(node)];
        wanted.push_back(own.empty()                         ? beside_others(p.l, nodes, wanted, p.pulls)
                         : which == (from_left | from_right) ? median(own, now)
                                                             : mean(own));
        weight.push_back(own.empty() ? 0.01 : p.l.nodes[sg_at(node)].box < 0 ? row_weight : box_weight);
    }
    sg_spread_rank(p.l, nodes, wanted, weight);
}

// ---- straight wires

struct room {
    std::int32_t low = INT32_MIN, high = INT32_MAX;
};

// How far a node may move between its neighbours.
room room_of(const sg_layered& l, const std::vector<std::int32_t>& rank, std::size_t i) {
    room r;
    if (i > 0)
        r.low = l.nodes[sg_at(rank[i - 1])].y + gap(l.nodes[sg_at(rank[i - 1])], l.nodes[sg_at(rank[i])]);
    if (i + 1 < rank.size())
        r.high = l.nodes[sg_at(rank[i + 1])].y - gap(l.nodes[sg_at(rank[i])], l.nodes[sg_at(rank[i + 1])]);
    return r;
}

double bends(const std::vector<pull>& pulls, double y) {
    constexpr double bend = 4;  // as bad as rows of detour
    double cost = 0;
    for (const pull& p : pulls)
        if (p.row != y) cost += p.weight * (bend + std::abs(p.row - y) / sg_pitch);
    return cost;
}

// Moves each node to where fewest of its wires bend.
void straighten_rank(placing& p, std::int32_t rank) {
    sg_layered& l = p.l;
    const std::vector<std::int32_t>& nodes = l.ranks[sg_at(rank)];
    find_pulls(p, rank, from_left | from_right);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        sg_node& node = l.nodes[sg_at(nodes[i])];
        const std::vector<pull>& own = p.pulls[sg_at(nodes[i])];
        const room free = room_of(l, nodes, i);
        double best = bends(own, node.y);
        for (const pull& wire : own)
            if (wire.row >= free.low && wire.row <= free.high && bends(own, wire.row) < best) {
                best = bends(own, wire.row);
                node.y = static_cast<std::int32_t>(wire.row);
            }
    }
}

// Rows of one net that pass neighbouring ranks at the same height.
struct run {
    std::int32_t net = 0, first_rank = 0, last_rank = 0, y = 0;
    std::vector<std::int32_t> nodes;
};

std::vector<run> runs_of(const sg_layered& l) {
    std::vector<run> runs;
    std::vector<std::int32_t> run_of(sg_at(l.graph.net_count), -1);
    for (std::int32_t rank = 0; rank < l.rank_count; ++rank)
        for (const std::int32_t index : l.ranks[sg_at(rank)]) {
            const sg_node& node = l.nodes[sg_at(index)];
            if (node.box >= 0) continue;
            std::int32_t& known = run_of[sg_at(node.net)];
            if (known < 0 || runs[sg_at(known)].last_rank != rank - 1 || runs[sg_at(known)].y != node.y) {
                known = static_cast<std::int32_t>(runs.size());
                runs.push_back({node.net, rank, rank, node.y, {}});
            }
            run& r = runs[sg_at(known)];
            r.last_rank = rank;
            r.nodes.push_back(index);
        }
    return runs;
}

// The other ends of a run's wires in the channels before and behind it.
void add_run_pulls(const sg_layered& l, const run& r, std::vector<pull>& pulls) {
    const auto add = [&](const std::vector<sg_terminal>& terminals) {
        for (const sg_terminal& terminal : terminals)
            if (terminal.net == r.net) pulls.push_back({static_cast<double>(sg_row(l, terminal)), 1});
    };
    add(l.channels[sg_at(r.first_rank - 1)].left);
    add(l.channels[sg_at(r.last_rank)].right);
}

bool is_free_for(const sg_layered& l, const run& r, std::int32_t y) {
    for (const std::int32_t index : r.nodes) {
        const std::vector<std::int32_t>& rank = l.ranks[sg_at(l.nodes[sg_at(index)].rank)];
        const auto i = static_cast<std::size_t>(std::find(rank.begin(), rank.end(), index) - rank.begin());
        const room free = room_of(l, rank, i);
        if (y < free.low || y > free.high) return false;
    }
    return true;
}

void straighten_runs(sg_layered& l) {
    for (const run& r : runs_of(l)) {
        std::vector<pull> pulls;
        add_run_pulls(l, r, pulls);
        double best = bends(pulls, r.y);
        std::int32_t to = r.y;
        for (const pull& p : pulls)
            if (const double cost = bends(pulls, p.row);
                cost < best && is_free_for(l, r, static_cast<std::int32_t>(p.row))) {
                best = cost;
                to = static_cast<std::int32_t>(p.row);
            }
        for (const std::int32_t node : r.nodes) l.nodes[sg_at(node)].y = to;
    }
}

}  // namespace

// Pools what would overlap: the least sum of squares under the order.
void sg_spread_rank(sg_layered& l, const std::vector<std::int32_t>& rank, const std::vector<double>& wanted,
                    const std::vector<double>& weight) {
    std::vector<block> blocks;
    std::vector<double> offset;
    for (std::size_t i = 0; i < rank.size(); ++i) {
        offset.push_back(i == 0 ? 0
                                : offset.back() + gap(l.nodes[sg_at(rank[i - 1])], l.nodes[sg_at(rank[i])]));
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
            l.nodes[sg_at(rank[i])].y = to_row(b.place()) + static_cast<std::int32_t>(offset[i]);
}

void sg_place_nodes(sg_layered& l) {
    placing p{l, sg_find_reaches(l), std::vector<std::vector<pull>>(l.nodes.size())};
    for (int pass = 0; pass < passes; ++pass) {
        const int which = pass >= passes - 8 ? from_left | from_right
                          : pass % 2 == 0    ? from_left
                                             : from_right;
        for (std::int32_t k = 0; k < l.rank_count; ++k)
            place_rank(p, pass % 2 == 0 ? k : l.rank_count - 1 - k, which);
    }
    for (int pass = 0; pass < straightening_passes; ++pass) {
        for (std::int32_t k = 0; k < l.rank_count; ++k)
            straighten_rank(p, pass % 2 == 0 ? k : l.rank_count - 1 - k);
        straighten_runs(l);
    }
}

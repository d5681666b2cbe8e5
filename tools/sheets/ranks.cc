// The ranks of boxes: loops cut, pages shaped, wires shortened.
#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>

#include "sheets/layered.h"

#include "sheets/place_of.h"

namespace {

constexpr std::int32_t rank_pitch = 110'000;  // what a rank with its channel takes about
constexpr std::int32_t depth_least = 8;       // ranks up to which registers may follow registers

struct edge {
    std::int32_t from = 0, to = 0;
};

using edges = std::vector<std::vector<std::int32_t>>;

struct ranking {
    const sg_graph& graph;
    std::vector<std::int32_t> leader;  // by box: the first of its column, which stands for it
    std::vector<std::int32_t> height;  // by box: of the column that it leads
    std::vector<std::vector<std::int32_t>> drivers, sinks;  // boxes by net
    edges next, previous;                                   // without a loop
};

void find_columns(ranking& r) {
    std::map<std::int32_t, std::int32_t> first;  // box by column
    for (std::size_t box = 0; box < r.graph.boxes.size(); ++box) {
        const sg_box& b = r.graph.boxes[box];
        const auto own = static_cast<std::int32_t>(box);
        r.leader.push_back(b.column < 0 ? own : first.try_emplace(b.column, own).first->second);
        r.height.push_back(0);
        r.height[sg_at(r.leader.back())] += b.above + b.below;
    }
}

void find_ends(ranking& r) {
    r.drivers.resize(sg_at(r.graph.net_count));
    r.sinks.resize(sg_at(r.graph.net_count));
    for (std::size_t box = 0; box < r.graph.boxes.size(); ++box)
        for (const sg_box_pin& pin : r.graph.boxes[box].pins)
            if (pin.net >= 0) (pin.is_right ? r.drivers : r.sinks)[sg_at(pin.net)].push_back(r.leader[box]);
    for (auto* ends : {&r.drivers, &r.sinks})
        for (std::vector<std::int32_t>& boxes : *ends) {
            std::sort(boxes.begin(), boxes.end());
            boxes.erase(std::unique(boxes.begin(), boxes.end()), boxes.end());
        }
}

bool reaches(const ranking& r, std::int32_t from, std::int32_t to) {
    std::vector<bool> is_seen(r.graph.boxes.size());
    std::vector<std::int32_t> open{from};
    while (!open.empty()) {
        const std::int32_t box = open.back();
        open.pop_back();
        if (box == to) return true;
        if (is_seen[sg_at(box)]) continue;
        is_seen[sg_at(box)] = true;
        open.insert(open.end(), r.next[sg_at(box)].begin(), r.next[sg_at(box)].end());
    }
    return false;
}

// Steps from the inputs, by which registers are taken in: those near the inputs first.
std::vector<std::int32_t> distances(const ranking& r) {
    std::vector<std::int32_t> distance(r.graph.boxes.size(), INT32_MAX), open;
    for (std::size_t box = 0; box < distance.size(); ++box)
        if (r.graph.boxes[box].place == sg_place::first) {
            distance[box] = 0;
            open.push_back(static_cast<std::int32_t>(box));
        }
    for (std::size_t i = 0; i < open.size(); ++i)
        for (const sg_box_pin& pin : r.graph.boxes[sg_at(open[i])].pins) {
            if (pin.net < 0 || !pin.is_right) continue;
            for (const std::int32_t sink : r.sinks[sg_at(pin.net)])
                if (distance[sg_at(sink)] == INT32_MAX) {
                    distance[sg_at(sink)] = distance[sg_at(open[i])] + 1;
                    open.push_back(sink);
                }
        }
    return distance;
}

// What joins two boxes: thick wires count for two.
std::map<std::pair<std::int32_t, std::int32_t>, std::int32_t> weigh_edges(const ranking& r) {
    std::map<std::pair<std::int32_t, std::int32_t>, std::int32_t> weights;
    for (std::size_t net = 0; net < r.drivers.size(); ++net)
        for (const std::int32_t from : r.drivers[net])
            for (const std::int32_t to : r.sinks[net])
                if (from != to || r.graph.boxes[sg_at(from)].column < 0)
                    weights[{from, to}] += net < r.graph.is_wide.size() && r.graph.is_wide[net] ? 2 : 1;
    return weights;
}

// Those of gates, then those of registers and modules: what joins most first, then what is near the inputs.
std::vector<edge> edges_by_need(const ranking& r) {
    const auto weights = weigh_edges(r);
    const std::vector<std::int32_t> distance = distances(r);
    std::vector<std::pair<std::tuple<bool, std::int32_t, std::int32_t>, edge>> all;
    for (const auto& [ends, weight] : weights) {
        const bool is_register = r.graph.boxes[sg_at(ends.first)].is_register;
        all.push_back(
            {{is_register, is_register ? -weight : 0, is_register ? distance[sg_at(ends.first)] : 0},
             {ends.first, ends.second}});
    }
    std::stable_sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<edge> in_turn;
    in_turn.reserve(all.size());
    for (const auto& [key, e] : all) in_turn.push_back(e);
    return in_turn;
}

std::vector<std::int32_t> in_order(const ranking& r) {
    std::vector<std::size_t> waiting;
    std::vector<std::int32_t> order;
    for (std::size_t box = 0; box < r.previous.size(); ++box) {
        waiting.push_back(r.previous[box].size());
        if (waiting.back() == 0) order.push_back(static_cast<std::int32_t>(box));
    }
    for (std::size_t i = 0; i < order.size(); ++i)
        for (const std::int32_t next : r.next[sg_at(order[i])])
            if (--waiting[sg_at(next)] == 0) order.push_back(next);
    return order;
}

// A box that stands for itself or for a column.
bool is_inner(const ranking& r, std::int32_t box) {
    return r.graph.boxes[sg_at(box)].place == sg_place::inner && r.leader[sg_at(box)] == box;
}

// Boxes on the longest way from each box to the right, without itself.
std::vector<std::int32_t> ways_ahead(const ranking& r, const std::vector<std::int32_t>& order) {
    std::vector<std::int32_t> ahead(order.size());
    for (auto box = order.rbegin(); box != order.rend(); ++box)
        for (const std::int32_t next : r.next[sg_at(*box)])
            if (is_inner(r, next)) ahead[sg_at(*box)] = std::max(ahead[sg_at(*box)], ahead[sg_at(next)] + 1);
    return ahead;
}

std::int32_t depth(const ranking& r) {
    const std::vector<std::int32_t> ahead = ways_ahead(r, in_order(r));
    return 1 + (ahead.empty() ? 0 : *std::max_element(ahead.begin(), ahead.end()));
}

void add_edge(ranking& r, const edge& e) {
    r.next[sg_at(e.from)].push_back(e.to);
    r.previous[sg_at(e.to)].push_back(e.from);
}

void drop_edge(ranking& r, const edge& e) {
    r.next[sg_at(e.from)].pop_back();
    r.previous[sg_at(e.to)].pop_back();
}

// Takes the edges in their order; one that would close a loop, or that would set a register behind another
// further than the page goes, is left out and becomes feedback.
void cut_loops(ranking& r) {
    r.next.resize(r.graph.boxes.size());
    r.previous.resize(r.graph.boxes.size());
    std::int32_t most = 0;
    for (const edge& e : edges_by_need(r)) {
        const bool is_last = r.graph.boxes[sg_at(e.to)].place == sg_place::last;
        if (!is_last && reaches(r, e.to, e.from)) continue;
        const bool is_register = r.graph.boxes[sg_at(e.from)].is_register && !is_last;
        if (is_register && most == 0) most = std::max(depth(r), depth_least);
        add_edge(r, e);
        if (is_register && depth(r) > most) drop_edge(r, e);
    }
}

// Inner boxes, those with the longest way ahead first.
std::vector<std::int32_t> most_urgent_first(const ranking& r, const std::vector<std::int32_t>& order,
                                            const std::vector<std::int32_t>& ahead) {
    std::vector<std::int32_t> boxes;
    for (const std::int32_t box : order)
        if (is_inner(r, box)) boxes.push_back(box);
    std::stable_sort(boxes.begin(), boxes.end(),
                     [&](std::int32_t a, std::int32_t b) { return ahead[sg_at(a)] > ahead[sg_at(b)]; });
    return boxes;
}

bool has_drivers_before(const ranking& r, const std::vector<std::int32_t>& rank, std::int32_t box,
                        std::int32_t current) {
    return std::all_of(
        r.previous[sg_at(box)].begin(), r.previous[sg_at(box)].end(), [&](std::int32_t previous) {
            return !is_inner(r, previous) || (rank[sg_at(previous)] != 0 && rank[sg_at(previous)] != current);
        });
}

// Fills rank after rank with what is ready, none higher than the limit unless a single box is.  The result is
// the number of inner ranks.
std::int32_t fill_ranks(const ranking& r, std::vector<std::int32_t> open, std::int32_t limit,
                        std::vector<std::int32_t>& rank) {
    std::fill(rank.begin(), rank.end(), 0);
    std::int32_t current = 0;
    while (!open.empty()) {
        ++current;
        std::int32_t used = 0;
        std::vector<std::int32_t> later;
        for (const std::int32_t box : open) {
            const bool has_room = used == 0 || used + r.height[sg_at(box)] <= limit;
            if (!has_room || !has_drivers_before(r, rank, box, current)) {
                later.push_back(box);
                continue;
            }
            rank[sg_at(box)] = current;
            used += r.height[sg_at(box)];
        }
        open = std::move(later);
    }
    return current;
}

// The fewest ranks with which none is higher than the shape allows for the width; at some width boxes higher
// than that are taken as they are.
std::int32_t shape_page(const ranking& r, double shape, const std::vector<std::int32_t>& order,
                        std::vector<std::int32_t>& rank) {
    constexpr std::int32_t wider_most = 200;
    const std::vector<std::int32_t> ahead = ways_ahead(r, order);
    const std::vector<std::int32_t> boxes = most_urgent_first(r, order, ahead);
    const std::int32_t least = 1 + (ahead.empty() ? 0 : *std::max_element(ahead.begin(), ahead.end()));
    for (std::int32_t ranks = least;; ++ranks) {
        const auto limit = static_cast<std::int32_t>(shape * rank_pitch * (ranks + 1));
        const std::int32_t count = fill_ranks(r, boxes, limit, rank);
        if (count <= ranks || ranks == least + wider_most) return count;
    }
}

// ---- shorter wires

struct arrangement {
    const ranking& r;
    std::vector<std::int32_t>& rank;  // by box
    std::vector<std::int32_t> used;   // height by rank
    std::int32_t limit = 0;           // of used
};

// Channels that a net crosses when a box of it stands in that rank.
std::int32_t span_of(const arrangement& a, std::size_t net, std::int32_t box, std::int32_t rank) {
    std::int32_t low = INT32_MAX, high = INT32_MIN;
    const auto reach = [&](std::int32_t other, std::int32_t to_channel) {
        const std::int32_t channel = (other == box ? rank : a.rank[sg_at(other)]) + to_channel;
        low = std::min(low, channel);
        high = std::max(high, channel);
    };
    for (const std::int32_t other : a.r.drivers[net]) reach(other, 0);
    for (const std::int32_t other : a.r.sinks[net]) reach(other, -1);
    return high - low;
}

std::int32_t cost_at(const arrangement& a, std::int32_t box, std::int32_t rank) {
    std::int32_t cost = 0;
    for (const sg_box_pin& pin : a.r.graph.boxes[sg_at(box)].pins)
        if (pin.net >= 0) cost += span_of(a, sg_at(pin.net), box, rank);
    return cost;
}

// The rank between its drivers and its sinks, and with room, where a box costs least.
std::int32_t best_rank(const arrangement& a, std::int32_t box, std::int32_t last) {
    std::int32_t low = 1, high = last - 1;
    for (const std::int32_t other : a.r.previous[sg_at(box)]) low = std::max(low, a.rank[sg_at(other)] + 1);
    for (const std::int32_t other : a.r.next[sg_at(box)]) high = std::min(high, a.rank[sg_at(other)] - 1);
    std::int32_t best = a.rank[sg_at(box)], best_cost = cost_at(a, box, best);
    for (std::int32_t to = low; to <= high; ++to) {
        if (a.used[sg_at(to)] + a.r.height[sg_at(box)] > a.limit) continue;
        const std::int32_t cost = cost_at(a, box, to);
        if (cost < best_cost) best = to;
        best_cost = std::min(best_cost, cost);
    }
    return best;
}

bool move_box(arrangement& a, std::int32_t box, std::int32_t to) {
    if (to == a.rank[sg_at(box)]) return false;
    a.used[sg_at(a.rank[sg_at(box)])] -= a.r.height[sg_at(box)];
    a.used[sg_at(to)] += a.r.height[sg_at(box)];
    a.rank[sg_at(box)] = to;
    return true;
}

void shorten_wires(const ranking& r, std::int32_t last, std::vector<std::int32_t>& rank) {
    constexpr int passes = 8;
    arrangement a{r, rank, std::vector<std::int32_t>(sg_at(last) + 1)};
    const auto boxes = static_cast<std::int32_t>(rank.size());
    for (std::int32_t box = 0; box < boxes; ++box) a.used[sg_at(rank[sg_at(box)])] += r.height[sg_at(box)];
    a.limit = *std::max_element(a.used.begin() + 1, a.used.end() - 1);
    bool is_changed = true;
    for (int pass = 0; pass < passes && is_changed; ++pass) {
        is_changed = false;
        for (std::int32_t box = 0; box < boxes; ++box)
            if (is_inner(r, box) && r.graph.boxes[sg_at(box)].column < 0)
                is_changed |= move_box(a, box, best_rank(a, box, last));
    }
}

}  // namespace

void sg_choose_ranks(sg_layered& l, double shape) {
    ranking r{l.graph, {}, {}, {}, {}, {}, {}};
    find_columns(r);
    find_ends(r);
    cut_loops(r);
    l.rank_of_box.assign(l.graph.boxes.size(), 0);
    const std::int32_t inner = shape_page(r, shape, in_order(r), l.rank_of_box);
    l.rank_count = inner + 2;
    for (std::size_t box = 0; box < l.graph.boxes.size(); ++box)
        if (l.graph.boxes[box].place == sg_place::last) l.rank_of_box[box] = inner + 1;
    if (inner > 0) shorten_wires(r, inner + 1, l.rank_of_box);
    for (std::size_t box = 0; box < l.graph.boxes.size(); ++box)
        l.rank_of_box[box] = l.rank_of_box[sg_at(r.leader[box])];
}

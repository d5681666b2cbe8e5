#include <algorithm>
#include <numeric>

#include "sheets/layered.h"

namespace {

constexpr std::int32_t rank_pitch = 110'000;  // what a rank with its channel takes about
constexpr std::int32_t depth_least = 8;       // ranks up to which registers may follow registers

struct edge {
    std::int32_t from = 0, to = 0;
};

using edges = std::vector<std::vector<std::int32_t>>;

struct ranking {
    const sg_graph& graph;
    std::vector<std::vector<std::int32_t>> drivers, sinks;  // boxes by net
    edges next, previous;                                   // without a loop
};

std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

void find_ends(ranking& r) {
    r.drivers.resize(at(r.graph.net_count));
    r.sinks.resize(at(r.graph.net_count));
    for (std::size_t box = 0; box < r.graph.boxes.size(); ++box)
        for (const sg_box_pin& pin : r.graph.boxes[box].pins)
            if (pin.net >= 0)
                (pin.is_right ? r.drivers : r.sinks)[at(pin.net)].push_back(static_cast<std::int32_t>(box));
}

bool reaches(const ranking& r, std::int32_t from, std::int32_t to) {
    std::vector<bool> is_seen(r.graph.boxes.size());
    std::vector<std::int32_t> open{from};
    while (!open.empty()) {
        const std::int32_t box = open.back();
        open.pop_back();
        if (box == to) return true;
        if (is_seen[at(box)]) continue;
        is_seen[at(box)] = true;
        open.insert(open.end(), r.next[at(box)].begin(), r.next[at(box)].end());
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
        for (const sg_box_pin& pin : r.graph.boxes[at(open[i])].pins) {
            if (pin.net < 0 || !pin.is_right) continue;
            for (const std::int32_t sink : r.sinks[at(pin.net)])
                if (distance[at(sink)] == INT32_MAX) {
                    distance[at(sink)] = distance[at(open[i])] + 1;
                    open.push_back(sink);
                }
        }
    return distance;
}

std::vector<edge> edges_by_need(const ranking& r) {
    std::vector<edge> all;
    for (std::size_t net = 0; net < r.drivers.size(); ++net)
        for (const std::int32_t from : r.drivers[net])
            for (const std::int32_t to : r.sinks[net]) all.push_back({from, to});
    const std::vector<std::int32_t> distance = distances(r);
    const auto key = [&](const edge& e) {
        const bool is_register = r.graph.boxes[at(e.from)].is_register;
        return std::pair(is_register, is_register ? distance[at(e.from)] : 0);
    };
    std::stable_sort(all.begin(), all.end(), [&](const edge& a, const edge& b) { return key(a) < key(b); });
    return all;
}

std::vector<std::int32_t> in_order(const ranking& r) {
    std::vector<std::size_t> waiting;
    std::vector<std::int32_t> order;
    for (std::size_t box = 0; box < r.previous.size(); ++box) {
        waiting.push_back(r.previous[box].size());
        if (waiting.back() == 0) order.push_back(static_cast<std::int32_t>(box));
    }
    for (std::size_t i = 0; i < order.size(); ++i)
        for (const std::int32_t next : r.next[at(order[i])])
            if (--waiting[at(next)] == 0) order.push_back(next);
    return order;
}

bool is_inner(const ranking& r, std::int32_t box) { return r.graph.boxes[at(box)].place == sg_place::inner; }

// Boxes on the longest way from each box to the right, without itself.
std::vector<std::int32_t> ways_ahead(const ranking& r, const std::vector<std::int32_t>& order) {
    std::vector<std::int32_t> ahead(order.size());
    for (auto box = order.rbegin(); box != order.rend(); ++box)
        for (const std::int32_t next : r.next[at(*box)])
            if (is_inner(r, next)) ahead[at(*box)] = std::max(ahead[at(*box)], ahead[at(next)] + 1);
    return ahead;
}

std::int32_t depth(const ranking& r) {
    const std::vector<std::int32_t> ahead = ways_ahead(r, in_order(r));
    return 1 + (ahead.empty() ? 0 : *std::max_element(ahead.begin(), ahead.end()));
}

void add_edge(ranking& r, const edge& e) {
    r.next[at(e.from)].push_back(e.to);
    r.previous[at(e.to)].push_back(e.from);
}

void drop_edge(ranking& r, const edge& e) {
    r.next[at(e.from)].pop_back();
    r.previous[at(e.to)].pop_back();
}

// Takes the edges in their order; one that would close a loop, or that would set a register behind another
// further than the page goes, is left out and becomes feedback.
void cut_loops(ranking& r) {
    r.next.resize(r.graph.boxes.size());
    r.previous.resize(r.graph.boxes.size());
    std::int32_t most = 0;
    for (const edge& e : edges_by_need(r)) {
        const bool is_last = r.graph.boxes[at(e.to)].place == sg_place::last;
        if (!is_last && reaches(r, e.to, e.from)) continue;
        const bool is_register = r.graph.boxes[at(e.from)].is_register && !is_last;
        if (is_register && most == 0) most = std::max(depth(r), depth_least);
        add_edge(r, e);
        if (is_register && depth(r) > most) drop_edge(r, e);
    }
}

std::int32_t height(const ranking& r, std::int32_t box) {
    return r.graph.boxes[at(box)].above + r.graph.boxes[at(box)].below;
}

// Fills rank after rank with what is ready, the longest way ahead first, none higher than the limit unless a
// single box is.  The result is the number of inner ranks.
std::int32_t fill_ranks(const ranking& r, const std::vector<std::int32_t>& order,
                        const std::vector<std::int32_t>& ahead, std::int32_t limit,
                        std::vector<std::int32_t>& rank) {
    std::vector<std::int32_t> open;
    for (const std::int32_t box : order)
        if (is_inner(r, box)) open.push_back(box);
    std::stable_sort(open.begin(), open.end(),
                     [&](std::int32_t a, std::int32_t b) { return ahead[at(a)] > ahead[at(b)]; });
    std::fill(rank.begin(), rank.end(), 0);
    std::int32_t current = 0;
    while (!open.empty()) {
        ++current;
        std::int32_t used = 0;
        std::vector<std::int32_t> later;
        for (const std::int32_t box : open) {
            bool is_ready = used == 0 || used + height(r, box) <= limit;
            for (const std::int32_t previous : r.previous[at(box)])
                if (is_inner(r, previous) && (rank[at(previous)] == 0 || rank[at(previous)] == current))
                    is_ready = false;
            if (is_ready) {
                rank[at(box)] = current;
                used += height(r, box);
            } else {
                later.push_back(box);
            }
        }
        open = std::move(later);
    }
    return current;
}

// The fewest ranks with which none is higher than the shape allows for the width.
std::int32_t shape_page(const ranking& r, double shape, const std::vector<std::int32_t>& order,
                        std::vector<std::int32_t>& rank) {
    const std::vector<std::int32_t> ahead = ways_ahead(r, order);
    std::int32_t wanted = 1 + (ahead.empty() ? 0 : *std::max_element(ahead.begin(), ahead.end()));
    for (std::int32_t tries = 0;; ++tries) {
        const auto limit = static_cast<std::int32_t>(shape * rank_pitch * (wanted + tries + 1));
        const std::int32_t count = fill_ranks(r, order, ahead, limit, rank);
        if (count <= wanted + tries || tries > 200) return count;
    }
}

// ---- shorter wires

struct span_cost {
    const ranking& r;
    const std::vector<std::int32_t>& rank;
};

// Channels that the nets of a box cross when it stands in that rank.
std::int32_t cost_at(const span_cost& c, std::int32_t box, std::int32_t rank) {
    std::int32_t cost = 0;
    for (const sg_box_pin& pin : c.r.graph.boxes[at(box)].pins) {
        if (pin.net < 0) continue;
        std::int32_t low = INT32_MAX, high = INT32_MIN;
        const auto reach = [&](std::int32_t channel) {
            low = std::min(low, channel);
            high = std::max(high, channel);
        };
        for (const std::int32_t other : c.r.drivers[at(pin.net)])
            reach(other == box ? rank : c.rank[at(other)]);
        for (const std::int32_t other : c.r.sinks[at(pin.net)])
            reach((other == box ? rank : c.rank[at(other)]) - 1);
        cost += high - low;
    }
    return cost;
}

void shorten_wires(const ranking& r, std::int32_t last, std::vector<std::int32_t>& rank) {
    std::vector<std::int32_t> used(at(last) + 1);
    for (std::size_t box = 0; box < rank.size(); ++box)
        used[at(rank[box])] += height(r, static_cast<std::int32_t>(box));
    const std::int32_t limit = *std::max_element(used.begin() + 1, used.end() - 1);
    for (int pass = 0; pass < 8; ++pass) {
        bool is_changed = false;
        for (std::int32_t box = 0; box < static_cast<std::int32_t>(rank.size()); ++box) {
            if (!is_inner(r, box)) continue;
            std::int32_t low = 1, high = last - 1;
            for (const std::int32_t other : r.previous[at(box)]) low = std::max(low, rank[at(other)] + 1);
            for (const std::int32_t other : r.next[at(box)]) high = std::min(high, rank[at(other)] - 1);
            std::int32_t best = rank[at(box)], best_cost = cost_at({r, rank}, box, best);
            for (std::int32_t to = low; to <= high; ++to)
                if (const std::int32_t cost = cost_at({r, rank}, box, to);
                    cost < best_cost && used[at(to)] + height(r, box) <= limit) {
                    best = to;
                    best_cost = cost;
                }
            if (best == rank[at(box)]) continue;
            used[at(rank[at(box)])] -= height(r, box);
            used[at(best)] += height(r, box);
            rank[at(box)] = best;
            is_changed = true;
        }
        if (!is_changed) return;
    }
}

}  // namespace

void sg_choose_ranks(sg_layered& l, double shape) {
    ranking r{l.graph, {}, {}, {}, {}};
    find_ends(r);
    cut_loops(r);
    l.rank_of_box.assign(l.graph.boxes.size(), 0);
    const std::int32_t inner = shape_page(r, shape, in_order(r), l.rank_of_box);
    l.rank_count = inner + 2;
    for (std::size_t box = 0; box < l.graph.boxes.size(); ++box)
        if (l.graph.boxes[box].place == sg_place::last) l.rank_of_box[box] = inner + 1;
    if (inner > 0) shorten_wires(r, inner + 1, l.rank_of_box);
}

// What no drawing may do, for wires of any origin.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "sheets/graph.h"

struct net_wire {
    sg_wire wire;  // from the lower or left end
    std::int32_t net = 0;
    bool is_bus = false;
};

inline sg_rectangle span_of(const sg_wire& w) {
    return {std::min(w.from.x, w.to.x), std::min(w.from.y, w.to.y), std::max(w.from.x, w.to.x),
            std::max(w.from.y, w.to.y)};
}

inline bool touches(const sg_rectangle& a, const sg_rectangle& b) {
    return a.xmin <= b.xmax && b.xmin <= a.xmax && a.ymin <= b.ymax && b.ymin <= a.ymax;
}

inline bool is_end(const sg_wire& w, const sg_rectangle& place) {
    return touches({w.from.x, w.from.y, w.from.x, w.from.y}, place) ||
           touches({w.to.x, w.to.y, w.to.x, w.to.y}, place);
}

inline std::string text_of(const sg_wire& w) {
    return std::to_string(w.from.x) + "," + std::to_string(w.from.y) + " to " + std::to_string(w.to.x) + "," +
           std::to_string(w.to.y);
}

// Wires of two nets may only cross: neither may run along the other or end on it, but where a part of a bus
// comes to an end of one of its wires.
inline void expect_only_crossings(const std::vector<net_wire>& wires, const std::string& where) {
    for (std::size_t i = 0; i < wires.size(); ++i) {
        const sg_rectangle a = span_of(wires[i].wire);
        EXPECT_TRUE((a.xmin == a.xmax) != (a.ymin == a.ymax)) << where << text_of(wires[i].wire);
        for (std::size_t k = i + 1; k < wires.size(); ++k) {
            const sg_rectangle b = span_of(wires[k].wire);
            if (wires[i].net == wires[k].net || !touches(a, b)) continue;
            const sg_rectangle both{std::max(a.xmin, b.xmin), std::max(a.ymin, b.ymin),
                                    std::min(a.xmax, b.xmax), std::min(a.ymax, b.ymax)};
            const bool is_point = both.xmin == both.xmax && both.ymin == both.ymax;
            const bool is_tap = (wires[i].is_bus || wires[k].is_bus) && is_end(wires[i].wire, both) &&
                                is_end(wires[k].wire, both);
            if (is_point && is_tap) continue;
            EXPECT_TRUE(is_point && !is_end(wires[i].wire, both) && !is_end(wires[k].wire, both))
                << where << text_of(wires[i].wire) << " and " << text_of(wires[k].wire);
        }
    }
}

inline void expect_clear(const std::vector<net_wire>& wires, const std::vector<sg_rectangle>& bodies,
                         const std::string& where) {
    for (const net_wire& w : wires)
        for (const sg_rectangle& body : bodies)
            EXPECT_FALSE(
                touches(span_of(w.wire), {body.xmin + 1, body.ymin + 1, body.xmax - 1, body.ymax - 1}))
                << where << text_of(w.wire) << " runs through " << body.xmin << "," << body.ymin;
}

// Which points wires join: the same number for joined ones.
class joined_points {
public:
    void join(const sg_point& a, const sg_point& b) { root_[root(a)] = root(b); }
    sg_point root(const sg_point& p) {
        const auto at = root_.try_emplace(p, p).first;
        return at->second == p ? p : at->second = root(at->second);
    }

private:
    std::map<sg_point, sg_point> root_;
};

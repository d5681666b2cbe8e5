// Wires split where others meet them.
#include "sheets/wires.h"

#include <algorithm>
#include <map>
#include <set>

namespace {

sg_wire ordered(sg_wire wire) {
    if (wire.to < wire.from) std::swap(wire.from, wire.to);
    return wire;
}

bool lies_inside(const sg_point& p, const sg_wire& wire) {
    return p != wire.from && p != wire.to && p.x >= wire.from.x && p.x <= wire.to.x && p.y >= wire.from.y &&
           p.y <= wire.to.y;
}

std::set<sg_point> ends_of(const std::vector<sg_wire>& wires) {
    std::set<sg_point> ends;
    for (const sg_wire& wire : wires) {
        ends.insert(wire.from);
        ends.insert(wire.to);
    }
    return ends;
}

using wire_set = std::set<std::pair<sg_point, sg_point>>;

// Pieces between neighbouring ends; what two wires share is one piece.
wire_set pieces_of(const std::vector<sg_wire>& wires) {
    const std::set<sg_point> ends = ends_of(wires);
    wire_set pieces;
    for (const sg_wire& wire : wires) {
        sg_point last = wire.from;
        for (auto end = ends.lower_bound(wire.from); end != ends.end() && !(wire.to < *end); ++end) {
            if (!lies_inside(*end, wire)) continue;
            pieces.emplace(last, *end);
            last = *end;
        }
        pieces.emplace(last, wire.to);
    }
    return pieces;
}

struct meeting {
    std::int32_t horizontal = 0, vertical = 0;
    std::int32_t count() const { return horizontal + vertical; }
};

}  // namespace

void sg_normalise(std::vector<sg_wire>& wires, std::vector<sg_point>& ties) {
    for (sg_wire& wire : wires) wire = ordered(wire);
    std::erase_if(wires, [](const sg_wire& wire) { return wire.from == wire.to; });
    const wire_set pieces = pieces_of(wires);
    std::map<sg_point, meeting> meetings;
    for (const auto& [from, to] : pieces)
        for (const sg_point& end : {from, to})
            ++(from.y == to.y ? meetings[end].horizontal : meetings[end].vertical);
    const auto goes_on = [&](const sg_point& p) {
        const meeting& m = meetings[p];
        return m.count() == 2 && (m.horizontal == 2 || m.vertical == 2);
    };
    std::map<sg_point, sg_point> right, up;  // the piece that begins at a point
    for (const auto& [from, to] : pieces) (from.y == to.y ? right : up).emplace(from, to);
    wires.clear();
    for (const auto* pieces_from : {&right, &up})
        for (const auto& [from, first_to] : *pieces_from) {
            if (goes_on(from)) continue;
            sg_point to = first_to;
            while (goes_on(to)) to = pieces_from->at(to);
            wires.push_back({from, to});
        }
    ties.clear();
    for (const auto& [point, m] : meetings)
        if (m.count() > 2) ties.push_back(point);
}

// The channels between ranks: one column for every net, in an order with few crossings.
#include <algorithm>
#include <map>
#include <set>

#include "sheets/layered.h"

#include "sheets/place_of.h"

namespace {

struct interval {
    std::int32_t low = INT32_MAX, high = INT32_MIN;
};

interval interval_of(const sg_track& track) {
    interval i;
    const auto reach = [&](std::int32_t row) {
        i.low = std::min(i.low, row);
        i.high = std::max(i.high, row);
    };
    for (const std::int32_t row : track.left) reach(row);
    for (const std::int32_t row : track.right) reach(row);
    if (track.has_link) reach(track.link);
    return i;
}

bool overlap(const sg_track& a, const sg_track& b) {
    const interval ia = interval_of(a), ib = interval_of(b);
    return ia.low <= ib.high && ib.low <= ia.high;
}

bool is_straight(const sg_track& track) {
    const interval i = interval_of(track);
    return i.low == i.high;
}

bool has(const std::vector<std::int32_t>& rows, std::int32_t row) {
    return std::find(rows.begin(), rows.end(), row) != rows.end();
}

// Whether a must stand left of b: a comes from the left on a row by which b goes to the right.
bool must_precede(const sg_track& a, const sg_track& b) {
    return std::any_of(a.left.begin(), a.left.end(), [&](std::int32_t row) { return has(b.right, row); });
}

// Crossings when a stands left of b: what a sends to the right meets b, what b takes from the left meets a.
std::int32_t cost_before(const sg_track& a, const sg_track& b) {
    const interval ia = interval_of(a), ib = interval_of(b);
    std::int32_t count = 0;
    for (const std::int32_t row : a.right)
        if (row >= ib.low && row <= ib.high) ++count;
    for (const std::int32_t row : b.left)
        if (row >= ia.low && row <= ia.high) ++count;
    return count;
}

struct routing {
    std::vector<sg_track>& tracks;
    std::vector<std::vector<bool>> precedes;
    std::set<std::int32_t> rows;  // in use at either side
    std::vector<std::int32_t> order;
};

void compare_tracks(routing& r) {
    r.precedes.assign(r.tracks.size(), std::vector<bool>(r.tracks.size()));
    for (std::size_t a = 0; a < r.tracks.size(); ++a)
        for (std::size_t b = 0; b < r.tracks.size(); ++b)
            if (a != b && r.tracks[a].net != r.tracks[b].net)
                r.precedes[a][b] = must_precede(r.tracks[a], r.tracks[b]);
}

// Takes a free row near the middle of the track, else the next above everything.
std::int32_t free_row(routing& r, const sg_track& track) {
    const interval i = interval_of(track);
    const std::int32_t middle = (i.low / sg_pitch + i.high / sg_pitch) / 2 * sg_pitch;
    std::int32_t row = middle;
    for (std::int32_t step = 1; r.rows.contains(row); ++step)
        row = middle + (step % 2 == 0 ? step / 2 : -(step + 1) / 2) * sg_pitch;
    r.rows.insert(row);
    return row;
}

// Goes on in a second track, so that the two sides of the net no longer bind each other.
void split_track(routing& r, std::int32_t index) {
    sg_track second = r.tracks[sg_at(index)];
    sg_track& first = r.tracks[sg_at(index)];
    first.link = second.link = free_row(r, first);
    first.has_link = second.has_link = true;
    first.right.clear();
    second.left.clear();
    r.tracks.push_back(second);
    compare_tracks(r);
}

// An order that keeps what must precede, made by splitting tracks where there is none.
void order_tracks(routing& r) {
    std::vector<bool> is_taken;
    for (;;) {
        is_taken.resize(r.tracks.size());
        if (r.order.size() == r.tracks.size()) return;
        std::int32_t next = -1, bound = -1;
        for (std::int32_t i = 0; i < static_cast<std::int32_t>(r.tracks.size()); ++i) {
            if (is_taken[sg_at(i)]) continue;
            bool is_free = true;
            for (std::size_t other = 0; other < r.tracks.size(); ++other)
                if (!is_taken[other] && r.precedes[other][sg_at(i)]) is_free = false;
            if (is_free && next < 0) next = i;
            if (!is_free && bound < 0 && !r.tracks[sg_at(i)].has_link) bound = i;
        }
        if (next < 0) {
            split_track(r, bound);
            continue;
        }
        is_taken[sg_at(next)] = true;
        r.order.push_back(next);
    }
}

// Exchanges neighbours in the order while that saves crossings.
void save_crossings(routing& r) {
    for (std::size_t pass = 0; pass < r.order.size(); ++pass) {
        bool is_changed = false;
        for (std::size_t i = 0; i + 1 < r.order.size(); ++i) {
            const std::int32_t a = r.order[i], b = r.order[i + 1];
            if (r.precedes[sg_at(a)][sg_at(b)]) continue;
            const sg_track& ta = r.tracks[sg_at(a)];
            const sg_track& tb = r.tracks[sg_at(b)];
            if (cost_before(tb, ta) >= cost_before(ta, tb)) continue;
            std::swap(r.order[i], r.order[i + 1]);
            is_changed = true;
        }
        if (!is_changed) return;
    }
}

std::int32_t choose_columns(routing& r) {
    std::int32_t count = 0;
    for (std::size_t i = 0; i < r.order.size(); ++i) {
        sg_track& track = r.tracks[sg_at(r.order[i])];
        for (std::size_t k = 0; k < i; ++k) {
            const sg_track& other = r.tracks[sg_at(r.order[k])];
            if (r.precedes[sg_at(r.order[k])][sg_at(r.order[i])] || overlap(other, track))
                track.column = std::max(track.column, other.column + 1);
        }
        count = std::max(count, track.column + 1);
    }
    return count;
}

}  // namespace

std::int32_t sg_route_channel(const sg_layered& l, const sg_channel& channel, std::vector<sg_track>& tracks) {
    std::map<std::int32_t, sg_track> by_net;
    routing r{tracks, {}, {}, {}};
    for (const sg_terminal& terminal : channel.left) by_net[terminal.net].left.push_back(sg_row(l, terminal));
    for (const sg_terminal& terminal : channel.right)
        by_net[terminal.net].right.push_back(sg_row(l, terminal));
    std::vector<sg_track> straight;
    for (auto& [net, track] : by_net) {
        track.net = net;
        r.rows.insert(track.left.begin(), track.left.end());
        r.rows.insert(track.right.begin(), track.right.end());
        (is_straight(track) ? straight : tracks).push_back(track);
    }
    compare_tracks(r);
    order_tracks(r);
    save_crossings(r);
    const std::int32_t columns = choose_columns(r);
    tracks.insert(tracks.end(), straight.begin(), straight.end());
    return columns;
}

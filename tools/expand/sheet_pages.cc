#include <algorithm>
#include <numeric>

#include "expand/sheet_plan.h"

namespace {

constexpr std::size_t wide_net = 16;         // nets with more pins say nothing about nearness
constexpr std::int32_t levels_of_page = 10;  // logic levels that a page goes over, about

std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

// A cell with the cells that only it reads, and those that only they read: a fan-in cone.
struct cone {
    std::vector<std::int32_t> cells;
    std::int32_t level = 0;  // of its deepest cell
    std::int32_t page = -1;
};

struct sharing {
    xp_sheet_plan& plan;
    std::vector<std::vector<std::int32_t>> drivers, readers;  // cells by net
    std::vector<std::int32_t> level;                          // by cell
    std::vector<std::int32_t> cone_of;                        // by cell
    std::vector<cone> cones;
    std::vector<std::vector<std::int32_t>> cones_at;  // by net
};

void find_ends(sharing& s) {
    s.drivers.resize(s.plan.nets.size());
    s.readers.resize(s.plan.nets.size());
    for (std::size_t cell = 0; cell < s.plan.cells.size(); ++cell)
        for (std::size_t pin = 0; pin < s.plan.cells[cell].nets.size(); ++pin)
            if (const std::int32_t net = s.plan.cells[cell].nets[pin]; net >= 0)
                (s.plan.cells[cell].kind.pins[pin].is_right ? s.drivers : s.readers)[at(net)].push_back(
                    static_cast<std::int32_t>(cell));
}

template <typename Visit>
void for_inputs(const sharing& s, std::int32_t cell, Visit visit) {
    const xp_sheet_cell& c = s.plan.cells[at(cell)];
    for (std::size_t pin = 0; pin < c.nets.size(); ++pin)
        if (c.nets[pin] >= 0 && !c.kind.pins[pin].is_right) visit(c.nets[pin]);
}

bool starts_anew(const sharing& s, std::int32_t cell) {
    return s.plan.cells[at(cell)].is_register || s.plan.cells[at(cell)].module >= 0;
}

// Logic levels from inputs and registers, in an order in which a cell stands behind its drivers.
std::vector<std::int32_t> find_levels(sharing& s) {
    const auto count = static_cast<std::int32_t>(s.plan.cells.size());
    std::vector<std::int32_t> order, waiting(at(count));
    s.level.assign(at(count), 0);
    const auto drivers_of = [&](std::int32_t cell, auto visit) {
        for_inputs(s, cell, [&](std::int32_t net) {
            for (const std::int32_t driver : s.drivers[at(net)])
                if (!starts_anew(s, driver)) visit(driver);
        });
    };
    for (std::int32_t cell = 0; cell < count; ++cell) {
        drivers_of(cell, [&](std::int32_t) { ++waiting[at(cell)]; });
        if (waiting[at(cell)] == 0) order.push_back(cell);
    }
    for (std::size_t i = 0; i < order.size(); ++i) {
        const xp_sheet_cell& c = s.plan.cells[at(order[i])];
        for (std::size_t pin = 0; pin < c.nets.size(); ++pin) {
            if (c.nets[pin] < 0 || !c.kind.pins[pin].is_right || starts_anew(s, order[i])) continue;
            for (const std::int32_t reader : s.readers[at(c.nets[pin])]) {
                s.level[at(reader)] = std::max(s.level[at(reader)], s.level[at(order[i])] + 1);
                if (--waiting[at(reader)] == 0) order.push_back(reader);
            }
        }
    }
    for (std::int32_t cell = 0; cell < count; ++cell)
        if (waiting[at(cell)] > 0) order.push_back(cell);  // in a loop of gates
    return order;
}

// The only reader of all that a cell drives, -1 when there is none or a port reads it.
std::int32_t only_reader(const sharing& s, std::int32_t cell, const std::vector<bool>& is_at_port) {
    std::int32_t reader = -1;
    const xp_sheet_cell& c = s.plan.cells[at(cell)];
    for (std::size_t pin = 0; pin < c.nets.size(); ++pin) {
        if (c.nets[pin] < 0 || !c.kind.pins[pin].is_right) continue;
        if (is_at_port[at(c.nets[pin])]) return -1;
        for (const std::int32_t other : s.readers[at(c.nets[pin])]) {
            if (reader >= 0 && reader != other) return -1;
            reader = other;
        }
    }
    return reader == cell ? -1 : reader;
}

void make_cones(sharing& s, std::size_t most) {
    const std::vector<std::int32_t> order = find_levels(s);
    std::vector<bool> is_at_port(s.plan.nets.size());
    for (const xp_sheet_port& port : s.plan.ports) is_at_port[at(port.net)] = true;
    s.cone_of.assign(s.plan.cells.size(), -1);
    for (auto cell = order.rbegin(); cell != order.rend(); ++cell) {
        const std::int32_t reader = only_reader(s, *cell, is_at_port);
        std::int32_t mine = reader < 0 ? -1 : s.cone_of[at(reader)];
        if (mine < 0 || s.cones[at(mine)].cells.size() >= most) {
            mine = static_cast<std::int32_t>(s.cones.size());
            s.cones.emplace_back();
        }
        s.cone_of[at(*cell)] = mine;
        s.cones[at(mine)].cells.push_back(*cell);
        s.cones[at(mine)].level = std::max(s.cones[at(mine)].level, s.level[at(*cell)]);
    }
}

void find_cones_at_nets(sharing& s) {
    s.cones_at.resize(s.plan.nets.size());
    for (std::size_t net = 0; net < s.cones_at.size(); ++net) {
        if (s.drivers[net].size() + s.readers[net].size() > wide_net) continue;
        for (const auto* cells : {&s.drivers[net], &s.readers[net]})
            for (const std::int32_t cell : *cells) s.cones_at[net].push_back(s.cone_of[at(cell)]);
        std::sort(s.cones_at[net].begin(), s.cones_at[net].end());
        s.cones_at[net].erase(std::unique(s.cones_at[net].begin(), s.cones_at[net].end()),
                              s.cones_at[net].end());
    }
}

// ---- filling a page

struct page {
    std::int32_t number = -1;
    std::int32_t lowest = 0;
    std::size_t cells = 0;
    std::vector<bool> has_net;
    std::vector<std::int32_t> shared;      // by cone: nets with the page
    std::vector<std::int32_t> neighbours;  // cones that share nets
};

void take_cone(sharing& s, page& p, std::int32_t index) {
    cone& taken = s.cones[at(index)];
    taken.page = p.number;
    p.cells += taken.cells.size();
    for (const std::int32_t cell : taken.cells) {
        s.plan.cells[at(cell)].page = p.number;
        for (const std::int32_t net : s.plan.cells[at(cell)].nets) {
            if (net < 0 || p.has_net[at(net)]) continue;
            p.has_net[at(net)] = true;
            for (const std::int32_t other : s.cones_at[at(net)])
                if (s.cones[at(other)].page < 0 && p.shared[at(other)]++ == 0) p.neighbours.push_back(other);
        }
    }
}

// The cone that shares most with the page for its size and does not lie too deep; -1 for none.
std::int32_t best_neighbour(const sharing& s, const page& p, std::size_t most) {
    std::int32_t best = -1;
    double best_score = 0;
    for (const std::int32_t index : p.neighbours) {
        const cone& c = s.cones[at(index)];
        if (c.page >= 0 || p.cells + c.cells.size() > most || c.level > p.lowest + levels_of_page) continue;
        const double score =
            p.shared[at(index)] / (1.0 + static_cast<double>(c.cells.size())) - 0.01 * c.level;
        if (best >= 0 && score <= best_score) continue;
        best = index;
        best_score = score;
    }
    return best;
}

void fill_pages(sharing& s, std::size_t aim) {
    std::vector<std::int32_t> seeds(s.cones.size());
    std::iota(seeds.begin(), seeds.end(), 0);
    std::stable_sort(seeds.begin(), seeds.end(), [&](std::int32_t a, std::int32_t b) {
        return s.cones[at(a)].level < s.cones[at(b)].level;
    });
    page p{-1, 0, aim, {}, {}, {}};
    std::size_t next = 0;
    for (;;) {
        while (next < seeds.size() && s.cones[at(seeds[next])].page >= 0) ++next;
        if (next == seeds.size()) break;
        const std::int32_t near = p.number < 0 ? -1 : best_neighbour(s, p, xp_page_most);
        if (p.cells < aim && near >= 0) {
            take_cone(s, p, near);
        } else if (const cone& seed = s.cones[at(seeds[next])];
                   p.cells < aim && p.cells + seed.cells.size() <= xp_page_most && p.cells < aim - aim / 4) {
            take_cone(s, p, seeds[next]);
        } else {
            p = {p.number + 1,
                 seed.level,
                 0,
                 std::vector<bool>(s.plan.nets.size()),
                 std::vector<std::int32_t>(s.cones.size()),
                 {}};
            take_cone(s, p, seeds[next]);
        }
    }
    s.plan.page_count = p.number + 1;
}

// ---- the pages of nets

void reach(xp_sheet_net& net, std::int32_t page) {
    if (net.first_page < 0 || page < net.first_page) net.first_page = page;
    net.last_page = std::max(net.last_page, page);
}

void find_pages_of_nets(xp_sheet_plan& plan) {
    for (const xp_sheet_cell& cell : plan.cells)
        for (const std::int32_t net : cell.nets)
            if (net >= 0) reach(plan.nets[at(net)], cell.page);
    for (const xp_sheet_port& port : plan.ports)
        if (plan.nets[at(port.net)].first_page < 0) reach(plan.nets[at(port.net)], 0);
}

}  // namespace

void xp_share_pages(xp_sheet_plan& plan) {
    plan.page_count = 1;
    if (plan.cells.size() > xp_page_most) {
        const std::size_t pages = (plan.cells.size() + xp_page_cells - 1) / xp_page_cells;
        const std::size_t aim = (plan.cells.size() + pages - 1) / pages;
        sharing s{plan, {}, {}, {}, {}, {}, {}};
        find_ends(s);
        make_cones(s, aim);
        find_cones_at_nets(s);
        fill_pages(s, aim);
    }
    find_pages_of_nets(plan);
}

bool xp_number_nets(xp_sheet_plan& plan, std::int32_t first_id, std::int32_t last_id) {
    if (plan.nets.size() > at(last_id - first_id + 1)) return false;
    std::vector<std::int32_t> order(plan.nets.size());
    std::iota(order.begin(), order.end(), 0);
    const auto key = [&](std::int32_t net) {
        const xp_sheet_net& n = plan.nets[at(net)];
        return n.first_page == n.last_page ? n.first_page : -1;
    };
    std::stable_sort(order.begin(), order.end(),
                     [&](std::int32_t a, std::int32_t b) { return key(a) < key(b); });
    for (const std::int32_t net : order) plan.nets[at(net)].id = static_cast<std::int16_t>(first_id++);
    return true;
}
